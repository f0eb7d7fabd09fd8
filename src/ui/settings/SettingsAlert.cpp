// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsAlert.h"

#include "ui/controls/FocusRing.h"
#include "ui/controls/SvgIcon.h"
#include "ui/settings/SettingsCard.h"
#include "ui/theme/TextStyle.h"

#include <QLabel>

namespace burnwick {

namespace {

constexpr int iconSize = 48;
constexpr int narrowestText = 300;
constexpr QSize buttonPadding{14, 6};

} // namespace

QMessageBox *makeAlert(const QString &title, const QString &text, const QString &explanation,
                       QWidget *parent) {
    auto *alert = new QMessageBox(parent);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->setWindowModality(Qt::ApplicationModal);
    alert->setWindowTitle(title);
    const QIcon icon = applicationIcon();
    alert->setWindowIcon(icon);
    alert->setIconPixmap(icon.pixmap({iconSize, iconSize}, alert->devicePixelRatioF()));
    alert->setFont(fontOf(TextStyle::body));
    alert->setText(text);
    alert->setInformativeText(explanation);
    for (QLabel *label : alert->findChildren<QLabel *>()) {
        label->setTextFormat(Qt::PlainText);
        if (label->text() == alert->text())
            label->setFont(fontOf(TextStyle::labelStrong));
        else if (label->text() == alert->informativeText())
            label->setMinimumWidth(narrowestText);
    }
    new FocusRing(alert);
    return alert;
}

QPushButton *addAlertButton(QMessageBox &alert, const QString &text, QMessageBox::ButtonRole role) {
    FlatButton::Look look = settingsButtonLook();
    look.padding = buttonPadding;
    if (role == QMessageBox::RejectRole) {
        look.ground = &ThemeColors::selected;
        look.hovered = look.pressed;
    }
    auto *button = new FlatButton(text, look);
    alert.addButton(button, role);
    if (role == QMessageBox::RejectRole)
        alert.setEscapeButton(button);
    return button;
}

} // namespace burnwick
