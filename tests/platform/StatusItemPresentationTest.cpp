// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/StatusItemTestContent.h"
#include "platform/linux/statusitem/NotifierState.h"
#include "platform/linux/statusitem/StatusItemPainting.h"

#include <gtest/gtest.h>

#include <QtGui/QColor>

#include <limits>
#include <utility>

namespace burnwick {
namespace {

using Markup = TrayHost::Markup;

TEST(StatusItemToolTip, UsesTheHostsMarkup) {
    const struct {
        Markup markup;
        std::optional<double> usedPct;
        const char *body;
    } rows[] = {
        {Markup::qtText, 67,
         "<b>1.2</b>M | $<b>4.50</b> | s<b>67%</b>  <font color=\"#fcbd2e\">●</font><br/>"
         "67% of the 5-hour window used (orange)"},
        {Markup::pango, 67,
         "<b>1.2</b>M | $<b>4.50</b> | s<b>67%</b>  <span foreground=\"#fcbd2e\">●</span>\n"
         "67% of the 5-hour window used (orange)"},
        {Markup::plain, 130, "1.2M | $4.50 | s130%  ● · 130% of the 5-hour window used (red)"},
        {Markup::plain, {}, "1.2M | $4.50 | s--  ● · 5-hour window not known yet"},
    };
    const StatusItemContent hostile{{{"a<b>&\"", TitleSegment::Weight::regular, false, {}}}, {}, {}};
    for (const auto &row : rows) {
        EXPECT_EQ(toolTipBody(contentAt(row.usedPct), row.markup).toStdString(), row.body);
        EXPECT_TRUE(toolTipBody(hostile, row.markup).startsWith(QStringLiteral("a&lt;b&gt;&amp;&quot;")));
        StatusItemContent noted = contentAt(row.usedPct);
        noted.remarks = {"<Opus>: 5%", "as of 12:05"};
        const std::string end = row.markup == Markup::qtText  ? "</font>"
                                : row.markup == Markup::pango ? "</span>"
                                                              : "";
        const std::string lineBreak = row.markup == Markup::qtText  ? "<br/>"
                                      : row.markup == Markup::pango ? "\n"
                                                                    : " · ";
        EXPECT_EQ(toolTipBody(noted, row.markup).toStdString(),
                  row.body + lineBreak + "&lt;Opus&gt;: 5%" + lineBreak + "as of 12:05");
        noted.limits = {{"Session", 67, {}, {}, "a bar"}};
        EXPECT_TRUE(toolTipBody(noted, row.markup)
                        .endsWith(QString::fromStdString("●" + end + lineBreak + "a bar" + lineBreak +
                                                         "&lt;Opus&gt;: 5%" + lineBreak + "as of 12:05")))
            << "bars in place of words";
    }
}

TEST(StatusItemPainting, ASquareHasRoomForThreeDigits) {
    const std::pair<std::optional<double>, const char *> rows[] = {
        {{}, ""},       {67.2, "67"}, {99.6, "100"},
        {999.4, "999"}, {1000, "!!"}, {std::numeric_limits<double>::infinity(), ""},
    };
    for (const auto &[usedPct, text] : rows)
        EXPECT_EQ(compactQuotaText(usedPct).toStdString(), text);
}

/// Counts the pixels of about that colour in a part of the image, given in sixteenths of its height.
int countNear(const QImage &image, QColor color, const QRectF &sixteenths) {
    const double unit = image.height() / 16.0;
    const QRect area = QRectF(sixteenths.topLeft() * unit, sixteenths.size() * unit).toRect() & image.rect();
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            const int distance = std::abs(pixel.red() - color.red()) +
                                 std::abs(pixel.green() - color.green()) +
                                 std::abs(pixel.blue() - color.blue());
            count += pixel.alpha() == 255 && distance < 30 ? 1 : 0;
        }
    }
    return count;
}

constexpr QColor white(255, 255, 255);
constexpr QColor orange(252, 189, 46);

TEST(StatusItemPainting, ASquareHasGlyphDotAndDigitsInEverySize) {
    const QRectF upperLeft(0, 0, 8, 8), upperRight(8, 0, 8, 8), lower(0, 8, 16, 8), lowerRight(8, 8, 8, 8);
    const struct {
        const char *digits;
        QRectF dot;
    } rows[] = {{"67", upperRight}, {"100", upperRight}, {"", lowerRight}};
    for (const int size : statusIconSizes) {
        for (const auto &row : rows) {
            SCOPED_TRACE(row.digits);
            const QImage icon =
                paintSquareIcon(StatusIndicator::orange, QString::fromLatin1(row.digits), size);
            ASSERT_EQ(icon.size(), QSize(size, size));
            EXPECT_GT(countNear(icon, orange, row.dot), size / 2);
            EXPECT_GT(countNear(icon, white, lower), size / 8) << "the digits or the large glyph";
            EXPECT_GT(countNear(icon, white, upperLeft), 0) << "the glyph";
            EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0) << "a rounded corner";
            EXPECT_EQ(countNear(icon, white, QRectF(0, 15, 16, 1)), 0) << "beyond the lower edge";
            EXPECT_LT(icon.pixelColor(0, size / 2).lightness(), 100) << "the digits reach the edge";
            EXPECT_LT(icon.pixelColor(size - 1, size / 2).lightness(), 100);
        }
    }
}

TEST(StatusItemPainting, TheWideTitleHasItsDotAtTheRightEnd) {
    constexpr int scale = 3;
    const QImage picture = paintWideTitle(contentAt(67).title, scale);
    EXPECT_EQ(picture.height(), wideTitleHeight * scale);
    EXPECT_GT(picture.width(), 5 * picture.height());
    EXPECT_GT(countNear(picture, white, QRectF(0, 0, 16, 16)), 100) << "the glyph";
    const double end = 16.0 * picture.width() / picture.height();
    EXPECT_GT(countNear(picture, orange, QRectF(end - 20, 0, 20, 16)), 100);
    EXPECT_EQ(countNear(picture, orange, QRectF(0, 0, end - 20, 16)), 0);
    const QImage dimmed = paintWideTitle({{"88", TitleSegment::Weight::heavy, true, {}}}, scale);
    EXPECT_EQ(countNear(dimmed, white, QRectF(18, 0, 1000, 16)), 0) << "dimmed text is not white";
}

} // namespace
} // namespace burnwick
