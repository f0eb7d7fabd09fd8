// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <AppKit/AppKit.h>

#include "platform/Platform.h"
#include "platform/macos/foundation/MainThreadCalls.h"

#include <memory>
#include <utility>

@interface BWWakeObserver : NSObject {
@public
    std::function<void()> woke;
}
- (void)announce:(NSNotification *)notification;
@end

@implementation BWWakeObserver
- (void)announce:(NSNotification *)notification {
    woke();
}
@end

namespace burnwick {

namespace {

/// The workspace announces the end of a sleep, and the system a change of the clock, on any thread.
class MacSleepMonitor final : public SleepMonitor {
public:
    ~MacSleepMonitor() override {
        [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:m_observer];
        [NSNotificationCenter.defaultCenter removeObserver:m_observer];
    }

    void follow(std::function<void()> onWake) override {
        m_observer->woke = m_calls.queued(std::move(onWake));
        [NSWorkspace.sharedWorkspace.notificationCenter addObserver:m_observer
                                                           selector:@selector(announce:)
                                                               name:NSWorkspaceDidWakeNotification
                                                             object:nil];
        [NSNotificationCenter.defaultCenter addObserver:m_observer
                                               selector:@selector(announce:)
                                                   name:NSSystemClockDidChangeNotification
                                                 object:nil];
    }

private:
    BWWakeObserver *m_observer = [[BWWakeObserver alloc] init];
    MainThreadCalls m_calls;
};

} // namespace

std::unique_ptr<SleepMonitor> platform::makeSleepMonitor() {
    return std::make_unique<MacSleepMonitor>();
}

} // namespace burnwick
