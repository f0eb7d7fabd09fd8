// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace burnwick {

/// The dashboard's first line: the logo, and at its end the way to the settings.
class HeaderBar final : public QWidget {
    Q_OBJECT

public:
    explicit HeaderBar(QWidget *parent = nullptr);

Q_SIGNALS:
    void settingsRequested();
};

} // namespace burnwick
