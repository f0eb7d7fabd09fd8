// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
//
// Declares what Burnwick calls, to compile its backend for macOS where the system's headers are not at hand.
// ../known-names.py compares it with the description of these frameworks, line by line. Never shipped.
#pragma once

#import <Foundation/Foundation.h>

extern "C" {
extern const CFStringRef _Nonnull kSecClass, kSecClassGenericPassword, kSecAttrService, kSecReturnData;
extern const CFStringRef _Nonnull kSecMatchLimit, kSecMatchLimitOne, kSecValueData;
enum : OSStatus { errSecSuccess = 0 };
OSStatus SecItemCopyMatching(CFDictionaryRef _Nonnull query, CFTypeRef _Nullable *_Nullable result);
OSStatus SecItemUpdate(CFDictionaryRef _Nonnull query, CFDictionaryRef _Nonnull attributesToUpdate);
}
