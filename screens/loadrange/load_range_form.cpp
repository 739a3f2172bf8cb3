#include "screens/loadrange/load_range_form.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace varo {

namespace {

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

template <typename Number>
std::optional<Number> Parsed(std::string_view text) {
    text = Trimmed(text);
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || error != std::errc() || end != text.data() + text.size()) return {};
    return value;
}

void ReadSwrCircle(const LoadRangeFormText& form, LoadRangeRequest& request,
                   std::vector<std::string>& problems) {
    const auto swr = Parsed<double>(form.swr);
    if (swr && *swr >= 1 && std::isfinite(*swr))
        request.swr = *swr;
    else
        problems.push_back(std::string("The SWR \"") + form.swr +
                           "\" is not a number of 1 or more.");
    const auto phases = Parsed<int>(form.phases);
    if (phases && *phases >= 1 && *phases <= kMostPhases)
        request.phases = *phases;
    else
        problems.push_back(std::string("The number of phases \"") + form.phases +
                           "\" must be a whole number from 1 to " + std::to_string(kMostPhases) +
                           ".");
}

void ReadOneLoad(const LoadRangeFormText& form, LoadRangeRequest& request,
                 std::vector<std::string>& problems) {
    if (const auto z = ParseLoadImpedance(form.load))
        request.impedance = *z;
    else
        problems.push_back(std::string("The load \"") + form.load +
                           "\" is not an impedance such as 37-j22.");
}

void ReadMeasured(const std::vector<LoadPoint>& measured, LoadRangeRequest& request,
                  std::vector<std::string>& problems) {
    if (measured.empty()) problems.push_back("Open an antenna file to re-tune for its points.");
    for (const LoadPoint& point : measured) {
        request.measuredLoads.push_back(point.z);
        request.measuredFrequencies.push_back(point.frequency);
    }
}

}  // namespace

std::variant<LoadRangeRequest, std::vector<std::string>> ReadLoadRangeForm(
    const LoadRangeFormText& form, const std::vector<LoadPoint>& measured,
    const DesignState& design) {
    std::vector<std::string> problems;
    LoadRangeRequest request;
    switch (form.kind) {
        case LoadKindChoice::SwrCircle:
            request.kind = LoadRangeRequest::Kind::SwrCircle;
            ReadSwrCircle(form, request, problems);
            break;
        case LoadKindChoice::OneLoad:
            request.kind = LoadRangeRequest::Kind::Impedance;
            ReadOneLoad(form, request, problems);
            break;
        case LoadKindChoice::Measured:
            request.kind = LoadRangeRequest::Kind::Measured;
            ReadMeasured(measured, request, problems);
            break;
    }
    if (!problems.empty()) return problems;
    std::vector<std::string> rejected = LoadRangeProblems(design, request);
    if (!rejected.empty()) return rejected;
    return request;
}

}  // namespace varo
