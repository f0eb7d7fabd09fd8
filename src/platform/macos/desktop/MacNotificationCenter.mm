// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <AppKit/AppKit.h>
#import <UserNotifications/UserNotifications.h>

#include "platform/Platform.h"
#include "platform/macos/foundation/MainThreadCalls.h"
#include "platform/macos/foundation/Text.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

@interface BWNotificationDelegate : NSObject <UNUserNotificationCenterDelegate> {
@public
    std::function<void()> clicked;
    std::function<void()> mayHaveChanged;
}
- (void)applicationBecameActive:(NSNotification *)notification;
@end

@implementation BWNotificationDelegate
- (void)applicationBecameActive:(NSNotification *)notification {
    if (mayHaveChanged)
        mayHaveChanged();
}
- (void)userNotificationCenter:(UNUserNotificationCenter *)center
       willPresentNotification:(UNNotification *)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))present {
    present(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionSound);
}
- (void)userNotificationCenter:(UNUserNotificationCenter *)center
    didReceiveNotificationResponse:(UNNotificationResponse *)response
             withCompletionHandler:(void (^)(void))done {
    if (clicked && [response.actionIdentifier isEqualToString:UNNotificationDefaultActionIdentifier])
        clicked();
    done();
}
@end

namespace burnwick {

namespace {

constexpr const char *noBundle = "The program is not in an application bundle.";

std::optional<std::string> textOf(NSError *error) {
    return error != nil ? std::optional(fromNSString(error.localizedDescription)) : std::nullopt;
}

NotificationCenter::Authorization authorizationOf(UNAuthorizationStatus status) {
    switch (status) {
    case UNAuthorizationStatusAuthorized:
        return NotificationCenter::Authorization::authorized;
    case UNAuthorizationStatusDenied:
        return NotificationCenter::Authorization::denied;
    default:
        return NotificationCenter::Authorization::notDetermined;
    }
}

/// The system's notifications. It announces no change of the permission, which users change in another
/// program: the handler is called whenever this one becomes active again.
class MacNotificationCenter final : public NotificationCenter {
public:
    MacNotificationCenter() {
        m_center.delegate = m_delegate;
        [NSNotificationCenter.defaultCenter addObserver:m_delegate
                                               selector:@selector(applicationBecameActive:)
                                                   name:NSApplicationDidBecomeActiveNotification
                                                 object:nil];
    }
    ~MacNotificationCenter() override {
        [NSNotificationCenter.defaultCenter removeObserver:m_delegate];
        m_center.delegate = nil;
    }

    void readAuthorization(std::function<void(Authorization)> answer) override {
        const auto deliver = m_calls.queued(std::move(answer));
        if (m_center == nil)
            return deliver(Authorization::notDetermined);
        [m_center getNotificationSettingsWithCompletionHandler:^(UNNotificationSettings *settings) {
          deliver(authorizationOf(settings.authorizationStatus));
        }];
    }

    void requestAuthorization(std::function<void(AuthorizationOutcome)> answer) override {
        const auto deliver = m_calls.queued(std::move(answer));
        if (m_center == nil)
            return deliver(AuthorizationOutcome{false, noBundle});
        [m_center requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                                completionHandler:^(BOOL granted, NSError *error) {
                                  deliver(AuthorizationOutcome{granted == YES, textOf(error)});
                                }];
    }

    void setAuthorizationChangedHandler(std::function<void()> handler) override {
        // Called at once: a queued call of a replaced handler could follow the end of what it captured.
        m_delegate->mayHaveChanged = std::move(handler);
    }

    void add(const UserNotification &notification,
             std::function<void(std::optional<std::string> error)> answer) override {
        const auto deliver = m_calls.queued(std::move(answer));
        if (m_center == nil)
            return deliver(std::optional<std::string>(noBundle));
        UNMutableNotificationContent *content = [[UNMutableNotificationContent alloc] init];
        content.title = toNSString(notification.title);
        content.body = toNSString(notification.body);
        content.sound = UNNotificationSound.defaultSound;
        UNNotificationRequest *request =
            [UNNotificationRequest requestWithIdentifier:toNSString(notification.identifier)
                                                 content:content
                                                 trigger:nil];
        [m_center addNotificationRequest:request
                   withCompletionHandler:^(NSError *error) {
                     deliver(textOf(error));
                   }];
    }

    void setActivateHandler(ActivateHandler handler) override {
        m_delegate->clicked = m_calls.queued([handler = std::move(handler)] {
            if (handler)
                handler({});
        });
    }

private:
    /// The system's center raises an exception outside a bundle.
    UNUserNotificationCenter *m_center = NSBundle.mainBundle.bundleIdentifier != nil
                                             ? UNUserNotificationCenter.currentNotificationCenter
                                             : nil;
    BWNotificationDelegate *m_delegate = [[BWNotificationDelegate alloc] init];
    MainThreadCalls m_calls;
};

} // namespace

std::unique_ptr<NotificationCenter> platform::makeNotificationCenter() {
    return std::make_unique<MacNotificationCenter>();
}

} // namespace burnwick
