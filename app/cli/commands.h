#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace varo::cli {

extern const char* const kDesignUsage;
extern const char* const kPlateLoadUsage;
extern const char* const kCoilUsage;
extern const char* const kBandsUsage;
extern const char* const kLoadRangeUsage;

// Each returns the exit status; a usage mistake throws UsageError.
int RunDesign(const std::vector<std::string>& words, std::ostream& out, std::ostream& err);
int RunPlateLoad(const std::vector<std::string>& words, std::ostream& out, std::ostream& err);
int RunCoil(const std::vector<std::string>& words, std::ostream& out, std::ostream& err);
int RunBands(const std::vector<std::string>& words, std::ostream& out, std::ostream& err);
int RunLoadRange(const std::vector<std::string>& words, std::ostream& out, std::ostream& err);

}  // namespace varo::cli
