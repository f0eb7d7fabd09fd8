// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <stdexcept>
#include <string_view>

namespace burnwick::test {

/// Returns that screen of QtTestMain.cpp; throws for an unknown name.
inline QScreen &screenNamed(std::string_view name) {
    for (QScreen *screen : QGuiApplication::screens()) {
        if (screen->name().toStdString() == name)
            return *screen;
    }
    throw std::logic_error("no such screen");
}

/// Moves a hidden window to the screen.
inline void moveTo(QScreen &screen, QWidget &window) {
    window.setScreen(&screen);
    window.move(screen.geometry().topLeft());
}

} // namespace burnwick::test
