// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// The service under whose name Claude Code keeps the JSON document with its login.
inline constexpr const char *claudeCodeService = "Claude Code-credentials";

/// A blob and its place, which only the store interprets.
struct StoredSecret {
    std::string blob;
    std::string place;
};

/// Returns Claude Code's folders of configuration, in which the login may be; called on the main thread.
using ConfigurationFolders = std::function<std::vector<std::filesystem::path>()>;

/// Keeps one secret blob under a service's name, shared with other programs. Main thread only.
///
/// Both operations call `answer` exactly once, on the main thread, possibly before they return; not after the
/// store is destroyed. They do not block. On Linux they take a few seconds at most and never ask the user to
/// unlock anything; macOS may ask the user for access, which takes as long as the user does.
class SecretStore {
public:
    virtual ~SecretStore() = default;

    /// Reads the whole blob; absent when it is missing or not accessible now.
    virtual void read(const std::string &service,
                      std::function<void(std::optional<StoredSecret> secret)> answer) = 0;
    /// Replaces an existing blob in the place where it was read. The place then contains the whole old blob
    /// or the whole new one. Never creates a blob, and fails when read() would use another place now.
    virtual void replace(const std::string &service, const StoredSecret &secret,
                         std::function<void(bool replaced)> answer) = 0;
};

} // namespace burnwick
