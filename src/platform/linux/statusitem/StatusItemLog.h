// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QLoggingCategory>

namespace burnwick {

/// "burnwick.statusitem": why the item is not to be seen.
Q_DECLARE_LOGGING_CATEGORY(statusItemLog)

} // namespace burnwick
