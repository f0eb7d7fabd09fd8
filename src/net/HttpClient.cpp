// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/HttpClient.h"

#include "model/Version.h"
#include "net/SingleUseBody.h"
#include "net/SystemProxies.h"
#include "net/TransportError.h"

#include <QFutureWatcher>
#include <QMetaEnum>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <algorithm>
#include <coroutine>
#include <memory>
#include <optional>
#include <string>

namespace burnwick {

namespace {

using Kind = TransportError::Kind;
using Reply = std::unique_ptr<QNetworkReply, QScopedPointerDeleteLater>;
using ProxyWatcher = std::unique_ptr<QFutureWatcher<SystemProxies::Proxies>, QScopedPointerDeleteLater>;

/// A property of the manager, set while its client is destroyed.
constexpr auto clientGone = "burnwickClientGone";

void requireClient(const QObject &manager) {
    if (manager.property(clientGone).toBool())
        throw TransportError(Kind::cancelled);
}

bool fitsOneLine(const QByteArray &text) {
    return std::ranges::none_of(text, [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

QNetworkRequest prepared(const HttpRequest &request) {
    using Request = QNetworkRequest;
    Request prepared(request.url);
    prepared.setAttribute(Request::RedirectPolicyAttribute, Request::ManualRedirectPolicy);
    prepared.setAttribute(Request::CookieLoadControlAttribute, Request::Manual);
    prepared.setAttribute(Request::CookieSaveControlAttribute, Request::Manual);
    prepared.setAttribute(Request::AuthenticationReuseAttribute, Request::Manual);
    const auto own = version();
    prepared.setHeader(Request::UserAgentHeader,
                       QByteArray("Burnwick/").append(own.data(), static_cast<qsizetype>(own.size())));
    // The library decompresses a body before its size can be checked, and buffers what follows a detected
    // decompression bomb until the deadline. The responses are small.
    prepared.setRawHeader("Accept-Encoding", "identity");
    for (const auto &[name, value] : request.headers) {
        if (!fitsOneLine(name) || !fitsOneLine(value))
            throw TransportError(Kind::invalidRequest, "a header of several lines");
        prepared.setRawHeader(name, value);
    }
    return prepared;
}

std::optional<int> statusOf(const QNetworkReply &reply) {
    bool known = false;
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(&known);
    return known ? std::optional(status) : std::nullopt;
}

/// Classifies a failure of the network, not of the server. `answered`: whether a response had begun.
Kind kindOf(QNetworkReply::NetworkError error, bool answered) {
    switch (error) {
    case QNetworkReply::SslHandshakeFailedError:
        return Kind::untrustedServer;
    case QNetworkReply::RemoteHostClosedError: // also for garbage
    case QNetworkReply::ContentReSendError:    // without a response, and a post cannot be repeated
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::UnknownNetworkError:
        return Kind::incomplete;
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
        return Kind::invalidRequest;
    default:
        return answered ? Kind::incomplete : Kind::unreachable;
    }
}

std::string nameOf(QNetworkReply::NetworkError error) {
    const char *name = QMetaEnum::fromType<QNetworkReply::NetworkError>().valueToKey(error);
    return name != nullptr ? name : std::to_string(error);
}

/// Whether the response is an incomplete authentication challenge. The network library usually withholds it,
/// but not when the connection ends while it is delivered.
bool isCutChallenge(const QNetworkReply &reply, int status, const QByteArray &body) {
    const QVariant length = reply.header(QNetworkRequest::ContentLengthHeader);
    return (status == 401 || status == 407) && length.isValid() && body.size() < length.toLongLong();
}

/// Converts a finished reply. `stopped` is the reason if exchange() aborted it.
HttpResponse responseFrom(const QNetworkReply &reply, std::optional<Kind> stopped, QByteArray body) {
    const auto status = statusOf(reply);
    const bool refused = status && (*status < 200 || *status > 299);
    const auto &headers = reply.rawHeaderPairs();
    if (refused && !isCutChallenge(reply, *status, body))
        return {*status, std::move(body), {headers.begin(), headers.end()}};
    if (stopped)
        throw TransportError(*stopped);
    if (reply.error() != QNetworkReply::NoError)
        throw TransportError(kindOf(reply.error(), status.has_value()), nameOf(reply.error()));
    if (!status)
        throw TransportError(Kind::notHttp);
    return {*status, std::move(body), {headers.begin(), headers.end()}};
}

QNetworkReply *begin(QNetworkAccessManager &manager, const HttpRequest &request) {
    QNetworkRequest toSend = prepared(request);
    if (request.method == HttpMethod::get)
        return manager.get(toSend);
    // A server may process a request and fail to respond; a repeated post would then act twice.
    toSend.setHeader(QNetworkRequest::ContentLengthHeader, request.body.size());
    toSend.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    auto body = std::make_unique<SingleUseBody>(request.body);
    QNetworkReply *reply = manager.post(toSend, body.get());
    body.release()->setParent(reply);
    return reply;
}

/// Awaits the signal finished() and resumes within its emission. Some versions of QCoro's awaiter of replies
/// queue the resumption, which is lost when the sender is destroyed first.
template <typename Sender>
class Finished {
public:
    explicit Finished(Sender *sender)
        : m_sender(sender) {}

    [[nodiscard]] bool await_ready() const { return m_sender->isFinished(); }
    void await_suspend(std::coroutine_handle<> waiting) {
        QObject::connect(
            m_sender, &Sender::finished, m_sender, [waiting] { waiting.resume(); }, Qt::SingleShotConnection);
    }
    void await_resume() const noexcept {}

private:
    Sender *m_sender;
};

/// Completes when the proxies for the URL are known.
QCoro::Task<void> findProxies(QNetworkAccessManager *manager, SystemProxies *proxies, QUrl url,
                              const QTimer *deadline) {
    if (proxies->knows(url))
        co_return;
    const ProxyWatcher answer(new ProxyWatcher::element_type(manager));
    answer->setFuture(proxies->ask(url));
    // The result, the deadline and the client's destruction all resume this coroutine by this signal.
    QObject::connect(deadline, &QTimer::timeout, answer.get(), &QFutureWatcherBase::finished);
    Finished<QFutureWatcherBase> finished(answer.get());
    co_await finished;
    requireClient(*manager);
    if (!deadline->isActive())
        throw TransportError(Kind::timedOut);
    proxies->learn(url, answer->result());
}

/// Never outlives the manager: the client's destructor resumes it, and it throws.
QCoro::Task<HttpResponse> exchange(QNetworkAccessManager *manager, SystemProxies *proxies, HttpLimits limits,
                                   HttpRequest request) {
    requireClient(*manager);
    QTimer deadline;
    deadline.setSingleShot(true);
    deadline.setTimerType(Qt::PreciseTimer); // a coarse one may be 5 % late
    deadline.start(limits.deadline);
    co_await findProxies(manager, proxies, request.url, &deadline);

    const Reply reply(begin(*manager, request));
    QByteArray body;
    std::optional<Kind> stopped;
    // Queued, because abort() resumes this coroutine within the caller.
    const auto stop = [&stopped, &reply](Kind why) {
        stopped = stopped.value_or(why);
        QMetaObject::invokeMethod(reply.get(), &QNetworkReply::abort, Qt::QueuedConnection);
    };
    const auto collect = [&body, &reply, &stopped, &stop, limits] {
        if (stopped || !reply->isOpen())
            return;
        body += reply->readAll();
        if (body.size() > limits.largestBody)
            stop(Kind::tooLarge);
    };
    // The timer is the context of all connections, which end with this frame and so with their references.
    QObject::connect(&deadline, &QTimer::timeout, &deadline, [&stop] { stop(Kind::timedOut); });
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &deadline, collect);

    Finished finished(reply.get());
    co_await finished;
    requireClient(*manager);
    collect();
    co_return responseFrom(*reply, stopped, std::move(body));
}

} // namespace

QByteArray HttpResponse::header(QByteArrayView name) const {
    const auto found = std::ranges::find_if(
        headers, [name](const auto &header) { return header.first.compare(name, Qt::CaseInsensitive) == 0; });
    return found != headers.end() ? found->second : QByteArray();
}

HttpClient::HttpClient(HttpLimits limits)
    : m_limits(limits)
    , m_proxies(new SystemProxies) {
    m_manager.setProxyFactory(m_proxies); // takes ownership
}

HttpClient::~HttpClient() {
    m_manager.setProperty(clientGone, true);
    // Not abort(), which does not always emit finished(). The manager then destroys its children.
    const auto watchers = m_manager.findChildren<QFutureWatcherBase *>(Qt::FindDirectChildrenOnly);
    for (QFutureWatcherBase *watcher : watchers)
        Q_EMIT watcher->finished();
    const auto replies = m_manager.findChildren<QNetworkReply *>(Qt::FindDirectChildrenOnly);
    for (QNetworkReply *reply : replies)
        Q_EMIT reply->finished();
}

QCoro::Task<HttpResponse> HttpClient::send(HttpRequest request) {
    return exchange(&m_manager, m_proxies, m_limits, std::move(request));
}

} // namespace burnwick
