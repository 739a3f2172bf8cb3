#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <sstream>

#include "app/cli/arguments.h"
#include "app/cli/band_options.h"
#include "app/cli/cli_dialogs.h"
#include "app/cli/commands.h"
#include "app/cli/design_entries.h"
#include "app/cli/json_writer.h"
#include "model/band_plan.h"
#include "model/pictures/report_pages.h"

namespace varo::cli {

namespace {

constexpr double kPico = 1e-12;

OptionTable BandOptions() {
    OptionTable options{kDesignEntryOptions, {"--json", "--csv", "--help"}};
    options.valued.insert(kBandPlanOptions.begin(), kBandPlanOptions.end());
    options.valued.insert("--pdf");
    return options;
}

// ---- Output ---------------------------------------------------------------------------------

void WriteTuningJson(JsonWriter& json, const Tuning& tuning) {
    json.BeginObject().Number("frequency", tuning.frequency).Bool("solvable", tuning.solvable);
    if (tuning.solvable) {
        json.Number("C1", tuning.c1).Number("tune", tuning.tune).Number("Cload", tuning.load);
        if (tuning.c3) json.Number("C3", *tuning.c3);
    }
    json.EndObject();
}

void WriteHarmonicsJson(JsonWriter& json, const std::vector<HarmonicEstimate>& harmonics) {
    json.BeginArray("harmonics");
    for (const HarmonicEstimate& h : harmonics)
        json.BeginObject()
            .Integer("n", h.n)
            .Number("networkDb", h.networkDb)
            .Number("outputDbc", h.outputDbc)
            .Number("limitDbc", h.limitDbc)
            .Number("marginDb", h.marginDb)
            .EndObject();
    json.EndArray();
}

void WriteStringsJson(JsonWriter& json, std::string_view key,
                      const std::vector<std::string>& texts) {
    json.BeginArray(key);
    for (const std::string& text : texts)
        json.String({}, text);
    json.EndArray();
}

void WriteBandJson(JsonWriter& json, const BandResult& band) {
    json.BeginObject()
        .String("band", band.band.name)
        .Number("low", band.band.low)
        .Number("high", band.band.high)
        .Number("centre", band.centre)
        .Bool("feasible", band.feasible());
    // A band whose design failed has no Q, coils or edges: null and empty, the keys all there.
    const double unknown = std::numeric_limits<double>::quiet_NaN();
    json.Number("q", band.designed ? band.q : unknown)
        .Bool("qRaised", band.qRaised)
        .Number("L1", band.designed ? band.l1 : unknown)
        .Number("L2", band.designed ? band.l2 : unknown);
    json.BeginArray("edges");
    if (band.designed)
        for (const Tuning& edge : band.edges)
            WriteTuningJson(json, edge);
    json.EndArray();
    WriteStringsJson(json, "notes", band.notes);
    WriteStringsJson(json, "shortfalls", band.shortfalls);
    WriteHarmonicsJson(json, band.harmonics);
    if (band.stresses)
        json.BeginObject("stresses")
            .Number("c1PeakVolts", band.stresses->c1PeakVolts)
            .Number("loadPeakVolts", band.stresses->loadPeakVolts)
            .Number("l1Amperes", band.stresses->l1Amperes)
            .Number("l2Amperes", band.stresses->l2Amperes)
            .EndObject();
    json.Number("efficiencyPercent",
                band.efficiencyPercent.value_or(std::numeric_limits<double>::quiet_NaN()));
    json.EndObject();
}

std::string PlanJson(const BandPlan& plan, const std::vector<std::string>& messages) {
    JsonWriter json;
    json.BeginObject();
    WriteStringsJson(json, "messages", messages);
    WriteStringsJson(json, "notes", plan.notes);
    json.BeginArray("bands");
    for (const BandResult& band : plan.bands)
        WriteBandJson(json, band);
    json.EndArray().EndObject();
    return json.text() + "\n";
}

std::string PlanCsv(const BandPlan& plan) {
    std::string csv = "band,frequency,q,qRaised,L1,L2,C1,tune,Cload,C3,feasible\r\n";
    for (const BandResult& band : plan.bands) {
        for (const Tuning& edge : band.edges) {
            const bool known = band.designed && edge.solvable;
            const auto number = [&](double value) { return known ? JsonNumber(value) : ""; };
            csv += band.band.name + "," + JsonNumber(edge.frequency) + "," +
                   (band.designed ? JsonNumber(band.q) : "") + "," + (band.qRaised ? "yes" : "no") +
                   "," + number(band.l1) + "," + number(band.l2) + "," + number(edge.c1) + "," +
                   number(edge.tune) + "," + number(edge.load) + "," +
                   (known && edge.c3 ? JsonNumber(*edge.c3) : "") + "," +
                   (band.feasible() ? "yes" : "no") + "\r\n";
        }
    }
    return csv;
}

void WriteTuningText(std::ostream& out, const Tuning& tuning) {
    out << "  " << FixedText(tuning.frequency / 1e6, 4) << " MHz: ";
    if (!tuning.solvable) {
        out << "no match\n";
        return;
    }
    out << "C1 " << FixedText(tuning.c1 / kPico, 1) << " pF (tuning "
        << FixedText(tuning.tune / kPico, 1) << " pF), loading "
        << FixedText(tuning.load / kPico, 1) << " pF";
    if (tuning.c3) out << ", C3 " << FixedText(*tuning.c3 / kPico, 1) << " pF";
    out << "\n";
}

void WriteBandText(std::ostream& out, const BandResult& band) {
    out << band.band.name << " (" << FixedText(band.band.low / 1e6, 4) << " to "
        << FixedText(band.band.high / 1e6, 4)
        << " MHz): " << (band.feasible() ? "feasible" : "NOT feasible") << "\n";
    if (band.designed) {
        out << "  Q " << FixedText(band.q, 2) << ", L1 " << FixedText(band.l1 * 1e6, 3)
            << " uH, L2 " << FixedText(band.l2 * 1e6, 3) << " uH\n";
        for (const Tuning& edge : band.edges)
            WriteTuningText(out, edge);
        out << "  harmonics (dBc, margin to the limit):";
        for (const HarmonicEstimate& h : band.harmonics)
            out << " " << h.n << ": " << FixedText(h.outputDbc, 1) << " ("
                << FixedText(h.marginDb, 1) << ")";
        out << "\n";
    }
    if (band.stresses)
        out << "  C1 " << FixedText(band.stresses->c1PeakVolts, 0) << " Vpeak, loading "
            << FixedText(band.stresses->loadPeakVolts, 0) << " Vpeak, L1 "
            << FixedText(band.stresses->l1Amperes, 2) << " Arms, L2 "
            << FixedText(band.stresses->l2Amperes, 2) << " Arms\n";
    if (band.efficiencyPercent)
        out << "  efficiency " << FixedText(*band.efficiencyPercent, 1) << " %\n";
    for (const std::string& note : band.notes)
        out << "  " << note << "\n";
    for (const std::string& shortfall : band.shortfalls)
        out << "  short: " << shortfall << "\n";
}

}  // namespace

const char* const kBandsUsage =
    "usage: varo-cli bands --cout PF --stray PF --tune MIN:MAX --load-cap MIN:MAX\n"
    "                      [--bands 160,80,40,...] [--conduction DEG] [--limit fcc|itu|DB]\n"
    "                      [--coil-q Q] [--capacitor-q Q] [--json | --csv] [--pdf FILE]\n"
    "                      [the design options of varo-cli design: --frequency T ...]\n"
    "  Plans one tank for several bands: each band is designed at its geometric centre,\n"
    "  the working Q raised where the tube's output capacitance (--cout) and the strays\n"
    "  leave the tuning capacitor (--tune, pF) short at the band's top, and C1 and the\n"
    "  loading capacitance (--load-cap, pF) re-tuned at both edges with the coils fixed.\n"
    "  --conduction is the plate current's conduction angle (class A 360, AB 240, B 180,\n"
    "  C 150; default 180); --limit the harmonic limit: fcc -43 dBc (the default), itu\n"
    "  43 + 10 log10(P) dB below the carrier or 50 dB, whichever is less strict, or a\n"
    "  number of dB below the carrier. --pdf writes the design report with the plan as its\n"
    "  second page.\n";

int RunBands(const std::vector<std::string>& words, std::ostream& out, std::ostream& err) {
    const Arguments args = Arguments::Parse(words, BandOptions());
    if (args.Flag("--help")) {
        out << kBandsUsage;
        return 0;
    }
    Design design;
    DesignFields form;
    CliDialogs dialogs(err);
    DesignReporter reporter(dialogs, form);
    EnterDesign(design, form, dialogs, reporter, args);
    const BandPlanInputs inputs = ReadBandInputs(args, design.state());
    const std::vector<std::string> problems = BandPlanInputProblems(design.state(), inputs);
    if (!problems.empty()) {
        for (const std::string& problem : problems)
            err << "varo-cli: " << problem << "\n";
        return 2;
    }
    design.SetLossQ(inputs.q);
    design.SetBandPlanInputs(inputs);
    if (!design.results().bandPlan) {
        err << "varo-cli: no band plan could be made for this design\n";
        return 1;
    }
    const BandPlan& plan = *design.results().bandPlan;
    bool written = true;
    if (auto path = args.Value("--pdf")) {
        dialogs.AnswerNextSave(*path);
        written = PrintDesignReport(design.state(), design.results(), dialogs);
    }
    if (args.Flag("--json")) {
        out << PlanJson(plan, dialogs.messages());
    } else if (args.Flag("--csv")) {
        out << PlanCsv(plan);
    } else {
        for (const BandResult& band : plan.bands)
            WriteBandText(out, band);
        for (const std::string& note : plan.notes)
            out << note << "\n";
    }
    return written ? 0 : 1;
}

}  // namespace varo::cli
