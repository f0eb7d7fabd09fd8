// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/controls/FlatButton.h"

namespace burnwick {

/// Chooses what the right side of the dashboard shows. Checkable; one of a group.
class TabButton final : public FlatButton {
    Q_OBJECT

public:
    explicit TabButton(const QString &label, QWidget *parent = nullptr);
};

/// Chooses the period of the history. Checkable; one of a group.
class FilterButton final : public FlatButton {
    Q_OBJECT

public:
    explicit FilterButton(const QString &label, QWidget *parent = nullptr);
};

/// What the small buttons that do something look like.
[[nodiscard]] FlatButton::Look smallButtonStyle();

} // namespace burnwick
