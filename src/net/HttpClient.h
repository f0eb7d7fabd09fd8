// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QCoroTask>
#include <QNetworkAccessManager>
#include <QUrl>

#include <chrono>
#include <utility>
#include <vector>

namespace burnwick {

class SystemProxies;

enum class HttpMethod { get, post };

struct HttpRequest {
    HttpMethod method = HttpMethod::get;
    QUrl url;
    std::vector<std::pair<QByteArray, QByteArray>> headers = {};
    QByteArray body = {}; ///< only of a post
};

struct HttpResponse {
    int status = 0;
    QByteArray body;
    std::vector<std::pair<QByteArray, QByteArray>> headers = {}; ///< repeated ones are joined by commas

    /// Returns the header's value, ignoring the case of the name; null if absent.
    [[nodiscard]] QByteArray header(QByteArrayView name) const;
};

/// The limits of one exchange.
struct HttpLimits {
    /// From the first step, which may be the query for a proxy, to the last byte.
    std::chrono::milliseconds deadline = std::chrono::seconds(10);
    qsizetype largestBody = qsizetype{1} << 20; ///< bytes, after decompression
};

/// Sends independent requests: without cookies, cache and stored passwords. Follows no redirect, so that only
/// the host in the URL receives the request. Requires valid certificates. Uses the system's proxies, except
/// for loopback addresses, and never blocks while it queries them. Main thread only.
///
/// Sends a post once at most. The network library may repeat a get up to three times when its connection
/// breaks or returns garbage before any response, because the server may have closed an idle connection.
class HttpClient final {
public:
    explicit HttpClient(HttpLimits limits = {});
    /// Cancels running exchanges: their coroutines resume at once with TransportError::Kind::cancelled.
    ~HttpClient();
    HttpClient(const HttpClient &) = delete;
    HttpClient &operator=(const HttpClient &) = delete;

    /// Returns the server's response, whatever its status; throws TransportError if no response arrives. A
    /// response outside 200 to 299 is returned even when its body is incomplete, except for 401 and 407.
    [[nodiscard]] QCoro::Task<HttpResponse> send(HttpRequest request);

private:
    HttpLimits m_limits;
    SystemProxies *m_proxies; ///< owned by the manager
    QNetworkAccessManager m_manager;
};

} // namespace burnwick
