// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#import <AppKit/AppKit.h>

#include "platform/ApplicationInstance.h"

/// Receives the clicks on the Dock's icon. Qt forwards the system's calls to the delegate that was set before
/// its application object was made.
@interface BWReopenDelegate : NSObject <NSApplicationDelegate> {
@public
    burnwick::ApplicationInstance::RequestHandler handler; ///< may be null
    BOOL early;                                            ///< a click came while there was no handler
}
@end

namespace burnwick {

/// The process's one delegate, which lives as long as the process.
[[nodiscard]] BWReopenDelegate *reopenDelegate();

} // namespace burnwick
