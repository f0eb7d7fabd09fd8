// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>

namespace burnwick {

class UserDefaults;

/// The addresses that this program uses. The build defines the defaults; the user-defaults store overrides
/// each under the name of its member.
struct Endpoints {
    QUrl apiBaseURL;     ///< the vendor's API, the only host that receives tokens
    QUrl statusBaseURL;  ///< the service's status page
    QUrl loginURL;       ///< opened in the browser
    QUrl productBaseURL; ///< Burnwick's own site
    QUrl feedbackURL;    ///< opened in the browser

    /// Accepts stored URLs that are https, or http to a loopback address, and have no user name; base URLs
    /// also must not have a query or fragment. Logs and ignores all others.
    [[nodiscard]] static Endpoints load(const UserDefaults &defaults);

    [[nodiscard]] QUrl usageURL() const;
    [[nodiscard]] QUrl tokenURL() const;
    [[nodiscard]] QUrl statusComponentsURL() const;
};

/// Appends the path, which begins with a slash, to that of the base URL.
[[nodiscard]] QUrl appendPath(const QUrl &base, const QString &path);

} // namespace burnwick
