// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <Foundation/Foundation.h>

#include "platform/Platform.h"
#include "platform/macos/foundation/MainThreadCalls.h"
#include "platform/macos/foundation/Text.h"
#include "platform/macos/rules/TerminalScript.h"

#include <cstdlib>
#include <memory>
#include <utility>

namespace burnwick {

namespace {

/// Sends Terminal an AppleScript by osascript. Terminal's window outlives both.
class MacTerminalLauncher final : public TerminalLauncher {
public:
    void runInLoginShell(const std::string &command, std::function<void(bool launched)> answer) override {
        const char *shell = std::getenv("SHELL");
        NSTask *task = [[NSTask alloc] init];
        task.executableURL = [NSURL fileURLWithPath:@"/usr/bin/osascript"];
        task.arguments =
            @[ @"-e", toNSString(terminalScript(shell != nullptr ? shell : "/bin/zsh", command)) ];
        task.standardOutput = NSFileHandle.fileHandleWithNullDevice;
        task.standardError = NSFileHandle.fileHandleWithNullDevice;
        m_calls.queued(std::move(answer))([task launchAndReturnError:nil] == YES);
    }

private:
    MainThreadCalls m_calls;
};

} // namespace

std::unique_ptr<TerminalLauncher> platform::makeTerminalLauncher() {
    return std::make_unique<MacTerminalLauncher>();
}

} // namespace burnwick
