#include "app/cli/json_writer.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <vector>

namespace varo::cli {

// Figures are written as single-precision numbers, the precision the design works in: the
// shortest digits that give the same float back.
using Json = nlohmann::basic_json<nlohmann::ordered_map, std::vector, std::string, bool,
                                  std::int64_t, std::uint64_t, float>;

std::string JsonNumber(double value) {
    if (!std::isfinite(value)) return "null";
    char buffer[32];
    // Nine significant digits reproduce any single-precision value exactly.
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 9);
    return std::string(buffer, result.ptr);
}

namespace {

// Whole numbers stay integers so that 50 is not written "50.0".
Json Figure(double value) {
    const float figure = static_cast<float>(value);
    if (!std::isfinite(figure)) return nullptr;
    if (std::trunc(figure) == figure && std::fabs(figure) < 1e15f)
        return static_cast<std::int64_t>(figure);
    return figure;
}

}  // namespace

struct JsonWriter::Document {
    Json root;
    std::vector<Json*> open;  // the path from the root to the array or object being filled

    Json& Add(std::string_view key, Json value) {
        if (open.empty()) return root = std::move(value);
        Json& parent = *open.back();
        if (parent.is_array()) {
            parent.push_back(std::move(value));
            return parent.back();
        }
        return parent[std::string(key)] = std::move(value);
    }
};

JsonWriter::JsonWriter() : document_(std::make_unique<Document>()) {}
JsonWriter::~JsonWriter() = default;

JsonWriter& JsonWriter::BeginObject(std::string_view key) {
    document_->open.push_back(&document_->Add(key, Json::object()));
    return *this;
}

JsonWriter& JsonWriter::BeginArray(std::string_view key) {
    document_->open.push_back(&document_->Add(key, Json::array()));
    return *this;
}

JsonWriter& JsonWriter::EndObject() {
    document_->open.pop_back();
    return *this;
}

JsonWriter& JsonWriter::EndArray() {
    document_->open.pop_back();
    return *this;
}

JsonWriter& JsonWriter::Number(std::string_view key, double value) {
    document_->Add(key, Figure(value));
    return *this;
}

JsonWriter& JsonWriter::Integer(std::string_view key, long long value) {
    document_->Add(key, value);
    return *this;
}

JsonWriter& JsonWriter::String(std::string_view key, std::string_view value) {
    document_->Add(key, std::string(value));
    return *this;
}

JsonWriter& JsonWriter::Bool(std::string_view key, bool value) {
    document_->Add(key, value);
    return *this;
}

std::string JsonWriter::text() const {
    return document_->root.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace varo::cli
