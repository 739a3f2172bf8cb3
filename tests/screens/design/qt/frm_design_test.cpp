#include "screens/design/qt/frm_design.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QToolButton>
#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/fault.h"
#include "core/numtext.h"
#include "model/design_file.h"
#include "model/fixed_text.h"
#include "model/pictures/design_picture.h"
#include "platform/qt/replay.h"
#include "screens/design/qt/up_down.h"
#include "session/last_session.h"
#include "session/program_text.h"
#include "support/temp_folder.h"
#include "tools/screen_driving.h"

namespace varo {
namespace {

class FrmDesignTest : public ::testing::Test {
  public:
    // Before any screen reads its settings: they go to a test folder.
    static void SetUpTestSuite() { QStandardPaths::setTestModeEnabled(true); }

    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        // The design the program starts with when no last-session file exists, at 1 kW.
        InitialiseConstants(state);
        ReadLastSession(state, "");
        state.peakSwing = 2500;
        state.rfPower = 1000;
        session.sessionFilePath = QDir(folder.path()).filePath("VARO.CFG").toStdString();
        form.show();
    }

    QLineEdit* Entry(const char* name) { return form.findChild<QLineEdit*>(name); }
    QPushButton* Button(const char* name) { return form.findChild<QPushButton*>(name); }

    // What the user does: type into an entry (the edit signal only fires for typing).
    void Type(const char* name, const char* text) {
        Entry(name)->setText(text);
        emit Entry(name)->textEdited(text);
        QCoreApplication::processEvents();  // an edit's recalculation runs after the edit
    }
    void Accept(std::vector<std::pair<const char*, const char*>> entries) {
        for (const auto& [name, text] : entries)
            Type(name, text);
        dialogs.clear();
        Button("cmdDesign")->click();
    }

    QTemporaryDir folder;
    Design design;
    DesignState& state = design.state();
    ScriptedDialogs dialogs;
    DesignSession session;
    FrmDesign form{design, dialogs, session};
};

// A screen reader says an entry's caption; every control has a name to say and a tip.
TEST_F(FrmDesignTest, EveryControlHasASpokenNameAndATip) {
    int captioned = 0;
    for (const QLabel* label : form.findChildren<QLabel*>()) {
        if (label->buddy() == nullptr) continue;
        EXPECT_EQ(label->buddy()->accessibleName(), label->text());
        ++captioned;
    }
    EXPECT_EQ(captioned, 7);  // the five design entries and the two loss Qs
    for (QWidget* control : form.findChildren<QWidget*>()) {
        const auto* button = qobject_cast<QPushButton*>(control);
        const bool interactive = button != nullptr ||
                                 qobject_cast<QLineEdit*>(control) != nullptr ||
                                 qobject_cast<UpDown*>(control) != nullptr;
        if (!interactive || !control->isVisible()) continue;
        // A button without a name of its own is read by its caption: a word, not a bare sign.
        const QString spoken = control->accessibleName().isEmpty() && button != nullptr
                                   ? button->text()
                                   : control->accessibleName();
        const std::string name = control->objectName().toStdString();
        EXPECT_GT(spoken.size(), 1) << name;
        EXPECT_FALSE(control->toolTip().isEmpty()) << name;
    }
}

// Each control runs its action: the design it leaves behind says which one ran.
TEST_F(FrmDesignTest, EveryControlRunsItsAction) {
    const auto click = [](const char* button) {
        return [button](FrmDesignTest& t) { t.Button(button)->click(); };
    };
    const auto reread = [](double value) {
        std::string shown = FormatNumber(StoreSingle(value));
        return ParseEngNumber(shown);
    };
    const struct {
        const char* name;
        std::function<void(FrmDesignTest&)> act;
        float DesignState::*field;
        float expected;
    } cases[] = {
        {"cmdQplus", click("cmdQplus"), &DesignState::piQ, reread(12 * 1.01)},
        {"cmdIntermediateMinus", click("cmdIntermediateMinus"), &DesignState::intermediateR,
         reread(300 / 1.01)},
        {"UpDown3",
         [](FrmDesignTest& t) {
             t.form.findChild<UpDown*>("UpDown3")->findChild<QToolButton*>("down")->click();
         },
         &DesignState::genMultiplier, StoreSingle(StoreSingle(199 * 0.1) / 20.0)},
        {"txtRinputMult", [](FrmDesignTest& t) { t.Type("txtRinputMult", "3000"); },
         &DesignState::genMultiplier, 2},
        {"Enter",
         [](FrmDesignTest& t) {
             t.Entry("txtPlate")->setText("2k");
             emit t.Entry("txtPlate")->returnPressed();
         },
         &DesignState::plateR, 2000},
    };
    for (const auto& c : cases) {
        Accept({{"txtFrequency", "3.9M"},
                {"txtPlate", "1500"},
                {"txtQ", "12"},
                {"txtIntermediate", "300"},
                {"txtRinputMult", "1500"}});
        const float c1Before = state.C1;
        c.act(*this);
        EXPECT_EQ(state.*c.field, c.expected) << c.name;
        EXPECT_TRUE(dialogs.messages().empty()) << c.name;
        if (c.field != &DesignState::genMultiplier) {
            EXPECT_NE(state.C1, c1Before) << c.name;
        }
    }
}

// Typed text stays pending, and marked so, through an export that does not validate.
TEST_F(FrmDesignTest, TypingOnlyOffersAcceptAndStaysPendingUntilTakenIn) {
    Button("cmdDesign")->setEnabled(false);
    const size_t opsBefore = form.surface().ops().size();
    Type("txtFrequency", "7M");
    EXPECT_TRUE(Button("cmdDesign")->isEnabled());
    EXPECT_EQ(state.frequency, 3.9e6f);
    EXPECT_EQ(form.surface().ops().size(), opsBefore);
    EXPECT_TRUE(form.HasPendingEdits());
    EXPECT_TRUE(Button("cmdDesign")->font().bold());
    // Cancelled, neither export reads the entries in: they stay marked.
    for (const char* cancelled : {"cmdSpice", "cmdQuarn"}) {
        Button(cancelled)->click();
        EXPECT_TRUE(form.HasPendingEdits()) << cancelled;
        EXPECT_FALSE(Entry("txtFrequency")->styleSheet().isEmpty()) << cancelled;
    }
    Button("cmdDesign")->click();
    EXPECT_FALSE(form.HasPendingEdits());
    EXPECT_FALSE(Button("cmdDesign")->font().bold());
    EXPECT_TRUE(Entry("txtFrequency")->styleSheet().isEmpty());
}

// A Q above 0 is kept for the next run and shown at once; anything else puts the entry back.
TEST_F(FrmDesignTest, LossQEntriesRecalculateTheLossesAndAreRemembered) {
    auto* coil = Entry("txtCoilQ");
    for (const char* typed : {"150", "0"}) {
        coil->setText(typed);
        emit coil->editingFinished();
    }
    EXPECT_EQ(coil->text(), "150");
    EXPECT_TRUE(std::ranges::any_of(form.surface().ops(),
                                    [](const DrawOp& op) { return op.text == "Loss"; }));
    Design another;
    FrmDesign next(another, dialogs, session);
    EXPECT_EQ(another.lossQ()->coil, 150);
    QSettings("VARO", "VARO").clear();
}

// A coil wound for the design's L1 offers its own Q; chosen, the losses take it for L1 only.
// One wound for another inductance (the design has moved on) offers nothing.
TEST_F(FrmDesignTest, AWoundCoilsOwnQIsOfferedForTheLosses) {
    auto* check = form.findChild<QCheckBox*>("chkWoundQ");
    const Winding winding{0.0508, 0.1016, 13.4, 0.0016};  // 2 x 4 in, 14 gauge
    const struct {
        float woundFor;
        bool offered;
    } cases[] = {{state.L1, true}, {state.L1 * 1.01f, false}};
    for (const auto& c : cases) {
        design.SetWoundCoil(TankPart::L1, WoundCoil{winding, c.woundFor});
        form.hide();
        form.show();  // back from the inductor screen
        EXPECT_EQ(check->isEnabled(), c.offered);
        const auto q = design.WoundCoilQ();
        EXPECT_EQ(q[0].has_value(), c.offered);
        if (!c.offered) continue;
        check->click();
        EXPECT_EQ(design.results().losses->q.wound[0], q[0]);
        // The component table shows the Q beside L1.
        const std::string shown = "Q " + FixedText(*q[0], 0);
        EXPECT_TRUE(std::ranges::any_of(form.surface().ops(),
                                        [&](const DrawOp& op) { return op.text == shown; }));
        EXPECT_FALSE(design.results().losses->q.wound[1]);
        check->click();
        EXPECT_FALSE(design.results().losses->q.wound[0]);
    }
}

// A design kept under a name: Save As writes it and names it in the title, a change marks the
// title, Save clears the mark; Open takes a file's inputs and Q back and remembers it.
TEST_F(FrmDesignTest, DesignFilesAreSavedOpenedAndNamedInTheTitle) {
    const auto path = [&](const char* name) {
        return QDir(folder.path()).filePath(name).toStdString();
    };
    const auto trigger = [&](const char* name) { form.findChild<QAction*>(name)->trigger(); };
    const auto title = [&] { return form.windowTitle().toStdString(); };
    dialogs.AnswerNextSave(path("amp.varo"));
    trigger("mnuSaveAs");
    EXPECT_EQ(title(), ScreenCaption("Design screen") + " - amp.varo");
    EXPECT_EQ(ReadDesignFile(path("amp.varo")).inputs.piQ, 12.0f);
    Button("cmdQplus")->click();
    EXPECT_EQ(title(), ScreenCaption("Design screen") + " - amp.varo *");
    trigger("mnuSave");
    EXPECT_EQ(title(), ScreenCaption("Design screen") + " - amp.varo");
    EXPECT_EQ(ReadDesignFile(path("amp.varo")).inputs.piQ, 12.12f);

    Button("cmdQplus")->click();
    auto* coil = Entry("txtCoilQ");
    coil->setText("150");
    emit coil->editingFinished();
    dialogs.AnswerNextKeepChanges(KeepChanges::Discard);
    dialogs.AnswerNextOpen(path("amp.varo"));
    trigger("mnuOpen");
    EXPECT_EQ(state.piQ, 12.12f);
    EXPECT_EQ(Entry("txtQ")->text(), "12.12");
    EXPECT_EQ(coil->text(), "300");  // the file's coil Q
    EXPECT_EQ(title(), ScreenCaption("Design screen") + " - amp.varo");
    EXPECT_EQ(QSettings("VARO", "VARO").value("designFiles/recent").toStringList(),
              QStringList{QString::fromStdString(path("amp.varo"))});

    // A file this version cannot take is named and changes nothing.
    testing::WriteBytes(path("new.varo"), "{\"format\": \"VARO design\", \"version\": 9}");
    dialogs.clear();
    dialogs.AnswerNextOpen(path("new.varo"));
    trigger("mnuOpen");
    EXPECT_EQ(dialogs.messages(),
              std::vector<std::string>{"This design file was written by a newer VARO (format "
                                       "version 9); this VARO reads format version 1."});
    EXPECT_EQ(title(), ScreenCaption("Design screen") + " - amp.varo");
    QSettings("VARO", "VARO").clear();
}

// Closing the window is Exit: the last-session file is written and the program asked to end;
// unsaved work of a named design is asked about first, and Cancel keeps the screen.
TEST_F(FrmDesignTest, ClosingTheWindowIsExit) {
    int exits = 0;
    QObject::connect(&form, &FrmDesign::requestExit, [&] { ++exits; });
    const std::string designPath = QDir(folder.path()).filePath("amp.varo").toStdString();
    dialogs.AnswerNextSave(designPath);
    form.findChild<QAction*>("mnuSaveAs")->trigger();
    Button("cmdQplus")->click();
    const struct {
        KeepChanges answer;
        int exits;
        float savedQ;
    } cases[] = {{KeepChanges::Cancel, 0, 12.0f}, {KeepChanges::Save, 1, 12.12f}};
    for (const auto& c : cases) {
        dialogs.AnswerNextKeepChanges(c.answer);
        EXPECT_FALSE(form.close());
        EXPECT_EQ(exits, c.exits);
        EXPECT_EQ(ReadDesignFile(designPath).inputs.piQ, c.savedQ);
    }
    EXPECT_TRUE(QFileInfo::exists(QString::fromStdString(session.sessionFilePath)));
    EXPECT_TRUE(form.close());  // the navigator closes the window once Exit has run
    QSettings("VARO", "VARO").clear();
}

// A settings file edited by hand: a Q no part can have is the default, not a lossless tank.
TEST_F(FrmDesignTest, AHostileRememberedQIsTheDefault) {
    for (const char* kept : {"inf", "1e400", "-inf", "nan", "-3", "abc"}) {
        QSettings("VARO", "VARO").setValue("tankLosses/coilQ", kept);
        Design another;
        FrmDesign next(another, dialogs, session);
        EXPECT_EQ(another.lossQ()->coil, 300) << kept;
        EXPECT_EQ(next.findChild<QLineEdit*>("txtCoilQ")->text(), "300") << kept;
    }
    QSettings("VARO", "VARO").clear();
}

// Assistive technology can press a screen a modal dialog blocks: Exit pressed during the Quarn
// save dialog used to close the screen under it and crash. What arrives mid-action is dropped.
// Hidden behind the large plot, the screen was still pressed through the accessibility bus: its
// "Inductor design" closed the plot screen under its own save dialog, a double free. Hidden, it
// does nothing.
TEST_F(FrmDesignTest, AHiddenScreenDoesNothing) {
    int leaves = 0;
    QObject::connect(&form, &FrmDesign::requestInductor, [&] { ++leaves; });
    form.hide();
    Button("cmdInductor")->click();
    Button("cmdQplus")->click();
    EXPECT_EQ(leaves, 0);
    EXPECT_EQ(state.piQ, 12.0f);
    form.show();
    Button("cmdInductor")->click();
    EXPECT_EQ(leaves, 1);
}

TEST_F(FrmDesignTest, ControlsPressedWhileADialogIsOpenDoNothing) {
    struct PressingDialogs : ScriptedDialogs {
        std::function<void()> whileOpen;
        std::optional<std::string> AskSaveFileName(const SaveDialogRequest& request) override {
            whileOpen();
            return ScriptedDialogs::AskSaveFileName(request);
        }
    } pressing;
    FrmDesign screen(design, pressing, session);
    screen.show();
    int exits = 0;
    QObject::connect(&screen, &FrmDesign::requestExit, [&] { ++exits; });
    pressing.whileOpen = [&] {
        screen.findChild<QLineEdit*>("txtFrequency")->setText("7M");
        for (const char* name : {"cmdDesign", "cmdQplus", "cmdSpice", "cmdExit"})
            screen.findChild<QPushButton*>(name)->click();
        emit screen.findChild<QLineEdit*>("txtRinputMult")->textEdited("3000");
        QCoreApplication::processEvents();
    };
    screen.findChild<QPushButton*>("cmdQuarn")->click();
    EXPECT_EQ(exits, 0);
    EXPECT_EQ(state.frequency, 3.9e6f);
    EXPECT_EQ(state.genMultiplier, 1);
    EXPECT_EQ(pressing.events().size(), 1u);             // the Quarn dialog alone
    screen.findChild<QPushButton*>("cmdExit")->click();  // afterwards the screen works again
    EXPECT_EQ(exits, 1);
}

// No texts of the drawing (as the replay measures them) overlap or leave it, and no controls
// overlap at either size. The large pictures go to VARO_SCREENSHOT_DIR for docs/.
TEST_F(FrmDesignTest, EveryLayoutCaseKeepsTextsAndControlsApart) {
    const QString folderForDocs = qEnvironmentVariable("VARO_SCREENSHOT_DIR");
    for (const auto& [name, intermediateR] :
         {std::pair{"step-down", 300.0f}, {"equal", 50.0f}, {"step-up", 30.0f}}) {
        state.intermediateR = intermediateR;  // step-up comes from a session file
        form.LoadScreen();
        testing::CheckLayoutAtSizes(form);
        const auto boxes = TextBoxes(form.surface(), QtTextMeasure());
        for (size_t i = 0; i < boxes.size(); ++i) {
            EXPECT_TRUE(boxes[i].left >= 0 && boxes[i].right <= kDesignScreenWidth &&
                        boxes[i].top >= 0 && boxes[i].bottom <= kDesignScreenHeight)
                << name << ": " << boxes[i].text;
            for (size_t j = i + 1; j < boxes.size(); ++j)
                EXPECT_FALSE(boxes[i].Overlaps(boxes[j]))
                    << name << ": " << boxes[i].text << " / " << boxes[j].text;
        }
        form.resize(1200, 900);
        if (!folderForDocs.isEmpty()) form.grab().save(folderForDocs + "/design-" + name + ".png");
    }
}

}  // namespace
}  // namespace varo
