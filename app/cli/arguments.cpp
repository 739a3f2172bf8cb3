#include "app/cli/arguments.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace varo::cli {

namespace {

// What CLI11 records for a valued option given bare ("--plate" or "--plate="); an empty word
// ("--plate ''") stays an empty entry.
const std::string kNoValueGiven = "\x01";

// "--help" also answers to "-h", as the overview does.
std::string NamesOf(const std::string& name) {
    return name == "--help" ? "-h,--help" : name;
}

// CLI11 takes values as a stack: the last word first.
std::vector<std::string> Reversed(std::vector<std::string> words) {
    std::reverse(words.begin(), words.end());
    return words;
}

// Words CLI11 left over: an option it does not know, or a word that belongs to none.
void RejectLeftOvers(const CLI::App& app) {
    const auto left = app.remaining();
    if (left.empty()) return;
    const std::string& word = left.front();
    if (word.rfind("--", 0) == 0)
        throw UsageError("unknown option '" + word.substr(0, word.find('=')) + "'");
    throw UsageError("unexpected argument '" + word + "'");
}

}  // namespace

Arguments Arguments::Parse(const std::vector<std::string>& words, const OptionTable& options) {
    CLI::App app;
    app.set_help_flag();  // the commands print their own usage
    app.allow_extras();
    // A valued option may stand bare so that "--frequency --json" is reported as a missing value
    // instead of taking "--json" as the frequency; given twice, the last value counts.
    std::vector<std::pair<std::string, const CLI::Option*>> valued, flags;
    for (const auto& name : options.valued)
        valued.emplace_back(name, app.add_option(name)
                                      ->expected(0, 1)
                                      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
                                      ->default_str(kNoValueGiven));
    for (const auto& name : options.flags)
        flags.emplace_back(name, app.add_flag(NamesOf(name)));
    try {
        app.parse(Reversed(words));
    } catch (const CLI::ParseError& mistake) {
        throw UsageError(mistake.what());
    }
    Arguments parsed;
    for (const auto& [name, option] : valued) {
        if (option->count() == 0) continue;
        const std::string& value = option->results().back();  // the last one given counts
        if (value == kNoValueGiven)
            throw UsageError(name + " needs a value (write " + name +
                             "=VALUE for a value that begins with \"-\")");
        parsed.values_[name] = value;
    }
    for (const auto& [name, option] : flags) {
        if (option->count() == 0) continue;
        for (const auto& given : option->results())
            if (given != "true") throw UsageError(name + " takes no value");
        parsed.flags_.insert(name);
    }
    RejectLeftOvers(app);
    return parsed;
}

std::optional<std::string> Arguments::Value(const std::string& name) const {
    const auto found = values_.find(name);
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

std::string Arguments::Required(const std::string& name) const {
    auto value = Value(name);
    if (!value) throw UsageError(name + " is required");
    return *value;
}

}  // namespace varo::cli
