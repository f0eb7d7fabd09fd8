// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/UserDriverDelegate.h"

#include "update/Appcast.h"

#include <QMetaObject>

#include <utility>

namespace burnwick {

UserDriverDelegate::UserDriverDelegate(std::function<void()> activateApplication,
                                       std::function<void(const QString &)> sendUpdateAvailable)
    : m_activateApplication(std::move(activateApplication))
    , m_sendUpdateAvailable(std::move(sendUpdateAvailable)) {}

void UserDriverDelegate::standardUserDriverWillHandleShowingUpdate(bool, const AppcastItem &update,
                                                                   ShowingUpdateState state) {
    const auto tellUser = [this, version = update.displayVersionString, state] {
        if (state.userInitiated)
            m_activateApplication();
        else
            m_sendUpdateAvailable(version);
    };
    QMetaObject::invokeMethod(this, tellUser, Qt::QueuedConnection);
}

} // namespace burnwick
