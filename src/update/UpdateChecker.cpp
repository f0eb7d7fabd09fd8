// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/UpdateChecker.h"

#include "async/Scheduler.h"

#include <QMetaObject>

#include <utility>

namespace burnwick {

UpdateChecker::UpdateChecker(Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_scheduler(scheduler) {}

UpdateChecker::~UpdateChecker() = default;

void UpdateChecker::setState(State state) {
    m_revertTask.reset();
    if (std::exchange(m_state, state) != state)
        Q_EMIT stateChanged(state);
}

void UpdateChecker::setStateLater(State state) {
    static constexpr std::chrono::seconds upToDateDuration{5};
    const auto apply = [this, state] {
        setState(state);
        if (state == State::upToDate)
            m_revertTask = m_scheduler.repeat(upToDateDuration, [this] { setState(State::idle); });
    };
    QMetaObject::invokeMethod(this, apply, Qt::QueuedConnection);
}

} // namespace burnwick
