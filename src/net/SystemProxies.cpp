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

/// Hides the path and the query of a request from proxy scripts.
QUrl originOf(const QUrl &url) {
    QUrl origin = url.adjusted(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment);
    origin.setPath(QStringLiteral("/"));
    return origin;
}

bool needsNoProxy(const QUrl &url) {
    return url.host().isEmpty() || isLoopback(url.host());
}

} // namespace

bool SystemProxies::knows(const QUrl &url) const {
    if (needsNoProxy(url))
        return true;
    const auto known = m_known.constFind(originOf(url));
    return known != m_known.cend() && !known->freshUntil.hasExpired();
}

QFuture<SystemProxies::Proxies> SystemProxies::ask(const QUrl &url) {
    const QUrl origin = originOf(url);
    if (!m_queries.contains(origin)) {
        m_queries.insert(origin, detachedThreadResult<Proxies>(
                                     [origin] { return systemProxyForQuery(QNetworkProxyQuery(origin)); }));
    }
    return m_queries.value(origin);
}

void SystemProxies::learn(const QUrl &url, const Proxies &proxies) {
    m_queries.remove(originOf(url));
    m_known.insert(originOf(url), {proxies, QDeadlineTimer(freshness)});
}

QList<QNetworkProxy> SystemProxies::queryProxy(const QNetworkProxyQuery &query) {
    if (!needsNoProxy(query.url())) {
        const auto known = m_known.constFind(originOf(query.url()));
        if (known != m_known.cend())
            return known->proxies;
    }
    return {QNetworkProxy(QNetworkProxy::NoProxy)};
}

} // namespace burnwick
