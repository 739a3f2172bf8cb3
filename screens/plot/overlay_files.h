#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/design_state.h"
#include "platform/dialogs.h"

namespace varo {

// Saved curves for comparing designs: transmission and return, in the current directory.
inline constexpr std::string_view kOverlayTransmissionFile = "Data.S21";
inline constexpr std::string_view kOverlayReturnFile = "Data.S11";

// The values of the overlay last read. Its frequencies live in DesignState::sweepFrequency, which
// the overlay shares with the sweep until the next sweep rewrites it.
struct OverlayData {
    std::array<float, kSweepPoints> overlayValue{};
    std::int16_t overlayLastIndex = -1;  // index of the last pair read; -1 before the first
};

// Writes "Data.S21" (frequency and transmission) and "Data.S11" (frequency and return) into
// `folder`, one line per sweep point, both or neither: a failure while writing leaves both
// previous files as they were, so a new curve is never read beside an old one. On a failure it
// beeps, shows "We are unable to write an overlay file" with the path and reason as detail, and
// returns false.
bool WriteOverlayFiles(const DesignState& state, const std::string& folder, Dialogs& dialogs);

enum class OverlayReadError {
    None,
    Unreadable,  // missing, unreadable, or no regular file (a pipe, a device)
    TooLarge,
    NotANumber,
    OutOfRange,  // beyond the single-precision range, either way
    OddCount,
    TooManyPoints,
    FrequencyNotPositive,
};

struct OverlayReadResult {
    OverlayReadError error = OverlayReadError::None;
    std::string detail;  // for Unreadable: the path and the system's reason
    bool ok() const { return error == OverlayReadError::None; }
};

// Reads one overlay file: numbers separated by blanks, commas or line ends, taken in pairs of
// frequency and value, after a UTF-8 byte-order mark if there is one. Only a file that is wholly
// usable is taken: then its frequencies go into sweepFrequency[0..n], its values into
// overlayValue[0..n], and overlayLastIndex becomes n. A rejected file changes nothing, so the
// current sweep is kept. An empty file (nothing but separators) is usable and holds no pairs:
// overlayLastIndex becomes -1. Reading stops at the first fault (at the latest at the 2002nd pair
// or past 1 MiB), so any file is judged quickly and in little memory.
OverlayReadResult ReadOverlayFile(const std::string& path, DesignState& state,
                                  OverlayData& overlay);

// The message for a rejected file, naming it: "Data.S21 holds more than 2001 points; ...".
std::string OverlayReadErrorText(std::string_view fileName, OverlayReadError error);

// Draws the overlay just read: the plot screen's DrawOverlay with its lastIndex, topDb, floorDb
// and curve (0 transmission, 1 return).
using OverlayDrawer =
    std::function<void(std::int16_t lastIndex, float topDb, float floorDb, std::int16_t curve)>;

// Reads and draws "Data.S21", then "Data.S11", from `folder`. A missing file shows the "File
// Test" message and ends the whole operation (a curve already drawn stays); so does a rejected
// file, with a message naming it. Returns true when both curves were drawn.
bool ReadOverlayFiles(DesignState& state, OverlayData& overlay, const std::string& folder,
                      Dialogs& dialogs, const OverlayDrawer& draw);

}  // namespace varo
