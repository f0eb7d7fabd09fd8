// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/SessionBus.h"

#include "support/MuteBus.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

namespace burnwick {
namespace {

constexpr auto limit = std::chrono::milliseconds(100);

TEST(SessionBus, ABusIsSilentOnlyWhenItAcceptsAndDoesNotReply) {
    const QTemporaryDir directory(QDir::tempPath() + QStringLiteral("/bus ~%,;"));
    const QString path = directory.filePath(QStringLiteral("silent"));
    const QString mutePath = directory.filePath(QStringLiteral("mute"));
    const QString fullPath = directory.filePath(QStringLiteral("full"));
    QLocalServer silentServer; // without an event loop
    ASSERT_TRUE(silentServer.listen(path));
    const test::MuteBus mute(mutePath);
    QLocalServer fullServer;
    fullServer.setListenBacklogSize(0);
    ASSERT_TRUE(fullServer.listen(fullPath));
    QLocalSocket onlyClient;
    onlyClient.connectToServer(fullPath);
    ASSERT_TRUE(onlyClient.waitForConnected());

    const auto addressOf = [](const QString &name) {
        return QStringLiteral("unix:path=") + QString::fromLatin1(QUrl::toPercentEncoding(
                                                  name, QByteArrayLiteral("/"), QByteArrayLiteral("~")));
    };
    const QString unused = QStringLiteral("unix:path=/nowhere/at/all");
    const struct {
        QString address;
        bool silent;
    } rows[] = {
        {addressOf(path), true},
        {unused + QStringLiteral(";") + addressOf(path), true},
        {addressOf(mutePath), true},
        {addressOf(fullPath), true},
        {sessionBusOfTests().address(), false},
        {unused, false},
        {QStringLiteral("tcp:host=localhost,port=1"), false},
        {QString(), false},
    };
    for (const auto &row : rows)
        EXPECT_EQ(isSilentBus(row.address, limit), row.silent) << row.address.toStdString();
    EXPECT_EQ(mute.clients(), 1);
}

} // namespace
} // namespace burnwick
