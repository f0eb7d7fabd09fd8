// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/StatusItemTestContent.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QLoggingCategory>
#include <QtCore/QStringList>

namespace burnwick {
namespace {

/// Collects what is logged about the status item.
class StatusItemMessages {
public:
    StatusItemMessages() {
        messages().clear();
        m_previous =
            qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &text) {
                if (QLatin1String(context.category) == QLatin1String("burnwick.statusitem"))
                    messages().append(text);
            });
    }
    ~StatusItemMessages() { qInstallMessageHandler(m_previous); }

    [[nodiscard]] static QStringList &messages() {
        static QStringList list;
        return list;
    }

private:
    QtMessageHandler m_previous;
};

// These end the program's bus for good, hence a program of their own.

TEST(StatusItemWithoutBus, SurvivesTheLossOfTheBus) {
    const StatusItemMessages messages;
    const auto item = platform::makeStatusItem();
    item->show(contentAt(10));
    ASSERT_TRUE(waitFor([] { return !StatusItemMessages::messages().isEmpty(); }));
    EXPECT_TRUE(StatusItemMessages::messages().first().contains(QStringLiteral("no status area")));
    sessionBusOfTests().kill();
    ASSERT_TRUE(waitFor([] { return StatusItemMessages::messages().size() > 1; }));
    item->show(contentAt(20));
    EXPECT_EQ(StatusItemMessages::messages().size(), 2);
    EXPECT_TRUE(StatusItemMessages::messages().last().contains(QStringLiteral("session bus is gone")));
}

TEST(StatusItemWithoutBus, SaysOnceThatThereIsNone) {
    sessionBusOfTests().kill();
    const StatusItemMessages messages;
    const auto item = platform::makeStatusItem();
    item->show(contentAt(10));
    item->show(contentAt(20));
    ASSERT_EQ(StatusItemMessages::messages().size(), 1);
    EXPECT_TRUE(StatusItemMessages::messages().first().contains(QStringLiteral("no session bus")));
}

} // namespace
} // namespace burnwick
