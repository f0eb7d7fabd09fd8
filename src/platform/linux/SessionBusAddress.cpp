// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/SessionBusAddress.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <optional>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace burnwick {

namespace {

struct SocketAddress {
    sockaddr_un name{};
    socklen_t size = 0;
};

/// Absent when the name does not fit.
std::optional<SocketAddress> socketAddress(const QByteArray &name) {
    SocketAddress address;
    address.name.sun_family = AF_UNIX;
    // The one byte more is the zero at the end of a path.
    if (name.isEmpty() || name.size() >= static_cast<qsizetype>(sizeof address.name.sun_path))
        return std::nullopt;
    std::ranges::copy(name, address.name.sun_path);
    const bool isPath = !name.startsWith('\0');
    address.size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) +
                                          static_cast<std::size_t>(name.size()) + (isPath ? 1 : 0));
    return address;
}

/// Of an address like "unix:path=/run/bus,guid=0f;tcp:host=localhost".
std::optional<SocketAddress> firstSocket(const QString &busAddress) {
    for (const QByteArray &server : busAddress.toLocal8Bit().split(';')) {
        if (!server.startsWith("unix:"))
            continue;
        for (const QByteArray &pair : server.sliced(5).split(',')) {
            const qsizetype equals = pair.indexOf('=');
            const QByteArray key = pair.left(equals);
            if (key == "path" || key == "abstract")
                return socketAddress(QByteArray(key == "path" ? 0 : 1, '\0') +
                                     QByteArray::fromPercentEncoding(pair.mid(equals + 1)));
        }
    }
    return std::nullopt;
}

bool isSilent(int connection, const SocketAddress &address, std::chrono::milliseconds limit) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(limit);
    const timeval time{seconds.count(), std::chrono::microseconds(limit - seconds).count()};
    // A connection waits as long as a sending does.
    for (const int option : {SO_SNDTIMEO, SO_RCVTIMEO})
        ::setsockopt(connection, SOL_SOCKET, option, &time, sizeof time);
    if (::connect(connection, reinterpret_cast<const sockaddr *>(&address.name), address.size) != 0)
        return errno == EAGAIN;
    const QByteArray greeting =
        QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(::getuid()).toHex() + "\r\n";
    if (::send(connection, greeting.constData(), static_cast<std::size_t>(greeting.size()), MSG_NOSIGNAL) < 0)
        return errno == EAGAIN;
    char firstByte = 0;
    return ::recv(connection, &firstByte, 1, 0) < 0 && errno == EAGAIN;
}

} // namespace

QString sessionBusAddress() {
    if (const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty())
        return QString::fromLocal8Bit(address);
    const QByteArray runtimeDirectory = qgetenv("XDG_RUNTIME_DIR");
    const QString socket = QString::fromLocal8Bit(runtimeDirectory) + QStringLiteral("/bus");
    if (runtimeDirectory.isEmpty() || !QFileInfo::exists(socket))
        return {};
    // Addresses have a tilde and some others escaped.
    return QStringLiteral("unix:path=") + QString::fromLatin1(QUrl::toPercentEncoding(
                                              socket, QByteArrayLiteral("/"), QByteArrayLiteral("~")));
}

bool isSilentBus(const QString &address, std::chrono::milliseconds limit) {
    const auto socket = firstSocket(address);
    const int connection = socket ? ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0) : -1;
    if (connection < 0)
        return false;
    const bool silent = isSilent(connection, *socket, limit);
    ::close(connection);
    return silent;
}

} // namespace burnwick
