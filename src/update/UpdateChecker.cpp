// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/UpdateChecker.h"

#include "async/Scheduler.h"

#include <QMetaObject>

namespace burnwick {

UpdateChecker::UpdateChecker(Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_scheduler(scheduler) {}

UpdateChecker::~UpdateChecker() = default;

void UpdateChecker::setState(State state) {
    m_revertTask.reset();
    publish(state);
}

void UpdateChecker::updaterDidNotFindUpdate() {
    QMetaObject::invokeMethod(
        this,
        [this] {
            setState(State::upToDate);
            startRevertTask();
        },
        Qt::QueuedConnection);
}

void UpdateChecker::updaterDidNotFindUpdate(const QString &) {
    updaterDidNotFindUpdate();
}

void UpdateChecker::updaterDidFindValidUpdate(const AppcastItem &) {
    setStateLater(State::available);
}

void UpdateChecker::updaterDidAbort(const QString &) {
    setStateLater(State::idle);
}

void UpdateChecker::setStateLater(State state) {
    QMetaObject::invokeMethod(
        this, [this, state] { setState(state); }, Qt::QueuedConnection);
}

void UpdateChecker::publish(State state) {
    if (state == m_state)
        return;
    m_state = state;
    Q_EMIT stateChanged(state);
}

void UpdateChecker::startRevertTask() {
    constexpr std::chrono::seconds shownFor{5};
    m_revertTask = m_scheduler.repeat(shownFor, [this] { setState(State::idle); });
}

} // namespace burnwick
