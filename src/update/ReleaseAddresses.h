// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ReleaseForm.h"

#include <QString>
#include <QUrl>

namespace burnwick {

/// The address of the appcast.
[[nodiscard]] QUrl appcastURL(const QUrl &productBaseURL);

/// The address of a release in that form. The version comes from the appcast and may hold anything: it is
/// encoded into the last segment of the path.
[[nodiscard]] QUrl releaseURL(const QUrl &productBaseURL, ReleaseForm form, const QString &version);

/// Whether the host is "example" or ends with ".example" (reserved by RFC 2606), as in a build that was
/// configured without a site.
[[nodiscard]] bool isPlaceholder(const QUrl &productBaseURL);

} // namespace burnwick
