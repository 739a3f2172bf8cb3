#include "model/design_file.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <nlohmann/json.hpp>

#include "platform/save_file.h"
#include "platform/textfile.h"

namespace varo {

namespace {

using Json = nlohmann::ordered_json;

// ---- Writing ----------------------------------------------------------------------------------

// A single-precision value as its shortest decimal ("0.1", not 0.10000000149011612); read back
// and rounded to single precision it is the same value.
double Shortest(float value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return std::strtod(std::string(text.data(), end).c_str(), nullptr);
}

// The inputs the last-session file keeps, each named once: its key, its place in the file record
// and in the design, and whether the design screen wants it above 0.
struct InputField {
    const char* key;
    float SessionInputs::*file;
    float DesignState::*state;
    bool positive;
};
constexpr InputField kInputFields[] = {
    {"frequency", &SessionInputs::frequency, &DesignState::frequency, true},
    {"plateR", &SessionInputs::plateR, &DesignState::plateR, true},
    {"intermediateR", &SessionInputs::intermediateR, &DesignState::intermediateR, true},
    {"loadR", &SessionInputs::loadR, &DesignState::loadR, true},
    {"piQ", &SessionInputs::piQ, &DesignState::piQ, true},
    {"peakSwing", &SessionInputs::peakSwing, &DesignState::peakSwing, false},
    {"spare", &SessionInputs::spare, &DesignState::spare, false},
    {"rfPower", &SessionInputs::rfPower, &DesignState::rfPower, false},
    {"genMultiplier", &SessionInputs::genMultiplier, &DesignState::genMultiplier, true},
};

Json InputsJson(const SessionInputs& in) {
    Json inputs = Json::object();
    for (const InputField& field : kInputFields)
        inputs[field.key] = Shortest(in.*field.file);
    return inputs;
}

Json WoundCoilJson(const std::optional<WoundCoil>& coil) {
    if (!coil) return nullptr;
    const Winding& w = coil->winding;
    return Json{{"diameter", w.diameter},
                {"length", w.length},
                {"turns", w.turns},
                {"wireDiameter", w.wireDiameter},
                {"woundFor", Shortest(coil->woundFor)}};
}

Json BandPlanJson(const std::optional<BandPlanInputs>& plan) {
    if (!plan) return nullptr;
    Json bands = Json::array();
    for (const Band& band : plan->bands)
        bands.push_back({{"name", band.name},
                         {"low", band.low},
                         {"high", band.high},
                         {"tunePadder", band.tunePadder},
                         {"loadPadder", band.loadPadder}});
    return Json{{"tubeCapacitance", plan->tubeCapacitance},
                {"strayCapacitance", plan->strayCapacitance},
                {"tune", {{"min", plan->tune.min}, {"max", plan->tune.max}}},
                {"load", {{"min", plan->load.min}, {"max", plan->load.max}}},
                {"bands", bands},
                {"conductionDegrees", plan->conductionDegrees},
                {"limitDbc", plan->limitDbc}};
}

constexpr std::array<std::pair<LoadRangeRequest::Kind, const char*>, 3> kLoadKinds{
    {{LoadRangeRequest::Kind::SwrCircle, "swrCircle"},
     {LoadRangeRequest::Kind::Impedance, "impedance"},
     {LoadRangeRequest::Kind::Measured, "measured"}}};

Json LoadRangeJson(const std::optional<LoadRangeRequest>& request) {
    if (!request) return nullptr;
    Json measured = Json::array();
    for (std::size_t i = 0; i < request->measuredLoads.size(); ++i)
        measured.push_back({request->measuredFrequencies[i], request->measuredLoads[i].re,
                            request->measuredLoads[i].im});
    const char* kind = "swrCircle";
    for (const auto& [value, name] : kLoadKinds)
        if (value == request->kind) kind = name;
    return Json{{"kind", kind},
                {"swr", request->swr},
                {"phases", request->phases},
                {"impedance", {request->impedance.re, request->impedance.im}},
                {"measured", measured}};
}

// ---- Reading ----------------------------------------------------------------------------------

[[noreturn]] void Damaged(const std::string& where, const std::string& what) {
    throw DesignFileError("The design file is damaged: \"" + where + "\" " + what + ".");
}

const Json& Member(const Json& object, const std::string& where, const char* key) {
    if (!object.is_object()) Damaged(where, "is not an object");
    const auto found = object.find(key);
    if (found == object.end()) Damaged(where.empty() ? key : where + "." + key, "is missing");
    return *found;
}

double Number(const Json& value, const std::string& where) {
    if (!value.is_number()) Damaged(where, "is not a number");
    const double number = value.get<double>();
    if (!std::isfinite(number)) Damaged(where, "is not a finite number");
    return number;
}

double NumberAt(const Json& object, const std::string& where, const char* key) {
    return Number(Member(object, where, key), where + "." + key);
}

// A design input: a single-precision number, above 0 where the design screen wants it so.
float InputAt(const Json& object, const char* key, bool positive) {
    const double value = NumberAt(object, "inputs", key);
    if (std::abs(value) > std::numeric_limits<float>::max())
        Damaged(std::string("inputs.") + key, "is out of range");
    if (positive ? !(value > 0) : value < 0)
        Damaged(std::string("inputs.") + key, positive ? "must be above 0" : "must not be below 0");
    return static_cast<float>(value);
}

SessionInputs ReadInputs(const Json& in) {
    SessionInputs inputs;
    for (const InputField& field : kInputFields)
        inputs.*field.file = InputAt(in, field.key, field.positive);
    return inputs;
}

std::optional<TankQ> ReadLossQ(const Json& losses) {
    if (losses.is_null()) return std::nullopt;
    TankQ q;
    q.coil = NumberAt(losses, "losses", "coilQ");
    q.capacitor = NumberAt(losses, "losses", "capacitorQ");
    if (!IsUsableQ(q.coil)) Damaged("losses.coilQ", "must be above 0");
    if (!IsUsableQ(q.capacitor)) Damaged("losses.capacitorQ", "must be above 0");
    return q;
}

std::optional<WoundCoil> ReadWoundCoil(const Json& coil, const std::string& where) {
    if (coil.is_null()) return std::nullopt;
    WoundCoil wound;
    wound.winding = {NumberAt(coil, where, "diameter"), NumberAt(coil, where, "length"),
                     NumberAt(coil, where, "turns"), NumberAt(coil, where, "wireDiameter")};
    wound.woundFor = static_cast<float>(NumberAt(coil, where, "woundFor"));
    return wound;
}

CapacitorRange ReadRange(const Json& plan, const char* key) {
    const Json& range = Member(plan, "bandPlan", key);
    const std::string where = std::string("bandPlan.") + key;
    return {NumberAt(range, where, "min"), NumberAt(range, where, "max")};
}

std::optional<BandPlanInputs> ReadBandPlan(const Json& plan) {
    if (plan.is_null()) return std::nullopt;
    BandPlanInputs inputs;
    inputs.tubeCapacitance = NumberAt(plan, "bandPlan", "tubeCapacitance");
    inputs.strayCapacitance = NumberAt(plan, "bandPlan", "strayCapacitance");
    inputs.tune = ReadRange(plan, "tune");
    inputs.load = ReadRange(plan, "load");
    const Json& bands = Member(plan, "bandPlan", "bands");
    if (!bands.is_array()) Damaged("bandPlan.bands", "is not a list");
    inputs.bands.clear();
    for (std::size_t i = 0; i < bands.size(); ++i) {
        const std::string where = "bandPlan.bands[" + std::to_string(i) + "]";
        const Json& name = Member(bands[i], where, "name");
        if (!name.is_string()) Damaged(where + ".name", "is not a text");
        inputs.bands.push_back({name.get<std::string>(), NumberAt(bands[i], where, "low"),
                                NumberAt(bands[i], where, "high"),
                                NumberAt(bands[i], where, "tunePadder"),
                                NumberAt(bands[i], where, "loadPadder")});
    }
    inputs.conductionDegrees = NumberAt(plan, "bandPlan", "conductionDegrees");
    inputs.limitDbc = NumberAt(plan, "bandPlan", "limitDbc");
    return inputs;
}

// [a, b] or [a, b, c], numbers.
std::array<double, 3> Numbers(const Json& list, const std::string& where, std::size_t count) {
    if (!list.is_array() || list.size() != count)
        Damaged(where, "is not a list of " + std::to_string(count) + " numbers");
    std::array<double, 3> numbers{};
    for (std::size_t i = 0; i < count; ++i)
        numbers[i] = Number(list[i], where + "[" + std::to_string(i) + "]");
    return numbers;
}

std::optional<LoadRangeRequest> ReadLoadRange(const Json& range) {
    if (range.is_null()) return std::nullopt;
    LoadRangeRequest request;
    const Json& kind = Member(range, "loadRange", "kind");
    bool known = false;
    for (const auto& [value, name] : kLoadKinds) {
        if (kind == name) {
            request.kind = value;
            known = true;
        }
    }
    if (!known) Damaged("loadRange.kind", "is none of swrCircle, impedance, measured");
    request.swr = NumberAt(range, "loadRange", "swr");
    const double phases = NumberAt(range, "loadRange", "phases");
    if (phases != std::floor(phases) || phases < 1 || phases > kMostPhases)
        Damaged("loadRange.phases",
                "is not a whole number from 1 to " + std::to_string(kMostPhases));
    request.phases = static_cast<int>(phases);
    const auto z = Numbers(Member(range, "loadRange", "impedance"), "loadRange.impedance", 2);
    request.impedance = {z[0], z[1]};
    const Json& measured = Member(range, "loadRange", "measured");
    if (!measured.is_array()) Damaged("loadRange.measured", "is not a list");
    for (std::size_t i = 0; i < measured.size(); ++i) {
        const auto point = Numbers(measured[i], "loadRange.measured[" + std::to_string(i) + "]", 3);
        request.measuredFrequencies.push_back(point[0]);
        request.measuredLoads.push_back({point[1], point[2]});
    }
    return request;
}

void CheckFormat(const Json& document) {
    if (!document.is_object() || document.value("format", "") != kDesignFileFormat)
        throw DesignFileError("This is not a VARO design file.");
    const Json& version = Member(document, "", "version");
    if (!version.is_number_integer() || version.get<long long>() < 1)
        Damaged("version", "is not a version number");
    if (version.get<long long>() > kDesignFileVersion)
        throw DesignFileError("This design file was written by a newer VARO (format version " +
                              std::to_string(version.get<long long>()) + "); this VARO reads " +
                              "format version " + std::to_string(kDesignFileVersion) + ".");
}

Json ParseJson(std::string_view text) {
    try {
        return Json::parse(text);
    } catch (const Json::parse_error& error) {
        // "[json.exception.parse_error.101] parse error at line 3, column 5: ..." without its tag.
        std::string reason = error.what();
        if (const auto tagEnd = reason.find("] "); tagEnd != std::string::npos)
            reason.erase(0, tagEnd + 2);
        throw DesignFileError("The design file is damaged: " + reason);
    }
}

std::string ReadAtMostLimit(const std::string& path) {
    InputFile file(path);
    std::string text = ReadAtMost(file, kMaxDesignFileBytes);
    if (text.size() > kMaxDesignFileBytes)
        throw DesignFileError("The design file is larger than " +
                              std::to_string(kMaxDesignFileBytes / (1024 * 1024)) +
                              " MiB; no design is that large.");
    return text;
}

}  // namespace

DesignFile DesignFileOf(const Design& design) {
    DesignFile file;
    for (const InputField& field : kInputFields)
        file.inputs.*field.file = design.state().*field.state;
    file.lossQ = design.lossQ();
    file.woundCoils = {design.woundCoil(TankPart::L1), design.woundCoil(TankPart::L2)};
    file.useWoundCoilQ = design.usesWoundCoilQ();
    file.bandPlan = design.bandPlanInputs();
    file.loadRange = design.loadRangeRequest();
    return file;
}

void ApplyDesignFile(const DesignFile& file, Design& design) {
    for (const InputField& field : kInputFields)
        design.state().*field.state = file.inputs.*field.file;
    design.SetLossQ(file.lossQ);
    design.SetWoundCoil(TankPart::L1, file.woundCoils[0]);
    design.SetWoundCoil(TankPart::L2, file.woundCoils[1]);
    design.UseWoundCoilQ(file.useWoundCoilQ);
    design.SetBandPlanInputs(file.bandPlan);
    design.SetLoadRange(file.loadRange);
}

std::string DesignFileText(const DesignFile& file) {
    Json losses = nullptr;
    if (file.lossQ)
        losses = Json{{"coilQ", file.lossQ->coil}, {"capacitorQ", file.lossQ->capacitor}};
    const Json document{
        {"format", kDesignFileFormat},
        {"version", kDesignFileVersion},
        {"inputs", InputsJson(file.inputs)},
        {"losses", losses},
        {"woundCoils",
         {{"L1", WoundCoilJson(file.woundCoils[0])}, {"L2", WoundCoilJson(file.woundCoils[1])}}},
        {"useWoundCoilQ", file.useWoundCoilQ},
        {"bandPlan", BandPlanJson(file.bandPlan)},
        {"loadRange", LoadRangeJson(file.loadRange)}};
    return document.dump(2) + "\n";
}

DesignFile ParseDesignFile(std::string_view text) {
    const Json document = ParseJson(text);
    CheckFormat(document);
    DesignFile file;
    file.inputs = ReadInputs(Member(document, "", "inputs"));
    file.lossQ = ReadLossQ(Member(document, "", "losses"));
    const Json& coils = Member(document, "", "woundCoils");
    file.woundCoils = {ReadWoundCoil(Member(coils, "woundCoils", "L1"), "woundCoils.L1"),
                       ReadWoundCoil(Member(coils, "woundCoils", "L2"), "woundCoils.L2")};
    const Json& useWound = Member(document, "", "useWoundCoilQ");
    if (!useWound.is_boolean()) Damaged("useWoundCoilQ", "is neither true nor false");
    file.useWoundCoilQ = useWound.get<bool>();
    file.bandPlan = ReadBandPlan(Member(document, "", "bandPlan"));
    file.loadRange = ReadLoadRange(Member(document, "", "loadRange"));
    return file;
}

void SaveDesignFile(const Design& design, const std::string& path) {
    SaveFile(path, DesignFileText(DesignFileOf(design)));
}

DesignFile ReadDesignFile(const std::string& path) {
    return ParseDesignFile(ReadAtMostLimit(path));
}

}  // namespace varo
