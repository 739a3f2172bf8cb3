#include "app/cli/arguments.h"
#include "app/cli/cli_dialogs.h"
#include "app/cli/commands.h"
#include "app/cli/json_writer.h"
#include "app/cli/text_load_help_form.h"
#include "core/numtext.h"
#include "tools/loadhelp/plate_load.h"

namespace varo::cli {

namespace {

const OptionTable kPlateLoadOptions{{"--swing", "--power", "--class"}, {"--json", "--help"}};

ClassOption ClassOptionNamed(const std::optional<std::string>& name) {
    if (!name) return ClassOption::None;
    if (*name == "A") return ClassOption::ClassA;
    if (*name == "AB") return ClassOption::ClassAB;
    if (*name == "B") return ClassOption::ClassB;
    if (*name == "C") return ClassOption::ClassC;
    throw UsageError("unknown class '" + *name + "' (use A, AB, B or C)");
}

}  // namespace

const char* const kPlateLoadUsage =
    "usage: varo-cli plate-load --swing T --power T [--class A|AB|B|C] [--json]\n"
    "  The plate load for a peak plate swing (volts) and an RF power (watts) in a class of\n"
    "  operation (none given: K = 2).\n";

int RunPlateLoad(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    const Arguments args = Arguments::Parse(words, kPlateLoadOptions);
    if (args.Flag("--help")) {
        out << kPlateLoadUsage;
        return 0;
    }
    // One after the other, so that several mistakes are told in the options' order.
    const std::string swing = args.Required("--swing");
    const std::string power = args.Required("--power");
    const ClassOption chosen = ClassOptionNamed(args.Value("--class"));
    TextLoadHelpForm form(swing, power, chosen);
    DesignState state;
    InitialiseConstants(state);
    LoadHelpState help;
    CliDialogs dialogs(err);
    RecalculateLoad(state, help, form, dialogs);

    if (!args.Flag("--json")) {
        out << "Peak plate swing, volts: " << form.Text(LoadHelpField::Voltage) << "\n"
            << "RF power, RMS watts: " << form.Text(LoadHelpField::Power) << "\n"
            << "Class factor K: " << PlainText(help.classFactor) << "\n"
            << form.Text(LoadHelpField::NewLoad) << "\n";
        if (const std::string note = form.Text(LoadHelpField::LimitNote); !note.empty())
            out << note << "\n";
        return 0;
    }
    JsonWriter json;
    json.BeginObject()
        .Number("peakSwing", state.peakSwing)
        .Number("rfPower", state.rfPower)
        .Number("classFactor", help.classFactor)
        .Number("newPlateLoad", help.newPlateLoad)
        .BeginArray("messages");
    for (const auto& message : dialogs.messages())
        json.String({}, message);
    json.EndArray().EndObject();
    out << json.text();
    return 0;
}

}  // namespace varo::cli
