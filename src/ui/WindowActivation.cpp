// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/WindowActivation.h"

#include <QGuiApplication>
#include <QLayout>
#include <QWidget>

namespace burnwick {

void bringToFront(QWidget &window, const std::string &activationToken) {
    // Qt accepts the token by this variable only.
    constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN";
    const bool onWayland = QGuiApplication::platformName() == QLatin1String("wayland");
    const bool hasToken = !activationToken.empty();
    if (hasToken)
        qputenv(tokenVariable, QByteArray::fromStdString(activationToken));
    else if (onWayland && window.isVisible() && !window.isActiveWindow())
        window.hide();

    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();

    // The token is used up, and child processes must not inherit it.
    if (hasToken)
        qunsetenv(tokenVariable);
}

void leaveTopTo(int titleBarHeight, QWidget &window) {
    // Newer versions of Qt would add the title bar to the margins again.
    window.setAttribute(Qt::WA_ContentsMarginsRespectsSafeArea, false);
    window.layout()->setContentsMargins(0, titleBarHeight, 0, 0);
}

} // namespace burnwick
