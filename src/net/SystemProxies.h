// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QFuture>
#include <QHash>
#include <QList>
#include <QNetworkProxy>
#include <QNetworkProxyFactory>
#include <QUrl>

namespace burnwick {

/// The proxies of the system's settings, for one network access manager. A query of the system may block
/// forever when the settings are a script on another machine. Therefore it runs in advance on another thread,
/// and queryProxy() returns the cached result. Main thread only.
class SystemProxies final : public QNetworkProxyFactory {
public:
    using Proxies = QList<QNetworkProxy>;

    /// Whether queryProxy() has a result for the URL: always for loopback addresses, which need no query and
    /// use no proxy; otherwise for a minute after learn().
    [[nodiscard]] bool knows(const QUrl &url) const;
    /// Queries the system on another thread. Calls for the same scheme, host and port share one query.
    [[nodiscard]] QFuture<Proxies> ask(const QUrl &url);
    /// Caches the result.
    void learn(const QUrl &url, const Proxies &proxies);

    /// Never blocks. Without a cached result, uses no proxy.
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override;

private:
    struct Answer {
        Proxies proxies;
        QDeadlineTimer freshUntil;
    };

    // By origin.
    QHash<QUrl, QFuture<Proxies>> m_queries; ///< whose results are not yet cached
    QHash<QUrl, Answer> m_known;
};

} // namespace burnwick
