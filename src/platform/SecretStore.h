// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace burnwick {

/// The service under whose name Claude Code keeps the JSON document with its login.
inline constexpr const char *claudeCodeService = "Claude Code-credentials";

/// A blob and its place, which only the store interprets.
struct StoredSecret {
    std::string blob;
    std::string place;
};

/// Keeps one secret blob under a service's name, shared with other programs. Main thread only.
///
/// Both operations take a few seconds at most, without blocking, and answer exactly once, on the main thread,
/// possibly before they return. An answer is dropped when the store is destroyed first. They never ask the
/// user to unlock anything.
class SecretStore {
public:
    virtual ~SecretStore() = default;

    /// Answers with the whole blob; absent when it is missing or not accessible now.
    virtual void read(const std::string &service,
                      std::function<void(std::optional<StoredSecret> secret)> answer) = 0;
    /// Replaces an existing blob as a whole, in the place where it was read, which then contains the old one
    /// or the new one. Never creates one, and replaces nothing when read() would look elsewhere by now.
    /// Answers whether the new one is in place.
    virtual void replace(const std::string &service, const StoredSecret &secret,
                         std::function<void(bool replaced)> answer) = 0;
};

} // namespace burnwick
