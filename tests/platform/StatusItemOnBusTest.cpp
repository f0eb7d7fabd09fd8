// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/StatusItemTestContent.h"
#include "platform/linux/statusitem/OneEntryMenu.h"
#include "platform/linux/statusitem/StatusNotifierTypes.h"
#include "support/FakeStatusNotifierWatcher.h"
#include "support/LogCapture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFileInfo>
#include <QtDBus/QDBusObjectPath>

#include <vector>

namespace burnwick {
namespace {

/// An item that shows 67 % and has registered with a host of that name.
struct ShownItem {
    explicit ShownItem(const std::string &hostProcess) {
        watcher.takeName(hostProcess);
        item->setActivateHandler([this](const std::string &token) { tokens.push_back(token); });
        item->show(contentAt(67));
        EXPECT_TRUE(watcher.waitForItems(1));
    }

    [[nodiscard]] QVariant property(const char *name) const {
        return watcher.readItem().value(QLatin1String(name));
    }
    [[nodiscard]] std::string text(const char *name) const { return property(name).toString().toStdString(); }
    [[nodiscard]] NotifierPixmaps pixmaps() const {
        return qdbus_cast<NotifierPixmaps>(property("IconPixmap"));
    }
    [[nodiscard]] NotifierToolTip toolTip() const { return qdbus_cast<NotifierToolTip>(property("ToolTip")); }
    [[nodiscard]] std::string menuPath() const {
        return property("Menu").value<QDBusObjectPath>().path().toStdString();
    }

    FakeStatusNotifierWatcher watcher{sessionBusOfTests()};
    std::unique_ptr<StatusItem> item = platform::makeStatusItem();
    std::vector<std::string> tokens; ///< of the handler's calls
};

TEST(StatusItemOnBus, AnswersEveryPropertyOfTheInterface) {
    const ShownItem shown("panel-6-systray");
    EXPECT_TRUE(shown.watcher.registeredItems().value(0).startsWith(
        QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(QCoreApplication::applicationPid())));
    const QVariantMap properties = shown.watcher.readItem();
    EXPECT_EQ(properties.keys().join(u' ').toStdString(),
              "AttentionAccessibleDesc AttentionIconName AttentionIconPixmap AttentionMovieName Category "
              "IconAccessibleDesc IconName IconPixmap IconThemePath Id ItemIsMenu Menu OverlayIconName "
              "OverlayIconPixmap Status Title ToolTip WindowId XAyatanaLabel XAyatanaLabelGuide "
              "XAyatanaOrderingIndex");
    EXPECT_EQ(shown.text("Category"), "ApplicationStatus");
    EXPECT_EQ(shown.text("Id"), "burnwick");
    EXPECT_EQ(shown.text("Status"), "Active");
    EXPECT_EQ(shown.text("Title"), "1.2M | $4.50 | s67%  ●");
    EXPECT_EQ(shown.text("IconAccessibleDesc"), "Burnwick: 1.2M | $4.50 | s67%  ● (orange)");
    EXPECT_FALSE(shown.property("ItemIsMenu").toBool());
}

TEST(StatusItemOnBus, ShowsACompactIconWhereThereIsNoRoomForText) {
    const ShownItem shown("panel-6-systray");
    QList<int> sizes;
    for (const NotifierPixmap &pixmap : shown.pixmaps()) {
        EXPECT_EQ(pixmap.width, pixmap.height);
        EXPECT_EQ(pixmap.argb.size(), 4 * pixmap.width * pixmap.height);
        EXPECT_EQ(pixmap.argb.at(0), 0) << "alpha first, and the corner is transparent";
        sizes.append(pixmap.width);
    }
    EXPECT_EQ(sizes, (QList<int>{16, 22, 24, 32, 48}));
    EXPECT_EQ(shown.text("XAyatanaLabel"), "");
    EXPECT_EQ(shown.text("IconName"), "") << "a name would be preferred to the picture";
    EXPECT_EQ(shown.menuPath(), "/NO_DBUSMENU");
    EXPECT_TRUE(shown.toolTip().body.contains(u'\n')) << "this host reads Pango markup";
    EXPECT_EQ(shown.toolTip().title.toStdString(), "Burnwick");
}

TEST(StatusItemOnBus, ShowsAWidePictureOnWaybar) {
    const ShownItem shown("waybar");
    const NotifierPixmaps pixmaps = shown.pixmaps();
    ASSERT_EQ(pixmaps.size(), 1);
    EXPECT_GT(pixmaps.first().width, 5 * pixmaps.first().height);
    EXPECT_EQ(pixmaps.first().argb.size(), 4 * pixmaps.first().width * pixmaps.first().height);
}

TEST(StatusItemOnBus, ShowsALabelAndAMenuOnGnome) {
    const ShownItem shown("gnome-shell");
    EXPECT_EQ(shown.text("XAyatanaLabel"), "1.2M | $4.50 | s67%") << "the dot is on the icon, in its colour";
    EXPECT_EQ(shown.pixmaps().value(0).width, 16);
    ASSERT_EQ(shown.menuPath(), "/MenuBar");

    const QVariantList layout =
        shown.watcher.callMenu(QStringLiteral("GetLayout"), {0, -1, QStringList()}).arguments();
    ASSERT_EQ(layout.size(), 2);
    const auto root = qdbus_cast<DBusMenuLayout>(layout.at(1));
    ASSERT_EQ(root.children.size(), 1);
    const auto entry = qdbus_cast<DBusMenuLayout>(root.children.first().variant());
    EXPECT_EQ(entry.properties.value(QStringLiteral("label")).toString().toStdString(), "Open Burnwick");

    shown.watcher.callItem(QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("token")});
    const auto send = [&shown, &entry](const QString &event) {
        shown.watcher.callMenu(QStringLiteral("Event"),
                               {entry.id, event, QVariant::fromValue(QDBusVariant(0)), 0U});
    };
    send(QStringLiteral("hovered"));
    EXPECT_TRUE(shown.tokens.empty());
    send(QStringLiteral("clicked"));
    EXPECT_EQ(shown.tokens, std::vector<std::string>{"token"});
}

TEST(StatusItemOnBus, RegistersAgainWhereTheLabelIsOverlooked) {
    const struct {
        const char *host;
        qsizetype registrations;
    } rows[] = {{"gnome-shell", 2}, {"ayatana-indicat", 1}};
    for (const auto &row : rows) {
        const ShownItem shown(row.host);
        // As GNOME's extension does once it has read the properties; then it may have passed over the label.
        for (int times = 0; times < 2; ++times) {
            shown.watcher.callMenu(QStringLiteral("GetLayout"), {0, -1, QStringList()});
            EXPECT_EQ(shown.text("XAyatanaLabel"), "1.2M | $4.50 | s67%");
        }
        const QStringList items = shown.watcher.registeredItems();
        EXPECT_EQ(items.size(), row.registrations) << row.host;
        EXPECT_EQ(items.count(items.value(0)), row.registrations) << "another item";
    }
}

TEST(StatusItemOnBus, FollowsAChangeOfTheHost) {
    const test::LogCapture log;
    ShownItem shown("gnome-shell");
    EXPECT_EQ(log.lines(), QStringList());
    shown.watcher.dropName();
    shown.watcher.takeName("kded5");
    ASSERT_TRUE(shown.watcher.waitForItems(1));
    EXPECT_EQ(log.lines(),
              QStringList{QStringLiteral("there is no status area now; the item appears once there is one")})
        << "true of a panel that ends, too";
    EXPECT_EQ(shown.menuPath(), "/NO_DBUSMENU");
    EXPECT_EQ(shown.watcher.callMenu(QStringLiteral("AboutToShow"), {0}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(shown.text("XAyatanaLabel"), "");
    EXPECT_TRUE(shown.toolTip().body.contains(QStringLiteral("<br/>"))) << "Plasma reads Qt's markup";
}

TEST(StatusItemOnBus, GivesAyatanaPanelsAnIconByName) {
    const ShownItem shown("ayatana-indicat");
    EXPECT_EQ(shown.text("IconName"), "burnwick-status-orange");
    EXPECT_EQ(shown.menuPath(), "/MenuBar") << "the click opens an empty menu otherwise";
    const QString file =
        shown.property("IconThemePath").toString() + QStringLiteral("/burnwick-status-orange.png");
    EXPECT_EQ(QImage(file).size(), QSize(48, 48));
}

TEST(StatusItemOnBus, EveryKindOfClickCallsTheHandlerWithTheTokenOnce) {
    ShownItem shown("panel-6-systray");
    struct Click {
        const char *method;
        QVariantList arguments;
    };
    const Click clicks[] = {{"Activate", {5, 7}},
                            {"SecondaryActivate", {5, 7}},
                            {"ContextMenu", {5, 7}},
                            {"XAyatanaSecondaryActivate", {1234U}}};
    for (const Click &click : clicks) {
        shown.tokens.clear();
        shown.watcher.callItem(QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("t1")});
        shown.watcher.callItem(QLatin1String(click.method), click.arguments);
        shown.watcher.callItem(QLatin1String(click.method), click.arguments);
        EXPECT_EQ(shown.tokens, (std::vector<std::string>{"t1", ""})) << click.method;
    }
    shown.tokens.clear();
    const QDBusMessage answer =
        shown.watcher.callItem(QStringLiteral("Scroll"), {-1, QStringLiteral("vertical")});
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(shown.tokens.empty());
}

TEST(StatusItemOnBus, AnnouncesWhatChangedAndNothingElse) {
    ShownItem shown("gnome-shell");
    shown.watcher.listen();
    shown.item->show(contentAt(67));
    EXPECT_EQ(shown.watcher.takeSignals(), QStringList());

    shown.item->show(contentAt(90));
    EXPECT_EQ(shown.watcher.takeSignals().join(u' ').toStdString(),
              "NewTitle NewIcon NewToolTip XAyatanaNewLabel");
    EXPECT_EQ(shown.text("XAyatanaLabel"), "1.2M | $4.50 | s90%");

    StatusItemContent sameTitle = contentAt(90);
    sameTitle.fiveHourUsagePct = 90.2;
    shown.item->show(sameTitle);
    EXPECT_EQ(shown.watcher.takeSignals(), QStringList()) << "different, but nothing that anyone could see";
}

} // namespace
} // namespace burnwick
