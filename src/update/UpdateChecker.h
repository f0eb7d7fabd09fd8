// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "update/UpdaterDelegate.h"

#include <QObject>

#include <memory>

namespace burnwick {

class RepeatingTimer;
class Scheduler;

/// Makes of an updater's calls a state that the interface can show. The delegate's operations may be called
/// from any thread; they take effect in a later turn of this object's event loop. Everything else on the main
/// thread only.
class UpdateChecker final : public QObject, public UpdaterDelegate {
    Q_OBJECT

public:
    enum class State { idle, checking, upToDate, available };
    Q_ENUM(State)

    /// `scheduler` must outlive this object.
    explicit UpdateChecker(Scheduler &scheduler, QObject *parent = nullptr);
    ~UpdateChecker() override;

    [[nodiscard]] State state() const { return m_state; }
    /// For whoever starts a check: `checking` comes from outside alone. Ends a pending return to `idle`.
    void setState(State state);

    void updaterDidNotFindUpdate() override;
    void updaterDidNotFindUpdate(const QString &reason) override;
    void updaterDidFindValidUpdate(const AppcastItem &item) override;
    void updaterDidAbort(const QString &error) override;

Q_SIGNALS:
    /// The state is another one now.
    void stateChanged(burnwick::UpdateChecker::State state);

private:
    void setStateLater(State state);
    void publish(State state);
    void startRevertTask();

    Scheduler &m_scheduler;
    State m_state = State::idle;
    std::unique_ptr<RepeatingTimer> m_revertTask; ///< the pending return from `upToDate` to `idle`
};

} // namespace burnwick
