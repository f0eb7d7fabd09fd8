// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/UpdateAlert.h"

#include "display/DisplayText.h"
#include "ui/WindowActivation.h"
#include "ui/settings/SettingsAlert.h"
#include "ui/text/Text.h"

#include <QPushButton>
#include <QUrl>

#include <utility>

namespace burnwick {

namespace {

/// Shortened, so that the sentence stays readable.
QString shownVersion(const QString &version) {
    constexpr std::size_t longest = 40;
    return textOf(displayText(version.toStdString(), longest));
}

} // namespace

void showUpdateAlert(const QString &version, const QUrl &release, std::function<void(const QUrl &)> openURL,
                     std::function<void()> closed) {
    const QString title = QStringLiteral("Update Available");
    QMessageBox *alert = makeAlert(
        title, title,
        QStringLiteral("Version %1 is available. Would you like to update now?").arg(shownVersion(version)));
    QPushButton *update = addAlertButton(*alert, QStringLiteral("Update Now"), QMessageBox::AcceptRole);
    addAlertButton(*alert, QStringLiteral("Later"), QMessageBox::RejectRole);
    alert->setDefaultButton(update);
    QObject::connect(alert, &QDialog::finished, alert,
                     [=, openURL = std::move(openURL), closed = std::move(closed)] {
                         if (alert->clickedButton() == update)
                             openURL(release);
                         closed();
                     });
    bringToFront(*alert, {});
}

} // namespace burnwick
