#pragma once

#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace varo::cli {

// A usage mistake: the reason is printed with the usage, and the program exits 2.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct OptionTable {
    std::set<std::string> valued;  // options that take a value: "--frequency"
    std::set<std::string> flags;   // options that stand alone: "--json"
};

// Parsed options of one subcommand. "--name value" and "--name=value" are both accepted; the
// second form lets a value begin with "-".
class Arguments {
  public:
    static Arguments Parse(const std::vector<std::string>& words, const OptionTable& options);

    std::optional<std::string> Value(const std::string& name) const;
    std::string Required(const std::string& name) const;
    bool Flag(const std::string& name) const { return flags_.count(name) > 0; }

  private:
    std::map<std::string, std::string> values_;
    std::set<std::string> flags_;
};

}  // namespace varo::cli
