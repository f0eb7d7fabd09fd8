// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#import <Foundation/Foundation.h>

#include <string>

namespace burnwick {

/// Returns the text; empty when it is not UTF-8.
[[nodiscard]] inline NSString *toNSString(const std::string &text) {
    NSString *string = [[NSString alloc] initWithBytes:text.data()
                                                length:text.size()
                                              encoding:NSUTF8StringEncoding];
    return string != nil ? string : @"";
}

/// Returns the text in UTF-8; empty for nil and for a text that is not valid Unicode.
[[nodiscard]] inline std::string fromNSString(NSString *text) {
    const char *const bytes = text.UTF8String;
    return bytes != nullptr ? std::string(bytes) : std::string();
}

} // namespace burnwick
