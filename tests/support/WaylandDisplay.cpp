// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/WaylandDisplay.h"

#include "support/WaitFor.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <csignal>

#include <sys/prctl.h>
#include <unistd.h>

namespace burnwick::test {

namespace {

/// Sway refuses to run as root.
constexpr uid_t nobody = 65534;

constexpr auto configuration = R"(xwayland disable
output HEADLESS-1 mode 1280x900
)";

} // namespace

WaylandDisplay::WaylandDisplay() {
    const QString folder = QString::fromStdString(m_directory.path().string());
    writeFile(m_directory.path() / "config", configuration);
    m_socket = folder + QStringLiteral("/sway");
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    for (const auto &[name, value] : {std::pair("XDG_RUNTIME_DIR", folder), std::pair("SWAYSOCK", m_socket),
                                      std::pair("WLR_BACKENDS", QStringLiteral("headless")),
                                      std::pair("WLR_LIBINPUT_NO_DEVICES", QStringLiteral("1")),
                                      std::pair("WLR_RENDERER", QStringLiteral("pixman"))})
        environment.insert(QString::fromLatin1(name), value);
    m_compositor.setProcessEnvironment(environment);
    const bool isRoot = geteuid() == 0;
    if (isRoot && chown(m_directory.path().c_str(), nobody, nobody) != 0)
        return;
    m_compositor.setChildProcessModifier([isRoot] {
        if (isRoot && (setgid(nobody) != 0 || setuid(nobody) != 0))
            _exit(1);
        // A crashing test runs no destructors.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    m_compositor.setStandardErrorFile(QProcess::nullDevice());
    m_compositor.start(QStringLiteral("sway"), {QStringLiteral("-c"), folder + QStringLiteral("/config")});
    QStringList sockets;
    const bool listens = waitFor([&] {
        sockets = QDir(folder).entryList({QStringLiteral("wayland-?")}, QDir::Files | QDir::System);
        return !sockets.isEmpty() && !nodes().empty();
    });
    if (listens)
        m_name = folder + QLatin1Char('/') + sockets.first();
}

WaylandDisplay::~WaylandDisplay() {
    m_compositor.kill();
    m_compositor.waitForFinished();
}

QStringList WaylandDisplay::windows() const {
    QStringList titles;
    for (const QJsonObject &node : nodes()) {
        if (node.contains(QLatin1String("app_id")))
            titles += node.value(QLatin1String("name")).toString();
    }
    return titles;
}

QString WaylandDisplay::focused() const {
    for (const QJsonObject &node : nodes()) {
        if (node.contains(QLatin1String("app_id")) && node.value(QLatin1String("focused")).toBool())
            return node.value(QLatin1String("name")).toString();
    }
    return {};
}

bool WaylandDisplay::run(const QString &command) const {
    return message({command}).contains("\"success\": true");
}

QByteArray WaylandDisplay::message(const QStringList &arguments) const {
    QProcess swaymsg;
    swaymsg.start(QStringLiteral("swaymsg"),
                  QStringList{QStringLiteral("--raw"), QStringLiteral("-s"), m_socket} + arguments);
    swaymsg.waitForFinished();
    return swaymsg.readAllStandardOutput();
}

std::vector<QJsonObject> WaylandDisplay::nodes() const {
    const QByteArray tree = message({QStringLiteral("-t"), QStringLiteral("get_tree")});
    std::vector<QJsonObject> found;
    if (const QJsonObject root = QJsonDocument::fromJson(tree).object(); !root.isEmpty())
        found.push_back(root);
    for (std::size_t i = 0; i < found.size(); ++i) {
        for (const char *members : {"nodes", "floating_nodes"}) {
            const QJsonArray children = found[i].value(QLatin1String(members)).toArray();
            for (const auto &child : children)
                found.push_back(child.toObject());
        }
    }
    return found;
}

} // namespace burnwick::test
