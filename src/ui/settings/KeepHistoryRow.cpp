// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/KeepHistoryRow.h"

#include "display/DisplayFormat.h"
#include "prefs/PreferencesManager.h"
#include "ui/WindowActivation.h"
#include "ui/controls/Switch.h"
#include "ui/settings/SettingsAlert.h"
#include "ui/text/Text.h"

#include <QPushButton>

#include <utility>

namespace burnwick {

namespace {

const QString name = QStringLiteral("Keep history");

QString questionOf(const UsageFigures &usage) {
    return QStringLiteral("Forget %1 of %2?")
        .arg(textOf(countText(usage.keptMessages, "message")),
             textOf(countText(usage.keptSessions, "session")));
}

QString warningOf(const UsageFigures &usage) {
    const bool isOneMessage = usage.keptMessages == 1;
    return QStringLiteral("%1 %2 gone, so nothing can bring %3 back. Messages whose logs exist stay.")
        .arg(isOneMessage ? QStringLiteral("Its") : QStringLiteral("Their"),
             usage.keptSessions == 1 ? QStringLiteral("log is") : QStringLiteral("logs are"),
             isOneMessage ? QStringLiteral("it") : QStringLiteral("them"));
}

} // namespace

KeepHistoryRow::KeepHistoryRow(Services services, PreferencesManager &preferences,
                               std::function<bool()> reducedMotion)
    : SettingsRow(name, new Switch(std::move(reducedMotion)))
    , m_services(std::move(services))
    , m_preferences(preferences)
    , m_switch(findChild<Switch *>()) {
    const QString caption = QStringLiteral("Claude Code deletes its logs after ") +
                            textOf(countText(m_services.daysUntilCleanup(), "day"));
    addCaption(caption);
    m_switch->setAccessibleName(name);
    m_switch->setAccessibleDescription(caption);
    m_switch->setOn(preferences.keepHistory());
    connect(&preferences, &PreferencesManager::keepHistoryChanged, m_switch, &Switch::setOn);
    connect(m_switch, &Switch::flipped, this, &KeepHistoryRow::follow);
}

void KeepHistoryRow::follow(bool on) {
    if (on) {
        m_preferences.setKeepHistory(true);
        return;
    }
    m_switch->setOn(true); // until all is forgotten
    if (const UsageFigures &usage = m_services.usage(); usage.keptSessions > 0)
        ask(usage);
    else
        forget(false);
}

void KeepHistoryRow::ask(const UsageFigures &usage) {
    QMessageBox *alert = makeAlert(name, questionOf(usage), warningOf(usage), window());
    QPushButton *forgetButton =
        addAlertButton(*alert, QStringLiteral("Forget"), QMessageBox::DestructiveRole);
    alert->setDefaultButton(addAlertButton(*alert, QStringLiteral("Cancel"), QMessageBox::RejectRole));
    connect(alert, &QDialog::finished, this, [this, alert, forgetButton] {
        if (alert->clickedButton() == forgetButton)
            forget(true);
    });
    bringToFront(*alert, {});
}

void KeepHistoryRow::forget(bool withLines) {
    if (m_services.forget(withLines)) {
        m_preferences.setKeepHistory(false);
        return;
    }
    QMessageBox *alert = makeAlert(name, QStringLiteral("The history could not be forgotten now."),
                                   QStringLiteral("Try again later."), window());
    alert->setDefaultButton(addAlertButton(*alert, QStringLiteral("OK"), QMessageBox::RejectRole));
    bringToFront(*alert, {});
}

} // namespace burnwick
