// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/StateSubscription.h"

#include "state/AppState.h"

#include <QMetaObject>

#include <utility>

namespace burnwick {

StateSubscription::StateSubscription(const AppState &appState, std::function<void()> onChange)
    : m_onChange(std::move(onChange)) {
    connect(&appState, &AppState::objectWillChange, this, &StateSubscription::schedule);
}

void StateSubscription::schedule() {
    if (std::exchange(m_scheduled, true))
        return;
    const auto deliver = [this] {
        m_scheduled = false;
        m_onChange();
    };
    QMetaObject::invokeMethod(this, deliver, Qt::QueuedConnection);
}

} // namespace burnwick
