// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/controls/FlatButton.h"

namespace burnwick {

/// A button that opens a menu, whose entries assistive technology finds below the button. Qt leaves menus of
/// push buttons out of the accessible tree.
class MenuButton final : public FlatButton {
    Q_OBJECT

public:
    /// The menu becomes a child of the button.
    MenuButton(const QString &text, const Look &look, QMenu *menu, QWidget *parent = nullptr);
};

} // namespace burnwick
