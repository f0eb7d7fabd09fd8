// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/SystemProxies.h"

#include "async/DetachedThreadResult.h"
#include "net/Loopback.h"

#include <chrono>

namespace burnwick {

namespace {

/// The settings change when the machine moves to another network.
constexpr std::chrono::minutes freshness{1};

/// A proxy script sees neither the path nor the query of a request.
QUrl originOf(const QUrl &url) {
    QUrl origin;
    origin.setScheme(url.scheme());
    origin.setHost(url.host());
    origin.setPort(url.port());
    origin.setPath(QStringLiteral("/"));
    return origin;
}

QString keyOf(const QUrl &url) {
    return originOf(url).toString(QUrl::FullyEncoded);
}

bool needsNoProxy(const QUrl &url) {
    return url.host().isEmpty() || isLoopback(url.host());
}

} // namespace

bool SystemProxies::knows(const QUrl &url) const {
    if (needsNoProxy(url))
        return true;
    const auto known = m_known.constFind(keyOf(url));
    return known != m_known.cend() && !known->freshUntil.hasExpired();
}

QFuture<SystemProxies::Proxies> SystemProxies::ask(const QUrl &url) {
    const QString key = keyOf(url);
    const auto asked = m_asked.constFind(key);
    if (asked != m_asked.cend())
        return *asked;
    auto answer = platform::detachedThreadResult<Proxies>(
        [origin = originOf(url)] { return systemProxyForQuery(QNetworkProxyQuery(origin)); });
    m_asked.insert(key, answer);
    return answer;
}

void SystemProxies::learn(const QUrl &url, const Proxies &proxies) {
    const QString key = keyOf(url);
    m_asked.remove(key);
    m_known.insert(key, {proxies, QDeadlineTimer(freshness)});
}

QList<QNetworkProxy> SystemProxies::queryProxy(const QNetworkProxyQuery &query) {
    if (!needsNoProxy(query.url())) {
        const auto known = m_known.constFind(keyOf(query.url()));
        if (known != m_known.cend())
            return known->proxies;
    }
    return {QNetworkProxy(QNetworkProxy::NoProxy)};
}

} // namespace burnwick
