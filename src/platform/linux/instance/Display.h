// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

namespace burnwick {

/// The result of a trial of the display.
struct DisplayTrial {
    std::string fault; ///< why no windows can be shown, in one sentence; empty when they can
    /// Keep it until the application object exists: an X server restarts when its last client disconnects,
    /// and rejects connections meanwhile.
    std::shared_ptr<void> connection;
};

/// Tries whether windows can be shown. Without a display that replies, Qt would abort this process in the
/// constructor of its application object. Blocks without limit while an X server has accepted the connection
/// and does not respond, as Qt would.
[[nodiscard]] DisplayTrial tryDisplay();

} // namespace burnwick
