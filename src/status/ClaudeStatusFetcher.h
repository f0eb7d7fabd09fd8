// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/ClaudeComponentStatus.h"

#include <QCoroTask>
#include <QUrl>

#include <vector>

namespace burnwick {

class HttpClient;

/// Fetches the states of Claude Code and the Claude API from the public status page. Main thread only.
class ClaudeStatusFetcher final {
public:
    /// `http` must outlive this object, which may be destroyed while a fetch runs.
    ClaudeStatusFetcher(HttpClient &http, QUrl url);

    /// See claudeStatusesIn(). Ignores the HTTP status of the response. Throws TransportError when there is
    /// no response, DecodeError when it is not the JSON expected.
    [[nodiscard]] QCoro::Task<std::vector<ClaudeComponentStatus>> fetchStatuses();

private:
    HttpClient &m_http;
    QUrl m_url;
};

} // namespace burnwick
