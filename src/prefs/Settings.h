// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/FigureChoice.h"
#include "platform/UserDefaults.h"
#include "prefs/RefreshRate.h"
#include "prefs/Theme.h"

#include <QLatin1String>

#include <algorithm>
#include <optional>
#include <type_traits>

namespace burnwick {

/// The type of a setting's value in the user-defaults store.
template <typename Value>
struct StoredAs : std::type_identity<Value> {};
template <>
struct StoredAs<Theme> : std::type_identity<QString> {};
template <>
struct StoredAs<FigureChoice> : std::type_identity<QString> {};
template <>
struct StoredAs<RefreshRate> : std::type_identity<qint64> {};

/// Returns the choice's value in the settings file.
[[nodiscard]] inline QString rawValueOf(FigureChoice choice) {
    return choice == FigureChoice::exact ? QStringLiteral("exact") : QStringLiteral("asLogged");
}

/// One row of the table of settings.
template <typename Value>
struct Setting {
    using Stored = typename StoredAs<Value>::type;

    QLatin1String key;
    Value fallback;                                ///< used without an allowed value in the store
    std::optional<Value> (*parse)(const Stored &); ///< returns null for a value that is not allowed
};

/// The table of the user's settings.
namespace settings {

template <typename Value>
std::optional<Value> anyValue(const Value &stored) {
    return stored;
}

inline std::optional<double> positive(const double &stored) {
    return stored > 0 ? std::optional(stored) : std::nullopt;
}

/// Returns the case with this raw value; null for another value.
template <const auto &allCases, typename Raw>
auto oneOf(const Raw &stored) {
    const auto found =
        std::ranges::find_if(allCases, [&stored](auto value) { return rawValueOf(value) == stored; });
    return found == allCases.end() ? std::nullopt : std::optional(*found);
}

inline constexpr Setting<Theme> theme{QLatin1String("theme"), Theme::system, oneOf<allThemes>};
inline constexpr Setting<RefreshRate> refreshRate{QLatin1String("refreshRate"), RefreshRate::fiveMin,
                                                  oneOf<allRefreshRates>};
inline constexpr Setting<bool> launchAtStartup{QLatin1String("launchAtStartup"), false, anyValue};
inline constexpr Setting<bool> autoRefreshQuota{QLatin1String("autoRefreshQuota"), true, anyValue};
inline constexpr Setting<bool> alertAt80Quota{QLatin1String("alertAt80Quota"), true, anyValue};
inline constexpr Setting<bool> rateLimitAlerts{QLatin1String("rateLimitAlerts"), true, anyValue};
inline constexpr Setting<bool> sessionResetAlerts{QLatin1String("sessionResetAlerts"), true, anyValue};
inline constexpr Setting<bool> paceAlerts{QLatin1String("paceAlerts"), false, anyValue};
/// Whether the ledger keeps the usage lines of deleted logs.
inline constexpr Setting<bool> keepHistory{QLatin1String("keepHistory"), false, anyValue};
/// Whether the user has ever chosen to keep the history or not.
inline constexpr Setting<bool> keepHistoryAsked{QLatin1String("keepHistoryAsked"), false, anyValue};
/// Whether the user has ever refused that the desktop's bar shows the title.
inline constexpr Setting<bool> barExtensionAsked{QLatin1String("barExtensionAsked"), false, anyValue};
inline constexpr Setting<FigureChoice> figures{QLatin1String("figures"), FigureChoice::asLogged,
                                               oneOf<allFigureChoices>};
/// Folders with logs besides those where Claude Code keeps them.
inline const Setting<QStringList> logFolders{QLatin1String("logFolders"), {}, anyValue};
/// US dollars a month. Read from the store, never written to it.
inline constexpr Setting<double> monthlySpendLimit{QLatin1String("monthlySpendLimit"), 50.0, positive};

} // namespace settings

/// Returns the setting's value in the store, or its fallback.
template <typename Value>
[[nodiscard]] Value load(const UserDefaults &defaults, const Setting<Value> &setting) {
    const auto stored = defaults.get<typename Setting<Value>::Stored>(setting.key);
    return stored ? setting.parse(*stored).value_or(setting.fallback) : setting.fallback;
}

template <typename Value>
void store(UserDefaults &defaults, const Setting<Value> &setting, Value value) {
    if constexpr (std::is_enum_v<Value>)
        defaults.set(setting.key, rawValueOf(value));
    else
        defaults.set(setting.key, value);
}

} // namespace burnwick
