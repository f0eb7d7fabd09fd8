// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/rules/LoginItemRules.h"

namespace burnwick {

LoginItemState stateOf(LoginItemService service) noexcept {
    switch (service) {
    case LoginItemService::enabled:
        return LoginItemState::on;
    case LoginItemService::requiresApproval:
        return LoginItemState::requiresApproval;
    case LoginItemService::notRegistered:
    case LoginItemService::notFound:
        break;
    }
    return LoginItemState::off;
}

LoginItemStep stepToRestore(bool on, LoginItemService service) noexcept {
    const LoginItemState state = stateOf(service);
    if (on && state == LoginItemState::off)
        return LoginItemStep::registerItem;
    if (!on && state == LoginItemState::on)
        return LoginItemStep::unregisterItem;
    return LoginItemStep::keep;
}

bool hasSucceeded(LoginItemStep step, LoginItemService after) noexcept {
    switch (step) {
    case LoginItemStep::registerItem:
        return stateOf(after) != LoginItemState::off;
    case LoginItemStep::unregisterItem:
        return stateOf(after) != LoginItemState::on;
    case LoginItemStep::keep:
        break;
    }
    return true;
}

} // namespace burnwick
