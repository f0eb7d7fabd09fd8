// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/UpdateRow.h"

#include "async/DetachedTask.h"
#include "async/Scheduler.h"
#include "ui/settings/UpdateAlert.h"
#include "update/Appcast.h"
#include "update/ReleaseAddresses.h"

#include <QPointer>

#include <utility>

namespace burnwick {

namespace {

const QString idleLabel = QStringLiteral("Check for updates");

} // namespace

UpdateRow::UpdateRow(Services services)
    : SettingsRow(idleLabel, new FlatButton(QStringLiteral("Check Now"), settingsButtonLook()))
    , m_services(std::move(services)) {
    connect(findChild<FlatButton *>(), &QAbstractButton::clicked, this, [this] { runDetached(check()); });
}

UpdateRow::~UpdateRow() = default;

QCoro::Task<void> UpdateRow::check() {
    // The window may be closed before the response arrives.
    const QPointer<UpdateRow> self(this);
    setLabel(QString::fromUtf8("Checking…"));
    const AppcastVerdict verdict = co_await checkAppcast(m_services.http, m_services.productBaseURL);
    if (!self)
        co_return;
    switch (verdict.kind) {
    case AppcastVerdict::Kind::upToDate:
        showUpToDate();
        break;
    case AppcastVerdict::Kind::newerVersion:
        showAvailable(verdict.version);
        break;
    case AppcastVerdict::Kind::couldNotCheck:
        setLabel(idleLabel);
        break;
    }
}

void UpdateRow::showUpToDate() {
    constexpr std::chrono::seconds upToDateDuration{5};
    setLabel(QString::fromUtf8("Up to date ✓"));
    m_revert = m_services.scheduler.repeat(upToDateDuration, [this] { setLabel(idleLabel); });
}

void UpdateRow::showAvailable(const QString &version) {
    setLabel(QStringLiteral("Update available"));
    if (std::exchange(m_alertIsOpen, true))
        return;
    const QUrl release = releaseURL(m_services.productBaseURL, m_services.releaseForm, version);
    showUpdateAlert(version, release, m_services.openURL, [self = QPointer(this)] {
        if (!self)
            return;
        self->m_alertIsOpen = false;
        self->setLabel(idleLabel);
    });
}

void UpdateRow::setLabel(const QString &label) {
    m_revert.reset();
    SettingsRow::setLabel(label);
}

} // namespace burnwick
