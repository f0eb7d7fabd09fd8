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

void OutageLog::failed(const std::exception &failure) {
    const auto *transport = dynamic_cast<const TransportError *>(&failure);
    if (transport == nullptr || transport->kind() == TransportError::Kind::cancelled)
        return;
    if (!std::exchange(m_told, true))
        qCInfo(serviceLog, "%s cannot be reached for now: %s", m_service, failure.what());
}

} // namespace burnwick
