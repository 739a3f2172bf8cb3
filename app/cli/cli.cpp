#include "app/cli/cli.h"

#include <cerrno>
#include <cstring>

#include "app/cli/arguments.h"
#include "app/cli/commands.h"

namespace varo::cli {

namespace {

const char* const kOverview =
    "usage: varo-cli <command> [options]\n"
    "commands:\n"
    "  design       design a pi-L network and analyse it (varo-cli design --help)\n"
    "  plate-load   plate load from peak swing, power and class\n"
    "  coil         single-layer coil winding for an inductance\n"
    "  bands        one tank for several bands, checked against the capacitors and the\n"
    "               harmonic limit (varo-cli bands --help)\n"
    "  load-range   the network re-tuned for loads beyond a resistance: one impedance or an\n"
    "               SWR circle, the worst stresses and the capacitances that cover them\n"
    "               (varo-cli load-range --help)\n";

struct Command {
    const char* name;
    const char* usage;
    int (*run)(const std::vector<std::string>&, std::ostream&, std::ostream&);
};

const Command kCommands[] = {{"design", kDesignUsage, RunDesign},
                             {"plate-load", kPlateLoadUsage, RunPlateLoad},
                             {"coil", kCoilUsage, RunCoil},
                             {"bands", kBandsUsage, RunBands},
                             {"load-range", kLoadRangeUsage, RunLoadRange}};

int UsageMistake(const std::string& reason, const char* usage, std::ostream& err) {
    err << "varo-cli: " << reason << "\n" << usage;
    return 2;
}

// A report that cannot be written (standard output on a full disk) is a failure, not a success
// with nothing to show.
bool Delivered(std::ostream& out, std::ostream& err) {
    errno = 0;
    out.flush();
    if (out) return true;
    const int error = errno;
    err << "varo-cli: could not write to standard output";
    if (error != 0) err << ": " << std::strerror(error);
    err << "\n";
    return false;
}

int RunCommand(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    if (words.empty()) return UsageMistake("no command given", kOverview, err);
    if (words[0] == "--help" || words[0] == "-h") {
        out << kOverview;
        return 0;
    }
    for (const auto& command : kCommands) {
        if (words[0] != command.name) continue;
        try {
            return command.run({words.begin() + 1, words.end()}, out, err);
        } catch (const UsageError& mistake) {
            return UsageMistake(mistake.what(), command.usage, err);
        }
    }
    return UsageMistake("unknown command '" + words[0] + "'", kOverview, err);
}

}  // namespace

int Run(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    const int status = RunCommand(words, out, err);
    return Delivered(out, err) ? status : 1;
}

}  // namespace varo::cli
