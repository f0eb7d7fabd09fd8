// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

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

/// What the user may choose. Each control writes to the preferences at once and follows them; the view starts
/// with what holds. Main thread only.
class SettingsView final : public QWidget {
    Q_OBJECT

public:
    /// What the view works with; what is referred to must outlive it.
    struct Services {
        PreferencesManager &preferences;
        LoginItem &loginItem;
        NotificationCenter &notifications;
        DesktopSettings &desktop;
        UpdateRow::Services updates;
        QUrl feedbackURL;
        std::function<bool()> reducedMotion;
    };

    explicit SettingsView(Services services, QWidget *parent = nullptr);

    /// Lowers the window to what that screen has room for. Follows by itself the screen that it is shown on.
    void fitTo(const QScreen &screen);

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
    [[nodiscard]] SettingsRow *makeFeedbackRow();
    void registerAtDesktop(bool on);
    void addShortcuts();

    Services m_services;
};

} // namespace burnwick
