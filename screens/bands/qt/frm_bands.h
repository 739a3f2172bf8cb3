#pragma once

#include <QWidget>
#include <functional>

#include "model/design.h"
#include "platform/dialogs.h"
#include "platform/qt/action_gate.h"
#include "screens/bands/band_form.h"

class QComboBox;
class QLineEdit;
class QPlainTextEdit;
class QTableWidget;

namespace varo {

class SurfaceWidget;

// The band plan: the tube's and the variable capacitors' figures, the class and the harmonic
// limit, the bands; the chart, a row of results per band and what the parts cannot do. Every
// edit plans again at once; the entries are kept between runs. Return (Escape) goes back.
class FrmBands : public QWidget {
    Q_OBJECT

  public:
    FrmBands(Design& design, Dialogs& dialogs, std::function<void()> returnToDesign,
             QWidget* parent = nullptr);

    const Surface& surface() const;
    // The entries as they stand.
    BandFormText FormText() const;

  private:
    void BuildEntries();
    void BuildBandTable();
    void BuildResults();
    void BuildButtons();
    void ShowForm(const BandFormText& form);
    void AddBandRow(const BandRowText& row);
    // Plans with the entries as they stand; `report` shows what is wrong in a message box
    // (the Plan button) instead of only in the notes.
    void Replan(bool report);
    void ShowPlan();

    Design& design_;
    Dialogs& dialogs_;
    std::function<void()> returnToDesign_;
    SurfaceWidget* background_ = nullptr;
    std::map<std::string, QLineEdit*> entries_;
    QComboBox* conduction_ = nullptr;
    QComboBox* limit_ = nullptr;
    QTableWidget* bands_ = nullptr;
    QTableWidget* results_ = nullptr;
    QPlainTextEdit* notes_ = nullptr;
    bool showing_ = false;  // the form is being filled: no plan for each entry
    ActionGate actions_{*this};
};

}  // namespace varo
