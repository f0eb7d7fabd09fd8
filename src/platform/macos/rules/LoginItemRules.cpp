// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/rules/LoginItemRules.h"

namespace burnwick {

namespace {

// ServiceManagement's constants of these names, with the prefix kSM.
constexpr long errorJobNotFound = 6;
constexpr long errorLaunchDeniedByUser = 11;
constexpr long errorAlreadyRegistered = 12;

} // namespace

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

std::optional<LoginItemFailure> failureOf(LoginItemStep step, bool succeeded, std::optional<long> code,
                                          const std::string &reason) {
    const bool registers = step == LoginItemStep::registerItem;
    const bool isDone = registers ? code == errorAlreadyRegistered || code == errorLaunchDeniedByUser
                                  : code == errorJobNotFound;
    if (succeeded || isDone)
        return std::nullopt;
    return LoginItemFailure{reason};
}

} // namespace burnwick
