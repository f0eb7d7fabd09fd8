// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/OpenQuestions.h"

#include "display/DisplayFormat.h"
#include "model/Snapshot.h"
#include "platform/BarExtension.h"
#include "prefs/PreferencesManager.h"
#include "ui/text/Text.h"

namespace burnwick {

std::optional<Question> barQuestion(PreferencesManager &preferences, BarExtension *extension) {
    if (!extension || preferences.barExtensionAsked())
        return std::nullopt;
    const QString icon = QStringLiteral(":/burnwick/icons/burnwick-symbolic.svg");
    const auto close = [&preferences] { preferences.setBarExtensionAsked(true); };
    switch (extension->state()) {
    case BarExtension::State::settled:
        break;
    case BarExtension::State::offered:
        return Question{icon,
                        QStringLiteral("See the tokens, the cost and the quota in GNOME's top bar?"),
                        {QStringLiteral("Show"), [extension] { extension->enable(); }},
                        {QStringLiteral("Not now"), close}};
    case BarExtension::State::atNextLogin:
        return Question{icon,
                        QStringLiteral("GNOME's top bar shows them when you have logged in again."),
                        {},
                        {QStringLiteral("OK"), close}};
    }
    return std::nullopt;
}

std::optional<Question> historyQuestion(PreferencesManager &preferences, const UsageFigures &usage,
                                        Instant now, const std::function<int()> &daysUntilCleanup) {
    // Claude Code deletes logs after 30 days, unless its settings have another number.
    constexpr std::chrono::days leastAge{20};
    if (preferences.keepHistory() || preferences.keepHistoryAsked() || !usage.oldestLog ||
        *usage.oldestLog > now - leastAge)
        return std::nullopt;
    return Question{QStringLiteral(":/burnwick/icons/clock-symbolic.svg"),
                    QStringLiteral("Claude Code deletes logs after %1. Keep your history?")
                        .arg(textOf(countText(daysUntilCleanup(), "day"))),
                    {QStringLiteral("Keep"), [&preferences] { preferences.setKeepHistory(true); }},
                    {QStringLiteral("Not now"), [&preferences] { preferences.setKeepHistoryAsked(true); }}};
}

} // namespace burnwick
