#include "app/cli/design_extras.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "core/fault.h"
#include "core/numtext.h"
#include "export/touchstone.h"
#include "screens/design/design_actions.h"
#include "tools/inductor/coil_as_built.h"

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

constexpr const char* kWindingOptions[2] = {"--l1-winding", "--l2-winding"};

// "2,4,14": three numbers above 0, kept as entry texts.
std::optional<std::array<std::string, 3>> ReadWinding(const Arguments& args, int coil) {
    const std::string option = kWindingOptions[coil];
    const auto text = args.Value(option);
    if (!text) return std::nullopt;
    std::vector<std::string> parts{""};
    for (char c : *text) {
        if (c == ',')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    const auto positive = [](std::string part) {
        const float value = ParseEngNumber(part);
        return value > 0 && std::isfinite(value);
    };
    if (parts.size() != 3 || !std::all_of(parts.begin(), parts.end(), positive))
        throw UsageError(option + " needs DIAMETER,LENGTH,GAUGE in inches, such as 2,4,14");
    return std::array<std::string, 3>{parts[0], parts[1], parts[2]};
}

}  // namespace

OptionTable WithDesignExtras(OptionTable options) {
    options.valued.insert(
        {"--spice", "--touchstone", "--coil-q", "--capacitor-q", "--l1-winding", "--l2-winding"});
    options.flags.insert("--losses");
    return options;
}

DesignExtras ReadDesignExtras(const Arguments& args) {
    DesignExtras extras;
    extras.spicePath = args.Value("--spice");
    extras.touchstonePath = args.Value("--touchstone");
    if (extras.touchstonePath && !TouchstoneKindOf(*extras.touchstonePath))
        throw UsageError("--touchstone needs a file name ending in .s2p or .s1p");
    for (int coil = 0; coil < 2; ++coil)
        extras.windings[coil] = ReadWinding(args, coil);
    if (args.Flag("--losses") || args.Value("--coil-q") || args.Value("--capacitor-q") ||
        extras.windings[0] || extras.windings[1]) {
        const TankQ defaults;
        extras.lossQ = TankQ{ReadQ(args, "--coil-q", defaults.coil),
                             ReadQ(args, "--capacitor-q", defaults.capacitor)};
    }
    return extras;
}

void WindRequestedCoils(const DesignExtras& extras, Design& design, CliDialogs& dialogs) {
    const TankPart parts[2] = {TankPart::L1, TankPart::L2};
    for (int i = 0; i < 2; ++i) {
        if (!extras.windings[i]) continue;
        const float needed = i == 0 ? design.state().L1 : design.state().L2;
        if (!(needed > 0)) {
            dialogs.ShowMessage("The design has no L section: the L2 winding is not used.");
            continue;
        }
        CoilState coil;
        coil.unitSystem = kInches;
        coil.targetInductance = needed;
        TextFields<CoilForm> form;
        const CoilField fields[3] = {CoilField::Diameter, CoilField::Length, CoilField::Gauge};
        for (int f = 0; f < 3; ++f) {
            form.SetText(fields[f], (*extras.windings[i])[f]);
            OnWindingEntryChanged(coil, fields[f], (*extras.windings[i])[f]);
        }
        if (ComputeCoil(coil, form, dialogs))
            design.SetWoundCoil(parts[i], WoundCoil{WindingOf(coil), needed});
    }
    design.UseWoundCoilQ(true);
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
