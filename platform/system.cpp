#include "platform/system.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iomanip>
#include <locale>
#include <sstream>
#include <system_error>

namespace varo {

namespace fs = std::filesystem;

namespace {

std::string UpperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char ch) { return static_cast<char>(std::toupper(ch)); });
    return text;
}

// The C locale writes a two-digit year; the program's dates have always shown four.
bool IsPlainLocale(const std::string& name) {
    return name == "C" || name == "POSIX" || name.rfind("C.", 0) == 0;
}

std::string FormatDate(const std::tm& date, const std::locale& locale, const char* format) {
    std::ostringstream text;
    text.imbue(locale);
    text << std::put_time(&date, format);
    return text.str();
}

std::optional<std::string> LocaleShortDate(const std::tm& date) {
    try {
        const std::locale user("");
        if (IsPlainLocale(user.name())) return std::nullopt;
        std::string text = FormatDate(date, user, "%x");
        if (text.empty() || text.find(':') != std::string::npos) return std::nullopt;
        return text;
    } catch (const std::exception&) {
        return std::nullopt;  // an environment locale that is not installed
    }
}

}  // namespace

std::string ExecutableFolder() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    if (error || !executable.has_parent_path()) return CurrentDirectory();
    return executable.parent_path().string();
}

std::string CurrentDirectory() {
    std::error_code error;
    const fs::path current = fs::current_path(error);
    return error ? std::string(".") : current.string();
}

bool FileExists(const std::string& path) {
    std::error_code error;
    return fs::exists(path, error);
}

std::optional<std::string> FindFileIgnoringCase(const std::string& folder,
                                                const std::string& name) {
    const fs::path exact = fs::path(folder) / name;
    if (FileExists(exact.string())) return exact.string();
    const std::string wanted = UpperCase(name);
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (UpperCase(entry->path().filename().string()) == wanted) return entry->path().string();
    }
    return std::nullopt;
}

std::string ShortDateText(const std::tm& date) {
    if (auto text = LocaleShortDate(date)) return *text;
    return FormatDate(date, std::locale::classic(), "%m/%d/%Y");
}

std::string TodayShortDate() {
    const std::time_t now = std::time(nullptr);
    std::tm today{};
    localtime_r(&now, &today);
    return ShortDateText(today);
}

}  // namespace varo
