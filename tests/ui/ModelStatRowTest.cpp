// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/WaitFor.h"
#include "ui/charts/UsageBar.h"
#include "ui/dashboard/ActivityTabs.h"
#include "ui/dashboard/ModelStatRowView.h"
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
    row.setStat({std::string(300, 'w'), 22'712'345, 8'500'000, 29.6});
    row.setStat({std::string(300, 'x'), 999, 1000, 50});
    row.resize(400, row.sizeHint().height());
    row.show();
    EXPECT_NEAR(filledWidth(*row.findChild<UsageBar *>(), colorsOf(ColorScheme::dark).accent), 200, 2);
    QStringList texts;
    const auto labels = row.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        texts << label->text();
    EXPECT_EQ(texts.join(u'|'), QString(300, u'x') + QStringLiteral("|50%|999 in · 1.0K out"));
    EXPECT_EQ(row.accessibleName(), QString(300, u'x') + QStringLiteral(": 50%, 999 in · 1.0K out"));
    EXPECT_LT(row.minimumSizeHint().width(), 200) << "a long name widens the window";
    EXPECT_GE(labels[1]->width(), labels[1]->sizeHint().width());
    EXPECT_LE(labels[1]->geometry().right(), 400);
}

TEST(ModelsTabTest, ShowsItsRowsForAnyFormerNumberOfRows) {
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
