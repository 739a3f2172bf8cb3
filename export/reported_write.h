#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/textfile.h"

namespace varo {

// Saves the file that `build` fills, whole or not at all. When the file cannot be written, or
// `build` meets an arithmetic fault, shows `failure` (with the path and the reason as its detail)
// and returns false; the previous file is left as it was.
bool WriteOrReport(const std::string& path, const std::function<void(FileText&)>& build,
                   Dialogs& dialogs, std::string_view failure);

}  // namespace varo
