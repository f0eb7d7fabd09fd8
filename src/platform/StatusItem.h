// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/LimitText.h"
#include "display/StatusTitle.h"
#include "model/StatusIndicator.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// The content of the item in the status bar.
struct StatusItemContent {
    StatusTitle title;                      ///< for hosts that show text
    std::optional<double> fiveHourUsagePct; ///< for hosts with room for three digits; absent while unknown
    StatusIndicator indicator = StatusIndicator::green;

    // For the tool tip, and for hosts that draw a view of their own.
    std::string summary{};              ///< such as "4.8M tokens · $7.81"
    std::vector<LimitRow> limits{};     ///< with a bar each
    std::vector<std::string> remarks{}; ///< lines below the bars, in plain text

    bool operator==(const StatusItemContent &) const = default;
};

/// The application's one item in the desktop's status bar. Main thread only.
///
/// A backend shows as much as its host supports, and waits until a host appears; it never fails.
class StatusItem {
public:
    /// Called on the main thread when the user clicks the item, with the desktop's permission to raise a
    /// window: an activation token, empty when the desktop issues none.
    using ActivateHandler = std::function<void(const std::string &activationToken)>;

    virtual ~StatusItem() = default;
    virtual void setActivateHandler(ActivateHandler handler) = 0;
    /// Shows the content; the first call makes the item appear, and equal content again has no effect.
    virtual void show(const StatusItemContent &content) = 0;
};

} // namespace burnwick
