// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/StatFigures.h"
#include "ui/StateSubscription.h"

#include <QWidget>

#include <array>
#include <tuple>

namespace burnwick {

class AppState;
class StatTile;

/// The dashboard's content. Follows the state while it lives. Main thread only.
class MainWindowView final : public QWidget {
    Q_OBJECT

public:
    /// The state must outlive this object.
    explicit MainWindowView(const AppState &appState, QWidget *parent = nullptr);

private:
    void showState();

    const AppState &m_appState;
    std::array<StatTile *, std::tuple_size_v<decltype(statFigures({}, 0))>> m_tiles{};
    StateSubscription m_subscription;
};

} // namespace burnwick
