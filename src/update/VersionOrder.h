// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>

#include <compare>

namespace burnwick {

/// The order of two versions: runs of the digits 0 to 9 compare by their value, however long they are, and
/// everything else by its UTF-16 code units, spaces and letters' case included. Of two versions of which one
/// begins with the other, the longer is the newer.
[[nodiscard]] std::weak_ordering compareVersions(QStringView left, QStringView right) noexcept;

} // namespace burnwick
