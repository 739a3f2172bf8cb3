#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace varo::cli {

// Builds one JSON document in order (objects, arrays, strings and numbers) and writes it with
// nlohmann-json, two spaces an indent.
class JsonWriter {
  public:
    JsonWriter();
    ~JsonWriter();
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    JsonWriter& BeginObject(std::string_view key = {});
    JsonWriter& EndObject();
    JsonWriter& BeginArray(std::string_view key = {});
    JsonWriter& EndArray();
    // Numbers keep nine significant digits, enough to reproduce a single-precision value;
    // non-finite is null.
    JsonWriter& Number(std::string_view key, double value);
    JsonWriter& Integer(std::string_view key, long long value);
    // Text that is not UTF-8 (a path's raw bytes) has U+FFFD in place of the stray bytes.
    JsonWriter& String(std::string_view key, std::string_view value);
    JsonWriter& Bool(std::string_view key, bool value);
    std::string text() const;

  private:
    struct Document;
    std::unique_ptr<Document> document_;
};

// The number form the JSON and CSV reports share: nine significant digits, shortest form.
std::string JsonNumber(double value);

}  // namespace varo::cli
