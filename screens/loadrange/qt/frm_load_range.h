#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "model/design.h"
#include "model/touchstone_load.h"
#include "platform/dialogs.h"
#include "platform/qt/action_gate.h"
#include "screens/loadrange/load_range_form.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTableWidget;

namespace varo {

class SurfaceWidget;

// The network re-tuned for an antenna: an SWR circle, one load impedance or the points of a
// measured antenna file; the loads on a Smith chart, a row per load with its capacitances and
// stresses, and the worst cases with the capacitances that cover them all. Every edit works the
// range out again at once; the entries are kept between runs. Return (Escape) goes back.
class FrmLoadRange : public QWidget {
    Q_OBJECT

  public:
    FrmLoadRange(Design& design, Dialogs& dialogs, std::function<void()> returnToDesign,
                 QWidget* parent = nullptr);

    // The Smith chart's drawing.
    const Surface& smithSurface() const;
    // The entries as they stand.
    LoadRangeFormText FormText() const;

  private:
    void BuildEntries();
    void BuildResults();
    void BuildButtons();
    QComboBox* AddChoice(int row, const char* name, const char* caption, const QStringList& items);
    QLineEdit* AddEntry(int row, const char* name, const char* caption);
    void ShowForm(const LoadRangeFormText& form);
    void OpenAntennaFile();
    // Reads the measured points; `report` says in a message what kept the file from being read.
    bool ReadAntennaFile(const std::string& path, bool report);
    void ShowAntennaFile();
    // Works the range out with the entries as they stand; `report` shows what is wrong in a
    // message box (the Work out button) instead of only in the worst-case box.
    void Rework(bool report);
    void ShowRange(const std::string& problems);
    void FillTable(const LoadRangeResult& result);

    Design& design_;
    Dialogs& dialogs_;
    std::function<void()> returnToDesign_;
    SurfaceWidget* background_ = nullptr;
    SurfaceWidget* smith_ = nullptr;
    QComboBox* kind_ = nullptr;
    QComboBox* swr_ = nullptr;
    QLineEdit* phases_ = nullptr;
    QLineEdit* load_ = nullptr;
    QLabel* loadFile_ = nullptr;
    QTableWidget* loads_ = nullptr;
    QPlainTextEdit* worst_ = nullptr;
    std::vector<LoadPoint> measured_;
    std::string measuredPath_;
    bool showing_ = false;  // the form is being filled: no working out for each entry
    ActionGate actions_{*this};
};

}  // namespace varo
