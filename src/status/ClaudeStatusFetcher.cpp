// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "status/ClaudeStatusFetcher.h"

#include "net/HttpClient.h"
#include "status/ComponentsResponse.h"

#include <utility>

namespace burnwick {

ClaudeStatusFetcher::ClaudeStatusFetcher(HttpClient &http, QUrl url)
    : m_http(http)
    , m_url(std::move(url)) {}

QCoro::Task<std::vector<ClaudeComponentStatus>> ClaudeStatusFetcher::fetchStatuses() {
    HttpRequest request;
    request.url = m_url;
    // This object may be destroyed during the suspension.
    const HttpResponse response = co_await m_http.send(request);
    co_return claudeStatusesIn(decodeComponentsResponse(response.body));
}

} // namespace burnwick
