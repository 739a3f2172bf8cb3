#pragma once

#include <QString>
#include <QWidget>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "core/design_state.h"
#include "platform/dialogs.h"
#include "platform/qt/screen_helpers.h"
#include "platform/surface.h"
#include "tools/inductor/coil.h"
#include "tools/inductor/inductor_texts.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace varo {

class SurfaceWidget;

// The inductor designer: two of the three winding measures and an optional wire gauge in, the
// third measure and the wire's figures out, for L1 or L2 of the design, with the network's
// schematic, a side view of the winding and a cross-section of its wire.
class FrmInductor : public QWidget, public CoilForm {
    Q_OBJECT

  public:
    // Told of each coil computed: the inductor (1 = L1, 2 = L2) and its winding.
    using WoundHandler = std::function<void(std::int16_t inductor, const CoilState& coil)>;

    // `coil` holds the winding and the unit choice between openings of the screen.
    FrmInductor(const DesignState& state, CoilState& coil, Dialogs& dialogs,
                std::function<void()> returnToDesign, WoundHandler onWound = {},
                QWidget* parent = nullptr);

    const Surface& surface() const;
    const WindingSlots& windings() const { return windings_; }

    // CoilForm
    std::string Text(CoilField field) const override;
    void SetText(CoilField field, std::string_view text) override;
    void FocusGaugeEntry() override;

  private:
    void BuildControls();
    void BuildChoices();
    void BuildRows();
    void BuildAsBuiltRows();
    void BuildButtons();
    void Connect();
    QLabel* AddLabel(const char* name, const QString& caption, const QRectF& at,
                     qreal pointSize = 8.25);
    QLineEdit* AddEntry(CoilField field, const QRectF& at);
    QRadioButton* AddOption(QWidget* frame, const char* name, const QString& caption);

    void LoadScreen();
    void ChooseUnit(std::int16_t unitSystem);
    void ChooseInductor(std::int16_t choice);
    void Compute();
    void ShowUnitCaptions();
    void ShowResults();
    void ShowAsBuilt();
    void EmptyResults();
    void Redraw();
    bool DesignHasLSection() const;

    const DesignState& state_;
    CoilState& coil_;
    Dialogs& dialogs_;
    std::function<void()> returnToDesign_;
    WoundHandler onWound_;
    SurfaceWidget* background_ = nullptr;
    std::map<CoilField, QLineEdit*> entries_;
    std::map<std::string, QLabel*> labels_;
    std::array<QRadioButton*, 4> options_{};  // Option1 .. Option4
    WindingSlots windings_;
    std::optional<CoilState> pictured_;  // the winding the views show
    ActionGate actions_{*this};
};

}  // namespace varo
