#pragma once

#include <clocale>
#include <locale>
#include <optional>
#include <string>

namespace varo::testing {

// Switches the C and C++ global locales to one that writes a decimal comma, and back when the
// test ends. active() is false when no such locale is installed; the test then skips.
class DecimalCommaLocale {
  public:
    DecimalCommaLocale() : oldGlobal_(std::locale()) {
        const char* old = std::setlocale(LC_ALL, nullptr);
        oldC_ = old ? old : "C";
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8",
                                 "nl_NL.UTF-8", "it_IT.UTF-8", "es_ES.UTF-8"}) {
            if (TrySwitch(name)) return;
        }
    }
    ~DecimalCommaLocale() {
        std::locale::global(oldGlobal_);
        std::setlocale(LC_ALL, oldC_.c_str());
    }
    DecimalCommaLocale(const DecimalCommaLocale&) = delete;
    DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;

    bool active() const { return active_; }

  private:
    bool TrySwitch(const char* name) {
        if (!std::setlocale(LC_ALL, name)) return false;
        try {
            std::locale::global(std::locale(name));
        } catch (const std::exception&) {
            std::setlocale(LC_ALL, oldC_.c_str());
            return false;
        }
        active_ = std::localeconv()->decimal_point[0] == ',';
        return active_;
    }

    std::locale oldGlobal_;
    std::string oldC_;
    bool active_ = false;
};

}  // namespace varo::testing
