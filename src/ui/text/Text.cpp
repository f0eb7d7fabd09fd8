// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/text/Text.h"

#include <QWidget>

namespace burnwick {

QString plainToolTip(const QString &text) {
    // Qt guesses whether a tool tip is markup; escaped text alone would show "&amp;" where it guesses plain
    // text.
    return QLatin1String("<p style=\"white-space:pre-wrap\">") + text.toHtmlEscaped() + QLatin1String("</p>");
}

void setPlainToolTip(QWidget &widget, const QString &text) {
    widget.setToolTip(text.isEmpty() ? QString() : plainToolTip(text));
    widget.setAccessibleDescription(text);
}

} // namespace burnwick
