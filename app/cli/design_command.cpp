#include "app/cli/commands.h"

#include <fstream>

#include "app/cli/arguments.h"
#include "app/cli/cli_dialogs.h"
#include "app/cli/design_report.h"
#include "core/numtext.h"
#include "screens/design/design_actions.h"
#include "screens/design/design_inputs.h"
#include "screens/design/design_reporter.h"
#include "screens/plot/overlay_files.h"
#include "session/last_session.h"

namespace varo::cli {

namespace {

const OptionSpec kDesignOptions{{"--frequency", "--plate", "--intermediate", "--load", "--q",
                                 "--swing", "--power", "--generator", "--session", "--sweep-csv",
                                 "--ltspice", "--quarn", "--overlay-dir", "--save-session"},
                                {"--json", "--help"}};

// Options that stand for the design screen's entry fields.
const std::pair<const char*, DesignField> kFieldOptions[] = {
    {"--frequency", DesignField::Frequency},
    {"--plate", DesignField::Plate},
    {"--intermediate", DesignField::Intermediate},
    {"--load", DesignField::NominalLoad},
    {"--q", DesignField::Q},
};

// The design screen's entries, held as texts.
using DesignFields = TextFields<DesignForm>;

// Where the screen would draw, the command line keeps what was last shown.
class KeptResults : public DesignView {
  public:
    void ShowResults(const DesignResults& results) override { last = results; }
    DesignResults last;
};

bool WriteTextFile(const std::string& path, const std::string& text, CliDialogs& dialogs) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (file) return true;
    dialogs.ShowMessage("The sweep file " + path + " could not be written.");
    return false;
}

// The plate-load helper is where swing and power are entered; they are read the same way.
void TakeSwingAndPower(DesignState& state, const Arguments& args) {
    if (auto text = args.Value("--swing")) state.peakSwing = ParseEngNumber(*text);
    if (auto text = args.Value("--power")) state.rfPower = ParseEngNumber(*text);
}

// The file buttons, each after the recomputation its button runs. False if any file failed.
bool WriteRequestedFiles(DesignState& state, DesignFields& form, CliDialogs& dialogs,
                         Reporter& reporter, const Arguments& args) {
    bool written = true;
    if (auto path = args.Value("--sweep-csv"))
        written &= WriteTextFile(*path, SweepCsv(state), dialogs);
    DesignSession session;
    if (auto path = args.Value("--ltspice")) {
        dialogs.AnswerNextSave(*path);
        written &= ExportLTspice(state, dialogs, reporter, session);
    }
    if (auto path = args.Value("--quarn")) {
        dialogs.AnswerNextSave(*path);
        if (!ExportQuarn(state, form, dialogs, reporter, session)) {
            dialogs.ShowMessage("The Quarn file " + *path + " was not written.");
            written = false;
        }
    }
    if (auto folder = args.Value("--overlay-dir")) {
        RecomputeNetwork(state, reporter);
        SweepRoutine(state, reporter);
        written &= WriteOverlayFiles(state, *folder, dialogs);
    }
    if (auto path = args.Value("--save-session")) {
        session.sessionFilePath = *path;
        written &= SaveSessionOnExit(state, form, dialogs, reporter, session);
    }
    return written;
}

}  // namespace

const char* const kDesignUsage =
    "usage: varo-cli design [--frequency T] [--plate T] [--intermediate T] [--load T] [--q T]\n"
    "                       [--swing T] [--power T] [--generator T] [--session FILE] [--json]\n"
    "                       [--sweep-csv FILE] [--ltspice FILE] [--quarn FILE]\n"
    "                       [--overlay-dir DIR] [--save-session FILE]\n"
    "  Each T is entry text as typed into the program's field (\"3.6M\", \"2,5k\");\n"
    "  --generator is the generator resistance in ohms. Starting values are the defaults,\n"
    "  or those of the last-session file given with --session.\n";

int RunDesign(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    const Arguments args = Arguments::Parse(words, kDesignOptions);
    if (args.Flag("--help")) {
        out << kDesignUsage;
        return 0;
    }
    DesignState state;
    InitialiseConstants(state);
    // With no file to read, the last-session reader leaves the start-up defaults.
    ReadLastSession(state, args.Value("--session").value_or(""));
    TakeSwingAndPower(state, args);

    DesignFields form;
    CliDialogs dialogs(err);
    DesignReporter reporter(dialogs, form);
    KeptResults screen;
    // What the design screen runs when it opens, then the user's entries and Accept.
    LoadDesignScreen(state, form, reporter, screen);
    for (const auto& [option, field] : kFieldOptions)
        if (auto text = args.Value(option)) form.SetText(field, *text);
    AcceptDesign(state, form, dialogs, reporter, screen);
    if (auto text = args.Value("--generator")) {
        form.SetText(DesignField::GeneratorOhms, *text);
        OnGeneratorResistanceChanged(state, form, dialogs, reporter, screen);
    }

    DesignOutcome outcome;
    outcome.state = &state;
    outcome.results = screen.last;
    const bool written = WriteRequestedFiles(state, form, dialogs, reporter, args);
    outcome.messages = dialogs.messages();
    out << (args.Flag("--json") ? DesignJson(outcome) : DesignReportText(outcome));
    return written ? 0 : 1;
}

}  // namespace varo::cli
