#include "export/reported_write.h"

namespace varo {

bool WriteOrReport(const std::string& path, const std::function<void(FileText&)>& build,
                   Dialogs& dialogs, std::string_view failure) {
    const auto detail = SaveFailure(path, [&] { WriteTextFile(path, build); });
    if (!detail) return true;
    dialogs.ShowFailure(failure, *detail);
    return false;
}

}  // namespace varo
