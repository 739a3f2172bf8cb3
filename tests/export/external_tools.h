#pragma once

#include <cstdlib>
#include <string>

namespace varo::testing {

// Runs a shell command line; true when it exits 0.
inline bool RunsClean(const std::string& commandLine) {
    return std::system(commandLine.c_str()) == 0;
}

}  // namespace varo::testing
