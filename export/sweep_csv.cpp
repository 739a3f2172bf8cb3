#include "export/sweep_csv.h"

#include "core/numtext.h"
#include "export/reported_write.h"

namespace varo {

void BuildSweepCsv(const SweepTable& s, FileText& text) {
    const std::string reference = PlainText(s.referenceOhms);
    text.Line({"Frequency (Hz),Transmission (dB),Phase (deg),Return re ", reference,
               " ohms (dB),VSWR re ", reference, " ohms,|Zin| (ohms),Z angle (deg)"});
    for (std::size_t i = 0; i < s.size(); ++i)
        text.Line({PlainText(s.frequency[i]), ",", PlainText(s.transmissionDb[i]), ",",
                   PlainText(s.phaseDeg[i]), ",", PlainText(s.returnDb[i]), ",",
                   PlainText(s.vswr[i]), ",", PlainText(s.zMagnitude[i]), ",",
                   PlainText(s.zAngleDeg[i])});
}

SaveDialogRequest CsvSaveRequest() {
    return SaveDialogRequest{.title = "VARO - export the sweep",
                             .filter = "CSV files (*.csv)|*.csv",
                             .filterIndex = 1,
                             .proposedName = "Sweep.csv",
                             .overwritePrompt = true};
}

bool WriteSweepCsvFile(const SweepTable& sweep, const std::string& path, Dialogs& dialogs) {
    return WriteOrReport(
        path, [&](FileText& text) { BuildSweepCsv(sweep, text); }, dialogs,
        "We could not export the sweep");
}

}  // namespace varo
