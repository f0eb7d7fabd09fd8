// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/StatusItemLog.h"

namespace burnwick {

Q_LOGGING_CATEGORY(statusItemLog, "burnwick.statusitem")

} // namespace burnwick
