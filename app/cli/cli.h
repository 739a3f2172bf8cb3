#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace varo::cli {

// Runs one varo-cli command line (without the program name). Returns the exit status:
// 0 done, 1 a file or the report itself could not be written, 2 a usage mistake.
int Run(const std::vector<std::string>& words, std::ostream& out, std::ostream& err);

}  // namespace varo::cli
