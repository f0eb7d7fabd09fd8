// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

class QButtonGroup;

namespace burnwick {

/// Makes the chosen one of the group's checkable buttons its only stop of the tab key; the arrow keys lead to
/// the others. By itself Qt stops at the first one, chosen or not. To be called when the group has its
/// buttons and one of them is chosen.
void stopAtChosen(QButtonGroup &group);

} // namespace burnwick
