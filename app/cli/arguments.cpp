#include "app/cli/arguments.h"

namespace varo::cli {

Arguments Arguments::Parse(const std::vector<std::string>& words, const OptionSpec& options) {
    Arguments parsed;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (word.rfind("--", 0) != 0) throw UsageError("unexpected argument '" + word + "'");
        const auto equals = word.find('=');
        const std::string name = word.substr(0, equals);
        if (options.flags.count(name)) {
            if (equals != std::string::npos) throw UsageError(name + " takes no value");
            parsed.flags_.insert(name);
            continue;
        }
        if (!options.valued.count(name)) throw UsageError("unknown option '" + name + "'");
        if (equals != std::string::npos) {
            parsed.values_[name] = word.substr(equals + 1);
        } else if (i + 1 < words.size() && words[i + 1].rfind('-', 0) != 0) {
            parsed.values_[name] = words[++i];
        } else {
            throw UsageError(name + " needs a value (write " + name +
                             "=VALUE for a value that begins with \"-\")");
        }
    }
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
