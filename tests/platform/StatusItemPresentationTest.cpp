// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/StatusItemTestContent.h"
#include "platform/linux/statusitem/StatusItemPainting.h"
#include "platform/linux/statusitem/StatusItemToolTip.h"
#include "platform/linux/statusitem/StatusNotifierTypes.h"
#include "platform/linux/statusitem/TrayHost.h"

#include <gtest/gtest.h>

#include <QtGui/QColor>

#include <limits>
#include <utility>

namespace burnwick {
namespace {

using enum TrayHost::Presentation;
using Markup = TrayHost::Markup;

TEST(TrayHost, IsKnownByItsProcessName) {
    struct Case {
        const char *processName;
        TrayHost host;
    };
    const Case cases[] = {
        {"gnome-shell", {label, Markup::plain, true, false, true}},
        {"ayatana-indicat", {label, Markup::plain, true, true}},
        {"waybar", {wide, Markup::pango, false, false}},
        {"panel-12-systra", {compact, Markup::pango, false, false}}, // cut by the kernel
        {"notification-ar", {label, Markup::pango, false, false}},   // MATE's applet, cut too
        {"kded5", {compact, Markup::qtText, false, false}},
        {"", {compact, Markup::plain, false, false}}, // the process is hidden from us
        {"my-waybar", {compact, Markup::plain, false, false}},
    };
    for (const Case &c : cases)
        EXPECT_EQ(trayHostFor(c.processName), c.host) << c.processName;
}

TEST(StatusItemToolTip, SpeaksTheHostsMarkup) {
    struct Case {
        Markup markup;
        std::optional<double> usedPct;
        const char *body;
    };
    const Case cases[] = {
        {Markup::qtText, 67,
         "<b>1.2</b>M | $<b>4.50</b> | s<b>67%</b>  <font color=\"#fcbd2e\">●</font><br/>"
         "67% of the 5-hour window used (orange)"},
        {Markup::pango, 67,
         "<b>1.2</b>M | $<b>4.50</b> | s<b>67%</b>  <span foreground=\"#fcbd2e\">●</span>\n"
         "67% of the 5-hour window used (orange)"},
        {Markup::plain, 130, "1.2M | $4.50 | s130%  ● · 130% of the 5-hour window used (red)"},
        {Markup::plain, {}, "1.2M | $4.50 | s--  ● · 5-hour window not known yet"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(toolTipBody(contentAt(c.usedPct), c.markup).toStdString(), c.body);
}

TEST(StatusItemToolTip, EscapesTextInEveryMarkup) {
    const StatusItemContent content{{{"a<b>&\"", TitleSegment::Weight::regular, false, {}}}, {}, {}};
    for (const Markup markup : {Markup::plain, Markup::qtText, Markup::pango})
        EXPECT_TRUE(toolTipBody(content, markup).startsWith(QStringLiteral("a&lt;b&gt;&amp;&quot;")));
}

TEST(StatusItemPainting, ShortensTheQuotaToTheRoomOfASquare) {
    const std::pair<std::optional<double>, const char *> cases[] = {
        {{}, ""},     {0.4, "0"},     {67.2, "67"}, {99.6, "100"},
        {130, "130"}, {999.4, "999"}, {1000, "!!"}, {std::numeric_limits<double>::infinity(), ""},
    };
    for (const auto &[usedPct, text] : cases)
        EXPECT_EQ(compactQuotaText(usedPct).toStdString(), text);
}

/// Pixels of about that colour in the image's part, given in sixteenths of its size.
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
const QRectF everything(0, 0, 1000, 16);
const QRectF lowerHalf(0, 8, 16, 8);

TEST(StatusItemPainting, DrawsGlyphDotAndDigitsIntoEverySize) {
    struct Case {
        StatusIndicator indicator;
        QColor color;
    };
    const Case cases[] = {{StatusIndicator::green, QColor(51, 199, 89)},
                          {StatusIndicator::orange, QColor(252, 189, 46)},
                          {StatusIndicator::red, QColor(255, 69, 59)}};
    for (const int size : statusIconSizes) {
        for (const Case &c : cases) {
            const QImage icon = paintSquareIcon(c.indicator, QStringLiteral("67"), size);
            ASSERT_EQ(icon.size(), QSize(size, size));
            EXPECT_GT(countNear(icon, c.color, QRectF(8, 0, 8, 8)), size / 2) << "the dot, upper right";
            EXPECT_GT(countNear(icon, white, lowerHalf), size / 2) << "the digits";
            EXPECT_GT(countNear(icon, white, QRectF(0, 0, 8, 8)), 0) << "the glyph, upper left";
            EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0) << "a rounded corner";
        }
    }
}

TEST(StatusItemPainting, KeepsThreeDigitsInsideTheGround) {
    const QImage icon = paintSquareIcon(StatusIndicator::red, QStringLiteral("100"), 22);
    EXPECT_GT(countNear(icon, white, lowerHalf), 22);
    for (int y = 0; y < icon.height(); ++y) {
        EXPECT_LT(icon.pixelColor(0, y).lightness(), 100) << y;
        EXPECT_LT(icon.pixelColor(icon.width() - 1, y).lightness(), 100) << y;
    }
}

TEST(StatusItemPainting, WithoutDigitsTheGlyphFillsTheSquare) {
    const QImage icon = paintSquareIcon(StatusIndicator::green, {}, 48);
    const QImage withDigits = paintSquareIcon(StatusIndicator::green, QStringLiteral("1"), 48);
    EXPECT_GT(countNear(icon, white, everything), 2 * countNear(withDigits, white, QRectF(0, 0, 16, 8)));
    EXPECT_GT(countNear(icon, QColor(51, 199, 89), QRectF(8, 8, 8, 8)), 100) << "the dot, lower right";
}

TEST(StatusItemPainting, PaintsTheWholeTitleInItsStyles) {
    constexpr int scale = 3;
    const StatusTitle title = contentAt(67).title;
    const QImage picture = paintWideTitle(title, scale);
    EXPECT_EQ(picture.height(), wideTitleHeight * scale);
    EXPECT_GT(picture.width(), 5 * picture.height());
    const QRectF glyph(0, 0, 16, 16);
    EXPECT_GT(countNear(picture, white, glyph), 100);

    // A dot at the right end, and only there.
    const double end = 16.0 * picture.width() / picture.height();
    const QColor orange(252, 189, 46);
    EXPECT_GT(countNear(picture, orange, QRectF(end - 20, 0, 20, 16)), 100);
    EXPECT_EQ(countNear(picture, orange, QRectF(0, 0, end - 20, 16)), 0);

    EXPECT_GT(
        countNear(paintWideTitle({{"8", TitleSegment::Weight::heavy, false, {}}}, scale), white, everything),
        countNear(paintWideTitle({{"8", TitleSegment::Weight::regular, false, {}}}, scale), white,
                  everything))
        << "weights";
    const QImage dimmed = paintWideTitle({{"88", TitleSegment::Weight::heavy, true, {}}}, scale);
    EXPECT_EQ(countNear(dimmed, white, QRectF(18, 0, 1000, 16)), 0) << "dimmed text is not white";
}

TEST(NotifierPixmap, IsUnpremultipliedArgbInNetworkByteOrder) {
    QImage image(2, 1, QImage::Format_ARGB32_Premultiplied);
    image.setPixelColor(0, 0, QColor(0x11, 0x22, 0x33));
    image.setPixelColor(1, 0, QColor(0xFF, 0x00, 0x00, 0x80));
    const NotifierPixmap pixmap = toNotifierPixmap(image);
    EXPECT_EQ(pixmap.width, 2);
    EXPECT_EQ(pixmap.height, 1);
    EXPECT_EQ(pixmap.argb.toHex().toStdString(), "ff11223380ff0000");
}

} // namespace
} // namespace burnwick
