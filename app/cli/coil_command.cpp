#include "app/cli/arguments.h"
#include "app/cli/cli_dialogs.h"
#include "app/cli/commands.h"
#include "app/cli/json_writer.h"
#include "core/numtext.h"
#include "tools/inductor/coil.h"

namespace varo::cli {

namespace {

const OptionSpec kCoilOptions{{"--inductance", "--diameter", "--length", "--turns", "--gauge"},
                              {"--cm", "--json", "--help"}};

const std::pair<const char*, CoilField> kEntryOptions[] = {{"--diameter", CoilField::Diameter},
                                                           {"--length", CoilField::Length},
                                                           {"--turns", CoilField::Turns},
                                                           {"--gauge", CoilField::Gauge}};

// The inductor screen's entries, held as texts.
using TextCoilForm = TextFields<CoilForm>;

// A result as the inductor screen shows it: two blanks, then the formatter text.
std::string Shown(float value) {
    return "  " + FormatNumber(value);
}

void WriteReadable(const CoilState& coil, const TextCoilForm& form, bool stopped,
                   std::ostream& out) {
    const bool cm = IsCentimetreMode(coil);
    const double toUnit = cm ? 2.54 : 1.0;
    const char* unit = cm ? "cm" : "in";
    out << "Inductance: " << FormatHenry(coil.targetInductance) << "\n"
        << "Median diameter (" << unit << "): " << form.Text(CoilField::Diameter) << "\n"
        << "Length (" << unit << "): " << form.Text(CoilField::Length) << "\n";
    if (stopped) return;
    out << "Turns:" << Shown(coil.coilTurns) << "\n"
        << "Turns per " << unit << ":" << Shown(static_cast<float>(coil.turnsPerInch / toUnit))
        << "\n"
        << "Wire length (" << unit
        << "):" << Shown(static_cast<float>(coil.wireLengthInches * toUnit)) << "\n"
        << "Critical gauge:  " << PlainText(coil.criticalGauge) << "\n";
    if (coil.actualGauge == kNoGauge) return;
    out << "Actual gauge: " << form.Text(CoilField::Gauge) << "\n"
        << "Wire diameter (" << unit
        << "):" << Shown(static_cast<float>(coil.wireDiameter * toUnit)) << "\n"
        << "Percent fill:" << Shown(coil.percentFill)
        << (coil.fillMarkedRed ? "  (the wire does not fit the pitch)" : "") << "\n";
}

void WriteJson(const CoilState& coil, bool stopped, const CliDialogs& dialogs, std::ostream& out) {
    JsonWriter json;
    json.BeginObject()
        .Number("targetInductance", coil.targetInductance)
        .Number("coilDiameter", coil.coilDiameter)
        .Number("coilLength", coil.coilLength)
        .Number("coilTurns", coil.coilTurns)
        .Number("turnsPerInch", coil.turnsPerInch)
        .Number("wireLengthInches", coil.wireLengthInches)
        .Number("wireLengthFeet", coil.wireLengthFeet)
        .Number("quarterWaveKHz", coil.quarterWaveKHz)
        .Number("criticalGauge", coil.criticalGauge)
        .Number("actualGauge", coil.actualGauge)
        .Number("wireDiameter", coil.wireDiameter)
        .Number("wireArea", coil.wireArea)
        .Number("wireResistance", coil.wireResistance)
        .Number("percentFill", coil.percentFill)
        .Bool("stopped", stopped)
        .BeginArray("messages");
    for (const auto& message : dialogs.messages())
        json.String({}, message);
    json.EndArray().EndObject();
    out << json.text();
}

}  // namespace

const char* const kCoilUsage =
    "usage: varo-cli coil --inductance T [--diameter T] [--length T] [--turns T] [--gauge T]\n"
    "                     [--cm] [--json]\n"
    "  A single-layer winding from two of diameter, length and turns; with --cm the diameter\n"
    "  and length are in centimetres. JSON values are in inches whatever the unit.\n";

int RunCoil(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    const Arguments args = Arguments::Parse(words, kCoilOptions);
    if (args.Flag("--help")) {
        out << kCoilUsage;
        return 0;
    }
    std::string inductance = args.Required("--inductance");
    CoilState coil;
    coil.unitSystem = args.Flag("--cm") ? kCentimetres : kInches;
    coil.targetInductance = ParseEngNumber(inductance);
    TextCoilForm form;
    for (const auto& [option, entry] : kEntryOptions) {
        if (auto text = args.Value(option)) {
            form.SetText(entry, *text);
            OnWindingEntryChanged(coil, entry, *text);
        }
    }
    CliDialogs dialogs(err);
    const bool stopped = !ComputeCoil(coil, form, dialogs);
    if (args.Flag("--json"))
        WriteJson(coil, stopped, dialogs, out);
    else
        WriteReadable(coil, form, stopped, out);
    return 0;
}

}  // namespace varo::cli
