// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/UpdateAlert.h"

#include "ui/WindowActivation.h"
#include "update/ReleaseAddresses.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace burnwick {

namespace {

/// The version on one line of bearable length, without anything that hides or reorders the text around it.
QString shownVersion(const QString &version) {
    constexpr qsizetype longest = 40;
    QString shown = version;
    for (QChar &c : shown) {
        const auto category = c.category();
        if (category == QChar::Other_Control || category == QChar::Other_Format ||
            category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            c = QChar::ReplacementCharacter;
    }
    if (shown.size() <= longest)
        return shown;
    return shown.left(longest - 1) + QChar(u'\u2026');
}

} // namespace

void showUpdateAlert(const QString &version, const QUrl &productBaseURL,
                     std::function<void(const QUrl &)> openURL, std::function<void()> closed) {
    auto *alert = new QMessageBox;
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->setWindowModality(Qt::ApplicationModal);
    alert->setWindowTitle(QStringLiteral("Burnwick"));
    alert->setIcon(QMessageBox::Information);
    alert->setTextFormat(Qt::PlainText);
    alert->setText(QStringLiteral("Update Available"));
    alert->setInformativeText(
        QStringLiteral("Version %1 is available. Would you like to update now?").arg(shownVersion(version)));
    // The text format is that of the text alone.
    for (QLabel *label : alert->findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
    QPushButton *update = alert->addButton(QStringLiteral("Update Now"), QMessageBox::AcceptRole);
    QPushButton *later = alert->addButton(QStringLiteral("Later"), QMessageBox::RejectRole);
    alert->setDefaultButton(update);
    alert->setEscapeButton(later);

    QObject::connect(alert, &QDialog::finished, alert,
                     [=, url = downloadURL(productBaseURL, version), openURL = std::move(openURL),
                      closed = std::move(closed)] {
                         if (alert->clickedButton() == update)
                             openURL(url);
                         closed();
                     });
    bringToFront(*alert, {});
}

} // namespace burnwick
