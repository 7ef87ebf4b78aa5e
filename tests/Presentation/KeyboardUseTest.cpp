#include "Presentation/KeyboardUse.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <gtest/gtest.h>

namespace trellisport::test {
namespace {

class KeyboardUseTest : public testing::Test {
protected:
    void press(Qt::Key key, QEvent::Type type = QEvent::KeyPress)
    {
        QKeyEvent event(type, key, Qt::NoModifier);
        QCoreApplication::sendEvent(&pressed, &event);
    }
    void click()
    {
        QMouseEvent event(QEvent::MouseButtonPress, {}, {}, Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&pressed, &event);
    }

    KeyboardUse use;
    QObject pressed;
};

TEST_F(KeyboardUseTest, AKeyThatMovesAboutCountsUntilAPointerIsUsed)
{
    EXPECT_FALSE(use.isLast());
    press(Qt::Key_Tab);
    EXPECT_TRUE(use.isLast());
    click();
    EXPECT_FALSE(use.isLast());
}

TEST_F(KeyboardUseTest, AKeyThatAShortcutTakesCountsToo)
{
    press(Qt::Key_Escape, QEvent::ShortcutOverride);
    EXPECT_TRUE(use.isLast());
}

TEST_F(KeyboardUseTest, WhatAPhoneSendsDoesNotCount)
{
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Back}) {
        press(key);
        EXPECT_FALSE(use.isLast()) << key;
    }
}

TEST_F(KeyboardUseTest, WhatIsTypedMeanwhileChangesNothing)
{
    press(Qt::Key_Tab);
    press(Qt::Key_A);
    EXPECT_TRUE(use.isLast());
}

} // namespace
} // namespace trellisport::test
