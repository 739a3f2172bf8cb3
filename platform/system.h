#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace varo {

// The folder that holds the running executable, without a trailing separator; the current
// directory when the executable's own path cannot be found.
std::string ExecutableFolder();

// The process's current directory ("." if it cannot be read).
std::string CurrentDirectory();

// True when `path` names an existing file or folder.
bool FileExists(const std::string& path);

// Looks `name` up in `folder` by its upper-case form, as the program's file test does, so
// "Data.S21" also finds "DATA.S21" or "data.s21" on a case-sensitive file system. An exact match
// wins. Returns the full path of the entry found.
std::optional<std::string> FindFileIgnoringCase(const std::string& folder, const std::string& name);

// `date` as short date text in the user's own locale (from the environment; the program's global
// locale is left alone). The plain C or POSIX locale, a locale that cannot be loaded, or a locale
// whose date text holds a ":" gives month/day/year ("11/15/2026"). Never holds a ":".
std::string ShortDateText(const std::tm& date);

// Today's date as ShortDateText.
std::string TodayShortDate();

}  // namespace varo
