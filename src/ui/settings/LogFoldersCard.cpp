// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/LogFoldersCard.h"

#include "prefs/PreferencesManager.h"
#include "ui/text/TextLabel.h"

#include <QDir>
#include <QFileDialog>

#include <utility>

namespace burnwick {

LogFoldersCard::LogFoldersCard(Services services, PreferencesManager &preferences)
    : SettingsCard(QStringLiteral("Log folders"))
    , m_services(std::move(services))
    , m_preferences(preferences) {
    connect(&preferences, &PreferencesManager::logFoldersChanged, this, &LogFoldersCard::check);
    check();
}

void LogFoldersCard::check() {
    Folders folders{m_services.usualFolders(), m_preferences.logFolders(), {}};
    for (const QString &folder : folders.chosen)
        folders.problems += m_services.problemOf(folder);
    if (m_shown == folders)
        return; // a button may be pressed
    m_shown = folders;
    removeRows();
    for (const QString &folder : folders.usual)
        addRow(new SettingsRow(folder, new TextLabel(QStringLiteral("Claude Code"), TextStyle::caption,
                                                     QPalette::PlaceholderText)));
    for (qsizetype i = 0; i < folders.chosen.size(); ++i)
        addRow(makeChosenRow(folders.chosen[i], folders.problems[i]));
    addRow(makeAddRow());
    // New widgets are the last ones of the window's order. Qt needs one that takes the focus as their
    // predecessor.
    QWidget *last = previousInFocusChain();
    while (last != this && last->focusPolicy() == Qt::NoFocus)
        last = last->previousInFocusChain();
    for (const QWidget *row : rows()) {
        if (auto *button = row->findChild<FlatButton *>()) {
            setTabOrder(last, button);
            last = button;
        }
    }
}

SettingsRow *LogFoldersCard::makeChosenRow(const QString &folder, const QString &problem) {
    auto *button = new FlatButton(QStringLiteral("Remove"), settingsButtonLook());
    button->setAccessibleDescription(folder);
    connect(button, &QAbstractButton::clicked, this, [this, folder] {
        QStringList folders = m_preferences.logFolders();
        folders.removeAll(folder);
        m_preferences.setLogFolders(folders);
    });
    auto *row = new SettingsRow(folder, button);
    if (!problem.isEmpty())
        row->addCaption(problem)->setColor(&ThemeColors::overText);
    return row;
}

SettingsRow *LogFoldersCard::makeAddRow() {
    auto *button = new FlatButton(QString::fromUtf8("Add…"), settingsButtonLook());
    connect(button, &QAbstractButton::clicked, this, &LogFoldersCard::chooseFolder);
    return new SettingsRow(QStringLiteral("Another folder with logs"), button);
}

void LogFoldersCard::chooseFolder() {
    auto *dialog = new QFileDialog(window(), QStringLiteral("Add a folder with logs"), QDir::homePath());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setFilter(dialog->filter() | QDir::Hidden); // as ".claude" is
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &folder) {
        QStringList folders = m_preferences.logFolders();
        if (!folders.contains(folder))
            folders.append(folder);
        m_preferences.setLogFolders(folders);
    });
    dialog->open();
}

} // namespace burnwick
