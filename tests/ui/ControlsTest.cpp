// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PictureOf.h"
#include "support/VisibleControls.h"
#include "support/WaitFor.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/controls/SvgIcon.h"
#include "ui/controls/Switch.h"
#include "ui/layout/FittedArea.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemePalette.h"

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

const ColorScheme schemes[] = {ColorScheme::light, ColorScheme::dark};

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
    /// Whether the middle of the knob is at that end.
    bool knobIsAt(bool right) {
        const QImage picture = pictureOf(m_switch, ColorScheme::light);
        const int middle = picture.height() / 2;
        return picture.pixelColor(right ? picture.width() - middle : middle, middle) == QColor(Qt::white) &&
               picture.pixelColor(right ? middle : picture.width() - middle, middle) != QColor(Qt::white);
    }

    bool m_reducedMotion = false;
    Switch m_switch{[this] { return m_reducedMotion; }};
};

TEST_F(SwitchTest, TellsWhatTheUserDoesAndNotWhatItIsToShow) {
    m_switch.show();
    QList<bool> flips;
    QObject::connect(&m_switch, &Switch::flipped, [&](bool on) { flips << on; });
    QTest::keyClick(&m_switch, Qt::Key_Space);
    QTest::mouseClick(&m_switch, Qt::LeftButton);
    test::press(m_switch, QAccessible::CheckBox, QStringLiteral("Alarm"));
    EXPECT_EQ(flips, (QList<bool>{true, false, true}));
    m_switch.setOn(false);
    EXPECT_FALSE(m_switch.isChecked());
    EXPECT_EQ(flips.size(), 3) << "shown, not flipped";
}

TEST_F(SwitchTest, TheKnobSlidesUnlessNothingIsToMove) {
    m_switch.setChecked(true);
    EXPECT_EQ(m_switch.knobPosition(), 1) << "unseen";
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

TEST_F(SwitchTest, ShowsItsStateByPlaceAndColour) {
    EXPECT_TRUE(knobIsAt(false));
    m_switch.setLayoutDirection(Qt::RightToLeft);
    EXPECT_TRUE(knobIsAt(true));
    m_switch.setLayoutDirection(Qt::LeftToRight);
    m_switch.setChecked(true);
    EXPECT_TRUE(knobIsAt(true));
    for (const ColorScheme scheme : schemes) {
        const QImage picture = pictureOf(m_switch, scheme);
        EXPECT_EQ(picture.pixelColor(8, picture.height() / 2), colorsOf(scheme).accent);
    }
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

TEST_F(SegmentedPickerTest, IsOneStopAndTheArrowKeysPick) {
    ASSERT_TRUE(waitFor([this] { return m_window.isActiveWindow(); }));
    m_picker.setChosen(1);
    EXPECT_TRUE(m_picked.isEmpty()) << "shown, not picked";
    m_window.findChild<QPushButton *>()->setFocus();
    const auto press = [this](Qt::Key key) { QTest::keyClick(m_window.focusWidget(), key); };
    press(Qt::Key_Tab);
    EXPECT_EQ(focusedText(), QStringLiteral("Green"));
    press(Qt::Key_Right);
    EXPECT_EQ(focusedText(), QStringLiteral("Blue"));
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_EQ(m_picked, (QList<int>{2, 1, 0}));
    EXPECT_EQ(m_picker.chosen(), 0);
    press(Qt::Key_Tab);
    EXPECT_EQ(focusedText(), QStringLiteral("after"));
    QTest::keyClick(m_window.focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(focusedText(), QStringLiteral("Red"));
}

TEST_F(SegmentedPickerTest, TheChosenSegmentStandsOutInBothThemes) {
    for (const ColorScheme scheme : schemes) {
        const QImage picture = pictureOf(m_picker, scheme);
        const auto groundOf = [&](int index) {
            const QRect area = m_picker.findChildren<QAbstractButton *>().at(index)->geometry();
            return picture.pixelColor(area.left() + 5, area.center().y());
        };
        EXPECT_EQ(groundOf(0), colorsOf(scheme).segment);
        EXPECT_EQ(groundOf(1), groundOf(2));
        EXPECT_GE(qAbs(groundOf(0).lightness() - groundOf(1).lightness()), 12);
    }
}

TEST(QuietStyleTest, ItsScrollBarIsAHandleThatFollowsThePointer) {
    const auto style = std::make_unique<QuietStyle>();
    for (const ColorScheme scheme : schemes) {
        QScrollBar bar(Qt::Vertical);
        bar.setStyle(style.get());
        bar.setRange(0, 300);
        bar.setPageStep(100);
        bar.resize(style->pixelMetric(QStyle::PM_ScrollBarExtent), 400);
        const auto handleIsAt = [&](int y) {
            return pictureOf(bar, scheme).pixelColor(bar.width() - 3, y) != colorsOf(scheme).card;
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
}

TEST(FittedAreaTest, FollowsItsContentAndScrollsWithTheKeyboard) {
    QWidget window;
    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    auto *last = new QPushButton(QStringLiteral("last"));
    auto *first = new QPushButton(QStringLiteral("first"));
    column->addWidget(first);
    column->addWidget(last);
    auto *whole = new QVBoxLayout(&window);
    whole->setContentsMargins({});
    whole->setSizeConstraint(QLayout::SetFixedSize);
    whole->addWidget(new FittedArea(content));
    window.show();
    EXPECT_EQ(window.size(), content->sizeHint());
    for (const int height : {300, 40}) {
        last->setFixedHeight(height);
        // In the same turn of the event loop, or scroll bars are to be seen in between.
        QCoreApplication::processEvents();
        EXPECT_EQ(window.size(), content->sizeHint()) << height;
    }

    first->setFixedHeight(window.screen()->availableGeometry().height());
    QCoreApplication::processEvents();
    EXPECT_LT(window.height(), first->height());
    window.activateWindow();
    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow(); }));
    first->setFocus();
    QTest::keyClick(first, Qt::Key_Tab);
    EXPECT_TRUE(last->hasFocus());
    EXPECT_TRUE(window.rect().contains(last->mapTo(&window, last->rect().center())));
}

TEST(FittedAreaTest, ComesToTheScreenInItsSize) {
    QWidget window;
    auto *content = new QWidget;
    auto *cards = new QWidget;
    auto *card = new QPushButton(QStringLiteral("card"));
    auto *column = new QVBoxLayout(content);
    column->addWidget(cards);
    (new QVBoxLayout(cards))->addWidget(card);
    auto *whole = new QVBoxLayout(&window);
    whole->setSizeConstraint(QLayout::SetFixedSize);
    whole->addWidget(new FittedArea(content));
    // The first time it is shown and each later one.
    for (const int height : {300, 40}) {
        card->setFixedHeight(height);
        window.show();
        const QSize first = window.size();
        QCoreApplication::processEvents();
        EXPECT_EQ(first, window.size()) << height;
        window.close();
    }
}

TEST(SvgIconTest, NeedsNoPlugin) {
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
