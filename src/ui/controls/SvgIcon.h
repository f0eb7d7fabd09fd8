// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

namespace burnwick {

/// An icon of an SVG file or resource, sharp at any size. It needs no plugin of Qt's, unlike QIcon(file):
/// these are a package of their own on some systems, and without them such an icon is empty.
[[nodiscard]] QIcon svgIcon(const QString &file);

/// The application's icon.
[[nodiscard]] QIcon applicationIcon();

} // namespace burnwick
