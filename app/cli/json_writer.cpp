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

namespace {

bool InRange(unsigned char byte, unsigned char low, unsigned char high) {
    return byte >= low && byte <= high;
}

// The length of the well-formed UTF-8 character that starts at `at`, or 0 when the bytes there are
// not one (a stray byte, a cut sequence, an overlong form, a surrogate).
std::size_t Utf8Length(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) {
        return at + i < text.size() ? static_cast<unsigned char>(text[at + i]) : 0;
    };
    const unsigned char lead = byte(0);
    std::size_t length = 0;
    unsigned char low = 0x80, high = 0xBF;  // range of the second byte
    if (InRange(lead, 0xC2, 0xDF)) length = 2;
    if (InRange(lead, 0xE0, 0xEF)) length = 3;
    if (InRange(lead, 0xF0, 0xF4)) length = 4;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
    if (length == 0 || !InRange(byte(1), low, high)) return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (!InRange(byte(i), 0x80, 0xBF)) return 0;
    return length;
}

// Control characters escaped; text that is not UTF-8 (a path's raw bytes) becomes U+FFFD, one
// replacement per stray byte, so the document is always valid.
void AppendCharacter(std::string& quoted, std::string_view text, std::size_t& at) {
    const auto ch = static_cast<unsigned char>(text[at]);
    if (ch < 0x80) {
        ++at;
        if (ch < 0x20) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", ch);
            quoted += escaped;
        } else {
            quoted += static_cast<char>(ch);
        }
        return;
    }
    const std::size_t length = Utf8Length(text, at);
    if (length == 0) {
        quoted += "\\ufffd";
        ++at;
        return;
    }
    quoted.append(text.substr(at, length));
    at += length;
}

}  // namespace

std::string JsonString(std::string_view text) {
    std::string quoted = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const unsigned char ch = static_cast<unsigned char>(text[at]);
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
                AppendCharacter(quoted, text, at);
                continue;
        }
        ++at;
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
