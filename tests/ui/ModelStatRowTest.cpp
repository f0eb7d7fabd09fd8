// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PaintCount.h"
#include "support/WaitFor.h"
#include "ui/charts/ActivityHeatmapView.h"
#include "ui/charts/ModelBarChartView.h"
#include "ui/charts/UsageBar.h"
#include "ui/dashboard/ActivityTabs.h"
#include "ui/dashboard/ModelStatRowView.h"
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QTextDocumentFragment>

#include <algorithm>
#include <cmath>
#include <functional>

namespace burnwick {
namespace {

int filledWidth(UsageBar &bar, const QColor &color) {
    const QImage image = bar.grab().toImage();
    int filled = 0;
    for (int x = 0; x < image.width(); ++x)
        filled += image.pixel(x, image.height() / 2) == color.rgb();
    return filled;
}

TEST(UsageBarTest, FillsTheShareAndAtLeastADotAboveZero) {
    UsageBar bar;
    bar.setPalette(paletteOf(ColorScheme::light));
    bar.resize(200, 6);
    const QColor accent = colorsOf(ColorScheme::light).accent;
    for (const auto &[percent, width] :
         {std::pair(0.0, 0), {-5, 0}, {std::nan(""), 0}, {0.01, 6}, {50, 100}, {100, 200}, {250, 200}}) {
        bar.setShare(percent);
        EXPECT_NEAR(filledWidth(bar, accent), width, width > 0 ? 2 : 0) << percent;
    }
    bar.setColor(&ThemeColors::good);
    EXPECT_NEAR(filledWidth(bar, colorsOf(ColorScheme::light).good), 200, 2);
}

TEST(ModelStatRowViewTest, ShowsItsTextsAndChangesThemInPlace) {
    ModelStatRowView row;
    row.setStat({"claude-opus-4-1", 22'712'345, 8'500'000, 29.6});
    row.setPalette(paletteOf(ColorScheme::dark));
    row.resize(400, row.sizeHint().height());
    row.layout()->activate();
    EXPECT_NEAR(filledWidth(*row.findChild<UsageBar *>(), colorsOf(ColorScheme::dark).accent), 0.296 * 400,
                2);
    EXPECT_EQ(row.accessibleName(), QStringLiteral("claude-opus-4-1: 30%, 22.7M in · 8.5M out"));
    const QString toolTip = QTextDocumentFragment::fromHtml(row.toolTip()).toPlainText();
    EXPECT_EQ(toolTip, QStringLiteral("claude-opus-4-1\nIn: 22,712,345 tokens\nOut: 8,500,000 tokens"));

    const auto labels = row.findChildren<QLabel *>();
    row.setStat({"claude-opus-4-1", 999, 1000, 0});
    EXPECT_EQ(row.findChildren<QLabel *>(), labels) << "rebuilt";
    QStringList texts;
    for (const QLabel *label : labels)
        texts << label->text();
    EXPECT_EQ(texts, (QStringList{QStringLiteral("claude-opus-4-1"), QStringLiteral("0%"),
                                  QStringLiteral("999 in · 1.0K out")}));
}

TEST(ModelStatRowViewTest, ALongNameIsElidedAndTheShareIsNot) {
    ModelStatRowView row;
    row.setStat({std::string(300, 'w'), 1, 2, 50});
    row.resize(400, row.sizeHint().height());
    row.show();
    EXPECT_LT(row.minimumSizeHint().width(), 200) << "a long name widens the window";
    const QLabel *share = row.findChildren<QLabel *>().at(1);
    EXPECT_GE(share->width(), share->fontMetrics().horizontalAdvance(share->text()));
    EXPECT_LE(share->geometry().right(), 400);
}

/// `give` sets values that depend on the number.
template <typename View>
void expectPaintsOnlyForOtherValues(View &view, const std::function<void(int)> &give) {
    give(1);
    test::PaintCount paints(view);
    give(1);
    EXPECT_EQ(paints.take(), 0) << view.metaObject()->className();
    give(2);
    EXPECT_GT(paints.take(), 0) << view.metaObject()->className();
}

TEST(RepaintTest, OnlyOtherValuesArePainted) {
    constexpr LocalDay today(std::chrono::year(2025) / 11 / 21);
    const auto day = [&](int number) { return today + std::chrono::days(number); };
    UsageBar bar;
    expectPaintsOnlyForOtherValues(bar, [&](int n) { bar.setShare(n == 1 ? 120 : 99); });
    expectPaintsOnlyForOtherValues(
        bar, [&](int n) { bar.setColor(n == 1 ? &ThemeColors::good : &ThemeColors::over); });
    ModelStatRowView row;
    expectPaintsOnlyForOtherValues(row, [&](int n) { row.setStat(ModelStat{"a", 1, 2, 3.0 * n}); });
    ActivityHeatmapView map({.cellSize = 11, .gap = 3, .weeks = 52});
    expectPaintsOnlyForOtherValues(map, [&](int n) { map.setActivity(DailyActivity{{today, n}}, today); });
    expectPaintsOnlyForOtherValues(map, [&](int n) { map.setActivity(DailyActivity{{today, 5}}, day(n)); });
    ModelBarChartView chart;
    expectPaintsOnlyForOtherValues(chart, [&](int n) {
        chart.setActivity(DailyActivity{{today, n}}, today);
    });
}

TEST(ModelsTabTest, ShowsItsRowsHoweverManyThereWereBefore) {
    ModelsTab tab;
    tab.resize(760, 600);
    tab.show();
    HistoricalData history;
    for (const std::size_t count : {1U, 5U, 2U}) {
        history.modelStats.assign(count, ModelStat{"model", 1, 1, 50});
        tab.setValues(history, LocalDay{});
        QCoreApplication::processEvents();
        const auto rows = tab.findChildren<ModelStatRowView *>();
        EXPECT_EQ(static_cast<std::size_t>(rows.size()), count);
        EXPECT_TRUE(waitFor([&rows] {
            return std::ranges::all_of(
                rows, [](const auto *row) { return row->visibleRegion().boundingRect() == row->rect(); });
        })) << count;
    }
    history.modelStats.assign(5'000, ModelStat{"model", 1, 1, 50});
    tab.setValues(history, LocalDay{});
    EXPECT_EQ(tab.findChildren<ModelStatRowView *>().size(), 1'000);
}

} // namespace
} // namespace burnwick
