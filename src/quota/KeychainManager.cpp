// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/KeychainManager.h"

#include "quota/CredentialsDocument.h"

#include <coroutine>
#include <functional>
#include <utility>

namespace burnwick {

namespace {

/// Awaits the answer of a store, which may call back before its function returns or later.
template <typename Answer>
class StoreAnswer {
public:
    using Ask = std::function<void(std::function<void(Answer)>)>;

    explicit StoreAnswer(Ask ask)
        : m_ask(std::move(ask)) {}

    [[nodiscard]] bool await_ready() const noexcept { return false; }
    bool await_suspend(std::coroutine_handle<> waiting) {
        m_ask([this, waiting](Answer answer) {
            m_answer = std::move(answer);
            m_answered = true;
            if (m_suspended)
                waiting.resume();
        });
        m_suspended = !m_answered;
        return m_suspended;
    }
    Answer await_resume() { return std::move(m_answer); }

private:
    Ask m_ask;
    Answer m_answer{};
    bool m_answered = false;
    bool m_suspended = false;
};

using Reading = std::optional<StoredSecret>;

StoreAnswer<Reading> readSecret(SecretStore &store) {
    return StoreAnswer<Reading>(
        [&store](auto answer) { store.read(KeychainManager::claudeService, std::move(answer)); });
}

StoreAnswer<bool> replaceSecret(SecretStore &store, StoredSecret secret) {
    return StoreAnswer<bool>([&store, secret = std::move(secret)](auto answer) {
        store.replace(KeychainManager::claudeService, secret, std::move(answer));
    });
}

} // namespace

QCoro::Task<std::optional<OAuthCredentials>> KeychainManager::readCredentials() {
    auto reading = readSecret(m_store);
    const Reading document = co_await reading;
    auto credentials = document ? credentialsFromDocument(document->blob) : std::nullopt;
    co_return credentials;
}

QCoro::Task<std::optional<OAuthCredentials>> KeychainManager::updateCredentials(std::string exchangedToken,
                                                                                RefreshedTokens tokens) {
    SecretStore &store = m_store;
    auto reading = readSecret(store);
    const Reading document = co_await reading;
    auto stored = document ? credentialsFromDocument(document->blob) : std::nullopt;
    if (!stored || stored->refreshToken != exchangedToken)
        co_return stored;
    const auto patched =
        patchedDocument(document->blob, tokens.accessToken, tokens.refreshToken, tokens.expiresAt);
    if (!patched)
        co_return std::nullopt;
    auto replacing = replaceSecret(store, {*patched, document->place});
    // Failures are ignored: the next reading returns the old tokens.
    static_cast<void>(co_await replacing);
    co_return std::nullopt;
}

} // namespace burnwick
