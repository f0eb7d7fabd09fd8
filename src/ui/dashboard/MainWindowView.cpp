// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/MainWindowView.h"

#include "state/AppState.h"
#include "ui/dashboard/StatTile.h"

#include <QGridLayout>

namespace burnwick {

namespace {

constexpr int tilesPerRow = 6;
constexpr int tileSpacing = 4;
constexpr int windowMargin = 20;

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

MainWindowView::MainWindowView(const AppState &appState, QWidget *parent)
    : QWidget(parent)
    , m_appState(appState)
    , m_subscription(appState, [this] { showState(); }) {
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(windowMargin, windowMargin, windowMargin, windowMargin);
    grid->setSpacing(tileSpacing);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    const auto figures = statFigures(appState.historicalData(), appState.sessionCost());
    for (std::size_t i = 0; i < figures.size(); ++i) {
        m_tiles[i] = new StatTile(textOf(figures[i].label), this);
        const int at = static_cast<int>(i);
        grid->addWidget(m_tiles[i], at / tilesPerRow, at % tilesPerRow);
    }
    for (int column = 0; column < tilesPerRow; ++column)
        grid->setColumnStretch(column, 1);
    showState();
}

void MainWindowView::showState() {
    const auto figures = statFigures(m_appState.historicalData(), m_appState.sessionCost());
    for (std::size_t i = 0; i < figures.size(); ++i)
        m_tiles[i]->setValue(textOf(figures[i].value));
}

} // namespace burnwick
