// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PaintCount.h"
#include "support/PictureOf.h"
#include "ui/charts/ActivityHeatmapView.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"
#include "ui/theme/ThemePalette.h"

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
constexpr HeatmapMeasures measures{11, 3, 52};

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
    struct Case {
        LocalDay last;
        int column;
        int row;
        LocalDay day;
    };
    // The clocks change on 2025-03-30 and 2025-10-26 in Europe; 2024 has a 29th of February.
    for (const Case &row : {Case{today, 51, 6, today}, Case{today, 51, 0, dayOf(2025, 11, 15)},
                            Case{today, 50, 6, dayOf(2025, 11, 14)}, Case{today, 0, 0, dayOf(2024, 11, 23)},
                            Case{today, 47, 6, dayOf(2025, 10, 24)}, Case{today, 17, 6, dayOf(2025, 3, 28)},
                            Case{dayOf(2024, 3, 1), 51, 5, dayOf(2024, 2, 29)}}) {
        const HeatmapLayout layout = layoutOf({}, row.last);
        ASSERT_EQ(layout.cells.size(), 364U);
        const auto &cell = layout.cells[static_cast<std::size_t>(row.column * 7 + row.row)];
        EXPECT_EQ(dayText(cell.day), dayText(row.day));
        EXPECT_EQ(cell.rect.left(), row.column * 14);
        EXPECT_EQ(cell.rect.top(), layout.cells[0].rect.top() + row.row * 14);
    }
}

TEST(HeatmapLayoutTest, TheMostIsThatOfTheWholeHistory) {
    const HeatmapLayout layout =
        layoutOf({{today - 500 * days(1), 1000}, {today, 300}, {today - 1 * days(1), 0}});
    EXPECT_EQ(layout.cells.back().level, 2);
    EXPECT_EQ(layout.cells.back().count, 300);
    EXPECT_EQ(layout.cells[362].level, 0);
}

TEST(HeatmapLayoutTest, EveryPointOfTheGridHasItsDay) {
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

TEST(ActivityHeatmapViewTest, TodaysCellHasItsColourInBothSchemes) {
    for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
        ActivityHeatmapView view(11, 3, 52);
        view.setPalette(paletteOf(scheme));
        view.setActivity({{today, 1}}, today);
        const QImage image = pictureOf(view);
        const auto at = [&](int x, int y) { return image.pixelColor(view.width() - x, view.height() - y); };
        EXPECT_EQ(at(5, 5), colorsOf(scheme).heat.back());
        const QColor yesterday = at(5, 19);
        EXPECT_NE(yesterday, at(5, 5));
        EXPECT_NE(yesterday, colorsOf(scheme).card) << "an empty day is seen";
        EXPECT_EQ(at(12, 5), colorsOf(scheme).card) << "the gap";
    }
}

TEST(ActivityHeatmapViewTest, CellsAreSharpWhereverTheyStand) {
    QWidget window;
    window.setPalette(paletteOf(ColorScheme::light));
    ActivityHeatmapView view(11, 3, 52, &window);
    view.move(1, 1);
    view.setActivity({}, today);
    window.resize(view.size() + QSize(2, 2));
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        const QImage image = pictureOf(window, scale);
        std::set<QRgb> down;
        for (int y = qRound(30 * scale); y < image.height(); ++y)
            down.insert(image.pixel(qRound((1 + 5.5) * scale), y));
        std::set<QRgb> across;
        for (int x = 0; x < image.width(); ++x)
            across.insert(image.pixel(x, image.height() - qRound((1 + 5.5) * scale)));
        EXPECT_EQ(down.size(), 2U) << "cells and ground, at scale " << scale;
        EXPECT_EQ(across, down) << "at scale " << scale;
    }
}

TEST(ActivityHeatmapViewTest, DescribesItselfInASentence) {
    ActivityHeatmapView view(11, 3, 52);
    const auto sentenceFor = [&](const DailyActivity &activity) {
        view.setActivity(activity, today);
        return view.accessibleName().toStdString();
    };
    const std::string start = "Activity of the last 52 weeks: ";
    EXPECT_EQ(sentenceFor({{today, 0}}), start + "no tokens");
    EXPECT_EQ(sentenceFor({{today, 1}}), start + "1 active day, most on Nov 21 with 1 token");
    EXPECT_EQ(sentenceFor({{today - 400 * days(1), 99'000'000}, // not on the grid
                           {today - 10 * days(1), 52'300'000},
                           {today - 2 * days(1), 0},
                           {today, 7}}),
              start + "3 active days, most on Nov 11 with 52.3M tokens");
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&view);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::Chart);
}

TEST(ActivityHeatmapViewTest, TheDayUnderThePointerSaysItsTokens) {
    ActivityHeatmapView view(11, 3, 52);
    view.setActivity({{today, 1'200'000}}, today);
    test::PaintCount paints(view);
    const QPoint todaysCell(view.width() - 5, view.height() - 5);
    QTest::mouseMove(&view, todaysCell);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 21: 1.2M tokens"));
    EXPECT_EQ(paints.take(), 1);
    const QColor outline = colorsFor(view).text;
    const QPoint edge(view.width() - 6, view.height() - 11);
    EXPECT_EQ(pictureOf(view).pixelColor(edge), outline);
    paints.take(); // for the picture

    QTest::mouseMove(&view, todaysCell - QPoint(2, 2));
    EXPECT_EQ(paints.take(), 0) << "the same day";
    view.setActivity({{today, 1'300'000}}, today);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 21: 1.3M tokens"));

    QTest::mouseMove(&view, todaysCell - QPoint(0, 14));
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 20: no tokens"));
    EXPECT_NE(pictureOf(view).pixelColor(edge), outline);
    EXPECT_EQ(pictureOf(view).pixelColor(edge - QPoint(0, 14)), outline);

    view.setActivity({{today, 1'300'000}}, today, today);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Nov 20: before the chosen period"));
    EXPECT_EQ(view.accessibleName(),
              QStringLiteral("Activity since Nov 21: 1 active day, most on Nov 21 with 1.3M tokens"));
}

} // namespace
} // namespace burnwick
