// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QFuture>
#include <QHash>
#include <QList>
#include <QNetworkProxy>
#include <QNetworkProxyFactory>
#include <QString>
#include <QUrl>

namespace burnwick {

/// The proxies that the system's settings name, for one network access manager. Asking the system may take
/// long, or for ever, where the settings lie in a script on another machine; so it is done beforehand and
/// elsewhere, and queryProxy() only repeats the answer. Main thread only.
class SystemProxies final : public QNetworkProxyFactory {
public:
    using Proxies = QList<QNetworkProxy>;

    /// Whether queryProxy() can answer for the URL: always for loopback addresses, for which nobody is asked
    /// and which no proxy sees; otherwise for a minute after an answer.
    [[nodiscard]] bool knows(const QUrl &url) const;
    /// Asks the system, once at a time for the same scheme, host and port.
    [[nodiscard]] QFuture<Proxies> ask(const QUrl &url);
    /// Keeps the answer.
    void learn(const QUrl &url, const Proxies &proxies);

    /// Never blocks. What is not known goes without a proxy.
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override;

private:
    struct Answer {
        Proxies proxies;
        QDeadlineTimer freshUntil;
    };

    QHash<QString, QFuture<Proxies>> m_asked; ///< and not learned
    QHash<QString, Answer> m_known;
};

} // namespace burnwick
