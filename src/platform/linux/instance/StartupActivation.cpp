// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include <QtCore/QByteArray>

namespace burnwick {

namespace {

constexpr const char *tokenVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char *startupIdVariable = "DESKTOP_STARTUP_ID";

} // namespace

StartupActivation platform::startupActivation() {
    return {qgetenv(tokenVariable).toStdString(), qgetenv(startupIdVariable).toStdString()};
}

void platform::forgetStartupActivation() {
    qunsetenv(tokenVariable);
    qunsetenv(startupIdVariable);
}

} // namespace burnwick
