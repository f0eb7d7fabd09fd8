// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "net/HttpClient.h"
#include "prefs/Endpoints.h"
#include "quota/KeychainManager.h"
#include "quota/OAuthFetcher.h"
#include "status/ClaudeStatusFetcher.h"

namespace burnwick {

/// What talks to the vendor's services, put together. Main thread only.
struct AccountServices {
    /// `store` and `clock` must outlive this object.
    AccountServices(const Endpoints &endpoints, SecretStore &store, const Clock &clock,
                    const Calendar &calendar, HttpLimits limits = {})
        : http(limits)
        , keychain(store)
        , oauthFetcher(http, endpoints.usageURL(), endpoints.tokenURL(), keychain, clock, calendar)
        , statusFetcher(http, endpoints.statusComponentsURL()) {}

    HttpClient http;
    KeychainManager keychain;
    OAuthFetcher oauthFetcher;
    ClaudeStatusFetcher statusFetcher;
};

} // namespace burnwick
