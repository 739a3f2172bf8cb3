#include <cmath>
#include <limits>
#include <ostream>

#include "app/cli/arguments.h"
#include "app/cli/band_options.h"
#include "app/cli/cli_dialogs.h"
#include "app/cli/commands.h"
#include "app/cli/design_entries.h"
#include "app/cli/json_writer.h"
#include "model/fixed_text.h"
#include "model/load_range.h"
#include "model/touchstone_load.h"
#include "platform/textfile.h"

namespace varo::cli {

namespace {

constexpr double kPico = 1e-12;

OptionTable LoadRangeOptions() {
    OptionTable options{kDesignEntryOptions, {"--json", "--csv", "--help"}};
    options.valued.insert(kBandPlanOptions.begin(), kBandPlanOptions.end());
    options.valued.insert({"--load-z", "--load-s1p", "--swr", "--phases"});
    return options;
}

// A measured load: each point re-tuned at its own frequency.
LoadRangeRequest MeasuredRequest(const std::string& path) {
    const OnePortLoad file = ReadOnePortTouchstone(path);
    LoadRangeRequest request;
    request.kind = LoadRangeRequest::Kind::Measured;
    for (const LoadPoint& point : file.points) {
        request.measuredLoads.push_back(point.z);
        request.measuredFrequencies.push_back(point.frequency);
    }
    return request;
}

// Throws FileError or LoadFileError for a measured load that cannot be read.
LoadRangeRequest ReadRequest(const Arguments& args) {
    LoadRangeRequest request;
    const auto z = args.Value("--load-z");
    const auto file = args.Value("--load-s1p");
    const bool circle = args.Value("--swr") || args.Value("--phases");
    if (int(bool(z)) + int(bool(file)) + int(circle) > 1)
        throw UsageError("--load-z, --load-s1p and --swr are different loads: give one");
    if (file) return MeasuredRequest(*file);
    if (z) {
        const auto impedance = ParseLoadImpedance(*z);
        if (!impedance)
            throw UsageError("--load-z needs R+jX in ohms with R above 0, such as 37-j22");
        request.kind = LoadRangeRequest::Kind::Impedance;
        request.impedance = *impedance;
        return request;
    }
    if (auto swr = args.Value("--swr")) {
        const auto value = PlainNumber(*swr);
        if (!value || !(*value >= 1)) throw UsageError("--swr needs a number of 1 or more");
        request.swr = *value;
    }
    if (auto phases = args.Value("--phases")) {
        const auto value = PlainNumber(*phases);
        if (!value || *value != std::floor(*value) || !(*value >= 1 && *value <= kMostPhases))
            throw UsageError("--phases needs a whole number from 1 to " +
                             std::to_string(kMostPhases));
        request.phases = static_cast<int>(*value);
    }
    return request;
}

bool OnCircle(const LoadRangeRequest& request) {
    return request.kind == LoadRangeRequest::Kind::SwrCircle;
}

// ---- JSON -------------------------------------------------------------------------------------

const char* const kStressKeys[kLoadStresses] = {"vC1", "vCload", "iL1", "iL2", "lossW"};

void WhereJson(JsonWriter& json, const LoadRange& range, int index, bool onCircle) {
    if (onCircle)
        json.Number("phase", range.loads[index].phaseDegrees);
    else
        json.Integer("index", index);
}

void WriteLoadJson(JsonWriter& json, const LoadRange& range, int index, bool onCircle) {
    const LoadCase& load = range.loads[index];
    const double unknown = std::numeric_limits<double>::quiet_NaN();
    const bool matched = load.tuning.solvable;
    json.BeginObject();
    WhereJson(json, range, index, onCircle);
    json.BeginArray("zLoad")
        .Number({}, load.zLoad.re)
        .Number({}, load.zLoad.im)
        .EndArray()
        .Number("frequency", load.frequency)
        .Bool("matched", matched)
        .Number("C1", matched ? load.tuning.c1 : unknown)
        .Number("Cload", matched ? load.tuning.load : unknown);
    if (load.tuning.c3) json.Number("C3", *load.tuning.c3);
    for (int s = 0; s < kLoadStresses; ++s) {
        const auto stress = static_cast<LoadStress>(s);
        const bool known =
            matched && range.withPower && (stress != LoadStress::LossWatts || load.lossWatts);
        json.Number(kStressKeys[s], known ? StressOf(load, stress) : unknown);
    }
    if (!matched) json.String("problem", load.tuning.problem);
    json.EndObject();
}

void WriteSpanJson(JsonWriter& json, std::string_view key,
                   const std::optional<CapacitanceSpan>& span) {
    json.BeginArray(key);
    if (span) json.Number({}, span->min).Number({}, span->max);
    json.EndArray();
}

void WriteRangeJson(JsonWriter& json, const LoadRange& range, bool onCircle) {
    json.BeginArray("loads");
    for (int k = 0; k < static_cast<int>(range.loads.size()); ++k)
        WriteLoadJson(json, range, k, onCircle);
    json.EndArray().BeginObject("worst");
    for (int s = 0; s < kLoadStresses; ++s) {
        const WorstCase& worst = range.worst[s];
        if (worst.index < 0) continue;
        json.BeginObject(kStressKeys[s]);
        WhereJson(json, range, worst.index, onCircle);
        json.Number("value", worst.value).EndObject();
    }
    json.EndObject().BeginObject("cover");
    WriteSpanJson(json, "C1", range.c1Cover);
    WriteSpanJson(json, "Cload", range.loadCover);
    json.EndObject().Integer("unmatched", range.unmatched);
}

std::string ResultJson(const LoadRangeResult& result, const std::vector<std::string>& messages) {
    JsonWriter json;
    json.BeginObject().BeginArray("messages");
    for (const std::string& message : messages)
        json.String({}, message);
    json.EndArray();
    const bool onCircle = OnCircle(result.request);
    if (onCircle) json.Number("swr", result.request.swr);
    WriteRangeJson(json, result.range, onCircle);
    if (!result.bands.empty()) {
        json.BeginArray("bands");
        for (const BandLoadRange& band : result.bands) {
            json.BeginObject().String("band", band.band).Number("centre", band.centre);
            WriteRangeJson(json, band.range, true);
            json.BeginArray("shortfalls");
            for (const std::string& shortfall : band.shortfalls)
                json.String({}, shortfall);
            json.EndArray().EndObject();
        }
        json.EndArray();
    }
    json.EndObject();
    return json.text() + "\n";
}

// ---- CSV and text -----------------------------------------------------------------------------

std::string ResultCsv(const LoadRangeResult& result) {
    std::string csv = "index,phase,frequency,R,X,matched,C1,Cload,C3,vC1,vCload,iL1,iL2,lossW\r\n";
    const LoadRange& range = result.range;
    for (int k = 0; k < static_cast<int>(range.loads.size()); ++k) {
        const LoadCase& load = range.loads[k];
        const bool matched = load.tuning.solvable;
        const auto known = [&](double value) { return matched ? JsonNumber(value) : ""; };
        csv += std::to_string(k) + "," +
               (OnCircle(result.request) ? JsonNumber(load.phaseDegrees) : "") + "," +
               JsonNumber(load.frequency) + "," + JsonNumber(load.zLoad.re) + "," +
               JsonNumber(load.zLoad.im) + "," + (matched ? "yes" : "no") + "," +
               known(load.tuning.c1) + "," + known(load.tuning.load) + "," +
               (load.tuning.c3 ? JsonNumber(*load.tuning.c3) : "");
        for (int s = 0; s < kLoadStresses; ++s) {
            const auto stress = static_cast<LoadStress>(s);
            const bool absent =
                !range.withPower || (stress == LoadStress::LossWatts && !load.lossWatts);
            csv += ',';
            if (!absent) csv += known(StressOf(load, stress));
        }
        csv += "\r\n";
    }
    return csv;
}

std::string ImpedanceText(Complex z) {
    return FixedText(z.re, 2) + (z.im < 0 ? "-j" : "+j") + FixedText(std::fabs(z.im), 2);
}

std::string Where(const LoadRange& range, int index, bool onCircle) {
    if (onCircle) return "at " + TrimmedText(range.loads[index].phaseDegrees, 1) + " deg";
    return "at point " + std::to_string(index + 1);
}

void WriteRangeText(std::ostream& out, const LoadRange& range, bool onCircle,
                    const std::string& indent) {
    for (int k = 0; k < static_cast<int>(range.loads.size()); ++k) {
        const LoadCase& load = range.loads[k];
        out << indent << Where(range, k, onCircle) << ", " << ImpedanceText(load.zLoad) << " ohms, "
            << FixedText(load.frequency / 1e6, 4) << " MHz: ";
        if (!load.tuning.solvable) {
            out << "no match: " << load.tuning.problem << "\n";
            continue;
        }
        out << "C1 " << FixedText(load.tuning.c1 / kPico, 1) << " pF, loading "
            << FixedText(load.tuning.load / kPico, 1) << " pF";
        if (!range.withPower) {
            out << "\n";
            continue;
        }
        out << "; C1 " << FixedText(load.c1PeakVolts, 0) << " Vpeak, loading "
            << FixedText(load.loadPeakVolts, 0) << " Vpeak, L1 " << FixedText(load.l1Amperes, 2)
            << " Arms, L2 " << FixedText(load.l2Amperes, 2) << " Arms";
        if (load.lossWatts) out << ", loss " << FixedText(*load.lossWatts, 1) << " W";
        out << "\n";
    }
    const char* const names[kLoadStresses] = {"C1 volts", "loading capacitor volts", "L1 current",
                                              "L2 current", "tank loss"};
    const char* const units[kLoadStresses] = {" Vpeak", " Vpeak", " Arms", " Arms", " W"};
    const int decimals[kLoadStresses] = {0, 0, 2, 2, 1};
    for (int s = 0; s < kLoadStresses; ++s)
        if (const WorstCase& worst = range.worst[s]; worst.index >= 0)
            out << indent << "worst " << names[s] << ": " << FixedText(worst.value, decimals[s])
                << units[s] << " " << Where(range, worst.index, onCircle) << "\n";
    if (range.c1Cover && range.loadCover)
        out << indent << "cover: C1 " << FixedText(range.c1Cover->min / kPico, 1) << " to "
            << FixedText(range.c1Cover->max / kPico, 1) << " pF, loading "
            << FixedText(range.loadCover->min / kPico, 1) << " to "
            << FixedText(range.loadCover->max / kPico, 1) << " pF\n";
    if (!range.withPower)
        out << indent << "no RF power: give --power for the stresses and losses\n";
    if (range.unmatched > 0)
        out << indent << range.unmatched << " of " << range.loads.size()
            << " loads cannot be matched with these coils\n";
}

void WriteResultText(std::ostream& out, const LoadRangeResult& result) {
    const bool onCircle = OnCircle(result.request);
    WriteRangeText(out, result.range, onCircle, "");
    for (const BandLoadRange& band : result.bands) {
        out << band.band << " (" << FixedText(band.centre / 1e6, 4) << " MHz):\n";
        WriteRangeText(out, band.range, true, "  ");
        for (const std::string& shortfall : band.shortfalls)
            out << "  short: " << shortfall << "\n";
    }
}

}  // namespace

const char* const kLoadRangeUsage =
    "usage: varo-cli load-range [--load-z R+jX | --load-s1p FILE | --swr S [--phases N]]\n"
    "                           [--coil-q Q] [--capacitor-q Q] [--json | --csv]\n"
    "                           [the band options of varo-cli bands: --cout PF ...]\n"
    "                           [the design options of varo-cli design: --frequency T ...]\n"
    "  Keeps the design's coils and re-tunes C1 and the loading capacitance for loads beyond\n"
    "  the design's resistance: one load R+jX ohms (--load-z 37-j22); an antenna measured\n"
    "  into a one-port Touchstone file (--load-s1p, each point at its own frequency); or the\n"
    "  SWR circle around the design's load resistance (--swr, default 2; --phases loads\n"
    "  evenly spaced in phase, default 36). For each load: the capacitances, the peak volts\n"
    "  across C1 and the loading capacitor, the rms amperes in the coils and the tank's loss\n"
    "  at the RF power; then the worst case of each and the capacitances that cover every\n"
    "  load. With the band options, the same circle for every band of the plan.\n";

int RunLoadRange(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    const Arguments args = Arguments::Parse(words, LoadRangeOptions());
    if (args.Flag("--help")) {
        out << kLoadRangeUsage;
        return 0;
    }
    LoadRangeRequest request;
    try {
        request = ReadRequest(args);
    } catch (const FileError& failure) {
        err << "varo-cli: " << failure.what() << "\n";
        return 1;
    } catch (const LoadFileError& failure) {
        err << "varo-cli: " << *args.Value("--load-s1p") << ": " << failure.what() << "\n";
        return 1;
    }
    Design design;
    design.SetLossQ(ReadTankQ(args));
    DesignFields form;
    CliDialogs dialogs(err);
    DesignReporter reporter(dialogs, form);
    EnterDesign(design, form, dialogs, reporter, args);
    if (args.Value("--cout")) design.SetBandPlanInputs(ReadBandInputs(args, design.state()));
    design.SetLoadRange(request);
    if (!design.results().loadRange) {
        for (const std::string& problem : LoadRangeProblems(design.state(), request))
            err << "varo-cli: " << problem << "\n";
        err << "varo-cli: no load range could be worked out for this design\n";
        return 1;
    }
    const LoadRangeResult& result = *design.results().loadRange;
    if (args.Flag("--json"))
        out << ResultJson(result, dialogs.messages());
    else if (args.Flag("--csv"))
        out << ResultCsv(result);
    else
        WriteResultText(out, result);
    return 0;
}

}  // namespace varo::cli
