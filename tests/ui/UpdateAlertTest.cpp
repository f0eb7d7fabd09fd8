// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/UpdateAlert.h"

#include "model/Version.h"
#include "support/HostileTexts.h"
#include "support/Outcome.h"
#include "ui/SettingsScenes.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

QMessageBox *openAlert() {
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}

class UpdateAlertTest : public testing::Test {
protected:
    QMessageBox *alertFor(const QString &version) {
        showUpdateAlert(
            version, QUrl(QStringLiteral("https://burnwick.test/releases/1")),
            [this](const QUrl &url) { m_events.append(url.path()); },
            [this] { m_events.append(QStringLiteral("closed")); });
        return openAlert();
    }
    /// The texts of the labels, which are all plain text.
    static QString textOf(const QMessageBox &alert) {
        QStringList lines;
        for (const QLabel *label : alert.findChildren<QLabel *>()) {
            if (label->text().isEmpty())
                continue;
            EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
            lines.append(label->text());
        }
        return lines.join(u'\n');
    }

    QStringList m_events;
};

TEST_F(UpdateAlertTest, OnlyUpdateNowOpensTheDownload) {
    const struct {
        const char *what;
        void (*answer)(QMessageBox &alert);
        const char *events;
    } rows[] = {
        {"Update Now", [](QMessageBox &alert) { alert.defaultButton()->click(); }, "/releases/1 closed"},
        {"Return", [](QMessageBox &alert) { QTest::keyClick(&alert, Qt::Key_Return); }, "/releases/1 closed"},
        {"Later", [](QMessageBox &alert) { alert.escapeButton()->click(); }, "closed"},
        {"Escape", [](QMessageBox &alert) { QTest::keyClick(&alert, Qt::Key_Escape); }, "closed"},
        {"the window closed", [](QMessageBox &alert) { alert.close(); }, "closed"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const QPointer<QMessageBox> alert = alertFor(QStringLiteral("1"));
        ASSERT_NE(alert, nullptr);
        EXPECT_EQ(alert->windowModality(), Qt::ApplicationModal);
        EXPECT_EQ(alert->defaultButton()->text(), QStringLiteral("Update Now"));
        EXPECT_EQ(alert->escapeButton()->text(), QStringLiteral("Later"));
        ASSERT_TRUE(QTest::qWaitForWindowActive(alert));
        row.answer(*alert);
        EXPECT_EQ(m_events.join(u' ').toStdString(), row.events);
        EXPECT_TRUE(waitFor([&alert] { return alert.isNull(); }));
        m_events.clear();
    }
}

TEST_F(UpdateAlertTest, AVersionIsPlainTextOfLimitedLength) {
    constexpr std::size_t longestVersion = 40;
    std::vector<std::pair<QString, QString>> rows{
        {QStringLiteral(" 2.0 "), QStringLiteral(" 2.0 ")},
        {QString(1 << 20, u'9'), QString(20, u'9') + QChar(u'\u2026') + QString(19, u'9')},
    };
    for (const auto &hostile : test::hostileTexts()) {
        if (hostile.text.size() <= longestVersion && hostile.isUtf8)
            rows.emplace_back(QString::fromStdString(hostile.text), QString::fromStdString(hostile.shown));
    }
    for (const auto &[version, shown] : rows) {
        QMessageBox *alert = alertFor(version);
        ASSERT_NE(alert, nullptr);
        EXPECT_EQ(textOf(*alert), QStringLiteral("Update Available\nVersion ") + shown +
                                      QStringLiteral(" is available. Would you like to update now?"));
        EXPECT_LT(alert->width(), 1000);
        EXPECT_LT(alert->height(), 400);
        delete alert;
    }
}

class UpdateRowTest : public test::SettingsFixture {
protected:
    UpdateRowTest() { openView(); }
    void answer(const std::vector<std::string_view> &versions, bool held = false) {
        std::vector<test::ScriptedAnswer> answers;
        for (const std::string_view version : versions)
            answers.push_back({.body = "<sparkle:shortVersionString>" +
                                       QByteArray::fromStdString(std::string(version)) +
                                       "</sparkle:shortVersionString>",
                               .held = held});
        m_server.script("/appcast.xml", answers);
    }
    std::size_t requests() { return m_server.requestsFor("/appcast.xml").size(); }
    void checkNow() { test::press(*m_view, QAccessible::Button, "Check Now"); }
};

TEST_F(UpdateRowTest, ShowsTheResultOfACheck) {
    answer({version()});
    checkNow();
    EXPECT_TRUE(shows("Checking…"));
    EXPECT_TRUE(waitForText("Up to date ✓"));
    m_scheduler.advance(4'999ms);
    EXPECT_TRUE(shows("Up to date ✓"));
    m_scheduler.advance(1ms);
    EXPECT_TRUE(shows("Check for updates"));

    m_server.script("/appcast.xml", {{500}});
    checkNow();
    EXPECT_TRUE(shows("Checking…"));
    EXPECT_TRUE(waitForText("Check for updates"));
    EXPECT_EQ(openAlert(), nullptr);
}

TEST_F(UpdateRowTest, TwoChecksShowOneAlertWhichSurvivesTheView) {
    answer({"999.0"});
    checkNow();
    checkNow();
    ASSERT_TRUE(waitFor([this] { return requests() == 2 && shows("Update available"); }));
    QCoreApplication::processEvents();
    QPointer<QMessageBox> alert = openAlert();
    ASSERT_NE(alert, nullptr);
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_TRUE(waitForText("Check for updates"));
    EXPECT_EQ(openAlert(), nullptr) << "a second alert";
    EXPECT_TRUE(m_openedPages.isEmpty());

    checkNow();
    ASSERT_TRUE(waitForText("Update available"));
    alert = openAlert();
    m_view.reset();
    ASSERT_NE(alert, nullptr);
    alert->defaultButton()->click();
    EXPECT_EQ(m_openedPages, QStringList{m_server.url(QStringLiteral("/releases/999.0")).toString()});
}

TEST_F(UpdateRowTest, ALaterCheckReplacesTheLabelOfAnEarlierOne) {
    answer({version()}, true);
    checkNow();
    checkNow();
    ASSERT_TRUE(waitFor([this] { return requests() == 2; }));
    EXPECT_TRUE(shows("Checking…"));
    m_server.release();
    EXPECT_TRUE(waitForText("Up to date ✓"));
    ASSERT_TRUE(waitFor([this] { return m_scheduler.intervals().size() == 1; }));
    m_server.script("/appcast.xml", {{200, {}, {}, test::ScriptedAnswer::Ending::silence}});
    checkNow();
    m_scheduler.advance(5s);
    EXPECT_TRUE(shows("Checking…")) << "the first check's timer changed the label";
}

TEST_F(UpdateRowTest, DestructionDuringChecksIsSafe) {
    answer({version(), "999.0"}, true);
    checkNow();
    checkNow();
    ASSERT_TRUE(waitFor([this] { return requests() == 2; }));
    m_view.reset();
    m_server.release();
    // The client has finished both when it has a third response.
    const auto last =
        test::outcomeOf(m_account.http.send({HttpMethod::get, m_server.url(QStringLiteral("/x"))}));
    ASSERT_TRUE(waitFor([&] { return last->done(); }));
    EXPECT_EQ(openAlert(), nullptr);
    EXPECT_TRUE(m_scheduler.intervals().empty());
}

} // namespace
} // namespace burnwick
