#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/chain_matrix.h"

namespace varo {

// One measured load: its frequency (Hz) and impedance (ohms).
struct LoadPoint {
    double frequency = 0;
    Complex z;
};

// An antenna or dummy load as an analyser measured it, read from a one-port Touchstone file.
struct OnePortLoad {
    double referenceR = 50;         // ohms, from the option line's R
    std::vector<LoadPoint> points;  // in the file's order, frequencies strictly rising
};

// Far more points than any analyser sweeps; bounds what a damaged file can cost.
inline constexpr std::size_t kMaxLoadPoints = 100000;
inline constexpr std::size_t kMaxLoadFileBytes = 8 * 1024 * 1024;

// A file that is not a one-port Touchstone file: what() is "line N: reason" (N counted from 1)
// or, for the whole file, just the reason.
class LoadFileError : public std::runtime_error {
  public:
    explicit LoadFileError(const std::string& reason) : std::runtime_error(reason) {}
    LoadFileError(int line, const std::string& reason)
        : std::runtime_error("line " + std::to_string(line) + ": " + reason), line_(line) {}
    // The line at fault; 0 when the fault is the whole file's.
    int line() const { return line_; }

  private:
    int line_ = 0;
};

// Reads Touchstone 1.0/1.1 text of one port: S, Y or Z parameters in any of the three formats,
// each point turned into the load's impedance. Throws LoadFileError.
OnePortLoad ParseOnePortTouchstone(std::string_view text);

// The file at `path`, read without ever waiting (a pipe or a device is refused at once). Throws
// FileError when it cannot be read, LoadFileError for what it holds.
OnePortLoad ReadOnePortTouchstone(const std::string& path);

}  // namespace varo
