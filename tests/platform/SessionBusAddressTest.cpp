// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/SessionBusAddress.h"

#include "support/MuteBus.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

namespace burnwick {
namespace {

constexpr auto limit = std::chrono::milliseconds(100);

/// Listens and says nothing: no event loop runs that would take the connections.
class SilentServer {
public:
    explicit SilentServer(const QString &name,
                          QLocalServer::SocketOptions options = QLocalServer::NoOptions) {
        m_server.setSocketOptions(options);
        EXPECT_TRUE(m_server.listen(name)) << m_server.errorString().toStdString();
    }

private:
    QLocalServer m_server;
};

TEST(SessionBusAddress, OnlyASocketThatSaysNothingIsSilent) {
    const QTemporaryDir directory(QDir::tempPath() + QStringLiteral("/bus ~%,;"));
    const QString path = directory.filePath(QStringLiteral("silent"));
    const QString mutePath = directory.filePath(QStringLiteral("mute"));
    const QString abstractName = path.section(u'/', -2);
    const SilentServer server(path);
    const SilentServer abstractServer(abstractName, QLocalServer::AbstractNamespaceOption);
    const test::MuteBus mute(mutePath);
    const auto addressOf = [](const char *kind, const QString &name) {
        return QLatin1String(kind) + QString::fromLatin1(QUrl::toPercentEncoding(name, QByteArrayLiteral("/"),
                                                                                 QByteArrayLiteral("~")));
    };
    const QString silent = addressOf("path=", path);
    const QString unused = QStringLiteral("unix:path=/nowhere/at/all");
    const struct {
        QString address;
        bool silent;
    } rows[] = {
        {QStringLiteral("unix:") + silent, true},
        {QStringLiteral("unix:guid=0f,") + silent + QStringLiteral(",x=y;") + unused, true},
        {unused + QStringLiteral(";unix:") + silent, true},
        {addressOf("unix:abstract=", abstractName), true},
        {addressOf("unix:path=", mutePath), true},
        {addressOf("unix:abstract=", abstractName + QStringLiteral("-other")), false},
        {sessionBusOfTests().address(), false},
        {QStringLiteral("unix:path=") + QString(200, u'x'), false},
        {QStringLiteral("tcp:host=localhost,port=1"), false},
        {QString(), false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(isSilentBus(row.address, limit), row.silent) << row.address.toStdString();
    EXPECT_EQ(mute.clients(), 1);
}

TEST(SessionBusAddress, AServerThatTakesNoMoreConnectionsIsSilent) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("bus"));
    QLocalServer server;
    server.setListenBacklogSize(0);
    ASSERT_TRUE(server.listen(path));
    QLocalSocket first;
    first.connectToServer(path);
    ASSERT_TRUE(first.waitForConnected());
    QElapsedTimer timer;
    timer.start();
    EXPECT_TRUE(isSilentBus(QStringLiteral("unix:path=") + path, limit));
    EXPECT_LT(timer.elapsed(), 5000);
}

} // namespace
} // namespace burnwick
