// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>

namespace burnwick {

class Clock;
class UserDefaults;

/// Sees to it that there is a check a day and no more, also across restarts: the instant of the last one is
/// kept in the user defaults, under "lastUpdateCheck" in whole seconds since 1970. The wall clock counts, so
/// that time asleep passes too. A last check that lies in the future is one before the clock was put back:
/// the day begins anew. Main thread only.
class DailyCheck final {
public:
    /// Both must outlive this object.
    DailyCheck(UserDefaults &defaults, const Clock &clock);

    /// Whether a check is due; if so it is recorded as made now.
    [[nodiscard]] bool takeTurn();
    /// Records a check as made now.
    void record();
    /// Undoes the last record: nobody could be asked.
    void giveBack();

private:
    [[nodiscard]] qint64 now() const;

    UserDefaults &m_defaults;
    const Clock &m_clock;
    std::optional<qint64> m_before; ///< what the last record replaced
};

} // namespace burnwick
