// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <AppKit/AppKit.h>

#include "platform/Platform.h"
#include "platform/macos/foundation/MainThreadCalls.h"

#include <memory>
#include <utility>

@interface BWAppearanceObserver : NSObject {
@public
    std::function<void()> changed;
}
- (void)announce:(NSNotification *)notification;
@end

@implementation BWAppearanceObserver
- (void)announce:(NSNotification *)notification {
    changed();
}
- (void)observeValueForKeyPath:(NSString *)path
                      ofObject:(id)object
                        change:(NSDictionary *)change
                       context:(void *)context {
    changed();
}
@end

namespace burnwick {

namespace {

using Colors = AppearanceWishes::Colors;

AppearanceWishes currentWishes() {
    NSAppearanceName name = [NSApp.effectiveAppearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    AppearanceWishes wishes;
    wishes.colors = [name isEqualToString:NSAppearanceNameDarkAqua] ? Colors::dark : Colors::light;
    wishes.reducedMotion = NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion == YES;
    return wishes;
}

NSAppearance *appearanceOf(Colors colors) {
    switch (colors) {
    case Colors::light:
        return [NSAppearance appearanceNamed:NSAppearanceNameAqua];
    case Colors::dark:
        return [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
    case Colors::noPreference:
        break;
    }
    return nil;
}

/// The application's effective appearance, which includes the imposed one.
class MacDesktopAppearance final : public DesktopAppearance {
public:
    ~MacDesktopAppearance() override {
        if (m_observer->changed == nullptr)
            return;
        [NSApp removeObserver:m_observer forKeyPath:@"effectiveAppearance"];
        [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:m_observer];
    }

    void follow(Handler handler) override {
        m_observer->changed = m_calls.queued([handler = std::move(handler)] { handler(currentWishes()); });
        [NSApp addObserver:m_observer forKeyPath:@"effectiveAppearance" options:0 context:nil];
        [NSWorkspace.sharedWorkspace.notificationCenter
            addObserver:m_observer
               selector:@selector(announce:)
                   name:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                 object:nil];
        m_observer->changed();
    }

    void impose(Colors colors) override { NSApp.appearance = appearanceOf(colors); }

private:
    BWAppearanceObserver *m_observer = [[BWAppearanceObserver alloc] init];
    MainThreadCalls m_calls;
};

} // namespace

std::unique_ptr<DesktopAppearance> platform::makeDesktopAppearance() {
    return std::make_unique<MacDesktopAppearance>();
}

} // namespace burnwick
