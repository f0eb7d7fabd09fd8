// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/TrayHost.h"

#include <algorithm>
#include <array>

namespace burnwick {

namespace {

using enum TrayHost::Presentation;
using enum TrayHost::Markup;

struct KnownHost {
    std::string_view processNamePrefix;
    TrayHost host;
};

constexpr std::array knownHosts{
    KnownHost{"gnome-shell", {label, plain, true, false, true}},
    KnownHost{"ayatana-indicat", {label, plain, true, true}}, // ayatana-indicator-application-service
    KnownHost{"waybar", {wide, pango, false, false}},
    KnownHost{"panel-", {compact, pango, false, false}}, // Xfce: panel-<plugin id>-systray
    KnownHost{"xfce4-panel", {compact, pango, false, false}},
    // MATE's notification-area-applet: shows the label beside the icon.
    KnownHost{"notification-ar", {label, pango, false, false}},
    KnownHost{"kded", {compact, qtText, false, false}}, // Plasma 5 and 6
    KnownHost{"plasmashell", {compact, qtText, false, false}},
};

} // namespace

TrayHost trayHostFor(std::string_view processName) {
    const auto known = std::ranges::find_if(knownHosts, [processName](const KnownHost &candidate) {
        return processName.starts_with(candidate.processNamePrefix);
    });
    return known == knownHosts.end() ? TrayHost{} : known->host;
}

} // namespace burnwick
