// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QProxyStyle>

class QScrollBar;

namespace burnwick {

/// Fusion, with what it frames in black framed by the theme's lines, with scroll bars that are but a
/// rounded handle, and with rounded menus of text alone.
class QuietStyle final : public QProxyStyle {
    Q_OBJECT

public:
    QuietStyle();
    using QProxyStyle::polish;

    /// Has the bar of a scroll area take no room beside what is scrolled, whose margin it covers.
    static void layOverMargin(QScrollBar &bar);

    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option = nullptr,
                                  const QWidget *widget = nullptr) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                                       SubControl part, const QWidget *widget) const override;
    void polish(QWidget *widget) override;
    int styleHint(StyleHint hint, const QStyleOption *option = nullptr, const QWidget *widget = nullptr,
                  QStyleHintReturn *data = nullptr) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                         const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                            const QWidget *widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
};

} // namespace burnwick
