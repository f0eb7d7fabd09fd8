// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/settings/KeepHistoryRow.h"
#include "ui/settings/LogFoldersCard.h"
#include "ui/settings/UpdateRow.h"

#include <QWidget>

#include <functional>

namespace burnwick {

class DesktopSettings;
class LoginItem;
class NotificationCenter;
class PreferencesManager;
class SegmentedPicker;
class Switch;
class WindowChrome;

/// The preferences' controls. Each control writes to the preferences at once and follows them. Main thread
/// only.
class SettingsView final : public QWidget {
    Q_OBJECT

public:
    /// The referenced objects must outlive the view.
    struct Services {
        PreferencesManager &preferences;
        LoginItem &loginItem;
        NotificationCenter &notifications;
        DesktopSettings &desktop;
        UpdateRow::Services updates;
        KeepHistoryRow::Services history;
        LogFoldersCard::Services logFolders;
        QUrl feedbackURL;
        std::function<bool()> reducedMotion;
        WindowChrome *chrome = nullptr; ///< null where the window manager decorates windows
    };

    explicit SettingsView(Services services);

    /// Limits the window's height to the screen's room. Called by the view itself for the screen that shows
    /// it.
    void fitTo(const QScreen &screen);

protected:
    void changeEvent(QEvent *event) override;

private:
    template <typename Value>
    struct Preference {
        Value (PreferencesManager::*get)() const;
        void (PreferencesManager::*set)(Value);
        void (PreferencesManager::*changed)(Value);
    };

    [[nodiscard]] QWidget *makeHeader();
    [[nodiscard]] QWidget *makeCards();
    [[nodiscard]] QWidget *makeFooter();
    [[nodiscard]] Switch *makeSwitch(const char *name, Preference<bool> preference);
    template <typename Value, typename Values>
    [[nodiscard]] SegmentedPicker *makePicker(const char *name, const Values &values,
                                              Preference<Value> preference);
    [[nodiscard]] SettingsRow *makeFiguresRow();
    [[nodiscard]] SettingsRow *makeFeedbackRow();
    void registerAtDesktop(bool on);
    void addShortcuts();

    Services m_services;
    std::function<void()> m_showLaunch; ///< shows the login item's state
    LogFoldersCard *m_logFolders = nullptr;
};

} // namespace burnwick
