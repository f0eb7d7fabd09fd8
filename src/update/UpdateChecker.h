// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "update/Appcast.h"

#include <QObject>

#include <memory>

namespace burnwick {

class RepeatingTimer;
class Scheduler;

/// The delegate of an updater: turns the results of its checks into a state for the interface. Main thread
/// only, except for the delegate's operations.
class UpdateChecker final : public QObject {
    Q_OBJECT

public:
    enum class State { idle, checking, upToDate, available };
    Q_ENUM(State)

    /// `scheduler` must outlive this object.
    explicit UpdateChecker(Scheduler &scheduler, QObject *parent = nullptr);
    ~UpdateChecker() override;

    [[nodiscard]] State state() const { return m_state; }
    /// Cancels a pending return to `idle`. Only the caller that starts a check sets `checking`.
    void setState(State state);

    // The delegate's operations take effect in a later turn of this object's event loop. Thread-safe.

    /// `error` is the reason, if there is one. The state returns to `idle` after five seconds.
    void updaterDidNotFindUpdate(const QString & /*error*/ = {}) { setStateLater(State::upToDate); }
    void updaterDidFindValidUpdate(const AppcastItem & /*item*/) { setStateLater(State::available); }
    void updaterDidAbort(const QString & /*error*/) { setStateLater(State::idle); }

Q_SIGNALS:
    /// Emitted after the state has changed.
    void stateChanged(burnwick::UpdateChecker::State state);

private:
    void setStateLater(State state);

    Scheduler &m_scheduler;
    State m_state = State::idle;
    std::unique_ptr<RepeatingTimer> m_revertTask; ///< the pending return from `upToDate` to `idle`
};

} // namespace burnwick
