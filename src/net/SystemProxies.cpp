// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/SystemProxies.h"

#include "async/DetachedThreadResult.h"
#include "net/Loopback.h"

#include <chrono>

namespace burnwick {

namespace {

/// The settings change with the network that a machine is in.
constexpr std::chrono::minutes freshness{1};

/// Neither the path nor anything behind it is shown to a script.
QUrl placeOf(const QUrl &url) {
    QUrl place;
    place.setScheme(url.scheme());
    place.setHost(url.host());
    place.setPort(url.port());
    place.setPath(QStringLiteral("/"));
    return place;
}

QString keyOf(const QUrl &url) {
    return placeOf(url).toString(QUrl::FullyEncoded);
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
        [place = placeOf(url)] { return systemProxyForQuery(QNetworkProxyQuery(place)); });
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
