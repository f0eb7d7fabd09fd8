// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/DailyCheck.h"

#include "model/Clock.h"
#include "prefs/UserDefaults.h"

#include <QLatin1String>

#include <chrono>

namespace burnwick {

namespace {

constexpr QLatin1String lastCheckKey("lastUpdateCheck");

} // namespace

DailyCheck::DailyCheck(UserDefaults &defaults, const Clock &clock)
    : m_defaults(defaults)
    , m_clock(clock) {}

bool DailyCheck::takeTurn() {
    constexpr qint64 day = std::chrono::seconds(std::chrono::hours(24)).count();
    const auto last = m_defaults.get<qint64>(lastCheckKey);
    if (last && *last > now()) {
        record();
        return false;
    }
    // Compared so that no stored number overflows.
    if (last && *last > now() - day)
        return false;
    record();
    return true;
}

void DailyCheck::record() {
    m_before = m_defaults.get<qint64>(lastCheckKey);
    m_defaults.set(lastCheckKey, now());
}

void DailyCheck::giveBack() {
    if (m_before)
        m_defaults.set(lastCheckKey, *m_before);
    else
        m_defaults.remove(lastCheckKey);
}

qint64 DailyCheck::now() const {
    return std::chrono::floor<std::chrono::seconds>(m_clock.now()).time_since_epoch().count();
}

} // namespace burnwick
