// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/bus/ServiceOwner.h"
#include "platform/linux/bus/SessionBus.h"

#include <QtCore/QFutureWatcher>
#include <QtCore/QSocketNotifier>
#include <QtDBus/QDBusMessage>

#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include <sys/timerfd.h>
#include <unistd.h>

namespace burnwick {

namespace {

QString systemBusAddress() {
    const QString address = qEnvironmentVariable("DBUS_SYSTEM_BUS_ADDRESS");
    return address.isEmpty() ? QStringLiteral("unix:path=/var/run/dbus/system_bus_socket") : address;
}

} // namespace

/// Two sources announce the end of a sleep. The kernel cancels a timer that never expires when the wall clock
/// jumps against the monotonic one: after a sleep, and after the clock was set. The login manager
/// (org.freedesktop.login1) sends a signal on the system bus, if there is one. Neither polls nor blocks.
class LinuxSleepMonitor final : public QObject, public SleepMonitor {
    Q_OBJECT

public:
    ~LinuxSleepMonitor() override {
        m_cancelled.reset();
        if (m_timer != -1)
            close(m_timer);
    }

    void follow(std::function<void()> onWake) override {
        m_onWake = std::move(onWake);
        followTimer();
        auto *const connecting = new QFutureWatcher<std::optional<QDBusConnection>>(this);
        connect(connecting, &QFutureWatcherBase::finished, this, [this, connecting] {
            connecting->deleteLater();
            if (const auto bus = connecting->result())
                followLoginManager(*bus);
        });
        connecting->setFuture(connectToBus(systemBusAddress(), QStringLiteral("burnwick-system-bus")));
    }

private:
    void followTimer() {
        itimerspec never{};
        never.it_value.tv_sec = std::numeric_limits<time_t>::max();
        m_timer = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
        if (m_timer == -1 ||
            timerfd_settime(m_timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr) == -1)
            return;
        m_cancelled.emplace(m_timer, QSocketNotifier::Read);
        connect(&*m_cancelled, &QSocketNotifier::activated, this, [this] {
            // Fails with ECANCELED, and rearms the timer.
            std::uint64_t expirations = 0;
            static_cast<void>(!read(m_timer, &expirations, sizeof expirations));
            m_onWake();
        });
    }

    void followLoginManager(QDBusConnection bus) {
        m_loginManager.emplace(bus, QStringLiteral("org.freedesktop.login1"));
        // Without a sender's name: with one, this call would block until the bus returns its owner.
        bus.connect(QString(), QStringLiteral("/org/freedesktop/login1"),
                    QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
                    SLOT(onPrepareForSleep(QDBusMessage)));
    }

private Q_SLOTS:
    /// The signal's argument is true before a sleep and false after it.
    void onPrepareForSleep(const QDBusMessage &message) {
        if (message.service() == m_loginManager->name() && message.signature() == QLatin1String("b") &&
            !message.arguments().constFirst().toBool())
            m_onWake();
    }

private:
    int m_timer = -1;
    std::optional<QSocketNotifier> m_cancelled;
    std::optional<ServiceOwner> m_loginManager;
    std::function<void()> m_onWake;
};

std::unique_ptr<SleepMonitor> platform::makeSleepMonitor() {
    return std::make_unique<LinuxSleepMonitor>();
}

} // namespace burnwick

#include "LinuxSleepMonitor.moc"
