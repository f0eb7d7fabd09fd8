// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#import <ServiceManagement/ServiceManagement.h>

#include "platform/Platform.h"
#include "platform/macos/foundation/Text.h"
#include "platform/macos/rules/LoginItemRules.h"

#include <memory>

namespace burnwick {

namespace {

LoginItemService serviceStatus() {
    switch (SMAppService.mainAppService.status) {
    case SMAppServiceStatusEnabled:
        return LoginItemService::enabled;
    case SMAppServiceStatusRequiresApproval:
        return LoginItemService::requiresApproval;
    case SMAppServiceStatusNotFound:
        return LoginItemService::notFound;
    case SMAppServiceStatusNotRegistered:
        break;
    }
    return LoginItemService::notRegistered;
}

/// The bundle itself as a login item, which the system lists in its settings.
class MacLoginItem final : public LoginItem {
public:
    [[nodiscard]] LoginItemState state() const override { return stateOf(serviceStatus()); }
    [[nodiscard]] std::optional<LoginItemFailure> registerItem() override {
        return perform(LoginItemStep::registerItem);
    }
    [[nodiscard]] std::optional<LoginItemFailure> unregisterItem() override {
        return perform(LoginItemStep::unregisterItem);
    }
    [[nodiscard]] std::optional<LoginItemFailure> restoreChoice(bool on) override {
        return perform(stepToRestore(on, serviceStatus()));
    }

private:
    static std::optional<LoginItemFailure> perform(LoginItemStep step) {
        NSError *error = nil;
        if (step == LoginItemStep::registerItem)
            [SMAppService.mainAppService registerAndReturnError:&error];
        else if (step == LoginItemStep::unregisterItem)
            [SMAppService.mainAppService unregisterAndReturnError:&error];
        if (hasSucceeded(step, serviceStatus()))
            return std::nullopt;
        return LoginItemFailure{fromNSString(error.localizedDescription)};
    }
};

} // namespace

std::unique_ptr<LoginItem> platform::makeLoginItem() {
    return std::make_unique<MacLoginItem>();
}

} // namespace burnwick
