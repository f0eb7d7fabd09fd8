// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/OAuthStatus.h"

#include <QWidget>

#include <optional>

class QPushButton;

namespace burnwick {

class StatusPill;

/// The bar below the panels with the provider's menu, the login's status and the action for it.
class AccountBar final : public QWidget {
    Q_OBJECT

public:
    AccountBar();

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
