// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// Declares what Burnwick calls, to compile its backend for macOS where the system's headers are not at hand.
// ../known-names.py compares it with the description of these frameworks, line by line. Never shipped.
#pragma once

#import <Foundation/Foundation.h>

typedef NS_ENUM(NSInteger, SMAppServiceStatus) { SMAppServiceStatusNotRegistered = 0, SMAppServiceStatusEnabled = 1, SMAppServiceStatusRequiresApproval = 2, SMAppServiceStatusNotFound = 3 };

API_AVAILABLE(macos(13.0))
@interface SMAppService : NSObject
@property(class, readonly, nonnull) SMAppService *mainAppService;
@property(readonly) SMAppServiceStatus status;
- (BOOL)registerAndReturnError:(NSError *_Nullable *_Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError *_Nullable *_Nullable)error;
@end
