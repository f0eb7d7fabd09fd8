// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/WaitFor.h"
#include "ui/charts/UsageBar.h"
#include "ui/controls/PriceMark.h"
#include "ui/dashboard/ActivityTabs.h"
#include "ui/dashboard/ModelStatRowView.h"
#include "ui/dashboard/StatTile.h"
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>

#include <algorithm>
#include <cmath>

namespace burnwick {
namespace {

int filledWidth(UsageBar &bar, const QColor &color) {
    const QImage image = bar.grab().toImage();
    int filled = 0;
    for (int x = 0; x < image.width(); ++x)
        filled += image.pixel(x, image.height() / 2) == color.rgb();
    return filled;
}

TEST(UsageBarTest, FillsTheShareWithAtLeastADotAboveZero) {
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

TEST(ModelStatRowViewTest, ShowsItsTextsAndElidesOnlyTheName) {
    ModelStatRowView row;
    row.setPalette(paletteOf(ColorScheme::dark));
    row.setStat({std::string(300, 'w'), 22'712'345, 8'500'000, 29.6}, {});
    row.setStat({std::string(300, 'x'), 999, 1000, 50}, PricedTokens{1999, 0, 12.4});
    row.resize(400, row.sizeHint().height());
    row.show();
    EXPECT_NEAR(filledWidth(*row.findChild<UsageBar *>(), colorsOf(ColorScheme::dark).accent), 200, 2);
    QStringList texts;
    const auto labels = row.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        texts << label->text();
    EXPECT_EQ(texts.join(u'|'), QString(300, u'x') + QStringLiteral("|$12.40|50%|999 in · 1.0K out"));
    EXPECT_EQ(row.accessibleName(), QString(300, u'x') + QStringLiteral(": 50%, $12.40, 999 in · 1.0K out"));
    EXPECT_LT(row.minimumSizeHint().width(), 200) << "a long name widens the window";
    EXPECT_GE(labels[2]->width(), labels[2]->sizeHint().width());
    EXPECT_LE(labels[2]->geometry().right(), 400);
}

TEST(ModelsTabTest, ShowsItsRowsForAnyFormerNumberOfRows) {
    ModelsTab tab;
    tab.resize(760, 600);
    tab.show();
    HistoricalData history;
    for (const std::size_t count : {1U, 5U, 2U}) {
        history.modelStats.assign(count, ModelStat{"model", 1, 1, 50});
        tab.setValues(history, {}, LocalDay{});
        QCoreApplication::processEvents();
        const auto rows = tab.findChildren<ModelStatRowView *>();
        EXPECT_EQ(static_cast<std::size_t>(rows.size()), count);
        EXPECT_TRUE(waitFor([&rows] {
            return std::ranges::all_of(
                rows, [](const auto *row) { return row->visibleRegion().boundingRect() == row->rect(); });
        })) << count;
    }
    history.modelStats.assign(5'000, ModelStat{"model", 1, 1, 50});
    tab.setValues(history, {}, LocalDay{});
    EXPECT_EQ(tab.findChildren<ModelStatRowView *>().size(), 1'000);
}

TEST(ModelsTabTest, ShowsTheCostOrTheMarkByTheModelsName) {
    ModelsTab tab;
    tab.show();
    HistoricalData history;
    history.modelStats = {{"b", 1, 1, 50}, {"c", 1, 1, 30}, {"a", 1, 1, 20}};
    std::vector<ModelUsage> usage{{.name = "b"}, {.name = "c"}};
    usage[0].total = {10, 4, 2.5};
    usage[1].total = {10, 10, 0};
    tab.setValues(history, usage, LocalDay{});
    QCoreApplication::processEvents();
    const char *names[] = {"b: 50%, $2.50, 1 in · 1 out", "c: 30%, no price, 1 in · 1 out",
                           "a: 20%, 1 in · 1 out"};
    const auto rows = tab.findChildren<ModelStatRowView *>();
    for (qsizetype i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i]->accessibleName().toStdString(), names[i]);
        EXPECT_EQ(rows[i]->findChild<PriceMark *>()->isHidden(), i != 1);
        EXPECT_EQ(rows[i]->height(), rows[0]->height()) << "the mark is higher than a cost";
    }
}

TEST(OverviewTabTest, TheSessionsCostDescribesBothChoices) {
    OverviewTab tab;
    UsageFigures usage{Calendar::inZone("UTC")};
    usage.loggedSession.cost = 12.4;
    usage.exactSession.cost = 7.1;
    const std::string both = "$12.40 as logged · $7.10 exact, at API prices";
    for (const auto &[unpriced, end] :
         {std::pair(0, ""), {1, " · 1 token with no price"}, {1'200'000, " · 1.2M tokens with no price"}}) {
        usage.exactSession.unpricedTokens = unpriced;
        tab.setValues(usage, {}, {});
        for (const StatTile *tile : tab.findChildren<StatTile *>()) {
            const bool isCost = tile->accessibleName().startsWith(QLatin1String("Session Cost: "));
            EXPECT_EQ(tile->accessibleDescription().toStdString(), isCost ? both + end : "");
            EXPECT_EQ(tile->toolTip().isEmpty(), !isCost);
        }
    }
}

} // namespace
} // namespace burnwick
