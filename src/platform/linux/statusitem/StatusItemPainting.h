// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/StatusTitle.h"
#include "model/StatusIndicator.h"

#include <QtGui/QImage>

#include <QtCore/QString>

#include <array>
#include <optional>

/// Pictures of the status item for hosts that show no text. An item does not know the colour of its panel, so
/// each picture includes a dark ground: nearly invisible on dark panels, a plain tile on light ones, and the
/// same contrast on both.
///
/// Premultiplied ARGB32, transparent outside the ground. Main thread, with an application object.
namespace burnwick {

/// Returns the quota for a small square, without its percent sign: "67", "100", "130"; "!!" where it has more
/// than three characters; empty while it is unknown.
[[nodiscard]] QString compactQuotaText(const std::optional<double> &usedPct);

/// The sizes that panels ask for. Each is drawn separately: small digits do not survive scaling.
inline constexpr std::array statusIconSizes{16, 22, 24, 32, 48};

/// Returns a square icon, `size` pixels a side: the glyph and the coloured dot, with `text` below unless that
/// is empty. Three characters are drawn condensed.
[[nodiscard]] QImage paintSquareIcon(StatusIndicator indicator, const QString &text, int size);

/// The height of paintWideTitle() at scale 1, at which the text has 13 px.
inline constexpr int wideTitleHeight = 18;

/// Returns the glyph and the whole title in its styles, on one line.
[[nodiscard]] QImage paintWideTitle(const StatusTitle &title, int scale);

} // namespace burnwick
