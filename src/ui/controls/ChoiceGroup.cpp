// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/ChoiceGroup.h"

#include <QAbstractButton>
#include <QButtonGroup>

namespace burnwick {

void stopAtChosen(QButtonGroup &group) {
    const auto update = [&group] {
        for (QAbstractButton *button : group.buttons())
            button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    };
    QObject::connect(&group, &QButtonGroup::idToggled, &group, update);
    update();
}

} // namespace burnwick
