// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "update/Appcast.h"

#include <QString>

namespace burnwick {

/// Hears how the checks of an updater end. The operations are called from any thread.
class UpdaterDelegate {
public:
    virtual ~UpdaterDelegate() = default;

    virtual void updaterDidNotFindUpdate() = 0;
    /// `reason` says why there is none.
    virtual void updaterDidNotFindUpdate(const QString &reason) = 0;
    virtual void updaterDidFindValidUpdate(const AppcastItem &item) = 0;
    /// `error` says what went wrong.
    virtual void updaterDidAbort(const QString &error) = 0;
};

} // namespace burnwick
