// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// Declares what Burnwick calls, to compile its backend for macOS where the system's headers are not at hand.
// ../known-names.py compares it with the description of these frameworks, line by line. Never shipped.
#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

typedef NS_ENUM(NSInteger, UNAuthorizationStatus) { UNAuthorizationStatusNotDetermined = 0, UNAuthorizationStatusDenied = 1, UNAuthorizationStatusAuthorized = 2 };
typedef NS_OPTIONS(NSUInteger, UNAuthorizationOptions) { UNAuthorizationOptionSound = 2, UNAuthorizationOptionAlert = 4 };
typedef NS_OPTIONS(NSUInteger, UNNotificationPresentationOptions) { UNNotificationPresentationOptionSound = 2, UNNotificationPresentationOptionBanner = 16 };
extern "C" NSString *const UNNotificationDefaultActionIdentifier;

@interface UNNotificationSound : NSObject
@property(class, readonly, copy) UNNotificationSound *defaultSound;
@end
@interface UNNotificationContent : NSObject
@end
@interface UNMutableNotificationContent : UNNotificationContent
@property(copy) NSString *title;
@property(copy) NSString *body;
@property(nullable, copy) UNNotificationSound *sound;
@end
@class UNNotificationTrigger;
@interface UNNotificationRequest : NSObject
+ (instancetype)requestWithIdentifier:(NSString *)identifier content:(UNNotificationContent *)content trigger:(nullable UNNotificationTrigger *)trigger;
@end
@interface UNNotification : NSObject
@end
@interface UNNotificationResponse : NSObject
@property(readonly, copy) NSString *actionIdentifier;
@end
@interface UNNotificationSettings : NSObject
@property(readonly) UNAuthorizationStatus authorizationStatus;
@end
@class UNUserNotificationCenter;
@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter *)center willPresentNotification:(UNNotification *)notification withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))handler;
- (void)userNotificationCenter:(UNUserNotificationCenter *)center didReceiveNotificationResponse:(UNNotificationResponse *)response withCompletionHandler:(void (^)(void))handler;
@end
@interface UNUserNotificationCenter : NSObject
@property(nullable, weak) id<UNUserNotificationCenterDelegate> delegate;
+ (UNUserNotificationCenter *)currentNotificationCenter;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options completionHandler:(void (^)(BOOL granted, NSError *_Nullable error))handler;
- (void)getNotificationSettingsWithCompletionHandler:(void (^)(UNNotificationSettings *settings))handler;
- (void)addNotificationRequest:(UNNotificationRequest *)request withCompletionHandler:(nullable void (^)(NSError *_Nullable error))handler;
@end
#pragma clang assume_nonnull end
