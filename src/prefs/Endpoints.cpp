// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prefs/Endpoints.h"

#include "net/Loopback.h"
#include "platform/UserDefaults.h"

#include <QLoggingCategory>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(endpointsLog, "burnwick.endpoints")

enum class Use { base, page };

struct Endpoint {
    QLatin1String key;
    QUrl Endpoints::*member;
    Use use;
    const char *fallback; ///< set by the build
};

constexpr Endpoint allEndpoints[] = {
    {QLatin1String("apiBaseURL"), &Endpoints::apiBaseURL, Use::base, BURNWICK_API_BASE_URL},
    {QLatin1String("statusBaseURL"), &Endpoints::statusBaseURL, Use::base, BURNWICK_STATUS_BASE_URL},
    {QLatin1String("loginURL"), &Endpoints::loginURL, Use::page, BURNWICK_LOGIN_URL},
    {QLatin1String("productBaseURL"), &Endpoints::productBaseURL, Use::base, BURNWICK_PRODUCT_BASE_URL},
    {QLatin1String("feedbackURL"), &Endpoints::feedbackURL, Use::page, BURNWICK_FEEDBACK_URL},
};

/// Returns the reason to reject the URL; empty for a valid one.
QString objectionTo(const QUrl &url, Use use) {
    if (!url.isValid() || url.host().isEmpty())
        return QStringLiteral("it is no web address");
    const bool overLoopback = url.scheme() == QLatin1String("http") && isLoopback(url.host());
    if (url.scheme() != QLatin1String("https") && !overLoopback)
        return QStringLiteral("it is not https");
    if (!url.userInfo(QUrl::FullyEncoded).isEmpty() || url.authority().contains(u'@'))
        return QStringLiteral("it holds a user name");
    if (use == Use::base && (url.hasQuery() || url.hasFragment()))
        return QStringLiteral("it holds more than a path");
    return {};
}

QUrl builtIn(const Endpoint &endpoint) {
    QUrl url(QString::fromUtf8(endpoint.fallback), QUrl::StrictMode);
    if (const QString objection = objectionTo(url, endpoint.use); !objection.isEmpty())
        qFatal("Built with a bad %s: %s", endpoint.key.data(), qUtf8Printable(objection));
    return url;
}

QUrl choose(const Endpoint &endpoint, const UserDefaults &defaults) {
    if (!defaults.contains(endpoint.key))
        return builtIn(endpoint);
    const auto stored = defaults.get<QString>(endpoint.key);
    QUrl url(stored.value_or(QString()), QUrl::StrictMode);
    const QString objection = stored ? objectionTo(url, endpoint.use) : QStringLiteral("it is no text");
    if (objection.isEmpty())
        return url;
    // The value itself may hold a password.
    qCWarning(endpointsLog).noquote() << "The setting" << endpoint.key << "is ignored:" << objection;
    return builtIn(endpoint);
}

} // namespace

Endpoints Endpoints::load(const UserDefaults &defaults) {
    Endpoints endpoints;
    for (const Endpoint &endpoint : allEndpoints)
        endpoints.*endpoint.member = choose(endpoint, defaults);
    return endpoints;
}

QUrl Endpoints::usageURL() const {
    return appendPath(apiBaseURL, QStringLiteral("/api/oauth/usage"));
}

QUrl Endpoints::tokenURL() const {
    return appendPath(apiBaseURL, QStringLiteral("/api/oauth/token"));
}

QUrl Endpoints::statusComponentsURL() const {
    return appendPath(statusBaseURL, QStringLiteral("/api/v2/components.json"));
}

QUrl appendPath(const QUrl &base, const QString &path) {
    QUrl url = base;
    QString own = base.path(QUrl::FullyEncoded);
    while (own.endsWith(u'/'))
        own.chop(1);
    url.setPath(own + path, QUrl::StrictMode);
    return url;
}

} // namespace burnwick
