#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "fuzz/fuzz_targets.h"

namespace varo::fuzz {
namespace {

namespace fs = std::filesystem;

// Replays the seed corpus of each fuzz target, so every build (the sanitizer one included) runs
// the inputs that once mattered. A broken rule aborts the replay.
TEST(FuzzCorpus, ReplaysEverySeed) {
    const fs::path corpus = VARO_FUZZ_CORPUS;
    const struct {
        const char* folder;
        void (*target)(std::string_view);
    } targets[] = {
        {"number_text", NumberText}, {"last_session", LastSession}, {"overlay", Overlay}};
    for (const auto& t : targets) {
        int seeds = 0;
        for (const auto& entry : fs::directory_iterator(corpus / t.folder)) {
            std::ifstream in(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(in), {}};
            t.target(bytes);
            ++seeds;
        }
        EXPECT_GT(seeds, 0) << t.folder;
    }
}

}  // namespace
}  // namespace varo::fuzz
