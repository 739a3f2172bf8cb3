// Whole-process time of the command-line companion: start, design, analyse, write, exit.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

int RunQuietly(const std::string& arguments) {
    const std::string command = std::string(VARO_CLI_PATH) + " " + arguments + " > /dev/null 2>&1";
    return std::system(command.c_str());
}

void BM_CliDesignJson(benchmark::State& state) {
    for (auto _ : state) {
        if (RunQuietly("design --json --frequency 3.6M --swing 2500 --power 1000") != 0)
            state.SkipWithError("varo-cli design failed");
    }
}
BENCHMARK(BM_CliDesignJson)->Unit(benchmark::kMillisecond);

void BM_CliDesignWithExports(benchmark::State& state) {
    const auto folder = std::filesystem::temp_directory_path() / "varo-cli-bench";
    std::filesystem::create_directories(folder);
    const std::string out = folder.string();
    for (auto _ : state) {
        if (RunQuietly("design --json --ltspice " + out + "/net.asc --quarn " + out + "/net.kvf") !=
            0)
            state.SkipWithError("varo-cli export failed");
    }
    std::filesystem::remove_all(folder);
}
BENCHMARK(BM_CliDesignWithExports)->Unit(benchmark::kMillisecond);

}  // namespace
