// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/OutageLog.h"

#include "net/TransportError.h"

#include <QLoggingCategory>

#include <utility>

namespace burnwick {

namespace {
Q_LOGGING_CATEGORY(serviceLog, "burnwick.services")
} // namespace

void OutageLog::note(const std::exception &failure) {
    const auto *transport = dynamic_cast<const TransportError *>(&failure);
    if (transport != nullptr && transport->kind() != TransportError::Kind::cancelled &&
        !std::exchange(m_isLogged, true))
        qCInfo(serviceLog, "%s cannot be reached for now: %s", m_service, failure.what());
}

} // namespace burnwick
