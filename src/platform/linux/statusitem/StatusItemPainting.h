// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/StatusTitle.h"
#include "model/StatusIndicator.h"

#include <QtGui/QImage>

#include <QtCore/QString>

#include <array>
#include <optional>

/// Pictures of the status item for hosts that show no text: premultiplied ARGB32. Items cannot read the
/// panel's colour, so each picture has a dark background with rounded corners, and the same contrast on all
/// panels. Main thread only; needs an application object.
namespace burnwick {

/// Returns the quota for a small square, without its percent sign: "67", "100", "130"; "!!" when it has more
/// than three digits; empty when it is unknown.
[[nodiscard]] QString compactQuotaText(const std::optional<double> &usedPct);

/// The sizes that panels request. Each is painted separately: scaled small digits are illegible.
inline constexpr std::array statusIconSizes{16, 22, 24, 32, 48};

/// Returns a square icon with sides of `size` pixels: the glyph and the coloured dot, and `text` below them.
/// Three characters are condensed. Without text, the glyph and the dot are larger.
[[nodiscard]] QImage paintSquareIcon(StatusIndicator indicator, const QString &text, int size);

/// The height of paintWideTitle() at scale 1, at which the text has 13 px.
inline constexpr int wideTitleHeight = 18;

/// Returns the glyph and the whole title in its styles, on one line.
[[nodiscard]] QImage paintWideTitle(const StatusTitle &title, int scale);

} // namespace burnwick
