// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ReleaseForm.h"

#include <QString>
#include <QUrl>

namespace burnwick {

/// Where the list of Burnwick's releases is.
[[nodiscard]] QUrl appcastURL(const QUrl &productBaseURL);

/// Where that release is to be had in that form. The version, which comes from outside, stays within the last
/// segment of the path, whatever it holds.
[[nodiscard]] QUrl releaseURL(const QUrl &productBaseURL, ReleaseForm form, const QString &version);

/// Whether the host is a stand-in (RFC 2606 reserves the names below "example"), as in a build that was given
/// no site.
[[nodiscard]] bool isPlaceholder(const QUrl &productBaseURL);

} // namespace burnwick
