// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/StatusItemPainting.h"

#include "display/DisplayFormat.h"

#include <QtGui/QFont>
#include <QtGui/QFontDatabase>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtSvg/QSvgRenderer>

#include <algorithm>
#include <cmath>

// The linker drops a static library's resources unless this macro names them; Qt requires the global
// namespace for it.
static void initIconResource() {
    Q_INIT_RESOURCE(burnwick_icons);
}

namespace burnwick {

namespace {

constexpr QColor foreground(0xFF, 0xFF, 0xFF);
constexpr QColor ground(0x1B, 0x1A, 0x19, 0xE0);

QColor toQColor(const RgbColor &color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

QImage transparentImage(const QSize &size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

void drawGround(QPainter &painter, const QRectF &box, double radius) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(ground);
    painter.drawRoundedRect(box, radius, radius);
}

void drawGlyph(QPainter &painter, const QPointF &topLeft, double side) {
    initIconResource();
    // Rendered on whole pixels in its final size, then tinted: the file has the colour that icon themes
    // require of a symbolic icon.
    const int pixels = static_cast<int>(std::lround(side));
    QImage glyph = transparentImage({pixels, pixels});
    QPainter glyphPainter(&glyph);
    QSvgRenderer(QStringLiteral(":/burnwick/icons/burnwick-symbolic.svg")).render(&glyphPainter);
    glyphPainter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    glyphPainter.fillRect(glyph.rect(), foreground);
    glyphPainter.end();
    painter.drawImage(topLeft.toPoint(), glyph);
}

void fillCircle(QPainter &painter, const QPointF &center, double radius, const QColor &color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(center, radius, radius);
}

QFont systemFont(int pixelSize, QFont::Weight weight) {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting); // the host scales the picture
    return font;
}

/// Fills the box's height with the text, centred, and condenses it where it is too wide.
void drawTextInto(QPainter &painter, const QRectF &box, const QString &text) {
    constexpr int pathPixelSize = 64;
    QPainterPath path;
    path.addText(0, 0, systemFont(pathPixelSize, QFont::Bold), text);
    const QRectF bounds = path.boundingRect();
    if (bounds.isEmpty())
        return;
    const double scaleY = box.height() / bounds.height();
    const double scaleX = std::min(scaleY, box.width() / bounds.width());
    painter.save();
    painter.translate(box.center().x(), box.top());
    painter.scale(scaleX, scaleY);
    painter.translate(-bounds.center().x(), -bounds.top());
    painter.fillPath(path, foreground);
    painter.restore();
}

QFont::Weight toQtWeight(TitleSegment::Weight weight) {
    return weight == TitleSegment::Weight::semibold ? QFont::DemiBold
           : weight == TitleSegment::Weight::heavy  ? QFont::Black
                                                    : QFont::Normal;
}

QFont fontOf(const TitleSegment &segment, int scale) {
    return systemFont(statusTitlePixelSize * scale, toQtWeight(segment.weight));
}

double widthOf(const TitleSegment &segment, int scale) {
    return QFontMetricsF(fontOf(segment, scale)).horizontalAdvance(QString::fromStdString(segment.text));
}

} // namespace

QString compactQuotaText(const std::optional<double> &usedPct) {
    constexpr qsizetype room = 3;
    if (!usedPct || !std::isfinite(*usedPct))
        return {};
    QString text = QString::fromStdString(percentText(*usedPct));
    text.remove(u'%');
    return text.size() <= room ? text : QStringLiteral("!!");
}

QImage paintSquareIcon(StatusIndicator indicator, const QString &text, int size) {
    QImage icon = transparentImage({size, size});
    QPainter painter(&icon);
    painter.setRenderHint(QPainter::Antialiasing);
    const double unit = size / 16.0; // a grid of 16; edges of the text are on whole pixels
    const QColor dotColor = toQColor(colorOf(indicator));
    drawGround(painter, icon.rect(), 3.5 * unit);
    if (text.isEmpty()) {
        const QPointF dotCenter(12.2 * unit, 12.2 * unit);
        drawGlyph(painter, QPointF(unit, unit), 13 * unit);
        // A ring in the ground's colour separates the dot from the glyph.
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        fillCircle(painter, dotCenter, 3.8 * unit, ground);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        fillCircle(painter, dotCenter, 2.8 * unit, dotColor);
    } else {
        const double textTop = std::round(8 * unit);
        const double textBottom = size - std::round(1.2 * unit);
        drawGlyph(painter, QPointF(1.5 * unit, unit), 6.5 * unit);
        fillCircle(painter, QPointF(11.5 * unit, 4 * unit), 2.5 * unit, dotColor);
        drawTextInto(painter, QRectF(1.5 * unit, textTop, 13 * unit, textBottom - textTop), text);
    }
    return icon;
}

QImage paintWideTitle(const StatusTitle &title, int scale) {
    const int height = wideTitleHeight * scale;
    const double margin = 6.0 * scale;
    const double glyphSide = 14.0 * scale;
    double x = margin + glyphSide + 4.0 * scale;

    double width = x + margin;
    for (const TitleSegment &segment : title)
        width += widthOf(segment, scale);

    QImage picture = transparentImage({static_cast<int>(std::ceil(width)), height});
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    drawGround(painter, picture.rect(), 5.0 * scale);
    drawGlyph(painter, QPointF(margin, (height - glyphSide) / 2), glyphSide);

    const QFontMetricsF metrics(systemFont(statusTitlePixelSize * scale, QFont::Normal));
    const double baseline = std::round((height + metrics.capHeight()) / 2);
    for (const TitleSegment &segment : title) {
        painter.setFont(fontOf(segment, scale));
        painter.setPen(segment.color ? toQColor(*segment.color) : foreground);
        painter.setOpacity(segment.dimmed ? dimmedOpacity : 1.0);
        painter.drawText(QPointF(x, baseline), QString::fromStdString(segment.text));
        x += widthOf(segment, scale);
    }
    return picture;
}

} // namespace burnwick
