#include "app/cli/commands.h"

#include "app/cli/arguments.h"
#include "app/cli/cli_dialogs.h"
#include "app/cli/design_entries.h"
#include "app/cli/design_extras.h"
#include "app/cli/design_files.h"
#include "app/cli/design_report.h"
#include "core/numtext.h"
#include "export/sweep_csv.h"
#include "model/design.h"
#include "model/design_reporter.h"
#include "model/pictures/report_pages.h"
#include "screens/design/design_actions.h"
#include "screens/plot/overlay_files.h"
#include "session/last_session.h"

namespace varo::cli {

namespace {

OptionTable DesignOptions() {
    OptionTable options{kDesignEntryOptions, {"--json", "--help"}};
    options.valued.insert({"--sweep-csv", "--ltspice", "--quarn", "--overlay-dir", "--save-session",
                           "--pdf", "--open", "--save"});
    return options;
}

// Options that stand for the design screen's entry fields.
const std::pair<const char*, DesignField> kFieldOptions[] = {
    {"--frequency", DesignField::Frequency},
    {"--plate", DesignField::Plate},
    {"--intermediate", DesignField::Intermediate},
    {"--load", DesignField::NominalLoad},
    {"--q", DesignField::Q},
};

// The plot screen's redraw after the design screen's "See large plot": what its exports read.
void OpenLargePlot(Design& design, Reporter& reporter) {
    design.RecomputeNetwork(reporter);
    design.SweepAsLaidOut(reporter);
}

// The file buttons, each after the recomputation its button runs. False if any file failed.
bool WriteRequestedFiles(Design& design, DesignFields& form, CliDialogs& dialogs,
                         Reporter& reporter, const Arguments& args) {
    bool written = true;
    if (auto path = args.Value("--sweep-csv")) {
        OpenLargePlot(design, reporter);
        written &= WriteSweepCsvFile(design.results().sweep, *path, dialogs);
    }
    DesignSession session;
    if (auto path = args.Value("--ltspice")) {
        dialogs.AnswerNextSave(*path);
        written &= ExportLTspice(design, dialogs, reporter, session) == FileOutcome::Written;
    }
    if (auto path = args.Value("--quarn")) {
        dialogs.AnswerNextSave(*path);
        if (ExportQuarn(design, form, dialogs, reporter, session) != FileOutcome::Written) {
            dialogs.ShowFailure("The Quarn file was not written.", dialogs.lastBeepDetail());
            written = false;
        }
    }
    if (auto folder = args.Value("--overlay-dir")) {
        OpenLargePlot(design, reporter);
        written &= WriteOverlayFiles(design.state(), *folder, dialogs);
    }
    if (auto path = args.Value("--save-session")) {
        session.sessionFilePath = *path;
        written &= SaveSessionOnExit(design, form, dialogs, reporter, session);
    }
    return written;
}

}  // namespace

const std::set<std::string> kDesignEntryOptions{"--frequency", "--plate",     "--intermediate",
                                                "--load",      "--q",         "--swing",
                                                "--power",     "--generator", "--session"};

bool EnterDesign(Design& design, DesignFields& form, CliDialogs& dialogs, DesignReporter& reporter,
                 const Arguments& args) {
    // With no file to read, the last-session reader leaves the start-up defaults; a design file
    // then gives its own inputs and settings, and the options change them as typed entries do.
    ReadLastSession(design.state(), args.Value("--session").value_or(""));
    if (auto path = args.Value("--open"); path && !OpenDesignFile(design, *path, dialogs))
        return false;
    TakeSwingAndPower(design.state(), args.Value("--swing"), args.Value("--power"), dialogs);
    design.Load(form, reporter);
    for (const auto& [option, field] : kFieldOptions)
        if (auto text = args.Value(option)) form.SetText(field, *text);
    design.Accept(form, dialogs, reporter);
    if (auto text = args.Value("--generator")) {
        form.SetText(DesignField::GeneratorOhms, *text);
        design.GeneratorResistanceEntered(form, dialogs, reporter);
    }
    return true;
}

const char* const kDesignUsage =
    "usage: varo-cli design [--frequency T] [--plate T] [--intermediate T] [--load T] [--q T]\n"
    "                       [--swing T] [--power T] [--generator T] [--session FILE] [--json]\n"
    "                       [--sweep-csv FILE] [--ltspice FILE] [--quarn FILE]\n"
    "                       [--overlay-dir DIR] [--save-session FILE] [--pdf FILE]\n"
    "                       [--spice FILE] [--touchstone FILE] [--losses]\n"
    "                       [--coil-q Q] [--capacitor-q Q] [--l1-winding D,L,G]\n"
    "                       [--l2-winding D,L,G] [--open FILE.varo] [--save FILE.varo]\n"
    "  Each T is entry text as typed into the program's field (\"3.6M\", \"2,5k\");\n"
    "  --generator is the generator resistance in ohms. Starting values are the defaults,\n"
    "  or those of the last-session file given with --session, then those of the design\n"
    "  file given with --open; --save keeps the design as it ends in a design file.\n"
    "  --pdf writes the printed design report as a one-page PDF (A4, or Letter where the\n"
    "  locale measures in inches), without a screen.\n"
    "  --spice writes a SPICE netlist (.cir) that ngspice and LTspice run as it stands;\n"
    "  --touchstone writes the network's S-parameters, FILE.s2p (two-port, 50 ohms) or\n"
    "  FILE.s1p (input reflection referred to the plate load).\n"
    "  --losses reports the tank's efficiency and each part's dissipation at the RF power,\n"
    "  with coils of unloaded Q 300 and capacitors of Q 2000 unless --coil-q or\n"
    "  --capacitor-q (which imply --losses) say otherwise. --l1-winding and --l2-winding\n"
    "  (which imply --losses too) wind that coil from its diameter, length and wire gauge\n"
    "  in inches, as the inductor screen does, and take its own Q at the frequency.\n";

int RunDesign(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    const Arguments args = Arguments::Parse(words, WithDesignExtras(DesignOptions()));
    if (args.Flag("--help")) {
        out << kDesignUsage;
        return 0;
    }
    const DesignExtras extras = ReadDesignExtras(args);
    Design design;
    DesignFields form;
    CliDialogs dialogs(err);
    DesignReporter reporter(dialogs, form);
    if (!EnterDesign(design, form, dialogs, reporter, args)) return 1;
    // The losses asked for here stand; without a design file none are asked otherwise.
    if (extras.lossQ || !args.Value("--open")) design.SetLossQ(extras.lossQ);
    WindRequestedCoils(extras, design, dialogs);

    // The file actions may validate and recompute, as their buttons do; the report describes
    // the results they leave, as the design screen shows them after the same presses.
    bool written = WriteRequestedFiles(design, form, dialogs, reporter, args);
    written &= WriteDesignExtras(extras, design, dialogs, reporter);
    if (extras.lossQ && !design.results().losses)
        dialogs.ShowMessage("The tank losses could not be computed for this design.");
    if (auto path = args.Value("--pdf")) {
        dialogs.AnswerNextSave(*path);
        written &= PrintDesignReport(design.state(), design.results(), dialogs);
    }
    if (auto path = args.Value("--save")) written &= SaveDesignFileAs(design, *path, dialogs);
    const DesignOutcome outcome{&design.state(), design.results(), dialogs.messages()};
    out << (args.Flag("--json") ? DesignJson(outcome) : DesignReportText(outcome));
    return written ? 0 : 1;
}

}  // namespace varo::cli
