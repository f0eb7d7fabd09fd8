// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/statusitem/TrayHost.h"

#include <QtCore/QString>

namespace burnwick {

/// The tool tip's body in the host's markup: the title, then the quota in words with the dot's colour named,
/// as in "67% of the 5-hour window used (orange)".
[[nodiscard]] QString toolTipBody(const StatusItemContent &content, TrayHost::Markup markup);

} // namespace burnwick
