#pragma once

#include <string>

#include "model/design_results.h"
#include "platform/dialogs.h"
#include "platform/textfile.h"

namespace varo {

// The sweep as comma-separated text: a header naming units and the reference resistance, then a
// line per swept point, with the signs SweepTable declares (the usual impedance angle).
void BuildSweepCsv(const SweepTable& sweep, FileText& text);

// The save dialog of the sweep export, asking before it replaces a file.
SaveDialogRequest CsvSaveRequest();

// Writes the sweep as CSV, whole or not at all; reports a failure and returns false.
bool WriteSweepCsvFile(const SweepTable& sweep, const std::string& path, Dialogs& dialogs);

}  // namespace varo
