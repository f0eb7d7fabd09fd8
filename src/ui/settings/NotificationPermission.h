// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/NotificationCenter.h"

#include <QWidget>

#include <optional>

namespace burnwick {

class DesktopSettings;
class FlatButton;

/// The permission to notify, or a button to get it; empty until the desktop has answered. Reads the
/// permission when it is shown, when its window becomes active and when the desktop announces a change. One
/// instance at a time.
class NotificationPermission final : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive this object.
    NotificationPermission(NotificationCenter &center, DesktopSettings &desktop);
    ~NotificationPermission() override;

protected:
    bool event(QEvent *event) override;

private:
    using Authorization = NotificationCenter::Authorization;

    void read();
    void setStatus(Authorization status);
    void act();

    NotificationCenter &m_center;
    DesktopSettings &m_desktop;
    QWidget *m_enabled;
    FlatButton *m_action;
    std::optional<Authorization> m_status;
    int m_latestRead = 0;
};

} // namespace burnwick
