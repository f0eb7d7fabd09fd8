// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PictureOf.h"
#include "support/WaitFor.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/controls/Switch.h"
#include "ui/theme/QuietStyle.h"
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

namespace burnwick {
namespace {

QImage pictureOf(QWidget &widget, ColorScheme scheme) {
    widget.setPalette(paletteOf(scheme));
    return test::pictureOf(widget);
}

TEST(SwitchTest, TheKnobSlidesUnlessMotionIsReduced) {
    bool reducedMotion = false;
    Switch control([&] { return reducedMotion; });
    control.setChecked(true);
    EXPECT_EQ(control.knobPosition(), 1) << "while hidden";
    control.show();
    control.click();
    EXPECT_GT(control.knobPosition(), 0) << "it jumps";
    control.click();
    control.click();
    EXPECT_TRUE(waitFor([&] { return control.knobPosition() == 0; })) << "reversed during the slide";
    reducedMotion = true;
    control.click();
    EXPECT_EQ(control.knobPosition(), 1);
}

TEST(SwitchTest, TheKnobsPlaceAndTheColourShowTheState) {
    Switch control([] { return true; });
    control.resize(control.sizeHint());
    const auto colors = [&] { // left and right of the middle
        const QImage picture = pictureOf(control, ColorScheme::dark);
        const int middle = picture.height() / 2;
        return std::pair(picture.pixelColor(middle, middle),
                         picture.pixelColor(picture.width() - middle, middle));
    };
    EXPECT_TRUE(colors().first == QColor(Qt::white) && colors().second != QColor(Qt::white));
    control.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(colors().second, QColor(Qt::white));
    control.setLayoutDirection(Qt::LeftToRight);
    control.setChecked(true);
    EXPECT_EQ(colors(), std::pair(colorsOf(ColorScheme::dark).accent, QColor(Qt::white)));
}

TEST(SegmentedPickerTest, TheChosenSegmentHasAnotherGround) {
    SegmentedPicker picker({QStringLiteral("Red"), QStringLiteral("Green"), QStringLiteral("Blue")});
    const QSignalSpy picked(&picker, &SegmentedPicker::picked);
    picker.setChosen(1);
    EXPECT_TRUE(picked.isEmpty()) << "emitted without the user";
    picker.show();
    const QImage picture = pictureOf(picker, ColorScheme::light);
    const auto groundOf = [&](int index) {
        const QRect area = picker.findChildren<QAbstractButton *>().at(index)->geometry();
        return picture.pixelColor(area.left() + 5, area.center().y());
    };
    EXPECT_EQ(groundOf(1), colorsOf(ColorScheme::light).segment);
    EXPECT_EQ(groundOf(0), groundOf(2));
    EXPECT_GE(qAbs(groundOf(1).lightness() - groundOf(0).lightness()), 12);
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

TEST(QuietStyleTest, AHandleOverAMarginKeepsItsDistanceFromTheEdges) {
    const auto style = std::make_unique<QuietStyle>();
    QScrollBar bar(Qt::Vertical);
    bar.setStyle(style.get());
    QuietStyle::layOverMargin(bar);
    bar.setRange(0, 300);
    bar.setPageStep(100);
    bar.resize(style->pixelMetric(QStyle::PM_ScrollBarExtent), 400);
    const auto handle = [&bar] {
        const QImage picture = pictureOf(bar, ColorScheme::light);
        QRect painted;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (picture.pixelColor(x, y) != colorsOf(ColorScheme::light).card)
                    painted |= QRect(x, y, 1, 1);
        return painted;
    };
    EXPECT_EQ(handle(), QRect(bar.width() - 9, 4, 5, 98));
    bar.setValue(300);
    EXPECT_EQ(handle(), QRect(bar.width() - 9, 298, 5, 98));
}

} // namespace
} // namespace burnwick
