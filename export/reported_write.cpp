#include "export/reported_write.h"

#include "core/fault.h"

namespace varo {

bool WriteOrReport(const std::string& path, const std::function<void(FileText&)>& build,
                   Dialogs& dialogs, std::string_view failure) {
    try {
        WriteTextFile(path, build);
        return true;
    } catch (const FileError&) {
    } catch (const ArithmeticFault&) {
    }
    dialogs.ShowMessage(failure);
    return false;
}

}  // namespace varo
