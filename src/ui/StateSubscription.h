// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <functional>

namespace burnwick {

class AppState;

/// Calls back once after the state has changed, however many of its properties did: the announcement comes
/// before each change, the call in the next turn of the event loop. Main thread only.
class StateSubscription final : public QObject {
    Q_OBJECT

public:
    /// Ends with this object.
    StateSubscription(const AppState &appState, std::function<void()> onChange);

private:
    void schedule();

    std::function<void()> m_onChange;
    bool m_scheduled = false;
};

} // namespace burnwick
