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
#include <QtDBus/QDBusObjectPath>
#include <QtGui/QImage>

#include <vector>

namespace burnwick {
namespace {

// A real panel shows the item and clicks it in PanelTest.

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
    [[nodiscard]] std::string menuPath() const {
        return property("Menu").value<QDBusObjectPath>().path().toStdString();
    }

    FakeStatusNotifierWatcher watcher{sessionBusOfTests()};
    std::unique_ptr<StatusItem> item = platform::makeStatusItem();
    std::vector<std::string> tokens; ///< of the handler's calls
};

TEST(StatusItemOnBus, HasEveryPropertyOfTheInterface) {
    const ShownItem shown("panel-6-systray");
    EXPECT_TRUE(shown.watcher.registeredItems().value(0).startsWith(
        QStringLiteral("org.kde.StatusNotifierItem-%1-").arg(QCoreApplication::applicationPid())));
    EXPECT_EQ(shown.watcher.readItem().keys().join(u' ').toStdString(),
              "AttentionAccessibleDesc AttentionIconName AttentionIconPixmap AttentionMovieName Category "
              "IconAccessibleDesc IconName IconPixmap IconThemePath Id ItemIsMenu Menu OverlayIconName "
              "OverlayIconPixmap Status Title ToolTip WindowId XAyatanaLabel XAyatanaLabelGuide "
              "XAyatanaOrderingIndex");
    const std::pair<const char *, const char *> texts[] = {
        {"Category", "ApplicationStatus"},
        {"Id", "burnwick"},
        {"Status", "Active"},
        {"Title", "1.2M | $4.50 | s67%  ●"},
        {"IconAccessibleDesc", "Burnwick: 1.2M | $4.50 | s67%  ● (orange)"},
    };
    for (const auto &[name, text] : texts)
        EXPECT_EQ(shown.text(name), text) << name;
    EXPECT_FALSE(shown.property("ItemIsMenu").toBool());
}

TEST(StatusItemOnBus, ThePresentationFollowsTheHost) {
    const char *const label = "1.2M | $4.50 | s67%";
    const char *const noMenu = "/NO_DBUSMENU";
    const char *const menu = "/MenuBar";
    const QList<int> squares{16, 22, 24, 32, 48};
    const struct {
        const char *host, *label, *menu, *iconName;
        QList<int> heights;
        const char *lineBreak; ///< in the tool tip
    } rows[] = {
        {"gnome-shell", label, menu, "", squares, " · "},
        {"ayatana-indicat", label, menu, "burnwick-status-orange", squares, " · "},
        {"waybar", "", noMenu, "", {54}, "\n"},
        {"panel-12-systra", "", noMenu, "", squares, "\n"},    // Xfce; cut by the kernel
        {"notification-ar", label, noMenu, "", squares, "\n"}, // MATE's applet, cut too
        {"kded5", "", noMenu, "", squares, "<br/>"},
        {"my-waybar", "", noMenu, "", squares, " · "},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.host);
        const ShownItem shown(row.host);
        EXPECT_EQ(shown.text("XAyatanaLabel"), row.label);
        EXPECT_EQ(shown.menuPath(), row.menu);
        EXPECT_EQ(shown.text("IconName"), row.iconName);
        QList<int> heights;
        for (const NotifierPixmap &pixmap : qdbus_cast<NotifierPixmaps>(shown.property("IconPixmap"))) {
            EXPECT_EQ(pixmap.argb.size(), 4 * pixmap.width * pixmap.height);
            EXPECT_EQ(pixmap.width > pixmap.height, row.heights.size() == 1);
            heights.append(pixmap.height);
        }
        EXPECT_EQ(heights, row.heights);
        const auto toolTip = qdbus_cast<NotifierToolTip>(shown.property("ToolTip"));
        EXPECT_TRUE(toolTip.body.contains(QString::fromUtf8(row.lineBreak))) << toolTip.body.toStdString();
        EXPECT_EQ(toolTip.title.toStdString(), "Burnwick");
        if (*row.iconName != '\0') {
            const QString file = shown.property("IconThemePath").toString() + u'/' +
                                 QLatin1String(row.iconName) + QStringLiteral(".png");
            EXPECT_EQ(QImage(file).size(), QSize(48, 48));
        }
    }
}

TEST(StatusItemOnBus, TheMenusEntryCallsTheHandler) {
    const ShownItem shown("gnome-shell");
    const QVariantList layout =
        shown.watcher.callMenu(QStringLiteral("GetLayout"), {0, -1, QStringList()}).arguments();
    ASSERT_EQ(layout.size(), 2);
    const auto root = qdbus_cast<DBusMenuLayout>(layout.at(1));
    ASSERT_EQ(root.children.size(), 1);
    const auto entry = qdbus_cast<DBusMenuLayout>(root.children.first().variant());
    EXPECT_EQ(entry.properties.value(QStringLiteral("label")).toString().toStdString(), "Open Burnwick");
    const auto answer = shown.watcher.callMenu(QStringLiteral("GetGroupProperties"),
                                               {QVariant::fromValue(QList<int>{entry.id}), QStringList()});
    const auto properties = qdbus_cast<QList<DBusMenuEntry>>(answer.arguments().value(0));
    ASSERT_EQ(properties.size(), 1);
    EXPECT_EQ(properties.first().properties, entry.properties);

    shown.watcher.callItem(QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("token")});
    const QDBusVariant data(0);
    shown.watcher.callMenu(QStringLiteral("Event"),
                           {entry.id, QStringLiteral("hovered"), QVariant::fromValue(data), 0U});
    EXPECT_TRUE(shown.tokens.empty());
    shown.watcher.callMenu(QStringLiteral("Event"),
                           {entry.id, QStringLiteral("clicked"), QVariant::fromValue(data), 0U});
    const QList<DBusMenuEvent> events{{entry.id, QStringLiteral("clicked"), data, 0U}, {77, {}, data, 0U}};
    const auto unknown =
        shown.watcher.callMenu(QStringLiteral("EventGroup"), {QVariant::fromValue(events)}).arguments();
    EXPECT_EQ(qdbus_cast<QList<int>>(unknown.value(0)), QList<int>{77});
    EXPECT_EQ(shown.tokens, (std::vector<std::string>{"token", ""}));
}

TEST(StatusItemOnBus, RegistersAgainWhenTheLabelMayBeOverlooked) {
    const std::pair<const char *, int> rows[] = {{"gnome-shell", 2}, {"ayatana-indicat", 1}};
    for (const auto &[host, registrations] : rows) {
        const ShownItem shown(host);
        // GNOME's extension reads the menu after the properties; it may have overlooked the label by then.
        for (int times = 0; times < 2; ++times) {
            shown.watcher.callMenu(QStringLiteral("GetLayout"), {0, -1, QStringList()});
            EXPECT_NE(shown.text("XAyatanaLabel"), "");
        }
        const QStringList items = shown.watcher.registeredItems();
        EXPECT_EQ(items.size(), registrations) << host;
        EXPECT_EQ(items.count(items.value(0)), registrations) << "another item";
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
              QStringList{QStringLiteral("there is no status area now; the item appears once there is one")});
    EXPECT_EQ(shown.menuPath(), "/NO_DBUSMENU");
    EXPECT_EQ(shown.watcher.callMenu(QStringLiteral("AboutToShow"), {0}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(shown.text("XAyatanaLabel"), "");
}

TEST(StatusItemOnBus, EachClickCallsTheHandlerAndUsesTheTokenOnce) {
    ShownItem shown("panel-6-systray");
    const std::pair<const char *, QVariantList> clicks[] = {{"Activate", {5, 7}},
                                                            {"SecondaryActivate", {5, 7}},
                                                            {"ContextMenu", {5, 7}},
                                                            {"XAyatanaSecondaryActivate", {1234U}}};
    for (const auto &[method, arguments] : clicks) {
        shown.tokens.clear();
        shown.watcher.callItem(QStringLiteral("ProvideXdgActivationToken"), {QStringLiteral("t1")});
        shown.watcher.callItem(QLatin1String(method), arguments);
        shown.watcher.callItem(QLatin1String(method), arguments);
        EXPECT_EQ(shown.tokens, (std::vector<std::string>{"t1", ""})) << method;
    }
    shown.tokens.clear();
    const auto scrolled = shown.watcher.callItem(QStringLiteral("Scroll"), {-1, QStringLiteral("vertical")});
    EXPECT_EQ(scrolled.type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(shown.tokens.empty());
}

TEST(StatusItemOnBus, OnlyChangedPropertiesAreAnnounced) {
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
    EXPECT_EQ(shown.watcher.takeSignals(), QStringList()) << "a difference that is not visible";
}

} // namespace
} // namespace burnwick
