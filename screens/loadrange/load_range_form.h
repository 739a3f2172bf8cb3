#pragma once

#include <array>
#include <string>
#include <variant>
#include <vector>

#include "model/load_range.h"
#include "model/touchstone_load.h"

namespace varo {

// What the screen re-tunes for, in the order of its choice box.
enum class LoadKindChoice { SwrCircle, OneLoad, Measured };
inline constexpr std::array<const char*, 3> kLoadKindNames{"SWR circle", "One load",
                                                           "Measured antenna"};
// The SWR circles offered, as typed into the request.
inline constexpr std::array<const char*, 3> kSwrChoices{"1.5", "2", "3"};
inline constexpr const char* kDefaultSwrChoice = "2";

// The screen's entries as texts; the measured points come from the antenna file opened.
struct LoadRangeFormText {
    LoadKindChoice kind = LoadKindChoice::SwrCircle;
    std::string swr = kDefaultSwrChoice;
    std::string phases = "36";
    std::string load = "37-j22";
};

// The request the texts describe for the chosen kind, or the sentences naming what is wrong
// (only the entries the kind uses are read). `measured` are the points of the file opened.
std::variant<LoadRangeRequest, std::vector<std::string>> ReadLoadRangeForm(
    const LoadRangeFormText& form, const std::vector<LoadPoint>& measured,
    const DesignState& design);

}  // namespace varo
