// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QUrl>

namespace burnwick {

class UserDefaults;

/// The addresses that this program uses. The build gives them; the user-defaults store overrides each under
/// the name of its member here.
struct Endpoints {
    QUrl apiBaseURL;     ///< the vendor's API, the one host to which tokens go
    QUrl statusBaseURL;  ///< the service's status page
    QUrl loginURL;       ///< opened in the browser
    QUrl productBaseURL; ///< Burnwick's own site
    QUrl feedbackURL;    ///< opened in the browser

    /// Takes from the store what is https, or http to a loopback address, and without user name; a base URL
    /// also without query and fragment. Logs and ignores anything else.
    [[nodiscard]] static Endpoints load(const UserDefaults &defaults);

    [[nodiscard]] QUrl usageURL() const;
    [[nodiscard]] QUrl tokenURL() const;
    [[nodiscard]] QUrl statusComponentsURL() const;
};

/// The base URL with the path, which begins with a slash, appended to its own.
[[nodiscard]] QUrl appendPath(const QUrl &base, const QString &path);

} // namespace burnwick
