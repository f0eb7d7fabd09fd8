// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PaintCount.h"
#include "support/WaitFor.h"
#include "ui/controls/ToolTipText.h"
#include "ui/dashboard/ActivityTabs.h"
#include "ui/dashboard/ModelStatRowView.h"
#include "ui/dashboard/UsageBar.h"
#include "ui/theme/ThemeColors.h"
#include "ui/theme/ThemePalette.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QLabel>
#include <QLayout>
#include <QTextDocumentFragment>

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

TEST(UsageBarTest, ShowsTheShareAndAtLeastADotAboveZero) {
    UsageBar bar;
    bar.setPalette(paletteOf(ColorScheme::light));
    bar.resize(200, 6);
    struct Case {
        double percent;
        int width;
    };
    for (const Case &row : {Case{0, 0}, Case{-5, 0}, Case{std::nan(""), 0}, Case{0.01, 6}, Case{1, 6},
                            Case{50, 100}, Case{100, 200}, Case{250, 200}}) {
        bar.setShare(row.percent);
        EXPECT_NEAR(filledWidth(bar, QColor(196, 107, 79)), row.width, row.width > 0 ? 2 : 0) << row.percent;
    }
    bar.setColor(&ThemeColors::good);
    EXPECT_NEAR(filledWidth(bar, colorsOf(ColorScheme::light).good), 200, 2);
}

TEST(UsageBarTest, RepaintsOnlyWhatLooksDifferent) {
    UsageBar bar;
    bar.setShare(100);
    test::PaintCount paints(bar);
    bar.setShare(100);
    bar.setShare(120);
    bar.setColor(&ThemeColors::accent);
    EXPECT_EQ(paints.take(), 0);
    bar.setShare(99);
    EXPECT_EQ(paints.take(), 1);
    bar.setColor(&ThemeColors::over);
    EXPECT_EQ(paints.take(), 1);
}

QStringList textsOf(const ModelStatRowView &row) {
    QStringList texts;
    for (const QLabel *label : row.findChildren<QLabel *>())
        texts << label->text();
    return texts;
}

TEST(ModelStatRowViewTest, ShowsAModelAndFollowsItInPlace) {
    ModelStatRowView row;
    row.setStat({"claude-opus-4-1", 22'712'345, 8'500'000, 29.6});
    row.setPalette(paletteOf(ColorScheme::dark));
    row.resize(400, row.sizeHint().height());
    row.layout()->activate();
    UsageBar *bar = row.findChild<UsageBar *>();
    EXPECT_NEAR(filledWidth(*bar, QColor(196, 107, 79)), 0.296 * 400, 2);
    const auto labels = row.findChildren<QLabel *>();
    EXPECT_EQ(textsOf(row), (QStringList{QStringLiteral("claude-opus-4-1"), QStringLiteral("30%"),
                                         QStringLiteral("22.7M in · 8.5M out")}));
    EXPECT_EQ(row.accessibleName(), QStringLiteral("claude-opus-4-1: 30%, 22.7M in · 8.5M out"));
    const QString toolTip = QTextDocumentFragment::fromHtml(row.toolTip()).toPlainText();
    EXPECT_EQ(toolTip, QStringLiteral("claude-opus-4-1\nIn: 22,712,345 tokens\nOut: 8,500,000 tokens"));

    row.setStat({"claude-opus-4-1", 999, 1000, 0});
    EXPECT_EQ(textsOf(row).at(2), QStringLiteral("999 in · 1.0K out"));
    EXPECT_EQ(row.findChildren<QLabel *>(), labels) << "rebuilt";
}

TEST(ModelStatRowViewTest, RepaintsOnlyForOtherValues) {
    ModelStatRowView row;
    row.setStat({"a", 1, 2, 3});
    test::PaintCount paints(row);
    row.setStat({"a", 1, 2, 3});
    EXPECT_EQ(paints.take(), 0);
    row.setStat({"a", 1, 2, 4});
    EXPECT_GT(paints.take(), 0);
}

TEST(ModelStatRowViewTest, ANameIsPlainTextAndTakesNoRoomFromTheShare) {
    const std::string name = "<b>&amp; a & b</b> %1 " + std::string(300, 'w');
    ModelStatRowView row;
    row.setStat({name, 1, 2, 50});
    row.resize(400, row.sizeHint().height());
    row.show();
    EXPECT_LT(row.minimumSizeHint().width(), 200) << "a long name widens the window";
    for (const QLabel *label : row.findChildren<QLabel *>()) {
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        EXPECT_LE(label->geometry().right(), 400);
    }
    const QLabel *share = row.findChildren<QLabel *>().at(1);
    EXPECT_GE(share->width(), share->fontMetrics().horizontalAdvance(share->text()));
    const QString shown = QTextDocumentFragment::fromHtml(row.toolTip()).toPlainText();
    EXPECT_EQ(shown.section(QLatin1Char('\n'), 0, 0), QString::fromStdString(name));
}

TEST(ToolTipTextTest, ShowsATextAsItStands) {
    for (const char *text : {"a & b", "\"quoted\"", "<b>bold</b>", "&lt;", "one\ntwo", "plain"}) {
        const QString toolTip = plainToolTip(QString::fromUtf8(text));
        EXPECT_TRUE(Qt::mightBeRichText(toolTip)) << text;
        EXPECT_EQ(QTextDocumentFragment::fromHtml(toolTip).toPlainText().toStdString(), text);
    }
}

TEST(ModelsTabTest, ShowsItsRowsHoweverManyThereWereBefore) {
    ModelsTab tab;
    tab.resize(760, 600);
    tab.show();
    HistoricalData history;
    for (const std::size_t count : {1, 5, 2}) {
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
}

} // namespace
} // namespace burnwick
