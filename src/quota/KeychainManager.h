// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/OAuthCredentials.h"
#include "platform/SecretStore.h"
#include "quota/RefreshedTokens.h"

#include <QCoroTask>

#include <optional>
#include <string>

namespace burnwick {

/// Reads the login that Claude Code stores, and stores renewed tokens in it. Never creates or deletes a
/// login. Throws nothing: a failed reading returns no login, a failed write keeps the old tokens. Main thread
/// only.
///
/// The coroutines do not access this object after their first suspension. They never complete when the store
/// is destroyed before it responds.
class KeychainManager final {
public:
    /// The service name under which Claude Code stores its login.
    static constexpr const char *claudeService = claudeCodeService;

    /// `store` must outlive this object.
    explicit KeychainManager(SecretStore &store)
        : m_store(store) {}

    /// Returns the stored login; see credentialsFromDocument().
    [[nodiscard]] QCoro::Task<std::optional<OAuthCredentials>> readCredentials();
    /// Stores the tokens received for the refresh token `exchangedToken`: reads the document again and
    /// replaces the values that are not null; see patchedDocument(). When the document has another refresh
    /// token, its login is newer: returns that login and writes nothing. Otherwise returns null.
    [[nodiscard]] QCoro::Task<std::optional<OAuthCredentials>> updateCredentials(std::string exchangedToken,
                                                                                 RefreshedTokens tokens);

private:
    SecretStore &m_store;
};

} // namespace burnwick
