#include "app/navigator.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
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
    screen->findChild<QPushButton*>(QString::fromLatin1(button))->click();
    DiscardClosedScreens();
}

TEST(Navigator, OnlyTheDesignScreensExitWritesTheSessionFile) {
    testing::TempFolder folder;
    const std::string sessionPath = SessionFilePath(folder.str());
    const std::string before = "* left alone unless the design screen exits\r\n";
    for (const bool fromDesign : {false, true}) {
        testing::WriteBytes(sessionPath, before);
        ScriptedDialogs dialogs;
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

// Return through a screen's own button is driven with the real helper screens; here the window
// is closed by the desktop's means. Dialogs are parented to the screen shown.
TEST(Navigator, StartThenARegisteredScreenAndBackByClosingIt) {
    testing::TempFolder folder;
    ScriptedDialogs dialogs;
    QWidget* parent = nullptr;
    Navigator navigator{dialogs, [&parent](QWidget* window) { parent = window; },
                        SessionFilePath(folder.str())};
    navigator.Register(Destination::LoadHelp, [](const ScreenContext&) { return new QWidget; });
    navigator.Start();
    const QPointer<QWidget> opening = navigator.currentScreen();
    Click(opening, "cmdEnter");
    QWidget* design = navigator.currentScreen();
    EXPECT_EQ(design->objectName(), "frmDesign");
    EXPECT_EQ(opening, nullptr);  // the welcome screen is discarded
    Click(design, "cmdLoadHelp");
    const QPointer<QWidget> helper = navigator.currentScreen();
    EXPECT_FALSE(design->isVisible());
    EXPECT_EQ(parent, helper);
    helper->close();
    DiscardClosedScreens();
    EXPECT_EQ(helper, nullptr);
    EXPECT_EQ(navigator.currentScreen(), design);
    EXPECT_TRUE(design->isVisible());
    EXPECT_EQ(parent, design);
    Click(design, "cmdInductor");  // nobody registered it: the screen says so itself
    EXPECT_EQ(
        dialogs.messages(),
        std::vector<std::string>{"The inductor designer is not yet available in this version."});
}

// The design screen's newest button leads to its own destination.
TEST(Navigator, LoadRangeOpensItsRegisteredScreen) {
    testing::TempFolder folder;
    ScriptedDialogs dialogs;
    Navigator navigator{dialogs, {}, SessionFilePath(folder.str())};
    navigator.Register(Destination::LoadRange, [](const ScreenContext&) {
        auto* screen = new QWidget;
        screen->setObjectName("frmLoadRange");
        return screen;
    });
    navigator.Start();
    Click(navigator.currentScreen(), "cmdEnter");
    Click(navigator.currentScreen(), "cmdLoadRange");
    EXPECT_EQ(navigator.currentScreen()->objectName(), "frmLoadRange");
    EXPECT_EQ(dialogs.messages(), std::vector<std::string>{});
}

}  // namespace
}  // namespace varo
