// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace burnwick {

/// An answer whose body is not the JSON that was expected. Its text names the key and what is wrong with it,
/// never a value.
class DecodeError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace burnwick
