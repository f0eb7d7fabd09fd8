// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/UpdateAlert.h"

#include "support/HostileTexts.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QUrl>

namespace burnwick {
namespace {

class UpdateAlertTest : public testing::Test {
protected:
    QMessageBox *alertFor(const QString &version) {
        showUpdateAlert(
            version, QUrl(QStringLiteral("https://burnwick.test/releases/1")),
            [this](const QUrl &url) { m_events.append(QString::fromLatin1(url.toEncoded())); },
            [this] { m_events.append(QStringLiteral("closed")); });
        return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    }
    /// What the labels show, line after line; every one of them shows it as plain text.
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
    static QPushButton *button(const QMessageBox &alert, const QString &text) {
        for (QPushButton *button : alert.findChildren<QPushButton *>()) {
            if (button->text().remove(u'&') == text)
                return button;
        }
        return nullptr;
    }

    QStringList m_events;
};

TEST_F(UpdateAlertTest, OnlyUpdateNowOpensTheDownload) {
    const QStringList closed{QStringLiteral("closed")};
    const QStringList opened{QStringLiteral("https://burnwick.test/releases/1"), QStringLiteral("closed")};
    const struct {
        const char *what;
        void (*answer)(QMessageBox &alert);
        QStringList events;
    } rows[] = {
        {"Update Now", [](QMessageBox &alert) { button(alert, QStringLiteral("Update Now"))->click(); },
         opened},
        {"Return", [](QMessageBox &alert) { QTest::keyClick(&alert, Qt::Key_Return); }, opened},
        {"Later", [](QMessageBox &alert) { button(alert, QStringLiteral("Later"))->click(); }, closed},
        {"Escape", [](QMessageBox &alert) { QTest::keyClick(&alert, Qt::Key_Escape); }, closed},
        {"the window closed", [](QMessageBox &alert) { alert.close(); }, closed},
    };
    for (const auto &row : rows) {
        const QPointer<QMessageBox> alert = alertFor(QStringLiteral("1"));
        ASSERT_NE(alert, nullptr) << row.what;
        EXPECT_EQ(alert->windowModality(), Qt::ApplicationModal);
        ASSERT_TRUE(QTest::qWaitForWindowActive(alert)) << row.what;
        row.answer(*alert);
        EXPECT_EQ(m_events, row.events) << row.what;
        EXPECT_TRUE(waitFor([&alert] { return alert.isNull(); })) << row.what;
        m_events.clear();
    }
}

TEST_F(UpdateAlertTest, AVersionIsOneBearableLineOfPlainText) {
    constexpr std::size_t longVersionShown = 40;
    std::vector<std::pair<QString, QString>> rows{
        {QStringLiteral(" 2.0 "), QStringLiteral(" 2.0 ")},
        {QString(1 << 20, u'9'), QString(20, u'9') + QChar(u'\u2026') + QString(19, u'9')},
    };
    for (const auto &hostile : test::hostileTexts()) {
        if (hostile.text.size() <= longVersionShown && hostile.isUtf8)
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

} // namespace
} // namespace burnwick
