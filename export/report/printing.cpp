#include "export/report/printing.h"

namespace varo {

namespace {
constexpr std::string_view kNotYet = "Printing is not yet available in this version.";
}  // namespace

bool PrintDesignReport(const DesignState&, const DesignResults&, Dialogs& dialogs) {
    dialogs.ShowMessage(kNotYet);
    return false;
}

bool PrintWindingData(const std::array<std::optional<CoilState>, 2>&, Dialogs& dialogs) {
    dialogs.ShowMessage(kNotYet);
    return false;
}

}  // namespace varo
