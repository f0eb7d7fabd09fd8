// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <AppKit/AppKit.h>

#include "platform/Platform.h"

#include <memory>

namespace burnwick {

namespace {

class MacDesktopSettings final : public DesktopSettings {
public:
    void openNotifications() override {
        NSURL *page = [NSURL URLWithString:@"x-apple.systempreferences:com.apple.preference.notifications"];
        if (![NSWorkspace.sharedWorkspace openURL:page] && !m_reported) {
            NSLog(@"The system's page for notifications cannot be opened.");
            m_reported = true;
        }
    }

private:
    bool m_reported = false;
};

} // namespace

std::unique_ptr<DesktopSettings> platform::makeDesktopSettings() {
    return std::make_unique<MacDesktopSettings>();
}

} // namespace burnwick
