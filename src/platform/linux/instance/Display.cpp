// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/instance/Display.h"

#include <QtCore/QByteArrayList>

#include <algorithm>
#include <cstring>
#include <memory>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace burnwick {

namespace {

bool xAnswers(std::shared_ptr<void> &connection) {
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        return false;
    const std::shared_ptr<xcb_connection_t> tried(xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (xcb_connection_has_error(tried.get()) != 0)
        return false;
    connection = tried;
    return true;
}

bool waylandAnswers() {
    if (!qEnvironmentVariableIsEmpty("WAYLAND_SOCKET"))
        return true; // an open connection, which a trial would consume
    if (qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        return false;
    QByteArray path = qgetenv("WAYLAND_DISPLAY");
    if (!path.startsWith('/'))
        path = qgetenv("XDG_RUNTIME_DIR") + '/' + path;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (static_cast<std::size_t>(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return false;
    const bool connected =
        ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0;
    ::close(socket);
    return connected;
}

/// `platform` is one of Qt's platform names, possibly followed by a colon and options.
bool canBeUsed(const QByteArray &platform, std::shared_ptr<void> &connection) {
    if (platform.startsWith("xcb"))
        return xAnswers(connection);
    return !platform.startsWith("wayland") || waylandAnswers();
}

} // namespace

DisplayTrial tryDisplay() {
    DisplayTrial trial;
    const auto usable = [&trial](const QByteArray &name) { return canBeUsed(name, trial.connection); };
    const QByteArrayList chosen = qgetenv("QT_QPA_PLATFORM").split(';');
    if (chosen == QByteArrayList{QByteArray()} ? xAnswers(trial.connection) || waylandAnswers()
                                               : std::ranges::any_of(chosen, usable))
        return trial;
    std::string names;
    for (const char *variable : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        if (!qEnvironmentVariableIsEmpty(variable))
            names += (names.empty() ? "" : " and ") + qgetenv(variable).toStdString();
    }
    trial.fault = names.empty() ? "There is no display." : "Nothing answers on the display " + names + ".";
    return trial;
}

} // namespace burnwick
