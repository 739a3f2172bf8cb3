#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/fuzz_targets.h"

namespace varo::fuzz {
namespace {

// Every build, the sanitizer one too, replays the inputs that once mattered.
TEST(FuzzCorpus, ReplaysEverySeed) {
    const std::pair<const char*, void (*)(std::string_view)> targets[] = {
        {"number_text", NumberText},
        {"last_session", LastSession},
        {"overlay", Overlay},
        {"touchstone_load", TouchstoneLoad}};
    for (const auto& [folder, target] : targets) {
        int seeds = 0;
        for (const auto& entry : std::filesystem::directory_iterator(
                 std::filesystem::path(VARO_FUZZ_CORPUS) / folder)) {
            std::ifstream in(entry.path(), std::ios::binary);
            target(std::string(std::istreambuf_iterator<char>(in), {}));
            ++seeds;
        }
        EXPECT_GT(seeds, 0) << folder;
    }
}

}  // namespace
}  // namespace varo::fuzz
