// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <AppKit/AppKit.h>

#include "platform/Platform.h"
#include "platform/macos/desktop/ReopenDelegate.h"
#include "platform/macos/foundation/MainThreadCalls.h"
#include "platform/macos/foundation/Text.h"

#include <memory>
#include <utility>
#include <vector>

/// Receives the requests of later starts.
@interface BWRequestObserver : NSObject {
@public
    burnwick::ApplicationInstance::RequestHandler handler; ///< may be null
    std::vector<burnwick::ApplicationRequest> early;       ///< came while there was no handler
}
- (void)receive:(NSNotification *)notification;
@end

static NSString *const requestName = @"com.burnwick.request";

@implementation BWRequestObserver
- (void)receive:(NSNotification *)notification {
    if (![notification.object isKindOfClass:[NSString class]])
        return;
    const auto action = burnwick::applicationActionNamed(burnwick::fromNSString(notification.object));
    const burnwick::ApplicationRequest request{action.value_or(burnwick::ApplicationAction::showWindow), {}};
    if (handler)
        handler(request);
    else
        early.push_back(request);
}
@end

namespace burnwick {

namespace {

/// The system starts a bundle once, and sends "reopen" afterwards. A second process comes from a terminal
/// only; it hands its request over by a distributed notification.
class MacApplicationInstance final : public ApplicationInstance {
public:
    ~MacApplicationInstance() override {
        reopenDelegate()->handler = nullptr;
        [NSDistributedNotificationCenter.defaultCenter removeObserver:m_observer];
    }

    void claim(const ApplicationRequest &request,
               std::function<void(InstanceClaim outcome)> answer) override {
        const InstanceClaim outcome = handOver(request);
        if (outcome == InstanceClaim::first)
            [NSDistributedNotificationCenter.defaultCenter addObserver:m_observer
                                                              selector:@selector(receive:)
                                                                  name:requestName
                                                                object:nil];
        m_calls.queued(std::move(answer))(outcome);
    }

    void setRequestHandler(RequestHandler handler) override {
        m_observer->handler = handler;
        for (const ApplicationRequest &request : std::exchange(m_observer->early, {}))
            handler(request);
        reopenDelegate()->handler = handler;
        if (std::exchange(reopenDelegate()->early, NO))
            handler({});
    }

private:
    static InstanceClaim handOver(const ApplicationRequest &request) {
        NSString *bundle = NSBundle.mainBundle.bundleIdentifier;
        if (bundle == nil)
            return InstanceClaim::unknown;
        for (NSRunningApplication *other in
             [NSRunningApplication runningApplicationsWithBundleIdentifier:bundle]) {
            if ([other isEqual:NSRunningApplication.currentApplication])
                continue;
            [NSDistributedNotificationCenter.defaultCenter
                postNotificationName:requestName
                              object:toNSString(std::string(nameOf(request.action)))
                            userInfo:nil
                  deliverImmediately:YES];
            return InstanceClaim::handedOver; // it raises its window itself
        }
        return InstanceClaim::first;
    }

    BWRequestObserver *m_observer = [[BWRequestObserver alloc] init];
    MainThreadCalls m_calls;
};

} // namespace

std::unique_ptr<ApplicationInstance> platform::makeApplicationInstance() {
    return std::make_unique<MacApplicationInstance>();
}

} // namespace burnwick
