// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace burnwick {

/// A tool tip that shows the text as it stands, line by line, also where it looks like markup.
[[nodiscard]] QString plainToolTip(const QString &text);

/// Gives the widget that tool tip, and the text itself as its accessible description, which Qt would take
/// from the tool tip with its markup.
void setPlainToolTip(QWidget &widget, const QString &text);

} // namespace burnwick
