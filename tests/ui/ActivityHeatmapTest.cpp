// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PaintCount.h"
#include "support/PictureOf.h"
#include "ui/charts/ActivityHeatmapView.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QFontMetricsF>
#include <QTest>
#include <QToolTip>

#include <utility>

namespace burnwick {
namespace {

using std::chrono::days;
using test::pictureOf;

constexpr LocalDay today(std::chrono::year(2025) / 11 / 21);
constexpr HeatmapMeasures measures{.cellSize = 11, .gap = 3, .weeks = 52};

HeatmapLayout layoutOf(const DailyActivity &activity, LocalDay last = today) {
    return layoutHeatmap(activity, last, measures, QFontMetricsF(fontOf(TextStyle::small)));
}

TEST(HeatLevelTest, ABoundaryBelongsToTheLighterColour) {
    for (const auto &[count, level] :
         {std::pair(-1, 0), {0, 0}, {1, 1}, {100, 1}, {101, 2}, {200, 2}, {201, 3}, {300, 3}, {301, 4}})
        EXPECT_EQ(heatLevel(count, 400), level) << count;
}

TEST(HeatmapLayoutTest, ColumnsOfSevenDaysEndTodayAndLevelsRelateToTheWholeHistory) {
    const HeatmapLayout layout = layoutOf({{today - 500 * days(1), 1000}, {today, 300}});
    ASSERT_EQ(layout.cells.size(), 364U);
    const QPoint first = layout.cells[0].rect.topLeft();
    for (int i = 0; i < 364; ++i) {
        const HeatmapLayout::Cell &cell = layout.cells[static_cast<std::size_t>(i)];
        EXPECT_EQ(cell.day, today - days(363 - i));
        EXPECT_EQ(cell.rect.topLeft() - first, QPoint(i / 7 * 14, i % 7 * 14));
        EXPECT_EQ(cell.count, i == 363 ? 300 : 0);
        EXPECT_EQ(cell.level, i == 363 ? 2 : 0);
    }
}

TEST(HeatmapLayoutTest, CellAtFindsTheDayOfEachPointInsideTheGridOnly) {
    const HeatmapLayout layout = layoutOf({});
    const double top = layout.cells[0].rect.top();
    for (const QPointF &beside : {QPointF(5, top - 3), {5, top + 98}, {-2, top + 5}, {728, top + 5}})
        EXPECT_EQ(layout.cellAt(beside), std::nullopt) << beside.x() << ", " << beside.y();
    for (std::size_t i = 0; i < layout.cells.size(); ++i) {
        EXPECT_EQ(layout.cellAt(layout.cells[i].rect.center()), i);
        EXPECT_EQ(layout.cellAt(layout.zoneOf(i).topLeft()), i);
        EXPECT_EQ(layout.cellAt(layout.zoneOf(i).bottomRight()), i);
    }
}

TEST(HeatmapLayoutTest, NamesOfMonthsAreAboveTheirFirstDayAndInsideTheGrid) {
    const HeatmapLayout layout = layoutOf({});
    ASSERT_EQ(layout.months.size(), 12U);
    EXPECT_EQ(layout.months.front().name, QStringLiteral("Dec"));
    EXPECT_EQ(layout.months.back().name, QStringLiteral("Nov"));
    EXPECT_EQ(layout.months.back().rect.left(), 49 * 14);
    EXPECT_EQ(layoutOf({}, today + days(1)).months.back().rect.left(), 48 * 14) << "the column's last day";

    // Some of these days are the first of a month.
    for (int i = 0; i < 365; ++i) {
        const HeatmapLayout other = layoutOf({}, today + days(i));
        double end = 0;
        for (const HeatmapLayout::Month &month : other.months) {
            EXPECT_GE(month.rect.left(), end) << "overlaps";
            end = month.rect.right();
        }
        EXPECT_LE(end, 725) << dayText(today + days(i)).toStdString();
    }
}

TEST(ActivityHeatmapViewTest, ItsAccessibleNameSumsUpTheVisibleDays) {
    ActivityHeatmapView view(measures);
    const auto nameFor = [&view](const DailyActivity &activity) {
        view.setActivity(activity, today);
        return view.accessibleName().toStdString();
    };
    const std::string start = "Activity of the last 52 weeks: ";
    EXPECT_EQ(nameFor({{today, 0}}), start + "no tokens");
    EXPECT_EQ(nameFor({{today, 1}}), start + "1 active day, most on Nov 21 with 1 token");
    EXPECT_EQ(nameFor({{today - 400 * days(1), 99'000'000}, // before the grid
                       {today - 10 * days(1), 52'300'000},
                       {today - 2 * days(1), 0},
                       {today, 7}}),
              start + "3 active days, most on Nov 11 with 52.3M tokens");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&view)->role(), QAccessible::Chart);
}

TEST(ActivityHeatmapViewTest, TheDayUnderThePointerHasAnOutlineAndAToolTip) {
    ActivityHeatmapView view(measures);
    view.setActivity({{today, 1'200'000}}, today);
    test::PaintCount paints(view);
    const QPoint todaysCell(view.width() - 5, view.height() - 5);
    const QPoint edge(view.width() - 6, view.height() - 11);
    const auto hasOutline = [&](const QPoint &place) {
        return pictureOf(view).pixelColor(place) == colorsFor(view).text;
    };
    QTest::mouseMove(&view, todaysCell);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 21: 1.2M tokens"));
    EXPECT_EQ(paints.take(), 1);
    EXPECT_TRUE(hasOutline(edge));
    paints.take(); // of the picture

    QTest::mouseMove(&view, todaysCell - QPoint(2, 2));
    EXPECT_EQ(paints.take(), 0) << "for the same day";
    view.setActivity({{today, 1'300'000}}, today);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 21: 1.3M tokens"));

    QTest::mouseMove(&view, todaysCell - QPoint(0, 14));
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 20: no tokens"));
    EXPECT_FALSE(hasOutline(edge));
    EXPECT_TRUE(hasOutline(edge - QPoint(0, 14)));

    view.setActivity({{today, 1'300'000}}, today, today);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 20: before the chosen period"));
    EXPECT_EQ(view.accessibleName(),
              QStringLiteral("Activity since Nov 21: 1 active day, most on Nov 21 with 1.3M tokens"));
}

} // namespace
} // namespace burnwick
