#include <cmath>
#include <limits>

#include "app/cli/arguments.h"
#include "app/cli/cli_dialogs.h"
#include "app/cli/commands.h"
#include "app/cli/json_writer.h"
#include "core/numtext.h"
#include "tools/inductor/coil.h"
#include "tools/inductor/coil_as_built.h"

namespace varo::cli {

namespace {

const OptionTable kCoilOptions{
    {"--inductance", "--diameter", "--length", "--turns", "--gauge", "--frequency"},
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

void WriteAsBuilt(const CoilState& coil, double frequency, std::ostream& out) {
    const AsBuiltTexts texts = AsBuiltTextsOf(coil, frequency);
    if (texts.heading.empty()) return;
    out << texts.heading << "\n";
    for (const AsBuiltRow& row : kAsBuiltRows) {
        if (const std::string& value = texts.*row.text; !value.empty())
            out << "  " << row.caption << " " << value << "\n";
    }
    if (!texts.note.empty()) out << "  " << texts.note << "\n";
}

void WriteReadable(const CoilState& coil, const TextCoilForm& form, bool stopped, double frequency,
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
    if (coil.actualGauge != kNoGauge) {
        out << "Actual gauge: " << form.Text(CoilField::Gauge) << "\n"
            << "Wire diameter (" << unit
            << "):" << Shown(static_cast<float>(coil.wireDiameter * toUnit)) << "\n"
            << "Percent fill:" << Shown(coil.percentFill)
            << (coil.fillMarkedRed ? "  (the wire does not fit the pitch)" : "") << "\n";
    }
    WriteAsBuilt(coil, frequency, out);
}

// An absent figure is null.
double OrNull(const std::optional<double>& value) {
    return value.value_or(std::numeric_limits<double>::quiet_NaN());
}

void AddAsBuilt(JsonWriter& json, const std::optional<CoilAsBuilt>& built) {
    const CoilAsBuilt none{};
    const CoilAsBuilt& coil = built ? *built : none;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    json.Number("inductanceSheet", built ? coil.inductanceSheet : nan)
        .Number("inductanceWound", OrNull(coil.inductanceWound))
        .Number("nagaoka", built ? coil.nagaoka : nan)
        .Number("acResistance", OrNull(coil.acResistance))
        .Number("q", OrNull(coil.q))
        .Number("selfCapacitance", built ? coil.selfCapacitance : nan)
        .Number("selfResonance", built ? coil.selfResonance : nan)
        .BeginArray("harmonicsNearSelfResonance");
    for (int n = 1; n <= kHighestHarmonicChecked; ++n)
        if (coil.nearResonance[n]) json.Integer({}, n);
    json.EndArray();
}

void WriteJson(const CoilState& coil, bool stopped, double frequency, const CliDialogs& dialogs,
               std::ostream& out) {
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
        .Number("percentFill", coil.percentFill);
    AddAsBuilt(json, stopped ? std::nullopt : CoilAsBuiltOf(coil, frequency));
    json.Bool("stopped", stopped).BeginArray("messages");
    for (const auto& message : dialogs.messages())
        json.String({}, message);
    json.EndArray().EndObject();
    out << json.text();
}

// The frequency the AC figures are worked out at; 0 when none is given.
double OperatingFrequency(const Arguments& args) {
    std::string text = args.Value("--frequency").value_or("0");
    const bool given = text != "0";
    const double frequency = ParseEngNumber(text);
    if (given && !(frequency > 0 && std::isfinite(frequency)))
        throw UsageError("--frequency needs a frequency above 0, such as 7.15M");
    return frequency;
}

}  // namespace

const char* const kCoilUsage =
    "usage: varo-cli coil --inductance T [--diameter T] [--length T] [--turns T] [--gauge T]\n"
    "                     [--frequency F] [--cm] [--json]\n"
    "  A single-layer winding from two of diameter, length and turns; with --cm the diameter\n"
    "  and length are in centimetres. JSON values are in inches whatever the unit.\n"
    "  Beside the formula's figures, the coil as built: the exact current-sheet inductance, the\n"
    "  inductance as wound with round wire (with --gauge) and, at the operating frequency\n"
    "  --frequency, its AC resistance and unloaded Q; its self-capacitance and self-resonance.\n"
    "  JSON: inductanceSheet, inductanceWound (H), nagaoka, acResistance (ohms), q,\n"
    "  selfCapacitance (F), selfResonance (Hz); null where not known.\n";

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
    const double frequency = OperatingFrequency(args);
    CliDialogs dialogs(err);
    const bool stopped = !ComputeCoil(coil, form, dialogs);
    if (args.Flag("--json"))
        WriteJson(coil, stopped, frequency, dialogs, out);
    else
        WriteReadable(coil, form, stopped, frequency, out);
    return 0;
}

}  // namespace varo::cli
