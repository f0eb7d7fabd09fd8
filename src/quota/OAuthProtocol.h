// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <utility>

namespace burnwick {

/// The header that opens the vendor's OAuth endpoints, as Claude Code sends it.
inline std::pair<QByteArray, QByteArray> oauthBetaHeader() {
    return {"anthropic-beta", "oauth-2025-04-20"};
}

} // namespace burnwick
