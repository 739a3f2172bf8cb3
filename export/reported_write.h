#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/dialogs.h"
#include "platform/textfile.h"

namespace varo {

// Writes the file that `build` fills. When the file cannot be written, or `build` meets an
// arithmetic fault, shows `failure` and returns false; what was built is left on disk.
bool WriteOrReport(const std::string& path, const std::function<void(FileText&)>& build,
                   Dialogs& dialogs, std::string_view failure);

}  // namespace varo
