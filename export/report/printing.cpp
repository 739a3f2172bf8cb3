#include "export/report/printing.h"

#include "export/report/report_pages.h"
#include "platform/system.h"

namespace varo {

namespace {

constexpr std::string_view kPrinterErrorTitle = "Printer Error";

// A cancelled dialog prints nothing and says nothing.
bool Report(const PrintOutcome& outcome, Dialogs& dialogs, std::string_view failureText,
            std::string_view title) {
    if (outcome.status == PrintOutcome::Status::Failed)
        dialogs.ShowFailure(failureText, outcome.detail, title, MessageIcon::Exclamation);
    return outcome.status == PrintOutcome::Status::Printed;
}

}  // namespace

bool PrintDesignReport(const DesignState& state, const DesignResults& results, Dialogs& dialogs) {
    const PrintOutcome outcome =
        dialogs.Print(DesignReportDocument(state, results, TodayShortDate()));
    return Report(outcome, dialogs, "The design report could not be printed.", kPrinterErrorTitle);
}

bool PrintWindingData(const std::array<std::optional<CoilState>, 2>& windings, Dialogs& dialogs) {
    const PrintOutcome outcome = dialogs.Print(WindingDataDocument(windings, TodayShortDate()));
    return Report(outcome, dialogs, "We had a problem printing the inductor design data",
                  kPrinterErrorTitle);
}

}  // namespace varo
