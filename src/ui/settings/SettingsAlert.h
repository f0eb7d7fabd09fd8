// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

namespace burnwick {

/// Returns a hidden application-modal alert that deletes itself when it is closed. The texts may hold
/// anything: they are shown as plain text. The parent may be null.
[[nodiscard]] QMessageBox *makeAlert(const QString &title, const QString &text, const QString &explanation,
                                     QWidget *parent = nullptr);

/// Adds a button to the alert and returns it. One with RejectRole answers the Escape key too and has a
/// ground.
QPushButton *addAlertButton(QMessageBox &alert, const QString &text, QMessageBox::ButtonRole role);

} // namespace burnwick
