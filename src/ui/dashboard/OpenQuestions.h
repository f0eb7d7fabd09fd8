// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"
#include "ui/dashboard/QuestionBar.h"

#include <functional>
#include <optional>

namespace burnwick {

class BarExtension;
class PreferencesManager;
struct UsageFigures;

/// Returns the question whether the desktop's bar may show the title; null if there is none, or the user has
/// answered it. The extension may be null. The answers need preferences and extension.
[[nodiscard]] std::optional<Question> barQuestion(PreferencesManager &preferences, BarExtension *extension);

/// Returns the question whether to keep the history; null if the user has answered it, or no log is old
/// enough to be deleted soon. The answers need the preferences.
[[nodiscard]] std::optional<Question> historyQuestion(PreferencesManager &preferences,
                                                      const UsageFigures &usage, Instant now,
                                                      const std::function<int()> &daysUntilCleanup);

} // namespace burnwick
