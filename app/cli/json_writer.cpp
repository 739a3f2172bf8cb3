#include "app/cli/json_writer.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace varo::cli {

std::string JsonNumber(double value) {
    if (!std::isfinite(value)) return "null";
    char buffer[32];
    // Nine significant digits reproduce any single-precision value exactly.
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 9);
    return std::string(buffer, result.ptr);
}

std::string JsonString(std::string_view text) {
    std::string quoted = "\"";
    for (const unsigned char ch : text) {
        switch (ch) {
            case '"':
                quoted += "\\\"";
                break;
            case '\\':
                quoted += "\\\\";
                break;
            case '\r':
                quoted += "\\r";
                break;
            case '\n':
                quoted += "\\n";
                break;
            case '\t':
                quoted += "\\t";
                break;
            default:
                if (ch < 0x20) {
                    char escaped[8];
                    std::snprintf(escaped, sizeof escaped, "\\u%04x", ch);
                    quoted += escaped;
                } else {
                    quoted += static_cast<char>(ch);
                }
        }
    }
    return quoted + "\"";
}

void JsonWriter::Indent() {
    text_.append(2 * firstInScope_.size(), ' ');
}

void JsonWriter::Key(std::string_view key) {
    if (!firstInScope_.empty()) {
        if (!firstInScope_.back()) text_ += ",";
        firstInScope_.back() = false;
        text_ += "\n";
        Indent();
    }
    if (!key.empty()) text_ += JsonString(key) + ": ";
}

JsonWriter& JsonWriter::BeginObject(std::string_view key) {
    Key(key);
    text_ += "{";
    firstInScope_.push_back(true);
    return *this;
}

JsonWriter& JsonWriter::BeginArray(std::string_view key) {
    Key(key);
    text_ += "[";
    firstInScope_.push_back(true);
    return *this;
}

JsonWriter& JsonWriter::EndObject() {
    const bool empty = firstInScope_.back();
    firstInScope_.pop_back();
    if (!empty) {
        text_ += "\n";
        Indent();
    }
    text_ += "}";
    if (firstInScope_.empty()) text_ += "\n";
    return *this;
}

JsonWriter& JsonWriter::EndArray() {
    const bool empty = firstInScope_.back();
    firstInScope_.pop_back();
    if (!empty) {
        text_ += "\n";
        Indent();
    }
    text_ += "]";
    return *this;
}

JsonWriter& JsonWriter::Number(std::string_view key, double value) {
    Key(key);
    text_ += JsonNumber(value);
    return *this;
}

JsonWriter& JsonWriter::Integer(std::string_view key, long long value) {
    Key(key);
    text_ += std::to_string(value);
    return *this;
}

JsonWriter& JsonWriter::String(std::string_view key, std::string_view value) {
    Key(key);
    text_ += JsonString(value);
    return *this;
}

JsonWriter& JsonWriter::Bool(std::string_view key, bool value) {
    Key(key);
    text_ += value ? "true" : "false";
    return *this;
}

}  // namespace varo::cli
