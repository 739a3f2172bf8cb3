#include "app/navigator.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QWidget>

#include "session/last_session.h"
#include "support/temp_folder.h"

namespace varo {
namespace {

// What the event loop would do with the screens that were closed.
void DiscardClosedScreens() {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void Click(QWidget* screen, const char* button) {
    ASSERT_NE(screen, nullptr);
    auto* control = screen->findChild<QPushButton*>(QString::fromLatin1(button));
    ASSERT_NE(control, nullptr) << button;
    control->click();
    DiscardClosedScreens();
}

QString EntryText(QWidget* screen, const char* entry) {
    auto* control = screen->findChild<QLineEdit*>(QString::fromLatin1(entry));
    return control != nullptr ? control->text() : QStringLiteral("<no entry>");
}

class NavigatorTest : public ::testing::Test {
  protected:
    NavigatorTest() {
        QObject::connect(&navigator, &Navigator::finished, [this] { ++finished; });
    }

    QWidget* StartDesign() {
        navigator.Start();
        Click(navigator.currentScreen(), "cmdEnter");
        return navigator.currentScreen();
    }

    testing::TempFolder folder;
    const std::string sessionPath = SessionFilePath(folder.str());
    ScriptedDialogs dialogs;
    QWidget* dialogParent = nullptr;
    Navigator navigator{dialogs, [this](QWidget* window) { dialogParent = window; }, sessionPath};
    int finished = 0;
};

TEST_F(NavigatorTest, StartShowsTheDesignScreenAndDiscardsTheWelcomeScreen) {
    navigator.Start();
    const QPointer<QWidget> opening = navigator.currentScreen();
    ASSERT_NE(opening, nullptr);
    EXPECT_EQ(opening->objectName(), "frmOpening");
    EXPECT_EQ(dialogParent, opening);

    Click(opening, "cmdEnter");
    QWidget* design = navigator.currentScreen();
    ASSERT_NE(design, nullptr);
    EXPECT_EQ(design->objectName(), "frmDesign");
    EXPECT_TRUE(design->isVisible());
    EXPECT_EQ(opening, nullptr);
    EXPECT_EQ(dialogParent, design);
    EXPECT_EQ(finished, 0);
}

TEST_F(NavigatorTest, OnlyTheDesignScreensExitWritesTheSessionFile) {
    const std::string before = "* kept as it is unless the design screen exits\r\n";
    struct Case {
        const char* from;
        bool written;
    };
    for (const Case& c : {Case{"frmOpening", false}, Case{"frmDesign", true}}) {
        SCOPED_TRACE(c.from);
        testing::WriteBytes(sessionPath, before);
        Navigator run(dialogs, {}, sessionPath);
        int left = 0;
        QObject::connect(&run, &Navigator::finished, [&left] { ++left; });
        run.Start();
        if (c.written) Click(run.currentScreen(), "cmdEnter");
        Click(run.currentScreen(), "cmdExit");
        EXPECT_EQ(left, 1);
        EXPECT_EQ(run.currentScreen(), nullptr);
        EXPECT_EQ(testing::ReadBytes(sessionPath) != before, c.written);
    }
    EXPECT_TRUE(dialogs.messages().empty());
}

TEST_F(NavigatorTest, ARegisteredScreenOpensAndReturnsToTheUpdatedDesign) {
    navigator.Register(Destination::LoadHelp, [](const ScreenContext& context) {
        auto* screen = new QWidget;
        screen->setObjectName("frmFake");
        auto* back = new QPushButton(QStringLiteral("Return"), screen);
        back->setObjectName("cmdReturn");
        QObject::connect(back, &QPushButton::clicked, context.returnToDesign);
        context.state.plateR = 2400;  // as a helper's Accept would
        return screen;
    });
    using Leave = void (*)(QWidget*);
    const Leave byReturn = [](QWidget* screen) { Click(screen, "cmdReturn"); };
    const Leave byClosingTheWindow = [](QWidget* screen) {
        screen->close();
        DiscardClosedScreens();
    };
    QWidget* design = StartDesign();
    const QString plateBefore = EntryText(design, "txtPlate");
    for (Leave leave : {byReturn, byClosingTheWindow}) {
        Click(design, "cmdLoadHelp");
        const QPointer<QWidget> helper = navigator.currentScreen();
        ASSERT_NE(helper, nullptr);
        EXPECT_EQ(helper->objectName(), "frmFake");
        EXPECT_TRUE(helper->isVisible());
        EXPECT_FALSE(design->isVisible());
        EXPECT_EQ(dialogParent, helper);

        leave(helper);
        EXPECT_EQ(helper, nullptr);
        EXPECT_EQ(navigator.currentScreen(), design);
        EXPECT_TRUE(design->isVisible());
        EXPECT_EQ(dialogParent, design);
        EXPECT_NE(EntryText(design, "txtPlate"), plateBefore);
    }
    // A destination nobody registered still says so, and the design screen stays.
    Click(design, "cmdInductor");
    EXPECT_EQ(navigator.currentScreen(), design);
    EXPECT_EQ(
        dialogs.messages(),
        std::vector<std::string>{"The inductor designer is not yet available in this version."});
    EXPECT_EQ(finished, 0);
}

}  // namespace
}  // namespace varo
