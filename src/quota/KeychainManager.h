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

/// Borrows the login that Claude Code keeps, and shares renewed tokens with it. Never makes or deletes a
/// login. Raises nothing: whatever fails looks like no login, or leaves the old tokens in place. Main thread
/// only.
///
/// The coroutines do not use this object after they began; they never end when the store goes before it
/// answered.
class KeychainManager final {
public:
    /// The service under whose name Claude Code keeps its login.
    static constexpr const char *claudeService = claudeCodeService;

    /// `store` must outlive this object.
    explicit KeychainManager(SecretStore &store)
        : m_store(store) {}

    /// The login as it is stored now; see credentialsFromDocument().
    [[nodiscard]] QCoro::Task<std::optional<OAuthCredentials>> readCredentials();
    /// Stores the tokens that came for `exchangedToken`, a refresh token: reads the document anew and changes
    /// only what is given; see patchedDocument(). Changes nothing when another refresh token is stored by
    /// now: that login is newer, and is returned. Absent otherwise.
    [[nodiscard]] QCoro::Task<std::optional<OAuthCredentials>> updateCredentials(std::string exchangedToken,
                                                                                 RefreshedTokens tokens);

private:
    SecretStore &m_store;
};

} // namespace burnwick
