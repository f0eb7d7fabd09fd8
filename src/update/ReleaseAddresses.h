// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ReleaseForm.h"

#include <QString>
#include <QUrl>

namespace burnwick {

/// Returns the address of the appcast.
[[nodiscard]] QUrl appcastURL(const QUrl &productBaseURL);

/// Returns the address of a release in that form. Encodes the version, which may be any text, into the last
/// segment of the path.
[[nodiscard]] QUrl releaseURL(const QUrl &productBaseURL, ReleaseForm form, const QString &version);

/// Whether the host is "example" or ends with ".example" (reserved by RFC 2606), as in a build that was
/// configured without a site.
[[nodiscard]] bool isPlaceholder(const QUrl &productBaseURL);

} // namespace burnwick
