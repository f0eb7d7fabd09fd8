// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/NotificationCenter.h"

#include <QWidget>

#include <optional>

namespace burnwick {

class Badge;
class DesktopSettings;
class FlatButton;

/// Whether Burnwick may notify, and the way to let it; nothing before the desktop has told. Asks when it is
/// shown, when its window gets the keyboard and when the desktop announces a change. One at a time.
class NotificationPermission final : public QWidget {
    Q_OBJECT

public:
    /// Both must outlive this object.
    NotificationPermission(NotificationCenter &center, DesktopSettings &desktop, QWidget *parent = nullptr);
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
    Badge *m_enabled;
    FlatButton *m_action;
    std::optional<Authorization> m_status;
    int m_latestRead = 0;
};

} // namespace burnwick
