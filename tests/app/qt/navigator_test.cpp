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

// Return through a screen's own button is driven with the real helper screens; here the window
// is closed by the desktop's means.
TEST_F(NavigatorTest, StartThenARegisteredScreenAndBackByClosingIt) {
    navigator.Register(Destination::LoadHelp, [](const ScreenContext&) { return new QWidget; });
    navigator.Start();
    const QPointer<QWidget> opening = navigator.currentScreen();
    Click(opening, "cmdEnter");
    QWidget* design = navigator.currentScreen();
    EXPECT_EQ(design->objectName(), "frmDesign");
    EXPECT_EQ(opening, nullptr);  // the welcome screen is discarded
    EXPECT_EQ(dialogParent, design);
    Click(design, "cmdLoadHelp");
    const QPointer<QWidget> helper = navigator.currentScreen();
    EXPECT_FALSE(design->isVisible());
    EXPECT_EQ(dialogParent, helper);
    helper->close();
    DiscardClosedScreens();
    EXPECT_EQ(helper, nullptr);
    EXPECT_EQ(navigator.currentScreen(), design);
    EXPECT_TRUE(design->isVisible());
    EXPECT_EQ(dialogParent, design);
    Click(design, "cmdInductor");  // nobody registered it: the screen says so itself
    EXPECT_EQ(
        dialogs.messages(),
        std::vector<std::string>{"The inductor designer is not yet available in this version."});
}

}  // namespace
}  // namespace varo
