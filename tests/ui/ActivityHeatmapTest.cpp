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
#include <QImage>
#include <QTest>
#include <QToolTip>

#include <set>
#include <tuple>

namespace burnwick {

namespace {

using std::chrono::days;
using test::pictureOf;

constexpr LocalDay dayOf(int year, unsigned month, unsigned day) {
    return LocalDay(std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day));
}

constexpr LocalDay today = dayOf(2025, 11, 21);
constexpr HeatmapMeasures measures{.cellSize = 11, .gap = 3, .weeks = 52};

HeatmapLayout layoutOf(const DailyActivity &activity, LocalDay last = today) {
    return layoutHeatmap(activity, last, measures, QFontMetricsF(fontOf(TextStyle::small)));
}

TEST(HeatLevelTest, ABoundaryBelongsToTheLighterColour) {
    const std::tuple<std::int64_t, std::int64_t, int> rows[] = {
        {0, 1, 0},     {-1, 1, 0},    {1, 400, 1},   {100, 400, 1}, {101, 400, 2}, {200, 400, 2},
        {201, 400, 3}, {300, 400, 3}, {301, 400, 4}, {400, 400, 4}, {1, 1, 4}};
    for (const auto &[count, most, level] : rows)
        EXPECT_EQ(heatLevel(count, most), level) << count << " of " << most;
}

TEST(HeatmapLayoutTest, ColumnsAreRunsOfSevenDaysThatEndToday) {
    const struct {
        LocalDay last;
        int column, row;
        LocalDay day;
    } rows[] = {{today, 51, 6, today},
                {today, 51, 0, dayOf(2025, 11, 15)},
                {today, 50, 6, dayOf(2025, 11, 14)},
                {today, 0, 0, dayOf(2024, 11, 23)},
                {dayOf(2024, 3, 1), 51, 5, dayOf(2024, 2, 29)}};
    for (const auto &row : rows) {
        const HeatmapLayout layout = layoutOf({}, row.last);
        ASSERT_EQ(layout.cells.size(), 364U);
        const auto &cell = layout.cells[static_cast<std::size_t>(row.column * 7 + row.row)];
        EXPECT_EQ(dayText(cell.day), dayText(row.day));
        EXPECT_EQ(cell.rect.left(), row.column * 14);
        EXPECT_EQ(cell.rect.top(), layout.cells[0].rect.top() + row.row * 14);
    }
}

TEST(HeatmapLayoutTest, LevelsRelateToTheMaximumOfTheWholeHistory) {
    const HeatmapLayout layout =
        layoutOf({{today - 500 * days(1), 1000}, {today, 300}, {today - 1 * days(1), 0}});
    EXPECT_EQ(layout.cells.back().level, 2);
    EXPECT_EQ(layout.cells.back().count, 300);
    EXPECT_EQ(layout.cells[362].level, 0);
}

TEST(HeatmapLayoutTest, EachPointOfTheGridHasItsDay) {
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

TEST(HeatmapLayoutTest, MonthsStandAboveTheirFirstDayInsideTheGrid) {
    const HeatmapLayout layout = layoutOf({});
    ASSERT_EQ(layout.months.size(), 12U);
    EXPECT_EQ(layout.months.front().name, QStringLiteral("Dec"));
    EXPECT_EQ(layout.months.back().name, QStringLiteral("Nov"));
    EXPECT_EQ(layout.months.back().rect.left(), 49 * 14);
    EXPECT_EQ(layoutOf({}, dayOf(2025, 11, 22)).months.back().rect.left(), 48 * 14)
        << "the column's last day";

    // On each day of a year, so on those too on which a month has just begun.
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

class ActivityHeatmapViewTest : public testing::Test {
protected:
    ActivityHeatmapViewTest() { m_view.setPalette(paletteOf(ColorScheme::dark)); }

    ActivityHeatmapView m_view{measures};
};

TEST_F(ActivityHeatmapViewTest, CellsHaveTheirLevelsColours) {
    m_view.setActivity({{today, 1}}, today);
    const QImage image = pictureOf(m_view);
    const auto at = [&](int x, int y) { return image.pixelColor(m_view.width() - x, m_view.height() - y); };
    const ThemeColors &colors = colorsOf(ColorScheme::dark);
    EXPECT_EQ(at(5, 5), colors.heat.back());
    const QColor yesterday = at(5, 19);
    EXPECT_NE(yesterday, at(5, 5));
    EXPECT_NE(yesterday, colors.card) << "an empty day is invisible";
    EXPECT_EQ(at(12, 5), colors.card) << "the gap";
}

TEST_F(ActivityHeatmapViewTest, CellsAreSharpAtEachScaleAndPosition) {
    QWidget window;
    m_view.setParent(&window);
    m_view.move(1, 1);
    m_view.setActivity({}, today);
    window.resize(m_view.size() + QSize(2, 2));
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const QImage image = pictureOf(window, scale);
        const int middle = qRound((1 + 5.5) * scale); // of the first column, and of the last row from below
        std::set<QRgb> down;
        for (int y = qRound(30 * scale); y < image.height(); ++y)
            down.insert(image.pixel(middle, y));
        std::set<QRgb> across;
        for (int x = 0; x < image.width(); ++x)
            across.insert(image.pixel(x, image.height() - middle));
        EXPECT_EQ(down.size(), 2U) << "cells and ground, at scale " << scale;
        EXPECT_EQ(across, down) << "at scale " << scale;
    }
    m_view.setParent(nullptr);
}

TEST_F(ActivityHeatmapViewTest, ItsAccessibleNameSumsUpTheVisibleDays) {
    const auto nameFor = [this](const DailyActivity &activity) {
        m_view.setActivity(activity, today);
        return m_view.accessibleName().toStdString();
    };
    const std::string start = "Activity of the last 52 weeks: ";
    EXPECT_EQ(nameFor({{today, 0}}), start + "no tokens");
    EXPECT_EQ(nameFor({{today, 1}}), start + "1 active day, most on Nov 21 with 1 token");
    EXPECT_EQ(nameFor({{today - 400 * days(1), 99'000'000}, // before the grid
                       {today - 10 * days(1), 52'300'000},
                       {today - 2 * days(1), 0},
                       {today, 7}}),
              start + "3 active days, most on Nov 11 with 52.3M tokens");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&m_view)->role(), QAccessible::Chart);
}

TEST_F(ActivityHeatmapViewTest, TheDayUnderThePointerHasAnOutlineAndAToolTip) {
    m_view.setActivity({{today, 1'200'000}}, today);
    test::PaintCount paints(m_view);
    const QPoint todaysCell(m_view.width() - 5, m_view.height() - 5);
    const QPoint edge(m_view.width() - 6, m_view.height() - 11);
    const auto hasOutline = [&](const QPoint &place) {
        return pictureOf(m_view).pixelColor(place) == colorsFor(m_view).text;
    };
    QTest::mouseMove(&m_view, todaysCell);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 21: 1.2M tokens"));
    EXPECT_EQ(paints.take(), 1);
    EXPECT_TRUE(hasOutline(edge));
    paints.take(); // of the picture

    QTest::mouseMove(&m_view, todaysCell - QPoint(2, 2));
    EXPECT_EQ(paints.take(), 0) << "for the same day";
    m_view.setActivity({{today, 1'300'000}}, today);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 21: 1.3M tokens"));

    QTest::mouseMove(&m_view, todaysCell - QPoint(0, 14));
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 20: no tokens"));
    EXPECT_FALSE(hasOutline(edge));
    EXPECT_TRUE(hasOutline(edge - QPoint(0, 14)));

    m_view.setActivity({{today, 1'300'000}}, today, today);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 20: before the chosen period"));
    EXPECT_EQ(m_view.accessibleName(),
              QStringLiteral("Activity since Nov 21: 1 active day, most on Nov 21 with 1.3M tokens"));
}

} // namespace
} // namespace burnwick
