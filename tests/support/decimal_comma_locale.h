#pragma once

#include <clocale>
#include <locale>
#include <string>

namespace varo::testing {

// The C and C++ global locales switched to one with a decimal comma until the test ends; not
// active() where none is installed.
class DecimalCommaLocale {
  public:
    DecimalCommaLocale() {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8",
                                 "nl_NL.UTF-8", "it_IT.UTF-8", "es_ES.UTF-8"})
            if (TrySwitch(name)) return;
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
        try {
            std::locale::global(std::locale(name));
        } catch (const std::exception&) {
            return false;
        }
        active_ = std::localeconv()->decimal_point[0] == ',';
        return active_;
    }

    std::locale oldGlobal_;
    std::string oldC_ = std::setlocale(LC_ALL, nullptr);
    bool active_ = false;
};

}  // namespace varo::testing
