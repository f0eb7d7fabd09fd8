// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/ClaudeComponentStatus.h"

#include <QCoroTask>
#include <QUrl>

#include <vector>

namespace burnwick {

class HttpClient;

/// Reads from the public status page how Claude Code and the Claude API are. Main thread only.
class ClaudeStatusFetcher final {
public:
    /// `http` must outlive this object, which may go while a fetch runs.
    ClaudeStatusFetcher(HttpClient &http, QUrl url);

    /// See claudeStatusesIn(). The answer's status does not matter, only whether its body can be read. Throws
    /// TransportError when no answer came, DecodeError when it is not the JSON expected.
    [[nodiscard]] QCoro::Task<std::vector<ClaudeComponentStatus>> fetchStatuses();

private:
    HttpClient &m_http;
    QUrl m_url;
};

} // namespace burnwick
