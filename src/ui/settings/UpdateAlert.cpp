// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/UpdateAlert.h"

#include "display/DisplayText.h"
#include "ui/WindowActivation.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/SvgIcon.h"
#include "ui/settings/SettingsCard.h"
#include "ui/text/Text.h"
#include "ui/theme/TextStyle.h"

#include <QLabel>
#include <QMessageBox>
#include <QUrl>

#include <utility>

namespace burnwick {

namespace {

constexpr int iconSize = 48;
constexpr int narrowestText = 300;
constexpr QSize buttonPadding{14, 6};

/// Shortened, so that the sentence stays readable.
QString shownVersion(const QString &version) {
    constexpr std::size_t longest = 40;
    return textOf(displayText(version.toStdString(), longest));
}

} // namespace

void showUpdateAlert(const QString &version, const QUrl &release, std::function<void(const QUrl &)> openURL,
                     std::function<void()> closed) {
    auto *alert = new QMessageBox;
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->setWindowModality(Qt::ApplicationModal);
    alert->setWindowTitle(QStringLiteral("Update Available"));
    const QIcon icon = applicationIcon();
    alert->setWindowIcon(icon);
    alert->setIconPixmap(icon.pixmap({iconSize, iconSize}, alert->devicePixelRatioF()));
    alert->setFont(fontOf(TextStyle::body));
    alert->setText(QStringLiteral("Update Available"));
    alert->setInformativeText(
        QStringLiteral("Version %1 is available. Would you like to update now?").arg(shownVersion(version)));
    for (QLabel *label : alert->findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        if (label->text() == alert->text())
            label->setFont(fontOf(TextStyle::labelStrong));
        else if (label->text() == alert->informativeText())
            label->setMinimumWidth(narrowestText);
    }
    FlatButton::Look look = settingsButtonLook();
    look.padding = buttonPadding;
    auto *later = new FlatButton(QStringLiteral("Later"), look);
    look.ground = &ThemeColors::selected;
    look.hovered = look.pressed;
    auto *update = new FlatButton(QStringLiteral("Update Now"), look);
    alert->addButton(update, QMessageBox::AcceptRole);
    alert->addButton(later, QMessageBox::RejectRole);
    alert->setDefaultButton(update);
    alert->setEscapeButton(later);

    QObject::connect(alert, &QDialog::finished, alert,
                     [=, openURL = std::move(openURL), closed = std::move(closed)] {
                         if (alert->clickedButton() == update)
                             openURL(release);
                         closed();
                     });
    new FocusRing(alert);
    bringToFront(*alert, {});
}

} // namespace burnwick
