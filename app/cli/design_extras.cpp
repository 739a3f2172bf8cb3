#include "app/cli/design_extras.h"

#include "core/fault.h"
#include "core/numtext.h"
#include "export/spice_netlist.h"
#include "export/touchstone.h"
#include "model/design_inputs.h"

namespace varo::cli {

namespace {

// A Q as entry text ("300", "2k"), read like the program's entries.
double ReadQ(const Arguments& args, const std::string& option, double fallback) {
    auto text = args.Value(option);
    if (!text) return fallback;
    const float q = ParseEngNumber(*text);
    if (!(q > 0)) throw UsageError(option + " needs an unloaded Q above 0");
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

bool WriteDesignExtras(const DesignExtras& extras, DesignState& state, Dialogs& dialogs,
                       Reporter& reporter) {
    bool written = true;
    if (extras.spicePath) {
        RecomputeNetwork(state, reporter);
        written &= WriteSpiceNetlist(state, *extras.spicePath, dialogs);
    }
    if (extras.touchstonePath) {
        RecomputeNetwork(state, reporter);
        written &= WriteTouchstoneFile(state, *extras.touchstonePath, dialogs);
    }
    return written;
}

std::optional<TankLosses> ComputeDesignLosses(const DesignExtras& extras, const DesignState& state,
                                              Dialogs& dialogs) {
    if (!extras.lossQ) return std::nullopt;
    try {
        return AnalyzeTankLosses(state, *extras.lossQ);
    } catch (const ArithmeticFault& fault) {
        dialogs.ShowMessage(std::string("The tank losses could not be computed: ") + fault.what());
        return std::nullopt;
    }
}

}  // namespace varo::cli
