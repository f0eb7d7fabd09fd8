// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
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
    QByteArray body = {}; ///< of a post
};

struct HttpResponse {
    int status = 0;
    QByteArray body;
};

/// What an exchange may take.
struct HttpLimits {
    std::chrono::milliseconds deadline =
        std::chrono::seconds(10); ///< from the first step, be it the search for a proxy, to the last byte
    qsizetype largestBody = qsizetype{1} << 20; ///< bytes, after decompression
};

/// Sends requests, each by itself: no cookies, no cache, no stored passwords, and no redirect is followed, so
/// that what a request carries reaches the host in its URL alone. Servers must prove their identity. A proxy
/// of the system's is used, except for loopback addresses; nothing waits while the system looks it up. Main
/// thread only.
///
/// A post reaches the server once at most. A get whose connection breaks, or brings garbage, before any
/// answer may be sent again by the network library, up to three times: a connection that was kept may have
/// ended while it idled.
class HttpClient final {
public:
    explicit HttpClient(HttpLimits limits = {});
    /// Ends what is still under way: whoever awaits it is resumed at once with TransportError::cancelled.
    ~HttpClient();
    HttpClient(const HttpClient &) = delete;
    HttpClient &operator=(const HttpClient &) = delete;

    /// The server's answer, whatever its status; throws TransportError when there is none. An answer outside
    /// 200 to 299 counts even when its body could not be read whole, except for 401 and 407, which are known
    /// only once they are complete.
    [[nodiscard]] QCoro::Task<HttpResponse> send(HttpRequest request);

private:
    HttpLimits m_limits;
    SystemProxies *m_proxies; ///< the manager's
    QNetworkAccessManager m_manager;
};

} // namespace burnwick
