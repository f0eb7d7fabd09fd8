// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Version.h"

namespace burnwick {

std::string_view version() noexcept {
    return BURNWICK_VERSION;
}

} // namespace burnwick
