// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PictureOf.h"
#include "ui/charts/ModelBarChartView.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QImage>
#include <QTest>
#include <QToolTip>

#include <algorithm>
#include <array>
#include <limits>
#include <map>

namespace burnwick {
namespace {

using std::chrono::days;
using test::pictureOf;

constexpr LocalDay today(std::chrono::year(2025) / 11 / 21);

LocalDay daysAgo(int count) {
    return today - days(count);
}

BarChartLayout layoutOf(const DailyActivity &activity, QSizeF size = {728, 184}) {
    return layoutBarChart(activity, today, size, QFontMetricsF(fontOf(TextStyle::small)));
}

TEST(BarChartLayoutTest, HasOneBarForEachDayFromTheEarliestOn) {
    for (const auto &[earliest, bars] : {std::pair(0, 1U), {1, 2}, {89, 90}, {90, 90}, {200, 90}, {-2, 90}}) {
        const BarChartLayout layout = layoutOf({{daysAgo(earliest), 1}});
        ASSERT_EQ(layout.bars.size(), bars);
        for (std::size_t i = 0; i < bars; ++i)
            EXPECT_EQ(layout.bars[i].day, daysAgo(static_cast<int>(bars - 1 - i)));
    }
    EXPECT_EQ(layoutOf({}).bars.size(), 90U);
}

TEST(BarChartLayoutTest, HeightsAreProportionalToTheCountsOfTheShownDays) {
    const BarChartLayout layout =
        layoutOf({{daysAgo(200), 900'000}, {daysAgo(3), 30}, {daysAgo(2), 60}, {daysAgo(1), 0}, {today, 1}},
                 {728, 20'000});
    const auto heightOf = [&](std::size_t ago) { return layout.bars[89 - ago].rect.height(); };
    EXPECT_NEAR(heightOf(2), layout.plot.height(), 0.01);
    EXPECT_NEAR(heightOf(3), heightOf(2) / 2, 0.01);
    EXPECT_NEAR(heightOf(0), heightOf(2) / 60, 0.01);
    EXPECT_EQ(heightOf(1), 0);
    EXPECT_EQ(heightOf(50), 0);
    for (const BarChartLayout::Bar &bar : layout.bars)
        EXPECT_NEAR(bar.rect.bottom(), layout.plot.bottom(), 0.01);
    EXPECT_GE(layoutOf({{daysAgo(1), 1'000'000'000}, {today, 1}}).bars[1].rect.height(), 1) << "invisible";
}

TEST(AxisCountTextTest, HasASmallKAndDecimalsForMillionsOnly) {
    const std::pair<double, const char *> rows[] = {{0, "0"},        {999, "999"},       {1000, "1k"},
                                                    {20'400, "20k"}, {999'999, "1000k"}, {1e6, "1.0M"}};
    for (const auto &[count, text] : rows)
        EXPECT_EQ(axisCountText(count).toStdString(), text);
}

TEST(GuideValuesTest, AreTheLowestThreeOrFourRoundValuesWithExactTexts) {
    const std::pair<std::int64_t, std::vector<double>> rows[] = {
        {0, {0}},
        {1, {0, 1, 2}},
        {70, {0, 25, 50, 75}},
        {1400, {0, 1000, 2000}}, // 500, 1000 and 1500 would read "500", "1k", "2k"
    };
    for (const auto &[highest, values] : rows)
        EXPECT_EQ(guideValues(highest), values) << highest;

    const auto valueOf = [](QString text) {
        const double unit = text.endsWith(QLatin1Char('M')) ? 1e6 : text.endsWith(QLatin1Char('k')) ? 1e3 : 1;
        return text.remove(QLatin1Char('M')).remove(QLatin1Char('k')).toDouble() * unit;
    };
    std::vector<std::int64_t> highest{std::numeric_limits<std::int64_t>::max()};
    for (std::int64_t value = 1; value < 4'000'000'000'000'000'000; value += value / 7 + 1)
        highest.push_back(value);
    for (const std::int64_t value : highest) {
        SCOPED_TRACE(value);
        const std::vector<double> guides = guideValues(value);
        EXPECT_TRUE(guides.size() == 3 || guides.size() == 4);
        EXPECT_GE(guides.back(), static_cast<double>(value));
        EXPECT_LE(guides.back(), std::max(2.0, 2 * static_cast<double>(value)))
            << "half of the plot is empty";
        for (const double guide : guides)
            EXPECT_DOUBLE_EQ(valueOf(axisCountText(guide)), guide);
    }
}

TEST(BarChartLayoutTest, TextsStayInsideAndApart) {
    for (int i = 0; i < 90 * 6; ++i) {
        const int firstDay = i / 6;
        const double width = std::array{240.0, 400.0, 728.0}.at(static_cast<std::size_t>(i % 3));
        const std::int64_t count = i % 2 == 0 ? 2 : 52'300'000;
        SCOPED_TRACE(testing::Message() << firstDay + 1 << " bars on " << width << ", up to " << count);
        const BarChartLayout layout = layoutOf({{daysAgo(firstDay), count}}, {width, 184});
        double end = 0;
        for (auto date = layout.dates.rbegin(); date != layout.dates.rend(); ++date) {
            EXPECT_GE(date->rect.left(), end) << "overlaps, or leaves on the left";
            end = date->rect.right() + 4;
            EXPECT_LE(date->rect.right(), width + 0.01);
            EXPECT_LE(date->rect.bottom(), 184);
            const auto bar = layout.barAt({date->rect.center().x(), layout.plot.center().y()});
            ASSERT_TRUE(bar);
            EXPECT_EQ(date->text, dayText(layout.bars[*bar].day));
            EXPECT_NEAR(date->rect.center().x(), layout.bars[*bar].rect.center().x(), 0.01);
        }
        ASSERT_FALSE(layout.dates.empty());
        EXPECT_EQ(layout.dates.front().text, QStringLiteral("Nov 21")) << "no date for today";
        if (width == 728) {
            EXPECT_LE(layout.dates.size(), 10U);
            EXPECT_GE(layout.dates.size(), std::min<std::size_t>(layout.bars.size(), 5));
        }
        for (const BarChartLayout::GuideLine &guide : layout.guideLines) {
            EXPECT_GE(guide.labelRect.top(), 0);
            EXPECT_LT(guide.labelRect.right(), layout.plot.left());
            EXPECT_GE(guide.labelRect.width(),
                      QFontMetricsF(fontOf(TextStyle::small)).horizontalAdvance(guide.label));
        }
        EXPECT_LE(layout.bars.back().rect.right(), width);
    }
}

TEST(ModelBarChartViewTest, BarsAndGuideLinesAreSharpAndOfTheirHeightsAtEachScale) {
    const DailyActivity activity{{daysAgo(59), 20}, {daysAgo(1), 60}};
    ModelBarChartView view;
    view.setPalette(paletteOf(ColorScheme::dark));
    view.setActivity(activity, today);
    view.resize(728, 150); // after the first layout
    const BarChartLayout layout = layoutOf(activity, {728, 150});
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        const QImage image = pictureOf(view, scale);
        for (const std::size_t bar : {0U, 58U, 59U}) {
            std::map<QRgb, int> colors;
            for (int y = 0; y < layout.plot.bottom() * scale; ++y)
                ++colors[image.pixel(qRound(layout.bars[bar].rect.center().x() * scale), y)];
            EXPECT_NEAR(colors[colorsOf(ColorScheme::dark).accent.rgb()],
                        layout.bars[bar].rect.height() * scale, 3);
            EXPECT_LE(colors.size(), 3U) << "ground, lines and bar";
        }
    }
}

TEST(ModelBarChartViewTest, TheDayUnderThePointerHasAToolTipWithExactTokens) {
    const DailyActivity activity{{daysAgo(6), 1'234'567}, {today, 1}};
    ModelBarChartView view;
    view.resize(728, 184);
    view.setActivity(activity, today);
    view.show();
    EXPECT_EQ(view.accessibleName(),
              QStringLiteral("Tokens per day since Nov 15: 2 active days, most on Nov 15 with 1.2M tokens"));
    const BarChartLayout layout = layoutOf(activity);
    for (const auto &[bar, text] :
         {std::pair(0U, "Nov 15: 1,234,567 tokens"), {1, "Nov 16: no tokens"}, {6, "Nov 21: 1 token"}}) {
        QTest::mouseMove(&view, layout.slotOf(bar).center().toPoint());
        EXPECT_EQ(QToolTip::text(), QLatin1String(text));
    }
    // The pointer is now over another bar.
    view.setActivity({{today, 2'000}}, today);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 21: 2,000 tokens"));
}

} // namespace
} // namespace burnwick
