// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/TableRow.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace burnwick {

std::int64_t checksumOf(std::string_view bytes, std::int64_t row) {
    return static_cast<std::int64_t>(
        XXH3_64bits_withSeed(bytes.data(), bytes.size(), static_cast<std::uint64_t>(row)));
}

} // namespace burnwick
