// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/controls/FlatButton.h"

namespace burnwick {

/// A button that opens a menu and has its entries as children in the accessible tree, where Qt omits the
/// menus of push buttons.
class MenuButton final : public FlatButton {
    Q_OBJECT

public:
    /// Takes ownership of the menu.
    MenuButton(const QString &text, const Look &look, QMenu *menu);
};

} // namespace burnwick
