// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <AppKit/AppKit.h>

#include "platform/Platform.h"
#include "platform/macos/desktop/ReopenDelegate.h"

#include <memory>

@implementation BWReopenDelegate
- (BOOL)applicationShouldHandleReopen:(NSApplication *)application hasVisibleWindows:(BOOL)visible {
    if (!visible && handler)
        handler({});
    early = early || (!visible && !handler);
    return YES;
}
@end

namespace burnwick {

BWReopenDelegate *reopenDelegate() {
    static BWReopenDelegate *const delegate = [[BWReopenDelegate alloc] init];
    return delegate;
}

namespace {

/// Windows can always be shown, and the system passes no activation.
class MacApplicationStartup final : public ApplicationStartup {
public:
    std::optional<std::string> prepare() override {
        NSApplication.sharedApplication.delegate = reopenDelegate();
        return std::nullopt;
    }

    StartupActivation begin() override {
        [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyRegular];
        return {};
    }

    void endWithoutWindow() override {}
};

} // namespace

std::unique_ptr<ApplicationStartup> platform::makeApplicationStartup() {
    return std::make_unique<MacApplicationStartup>();
}

} // namespace burnwick
