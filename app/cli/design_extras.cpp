#include "app/cli/design_extras.h"

#include "core/fault.h"
#include "core/numtext.h"
#include "export/touchstone.h"
#include "screens/design/design_actions.h"

namespace varo::cli {

namespace {

// A Q as entry text ("300", "2k"), read like the program's entries.
double ReadQ(const Arguments& args, const std::string& option, double fallback) {
    auto text = args.Value(option);
    if (!text) return fallback;
    const float q = ParseEngNumber(*text);
    if (!IsUsableQ(q)) throw UsageError(option + " needs an unloaded Q above 0");
    return q;
}

}  // namespace

OptionSpec WithDesignExtras(OptionSpec options) {
    options.valued.insert({"--spice", "--touchstone", "--coil-q", "--capacitor-q"});
    options.flags.insert("--losses");
    return options;
}

DesignExtras ReadDesignExtras(const Arguments& args) {
    DesignExtras extras;
    extras.spicePath = args.Value("--spice");
    extras.touchstonePath = args.Value("--touchstone");
    if (extras.touchstonePath && !TouchstoneKindOf(*extras.touchstonePath))
        throw UsageError("--touchstone needs a file name ending in .s2p or .s1p");
    if (args.Flag("--losses") || args.Value("--coil-q") || args.Value("--capacitor-q")) {
        const TankQ defaults;
        extras.lossQ = TankQ{ReadQ(args, "--coil-q", defaults.coil),
                             ReadQ(args, "--capacitor-q", defaults.capacitor)};
    }
    return extras;
}

bool WriteDesignExtras(const DesignExtras& extras, Design& design, CliDialogs& dialogs,
                       Reporter& reporter) {
    bool written = true;
    if (extras.spicePath) {
        dialogs.AnswerNextSave(*extras.spicePath);
        DesignSession session;
        written &= ExportSpiceNetlist(design, dialogs, reporter, session) == FileOutcome::Written;
    }
    if (extras.touchstonePath) {
        // As the large plot's export: at the frequencies of its sweep.
        design.RecomputeNetwork(reporter);
        design.SweepAsLaidOut(reporter);
        written &= WriteTouchstoneFile(design.state(), *extras.touchstonePath, dialogs);
    }
    return written;
}

}  // namespace varo::cli
