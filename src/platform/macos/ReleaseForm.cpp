// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

namespace burnwick {

ReleaseForm platform::releaseForm() {
    return ReleaseForm::diskImage;
}

} // namespace burnwick
