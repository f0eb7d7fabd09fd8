// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PictureOf.h"
#include "support/VisibleControls.h"
#include "support/WaitFor.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/controls/SvgIcon.h"
#include "ui/controls/Switch.h"
#include "ui/layout/ScrollAreas.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

namespace burnwick {
namespace {

QImage pictureOf(QWidget &widget, ColorScheme scheme) {
    widget.setPalette(paletteOf(scheme));
    return test::pictureOf(widget);
}

class SwitchTest : public testing::Test {
protected:
    SwitchTest() {
        m_switch.setAccessibleName(QStringLiteral("Alarm"));
        m_switch.resize(m_switch.sizeHint());
    }

    bool m_reducedMotion = false;
    Switch m_switch{[this] { return m_reducedMotion; }};
};

TEST_F(SwitchTest, OnlyTheUserFlipsIt) {
    m_switch.show();
    QList<bool> flips;
    QObject::connect(&m_switch, &Switch::flipped, [&](bool on) { flips << on; });
    QTest::keyClick(&m_switch, Qt::Key_Space);
    QTest::mouseClick(&m_switch, Qt::LeftButton);
    test::press(m_switch, QAccessible::CheckBox, "Alarm");
    EXPECT_EQ(flips, (QList<bool>{true, false, true}));
    m_switch.setOn(false);
    EXPECT_FALSE(m_switch.isChecked());
    EXPECT_EQ(flips.size(), 3);
}

TEST_F(SwitchTest, TheKnobSlidesUnlessMotionIsReduced) {
    m_switch.setChecked(true);
    EXPECT_EQ(m_switch.knobPosition(), 1) << "while hidden";
    m_switch.show();
    m_switch.click();
    EXPECT_GT(m_switch.knobPosition(), 0) << "it jumps";
    m_switch.click();
    m_switch.click();
    EXPECT_TRUE(waitFor([this] { return m_switch.knobPosition() == 0; })) << "turned back on its way";
    m_reducedMotion = true;
    m_switch.click();
    EXPECT_EQ(m_switch.knobPosition(), 1);
}

TEST_F(SwitchTest, TheKnobsPlaceAndTheColourShowTheState) {
    const auto colors = [this] { // left and right of the middle
        const QImage picture = pictureOf(m_switch, ColorScheme::dark);
        const int middle = picture.height() / 2;
        return std::pair(picture.pixelColor(middle, middle),
                         picture.pixelColor(picture.width() - middle, middle));
    };
    EXPECT_EQ(colors().first, QColor(Qt::white));
    EXPECT_NE(colors().second, QColor(Qt::white));
    m_switch.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(colors().second, QColor(Qt::white));
    m_switch.setLayoutDirection(Qt::LeftToRight);
    m_switch.setChecked(true);
    EXPECT_EQ(colors(), std::pair(colorsOf(ColorScheme::dark).accent, QColor(Qt::white)));
}

class SegmentedPickerTest : public testing::Test {
protected:
    SegmentedPickerTest() {
        QObject::connect(&m_picker, &SegmentedPicker::picked, [this](int index) { m_picked << index; });
        auto *line = new QHBoxLayout(&m_window);
        line->addWidget(new QPushButton(QStringLiteral("before")));
        line->addWidget(&m_picker);
        line->addWidget(new QPushButton(QStringLiteral("after")));
        m_window.show();
        m_window.activateWindow();
    }
    [[nodiscard]] QString focusedText() const {
        const auto *button = qobject_cast<QAbstractButton *>(m_window.focusWidget());
        return button != nullptr ? button->text() : QString();
    }

    QWidget m_window;
    SegmentedPicker m_picker{{QStringLiteral("Red"), QStringLiteral("Green"), QStringLiteral("Blue")}};
    QList<int> m_picked;
};

TEST_F(SegmentedPickerTest, HasOneTabStopAndTheArrowKeysPick) {
    ASSERT_TRUE(waitFor([this] { return m_window.isActiveWindow(); }));
    m_picker.setChosen(1);
    EXPECT_TRUE(m_picked.isEmpty()) << "emitted without the user";
    m_window.findChild<QPushButton *>()->setFocus();
    const auto press = [this](Qt::Key key) { QTest::keyClick(m_window.focusWidget(), key); };
    press(Qt::Key_Tab);
    EXPECT_EQ(focusedText(), QStringLiteral("Green"));
    press(Qt::Key_Right);
    EXPECT_EQ(focusedText(), QStringLiteral("Blue"));
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(m_picked, (QList<int>{2, 1, 0}));
    press(Qt::Key_Tab);
    EXPECT_EQ(focusedText(), QStringLiteral("after"));
    press(Qt::Key_Backtab);
    EXPECT_EQ(focusedText(), QStringLiteral("Red"));
}

TEST_F(SegmentedPickerTest, TheChosenSegmentHasAnotherGround) {
    const QImage picture = pictureOf(m_picker, ColorScheme::light);
    const auto groundOf = [&](int index) {
        const QRect area = m_picker.findChildren<QAbstractButton *>().at(index)->geometry();
        return picture.pixelColor(area.left() + 5, area.center().y());
    };
    EXPECT_EQ(groundOf(0), colorsOf(ColorScheme::light).segment);
    EXPECT_EQ(groundOf(1), groundOf(2));
    EXPECT_GE(qAbs(groundOf(0).lightness() - groundOf(1).lightness()), 12);
}

TEST(QuietStyleTest, TheScrollBarsHandleFollowsThePointer) {
    const auto style = std::make_unique<QuietStyle>();
    QScrollBar bar(Qt::Vertical);
    bar.setStyle(style.get());
    bar.setRange(0, 300);
    bar.setPageStep(100);
    bar.resize(style->pixelMetric(QStyle::PM_ScrollBarExtent), 400);
    const auto handleIsAt = [&](int y) {
        return pictureOf(bar, ColorScheme::dark).pixelColor(bar.width() - 3, y) !=
               colorsOf(ColorScheme::dark).card;
    };
    EXPECT_TRUE(handleIsAt(50) && !handleIsAt(105) && !handleIsAt(395));
    QTest::mousePress(&bar, Qt::LeftButton, {}, {bar.width() - 3, 50});
    QTest::mouseMove(&bar, {bar.width() - 3, 350});
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, {bar.width() - 3, 350});
    EXPECT_EQ(bar.value(), 300);
    EXPECT_TRUE(handleIsAt(350) && !handleIsAt(5) && !handleIsAt(295));
    QTest::mouseClick(&bar, Qt::LeftButton, {}, {bar.width() - 3, 100});
    EXPECT_EQ(bar.value(), 200) << "a click beside the handle turns a page";
}

/// A window around an area with two buttons.
class FittedAreaTest : public testing::Test {
protected:
    FittedAreaTest() {
        auto *column = new QVBoxLayout(m_content);
        column->addWidget(m_first);
        column->addWidget(m_last);
        auto *whole = new QVBoxLayout(&m_window);
        whole->setContentsMargins({});
        whole->setSizeConstraint(QLayout::SetFixedSize);
        whole->addWidget(new FittedArea(m_content));
    }

    QWidget m_window;
    QWidget *m_content = new QWidget;
    QPushButton *m_first = new QPushButton(QStringLiteral("first"));
    QPushButton *m_last = new QPushButton(QStringLiteral("last"));
};

TEST_F(FittedAreaTest, FollowsItsContentAndScrollsWithTheKeyboard) {
    m_window.show();
    EXPECT_EQ(m_window.size(), m_content->sizeHint());
    for (const int height : {300, 40}) {
        m_last->setFixedHeight(height);
        // One turn of the event loop: later turns would show scroll bars first.
        QCoreApplication::processEvents();
        EXPECT_EQ(m_window.size(), m_content->sizeHint()) << height;
    }

    m_first->setFixedHeight(m_window.screen()->availableGeometry().height());
    QCoreApplication::processEvents();
    EXPECT_LT(m_window.height(), m_first->height());
    m_window.activateWindow();
    ASSERT_TRUE(waitFor([this] { return m_window.isActiveWindow(); }));
    m_first->setFocus();
    QTest::keyClick(m_first, Qt::Key_Tab);
    EXPECT_TRUE(m_last->hasFocus());
    EXPECT_TRUE(m_window.rect().contains(m_last->mapTo(&m_window, m_last->rect().center())));
}

TEST_F(FittedAreaTest, AWindowHasItsSizeWhenItIsShownAndShownAgain) {
    auto *cards = new QWidget; // with a layout within the content's
    (new QVBoxLayout(cards))->addWidget(m_last);
    m_content->layout()->addWidget(cards);
    for (const int height : {300, 40}) {
        m_last->setFixedHeight(height);
        m_window.show();
        const QSize first = m_window.size();
        QCoreApplication::processEvents();
        EXPECT_EQ(first, m_window.size()) << height;
        m_window.close();
    }
}

TEST(SvgIconTest, IsDrawnWithoutQtsImagePlugins) {
    const QStringList paths = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
    const QImage picture = applicationIcon().pixmap({32, 32}, 2.0).toImage();
    QCoreApplication::setLibraryPaths(paths);
    ASSERT_EQ(picture.size(), QSize(64, 64));
    EXPECT_EQ(picture.pixelColor(32, 32).alpha(), 255);
    EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);
}

} // namespace
} // namespace burnwick
