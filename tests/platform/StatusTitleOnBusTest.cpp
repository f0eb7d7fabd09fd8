// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/StatusItemTestContent.h"
#include "platform/linux/statusitem/StatusTitleService.h"
#include "support/FakeStatusNotifierWatcher.h"
#include "support/LogCapture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusPendingCall>

#include <utility>
#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

/// A shell's extension on a separate connection, which follows the title.
class FakeExtension final : public QObject {
    Q_OBJECT

public:
    FakeExtension()
        : m_connection(sessionBusOfTests().connect(name)) {
        m_connection.connect(statusTitleBusName(), statusTitlePath(),
                             QStringLiteral("org.freedesktop.DBus.Properties"),
                             QStringLiteral("PropertiesChanged"), this, SLOT(onChange(QDBusMessage)));
        m_connection.registerService(shellExtensionBusName());
    }
    ~FakeExtension() override { QDBusConnection::disconnectFromBus(name); }

    QDBusMessage call(const QString &interface, const QString &method, const QVariantList &arguments) const {
        QDBusMessage message =
            QDBusMessage::createMethodCall(statusTitleBusName(), statusTitlePath(), interface, method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = m_connection.asyncCall(message);
        // The title belongs to this thread: a blocking call would keep it from replying.
        static_cast<void>(waitFor([&pending] { return pending.isFinished(); }));
        return pending.reply();
    }
    [[nodiscard]] QVariantMap properties() const {
        const QDBusMessage reply = call(QStringLiteral("org.freedesktop.DBus.Properties"),
                                        QStringLiteral("GetAll"), {titleInterface});
        return qdbus_cast<QVariantMap>(reply.arguments().value(0));
    }
    /// Returns the properties announced before this call, and clears the record.
    QVariantMap takeChanges() {
        // The bus keeps the order of one sender: the reply arrives after the signals sent before it.
        static_cast<void>(properties());
        return std::exchange(m_changes, {});
    }
    [[nodiscard]] bool isOnBus(const QString &service) const {
        return m_connection.interface()->isServiceRegistered(service);
    }
    void takeName() { m_connection.registerService(shellExtensionBusName()); }
    void dropName() { m_connection.unregisterService(shellExtensionBusName()); }

    static inline const QString titleInterface = QStringLiteral("com.burnwick.Burnwick.StatusTitle1");

private Q_SLOTS:
    void onChange(const QDBusMessage &message) {
        EXPECT_EQ(message.arguments().value(0).toString(), titleInterface);
        m_changes.insert(qdbus_cast<QVariantMap>(message.arguments().value(1)));
    }

private:
    static inline const QString name = QStringLiteral("fake-extension");

    QDBusConnection m_connection;
    QVariantMap m_changes;
};

/// An item beside a status area of GNOME's whose title the extension draws.
struct DrawnTitle {
    DrawnTitle() {
        watcher.takeName("gnome-shell");
        item->setActivateHandler([this](const std::string &token) { tokens.push_back(token); });
        item->show(contentAt(67));
        EXPECT_TRUE(waitFor([this] { return !log.lines().isEmpty(); }));
    }

    test::LogCapture log;
    FakeStatusNotifierWatcher watcher{sessionBusOfTests()};
    FakeExtension extension;
    std::unique_ptr<StatusItem> item = platform::makeStatusItem();
    std::vector<std::string> tokens; ///< of the handler's calls
};

TEST(StatusTitleOnBus, AnnouncesWhatChangedAndNothingElse) {
    DrawnTitle drawn;
    StatusItemContent content = contentAt(90);
    content.summary = "1.2M tokens";
    content.limits = {{"Session", 90.4, Instant(1'000'000'000'900ms), {}}, {"Weekly", 8, {}, {}}};
    content.remarks = {"Full at 13:20", "as of 12:05"};
    drawn.extension.takeChanges();
    drawn.item->show(content);
    const QVariantMap changed = drawn.extension.takeChanges();
    EXPECT_EQ(changed.keys().join(u' ').toStdString(), "Description Limits Remarks Summary Title");
    const QVariantMap all = drawn.extension.properties();
    EXPECT_EQ(all.keys(), changed.keys());
    for (const QVariantMap &properties : {changed, all}) {
        const QList<TitlePart> title{
            {QStringLiteral("1.2"), QStringLiteral("semibold"), false, {}},
            {QStringLiteral("M"), QStringLiteral("regular"), false, {}},
            {QStringLiteral(" | "), QStringLiteral("regular"), true, {}},
            {QStringLiteral("$"), QStringLiteral("regular"), false, {}},
            {QStringLiteral("4.50"), QStringLiteral("semibold"), false, {}},
            {QStringLiteral(" | "), QStringLiteral("regular"), true, {}},
            {QStringLiteral("s"), QStringLiteral("semibold"), true, {}},
            {QStringLiteral("90%"), QStringLiteral("heavy"), false, {}},
            {QStringLiteral("  "), QStringLiteral("regular"), false, {}},
            {QStringLiteral("●"), QStringLiteral("heavy"), false, QStringLiteral("#ff453b")},
        };
        EXPECT_EQ(qdbus_cast<QList<TitlePart>>(properties.value(QStringLiteral("Title"))), title);
        const QList<TitleLimit> limits{
            {QStringLiteral("Session"), 90.4, QStringLiteral("#ff453b"), 1'000'000'000},
            {QStringLiteral("Weekly"), 8, QStringLiteral("#33c759"), 0}};
        EXPECT_EQ(qdbus_cast<QList<TitleLimit>>(properties.value(QStringLiteral("Limits"))), limits);
        EXPECT_EQ(properties.value(QStringLiteral("Summary")), QStringLiteral("1.2M tokens"));
        EXPECT_EQ(properties.value(QStringLiteral("Remarks")).toStringList().join(u'|').toStdString(),
                  "Full at 13:20|as of 12:05");
        EXPECT_EQ(properties.value(QStringLiteral("Description")).toString().toStdString(),
                  "Burnwick: 1.2M | $4.50 | s90%  ● (red)");
    }
    content.fiveHourUsagePct = 90.2; // is not visible
    drawn.item->show(content);
    EXPECT_EQ(drawn.extension.takeChanges(), QVariantMap());
    content.remarks.pop_back();
    drawn.item->show(content);
    EXPECT_EQ(drawn.extension.takeChanges().keys(), QStringList{QStringLiteral("Remarks")});
}

TEST(StatusTitleOnBus, ActivateCallsTheHandlerWithTheToken) {
    const DrawnTitle drawn;
    for (const char *token : {"token", ""})
        drawn.extension.call(FakeExtension::titleInterface, QStringLiteral("Activate"),
                             {QLatin1String(token)});
    EXPECT_EQ(drawn.tokens, (std::vector<std::string>{"token", ""}));
}

TEST(StatusTitleOnBus, TheItemIsWithheldWhileTheExtensionIsEnabled) {
    DrawnTitle drawn;
    EXPECT_EQ(drawn.log.lines(),
              QStringList{QStringLiteral("the shell's extension shows the title; there is no other item")});
    for (int times = 0; times < 2; ++times) {
        EXPECT_EQ(drawn.watcher.registeredItems().size(), times);
        drawn.extension.dropName();
        ASSERT_TRUE(drawn.watcher.waitForItems(times + 1));
        const QString item = drawn.watcher.registeredItems().last();
        EXPECT_TRUE(drawn.extension.isOnBus(item));
        drawn.extension.takeName();
        EXPECT_TRUE(waitFor([&] { return !drawn.extension.isOnBus(item); }));
    }
}

TEST(StatusTitleOnBus, AnotherInstanceHasItsItemUntilItsTitleIsDrawn) {
    DrawnTitle drawn;
    const auto second = platform::makeStatusItem();
    second->show(contentAt(5));
    ASSERT_TRUE(drawn.watcher.waitForItems(1));
    drawn.item.reset();
    EXPECT_TRUE(waitFor([&] { return !drawn.extension.isOnBus(drawn.watcher.registeredItems().first()); }));
    EXPECT_EQ(drawn.extension.properties().value(QStringLiteral("Description")).toString().toStdString(),
              "Burnwick: 1.2M | $4.50 | s5%  ● (green)");
}

} // namespace
} // namespace burnwick

#include "StatusTitleOnBusTest.moc"
