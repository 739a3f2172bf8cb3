#include "app/navigator.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include "session/last_session.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

// Closed screens go, as the event loop would make them.
void DiscardClosedScreens() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Click(QWidget* screen, const char* button) {
    auto* control = screen->findChild<QPushButton*>(QString::fromLatin1(button));
    ASSERT_NE(control, nullptr) << button;
    control->click();
    DiscardClosedScreens();
}

struct NavigatorTest : ::testing::Test {
    testing::TempFolder folder;
    const std::string sessionPath = SessionFilePath(folder.str());
    ScriptedDialogs dialogs;
    QWidget* dialogParent = nullptr;
    Navigator navigator{dialogs, [this](QWidget* window) { dialogParent = window; }, sessionPath};
};

TEST_F(NavigatorTest, StartShowsTheDesignScreenAndDiscardsTheWelcomeScreen) {
    navigator.Start();
    const QPointer<QWidget> opening = navigator.currentScreen();
    Click(opening, "cmdEnter");
    QWidget* design = navigator.currentScreen();
    EXPECT_EQ(design->objectName(), "frmDesign");
    EXPECT_TRUE(design->isVisible());
    EXPECT_EQ(opening, nullptr);
    EXPECT_EQ(dialogParent, design);
}

TEST_F(NavigatorTest, OnlyTheDesignScreensExitWritesTheSessionFile) {
    const std::string before = "* left alone unless the design screen exits\r\n";
    for (const bool fromDesign : {false, true}) {
        testing::WriteBytes(sessionPath, before);
        Navigator run(dialogs, {}, sessionPath);
        int finished = 0;
        QObject::connect(&run, &Navigator::finished, [&finished] { ++finished; });
        run.Start();
        if (fromDesign) Click(run.currentScreen(), "cmdEnter");
        Click(run.currentScreen(), "cmdExit");
        EXPECT_EQ(finished, 1);
        EXPECT_EQ(testing::ReadBytes(sessionPath) != before, fromDesign);
    }
}

TEST_F(NavigatorTest, ARegisteredScreenOpensAndReturnsToTheUpdatedDesign) {
    navigator.Register(Destination::LoadHelp, [](const ScreenContext& context) {
        auto* screen = new QWidget;
        auto* back = new QPushButton(QStringLiteral("Return"), screen);
        back->setObjectName("cmdReturn");
        QObject::connect(back, &QPushButton::clicked, context.returnToDesign);
        context.state.plateR = 2400;  // as a helper's Accept would
        return screen;
    });
    navigator.Start();
    Click(navigator.currentScreen(), "cmdEnter");
    QWidget* design = navigator.currentScreen();
    const QString plateBefore = design->findChild<QLineEdit*>("txtPlate")->text();
    // Back by the screen's Return, or by closing its window.
    for (const bool byReturn : {true, false}) {
        Click(design, "cmdLoadHelp");
        const QPointer<QWidget> helper = navigator.currentScreen();
        EXPECT_NE(helper, design);
        EXPECT_FALSE(design->isVisible());
        EXPECT_EQ(dialogParent, helper);
        if (byReturn)
            Click(helper, "cmdReturn");
        else
            helper->close();
        DiscardClosedScreens();
        EXPECT_EQ(helper, nullptr);
        EXPECT_EQ(navigator.currentScreen(), design);
        EXPECT_TRUE(design->isVisible());
        EXPECT_EQ(dialogParent, design);
        EXPECT_NE(design->findChild<QLineEdit*>("txtPlate")->text(), plateBefore);
    }
    Click(design, "cmdInductor");  // nobody registered it
    EXPECT_EQ(navigator.currentScreen(), design);
    EXPECT_EQ(
        dialogs.messages(),
        std::vector<std::string>{"The inductor designer is not yet available in this version."});
}

}  // namespace
}  // namespace varo
