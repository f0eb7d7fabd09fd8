// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// How users of a system get a release.
enum class ReleaseForm {
    page,      ///< the release's page, which has its packages
    diskImage, ///< a disk image to be opened
};

} // namespace burnwick
