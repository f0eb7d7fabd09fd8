// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace burnwick {

/// The service under whose name Claude Code keeps the JSON document with its login.
inline constexpr const char *claudeCodeService = "Claude Code-credentials";

/// Keeps one secret blob under a service's name, shared with other programs. Main thread only.
///
/// Both operations may take their time (a few seconds at most) without blocking, and answer exactly once, on
/// the main thread, possibly before they return. An answer is dropped when the store is destroyed first. They
/// never ask the user to unlock anything.
class SecretStore {
public:
    virtual ~SecretStore() = default;

    /// The whole blob; absent when there is none, or it cannot be had now.
    virtual void read(const std::string &service,
                      std::function<void(std::optional<std::string> blob)> answer) = 0;
    /// Replaces an existing blob as a whole: afterwards the store holds the old one or the new one. Never
    /// makes a new one. Answers whether the new one is in place.
    virtual void replace(const std::string &service, const std::string &blob,
                         std::function<void(bool replaced)> answer) = 0;
};

} // namespace burnwick
