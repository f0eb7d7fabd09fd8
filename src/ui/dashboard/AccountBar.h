// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/OAuthStatus.h"

#include <QWidget>

#include <optional>

class QPushButton;

namespace burnwick {

class StatusPill;

/// The line below the panels: whose figures they are, and how the link to the account stands.
class AccountBar final : public QWidget {
    Q_OBJECT

public:
    explicit AccountBar(QWidget *parent = nullptr);

    void setStatus(OAuthStatus status);

Q_SIGNALS:
    void refreshRequested();
    void loginRequested();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void act();

    std::optional<OAuthStatus> m_status;
    StatusPill *m_pill;
    QPushButton *m_action;
    QWidget *m_waiting;
};

} // namespace burnwick
