// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/NotificationSwitch.h"

#include "platform/linux/files/WholeFile.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

#include <utility>

namespace burnwick {

namespace {

bool isDesktop(const char *name) {
    const QStringList names = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':');
    return names.contains(QLatin1String(name), Qt::CaseInsensitive);
}

/// One run of GNOME's command for settings. Its library would abort this program if the schema is missing.
class GnomeSwitchQuestion final : public QObject {
public:
    GnomeSwitchQuestion(QObject *parent, std::chrono::milliseconds limit, std::function<void(bool)> answer)
        : QObject(parent)
        , m_answer(std::move(answer)) {
        m_process.setStandardInputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        connect(&m_process, &QProcess::finished, this, [this](int exitCode, QProcess::ExitStatus status) {
            settle(status == QProcess::NormalExit && exitCode == 0 &&
                   m_process.readAllStandardOutput().trimmed() == "false");
        });
        // Queued, because start() may emit it.
        connect(
            &m_process, &QProcess::errorOccurred, this, [this] { settle(false); }, Qt::QueuedConnection);
        QTimer::singleShot(limit, this, [this] { m_process.kill(); });
        m_process.start(QStringLiteral("gsettings"),
                        {QStringLiteral("get"),
                         QStringLiteral("org.gnome.desktop.notifications.application:"
                                        "/org/gnome/desktop/notifications/application/burnwick/"),
                         QStringLiteral("enable")});
    }

private:
    void settle(bool switchedOff) {
        deleteLater();
        if (const auto answer = std::exchange(m_answer, nullptr))
            answer(switchedOff);
    }

    std::function<void(bool)> m_answer;
    QProcess m_process;
};

/// Reads the last value of the key in Plasma's settings of this application, as KConfig writes it.
bool isSwitchedOffInPlasma() {
    constexpr std::size_t largestFile = 1024UL * 1024;
    const QString path = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                         QStringLiteral("/plasmanotifyrc");
    const auto text = readWholeFile(QFile::encodeName(path).toStdString(), largestFile);
    bool inGroup = false;
    QString value;
    for (const QString &line : QString::fromStdString(text.value_or(std::string())).split(u'\n')) {
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(u'['))
            inGroup = trimmed == QLatin1String("[Applications][burnwick]");
        else if (inGroup && trimmed.section(u'=', 0, 0).trimmed() == QLatin1String("ShowPopups"))
            value = trimmed.section(u'=', 1).trimmed().toLower();
    }
    return QStringList{QStringLiteral("false"), QStringLiteral("no"), QStringLiteral("off"),
                       QStringLiteral("0")}
        .contains(value);
}

} // namespace

void askForNotificationSwitch(QObject *context, std::chrono::milliseconds limit,
                              std::function<void(bool switchedOff)> answer) {
    if (isDesktop("GNOME")) {
        new GnomeSwitchQuestion(context, limit, std::move(answer));
        return;
    }
    const bool switchedOff = isDesktop("KDE") && isSwitchedOffInPlasma();
    QTimer::singleShot(0, context, [answer = std::move(answer), switchedOff] { answer(switchedOff); });
}

} // namespace burnwick
