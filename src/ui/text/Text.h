// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string_view>

class QWidget;

namespace burnwick {

/// Converts UTF-8.
[[nodiscard]] inline QString textOf(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Returns a tool tip that shows the text line by line, without interpreting markup in it.
[[nodiscard]] QString plainToolTip(const QString &text);

/// Sets the plain tool tip, or none for an empty text, and the text as the accessible description, for which
/// Qt would use the tool tip with its markup.
void setPlainToolTip(QWidget &widget, const QString &text);

} // namespace burnwick
