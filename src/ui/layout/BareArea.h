// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

class QScrollArea;
class QWidget;

namespace burnwick {

/// Gives the area this content, and shows nothing else: no frame and no background. The keyboard does not
/// stop at the area itself, which scrolls as the focus moves on to what is out of sight.
void makeBare(QScrollArea &area, QWidget *content);

} // namespace burnwick
