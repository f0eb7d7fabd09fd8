// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/BarExtension.h"
#include "platform/Platform.h"
#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/ServiceOwner.h"
#include "platform/linux/statusitem/StatusTitleService.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <utility>

namespace burnwick {

namespace {

constexpr QLatin1String uuid("burnwick@com.burnwick");
constexpr QLatin1String schema("org.gnome.shell"), enabledKey("enabled-extensions");

/// Returns the list as GVariant writes it, with the extension in it.
QString withExtension(const QString &list) {
    const QString item = QStringLiteral("'%1'").arg(uuid);
    if (list.contains(item))
        return list;
    const QString former = list.section(QLatin1Char('['), 1).section(QLatin1Char(']'), 0, 0);
    return QStringLiteral("[%1]").arg(former.isEmpty() ? item : former + QStringLiteral(", ") + item);
}

/// The extension of GNOME Shell. Offered while the shell runs without any status area.
class GnomeBarExtension final : public QObject, public BarExtension {
public:
    GnomeBarExtension() {
        for (ServiceOwner *owner : {&m_shell, &m_watcher, &m_extension})
            connect(owner, &ServiceOwner::changed, this, [this] { update(); });
    }
    [[nodiscard]] State state() const override { return m_state; }
    void setChangeHandler(std::function<void()> handler) override { m_handler = std::move(handler); }
    void enable() override {
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("org.gnome.Shell"), QStringLiteral("/org/gnome/Shell"),
            QStringLiteral("org.gnome.Shell.Extensions"), QStringLiteral("EnableExtension"));
        call.setArguments({QString(uuid)});
        whenFinished(m_bus.asyncCall(call), this, [this](const QDBusMessage &reply) {
            if (!reply.arguments().value(0).toBool())
                enableAtNextLogin();
        });
    }

private:
    void update() {
        // The bus replies in order: the extension is the last.
        m_hasReplies = m_hasReplies || sender() == &m_extension;
        const bool isUnseen =
            !m_shell.name().isEmpty() && m_watcher.name().isEmpty() && m_extension.name().isEmpty();
        setState(m_hasReplies && isUnseen ? State::offered : State::settled);
    }

    void setState(State state) {
        if (std::exchange(m_state, state) != state && m_handler)
            m_handler();
    }

    /// The shell looks for new extensions when it starts, and does not know one that was installed since.
    void enableAtNextLogin() {
        run({QStringLiteral("get"), schema, enabledKey}, [this](const QString &list) {
            // Anything else would replace the user's extensions.
            if (!list.endsWith(QLatin1Char(']')))
                return;
            run({QStringLiteral("set"), schema, enabledKey, withExtension(list)},
                [this](const QString &) { setState(State::atNextLogin); });
        });
    }

    /// Runs GNOME's command for settings: its library would abort this program without the schema. Calls the
    /// handler with what it printed, if it succeeded.
    void run(const QStringList &arguments, const std::function<void(const QString &output)> &handler) {
        auto *process = new QProcess(this);
        connect(process, &QProcess::finished, this,
                [process, handler](int exitCode, QProcess::ExitStatus status) {
                    process->deleteLater();
                    if (status == QProcess::NormalExit && exitCode == 0)
                        handler(QString::fromUtf8(process->readAllStandardOutput()).trimmed());
                });
        process->start(QStringLiteral("gsettings"), arguments);
    }

    QDBusConnection m_bus = QDBusConnection::sessionBus();
    ServiceOwner m_shell{m_bus, QStringLiteral("org.gnome.Shell")};
    ServiceOwner m_watcher{m_bus, QStringLiteral("org.kde.StatusNotifierWatcher")};
    ServiceOwner m_extension{m_bus, shellExtensionBusName()};
    bool m_hasReplies = false;
    State m_state = State::settled;
    std::function<void()> m_handler;
};

} // namespace

std::unique_ptr<BarExtension> platform::makeBarExtension() {
    const QString description = QStringLiteral("gnome-shell/extensions/%1/metadata.json").arg(uuid);
    if (QStandardPaths::locate(QStandardPaths::GenericDataLocation, description).isEmpty())
        return nullptr;
    return std::make_unique<GnomeBarExtension>();
}

} // namespace burnwick
