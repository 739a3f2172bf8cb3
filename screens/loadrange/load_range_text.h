#pragma once

#include <array>
#include <string>
#include <vector>

#include "model/load_range.h"

namespace varo {

// The screen's table: a row per load, as its columns read.
inline constexpr std::array<const char*, 10> kLoadColumns{
    "Phase",   "R, ohms",      "X, ohms", "C1, pF", "Loading, pF",
    "C1, Vpk", "Loading, Vpk", "L1, A",   "L2, A",  "Loss, W"};
// The column that holds an unmatched load's problem, across the columns after it.
inline constexpr int kProblemColumn = 3;

struct LoadRowText {
    std::vector<std::string> cells;  // kLoadColumns.size() of them; an unmatched load: up to
                                     // the problem, which is the last
    bool matched = true;
};

// The first column's heading: "Phase" on an SWR circle, else "Point".
std::string FirstColumnHeading(const LoadRangeResult& result);
std::vector<LoadRowText> LoadRows(const LoadRangeResult& result);

// The worst case of each stress and where, the capacitances that cover every matched load, the
// loads no capacitance matches, and each band's cover and shortfalls; a line each.
std::string LoadRangeSummary(const LoadRangeResult& result);

}  // namespace varo
