// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace burnwick {

/// A release that the appcast lists.
struct AppcastItem {
    QString displayVersionString;

    bool operator==(const AppcastItem &) const = default;
};

/// In UTF-16 code units; what is longer is no version.
inline constexpr qsizetype longestVersion = 64;

/// What an appcast comes to.
struct Appcast {
    /// The release with the newest version, wherever it stands; none when no item has a version.
    std::optional<AppcastItem> newest = {};

    bool operator==(const Appcast &) const = default;
};

/// Reads the whole document as XML in UTF-8. None when it is malformed, is no feed of that kind, or holds
/// what no feed needs and what could keep a reader busy: a document type declaration, whose entities may grow
/// without bound, or an element with a thousand attributes. Safe from any thread.
[[nodiscard]] std::optional<Appcast> readAppcast(const QByteArray &document);

} // namespace burnwick
