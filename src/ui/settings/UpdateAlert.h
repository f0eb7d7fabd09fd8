// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

class QString;
class QUrl;

namespace burnwick {

/// Asks the user, in front of everything else of the program's, whether to update to that version. The answer
/// "Update Now" hands the release's address to `openURL`. Returns at once; `closed` is called when the alert
/// has been answered, after that. The version may hold anything: it is shown as plain text, shortened when it
/// is long. Main thread.
void showUpdateAlert(const QString &version, const QUrl &release, std::function<void(const QUrl &)> openURL,
                     std::function<void()> closed);

} // namespace burnwick
