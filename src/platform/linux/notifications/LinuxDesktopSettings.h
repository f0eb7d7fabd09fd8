// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopSettings.h"

namespace burnwick {

/// Starts the program of notificationSettingsCommand(), which outlives this one.
class LinuxDesktopSettings final : public DesktopSettings {
public:
    void openNotifications() override;

private:
    bool m_toldNone = false;
};

} // namespace burnwick
