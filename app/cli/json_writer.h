#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace varo::cli {

// A small writer for one JSON document: objects, arrays, strings and numbers, in order.
class JsonWriter {
  public:
    JsonWriter& BeginObject(std::string_view key = {});
    JsonWriter& EndObject();
    JsonWriter& BeginArray(std::string_view key = {});
    JsonWriter& EndArray();
    // Numbers keep enough digits to reproduce a single-precision value; non-finite is null.
    JsonWriter& Number(std::string_view key, double value);
    JsonWriter& Integer(std::string_view key, long long value);
    JsonWriter& String(std::string_view key, std::string_view value);
    JsonWriter& Bool(std::string_view key, bool value);
    const std::string& text() const { return text_; }

  private:
    void Key(std::string_view key);
    void Indent();
    std::string text_;
    std::vector<bool> firstInScope_;
};

std::string JsonNumber(double value);
std::string JsonString(std::string_view text);

}  // namespace varo::cli
