// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/text/ToolTipText.h"

#include <QWidget>

namespace burnwick {

QString plainToolTip(const QString &text) {
    // Qt guesses whether a tool tip is markup. Escaping alone would show "&amp;" where it guesses that it is
    // not.
    return QLatin1String("<p style=\"white-space:pre-wrap\">") + text.toHtmlEscaped() + QLatin1String("</p>");
}

void setPlainToolTip(QWidget &widget, const QString &text) {
    widget.setToolTip(plainToolTip(text));
    widget.setAccessibleDescription(text);
}

} // namespace burnwick
