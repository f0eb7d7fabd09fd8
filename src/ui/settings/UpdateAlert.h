// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QString;
class QUrl;

namespace burnwick {

/// Shows an application-modal alert that offers an update to that version, and returns at once. "Update Now"
/// calls `openURL` with the release's address; then, as after every other answer, `closed` is called. The
/// version may hold anything: it is shown as plain text and shortened when it is long. Main thread only.
void showUpdateAlert(const QString &version, const QUrl &release, std::function<void(const QUrl &)> openURL,
                     std::function<void()> closed);

} // namespace burnwick
