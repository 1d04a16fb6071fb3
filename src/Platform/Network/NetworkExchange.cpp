// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Network/NetworkExchange.h"

#include "Platform/HttpStatus.h"
#include "Platform/Network/HttpFailure.h"
#include "Platform/Network/NetworkLog.h"
#include "Platform/Network/Redirect.h"
#include "Platform/Network/WebAddress.h"
#include "Utils/Redaction.h"

#include <QNetworkRequest>

#include <array>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int maximumRedirects = 20;
/// What Qt reads ahead of us: enough for a fast line, and all that a paused transfer may still take.
constexpr qint64 readAhead = 256 * 1024;
/// What is kept of a page that came instead of a file, and what is read of a page that only redirects.
constexpr qint64 sidePageLimit = 64 * 1024;
constexpr std::size_t pieceSize = 64 * 1024;

/// Qt reports statuses of 400 and above as errors too: most in two ranges of their own, three as errors that
/// can mean something else.
bool isStatusError(QNetworkReply::NetworkError error, int status)
{
    constexpr int firstError = 400;
    const auto isBetween = [error](QNetworkReply::NetworkError first, QNetworkReply::NetworkError last) {
        return error >= first && error <= last;
    };
    if (status < firstError || error == QNetworkReply::ContentReSendError)
        return false;
    return isBetween(QNetworkReply::ContentAccessDenied, QNetworkReply::UnknownContentError) ||
           isBetween(QNetworkReply::InternalServerError, QNetworkReply::UnknownServerError) ||
           error == QNetworkReply::ProxyAuthenticationRequiredError ||
           error == QNetworkReply::ProtocolInvalidOperationError;
}

QNetworkRequest networkRequest(const HttpRequest &request)
{
    QNetworkRequest made(wireAddress(request.url));
    made.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    made.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    made.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    // One request to a connection: only then a transfer that is not read stops the server.
    made.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    made.setRawHeader("User-Agent"_ba, "TarnovaPlayer/" CADOREL_VERSION ""_ba);
    made.setRawHeader("Accept-Encoding"_ba, "identity"_ba);
    if (request.method == "POST") // Qt warns about a body of no type
        made.setRawHeader("Content-Type"_ba, "application/octet-stream"_ba);
    for (const auto &[name, value] : request.headers)
        made.setRawHeader(name, value);
    return made;
}

QNetworkReply *sendWith(QNetworkAccessManager &manager, const HttpRequest &request)
{
    const QNetworkRequest made = networkRequest(request);
    if (request.method == "HEAD")
        return manager.head(made);
    if (request.method == "GET" && request.body.isEmpty())
        return manager.get(made);
    if (request.method == "POST")
        return manager.post(made, request.body);
    if (request.method == "PUT")
        return manager.put(made, request.body);
    return manager.sendCustomRequest(made, request.method, request.body);
}

} // namespace

QNetworkAccessManager *NetworkExchange::makeManager(QObject *parent)
{
    auto *manager = new QNetworkAccessManager(parent);
    manager->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    return manager;
}

NetworkExchange::NetworkExchange(HttpRequest request, QNetworkAccessManager *manager, Done done)
    : m_request(std::move(request))
    , m_manager(manager ? manager : makeManager(this))
    , m_done(std::move(done))
    , m_idleTimer(this)
    , m_totalTimer(this)
{
    m_request.url = askedAddress(m_request.url);
    m_idleTimer.setSingleShot(true);
    connect(&m_idleTimer, &QTimer::timeout, this, &NetworkExchange::checkSilence);
    m_totalTimer.setSingleShot(true);
    connect(&m_totalTimer, &QTimer::timeout, this, [this] { fail(httpFailure(HttpError::Kind::timeout)); });
}

NetworkExchange::~NetworkExchange()
{
    if (m_reply) {
        m_reply->disconnect(this);
        delete m_reply;
    }
}

void NetworkExchange::start(bool isPaused)
{
    m_isPaused = isPaused;
    touch();
    if (m_request.idleTimeout.count() > 0 && !m_isPaused)
        m_idleTimer.start(m_request.idleTimeout);
    if (m_request.totalTimeout.count() > 0)
        m_totalTimer.start(m_request.totalTimeout);
    send();
}

void NetworkExchange::cancel()
{
    fail(httpFailure(HttpError::Kind::cancelled));
}

void NetworkExchange::setPaused(bool isPaused)
{
    if (std::exchange(m_isPaused, isPaused) == isPaused || !m_done)
        return;
    if (m_isPaused) {
        m_idleTimer.stop();
        return;
    }
    touch();
    if (m_request.idleTimeout.count() > 0)
        m_idleTimer.start(m_request.idleTimeout);
    takeBody();
}

void NetworkExchange::send()
{
    if (!isWebAddress(m_request.url)) {
        fail(httpFailure(HttpError::Kind::notHttp));
        return;
    }
    m_status = 0;
    m_isReplyFinished = false;
    m_isUntrusted = false;
    m_reply = sendWith(*m_manager, m_request);
    m_reply->setReadBufferSize(readAhead);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &NetworkExchange::takeHead);
    connect(m_reply, &QIODevice::readyRead, this, &NetworkExchange::takeBody);
    connect(m_reply, &QNetworkReply::finished, this, &NetworkExchange::replyFinished);
    connect(m_reply, &QNetworkReply::uploadProgress, this, &NetworkExchange::touch);
    connect(m_reply, &QNetworkReply::sslErrors, this, [this](const QList<QSslError> &errors) {
        m_isUntrusted = true;
        qCInfo(networkLog) << "certificate refused:" << errors;
    });
}

bool NetworkExchange::isRedirecting() const
{
    return isRedirect(m_status) && m_reply->hasRawHeader("Location"_ba);
}

qint64 NetworkExchange::announcedLength() const
{
    constexpr int noContent = 204;
    constexpr int notModified = 304;
    constexpr int unauthorized = 401;
    constexpr int proxyUnauthorized = 407;
    const bool hasNoBody = m_request.method == "HEAD" || m_status == noContent || m_status == notModified;
    // Of the page that comes with these Qt keeps only as much as it may read ahead.
    const bool isCut = m_status == unauthorized || m_status == proxyUnauthorized;
    if (hasNoBody || isCut || m_reply->hasRawHeader("Transfer-Encoding"_ba))
        return -1;
    bool isNumber = false;
    const qint64 length = m_reply->rawHeader("Content-Length"_ba).toLongLong(&isNumber);
    return isNumber ? length : -1;
}

void NetworkExchange::takeHead()
{
    touch();
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (m_body || status == 0)
        return;
    m_status = status;
    if (const auto opened = openBody(); !opened)
        fail(opened.error());
}

std::expected<void, HttpError> NetworkExchange::openBody()
{
    const bool wantsFile = !m_request.outputFile.isEmpty();
    if (isRedirecting() || (wantsFile && !isSuccess(m_status))) {
        m_body = std::make_unique<ResponseBody>(
            ResponseBody::inMemory(sidePageLimit, ResponseBody::Overflow::truncate));
    } else if (!wantsFile) {
        const auto overflow =
            m_request.cutsAtLimit ? ResponseBody::Overflow::truncate : ResponseBody::Overflow::fail;
        m_body = std::make_unique<ResponseBody>(ResponseBody::inMemory(m_request.sizeLimit, overflow));
    } else {
        auto file = ResponseBody::inFile(m_request.outputFile, m_request.sizeLimit);
        if (!file)
            return std::unexpected(file.error());
        m_body = std::make_unique<ResponseBody>(std::move(*file));
    }
    return m_body->expect(announcedLength());
}

void NetworkExchange::takeBody()
{
    if (!m_reply || m_isPaused)
        return;
    std::array<char, pieceSize> piece;
    while (m_body && m_reply->bytesAvailable() > 0) {
        touch();
        const qint64 size = m_reply->read(piece.data(), piece.size());
        if (size <= 0)
            break;
        if (const auto taken = m_body->append(piece.data(), size); !taken) {
            fail(taken.error());
            return;
        }
        if (m_body->isTruncated()) {
            complete();
            return;
        }
    }
    if (m_isReplyFinished)
        conclude();
}

void NetworkExchange::replyFinished()
{
    m_isReplyFinished = true;
    takeHead();
    if (!m_reply)
        return;
    // A paused transfer ends when the rest has been taken; a broken one has no rest.
    if (hasTransportError() || m_reply->bytesAvailable() == 0)
        conclude();
    else
        takeBody();
}

bool NetworkExchange::hasTransportError() const
{
    const QNetworkReply::NetworkError error = m_reply->error();
    return m_status == 0 || (error != QNetworkReply::NoError && !isStatusError(error, m_status));
}

void NetworkExchange::conclude()
{
    const qint64 announced = announcedLength();
    const bool isShort = m_body && announced >= 0 && m_body->size() < announced;
    if (hasTransportError() || isShort)
        fail(transportFailure(m_reply->error(), m_isUntrusted, m_status != 0));
    else
        complete();
}

void NetworkExchange::complete()
{
    if (isRedirecting()) {
        followRedirect();
        return;
    }
    m_response = {.url = m_request.url,
                  .status = m_status,
                  .headers = m_reply->rawHeaderPairs(),
                  .body = {},
                  .bodySize = 0};
    if (isEndDoubtful())
        checkEnd();
    else
        finishBody();
}

bool NetworkExchange::isEndDoubtful() const
{
    return m_request.mustBeWhole && m_request.method == "GET" && isSuccess(m_status) &&
           !m_body->isTruncated() && m_reply->hasRawHeader("Transfer-Encoding"_ba);
}

void NetworkExchange::checkEnd()
{
    m_reply->disconnect(this);
    m_reply->deleteLater();
    m_isReplyFinished = false;
    m_isPaused = false;
    touch();
    if (m_request.idleTimeout.count() > 0)
        m_idleTimer.start(m_request.idleTimeout);
    HttpRequest head = m_request;
    head.method = "HEAD"_ba;
    head.body.clear();
    m_reply = sendWith(*m_manager, head);
    connect(m_reply, &QNetworkReply::socketStartedConnecting, this, [this] { m_hasReconnected = true; });
    connect(m_reply, &QNetworkReply::finished, this, &NetworkExchange::endChecked);
}

void NetworkExchange::endChecked()
{
    // A length of 0 is what some servers say that make the body only when it is asked for.
    const bool isFound = m_reply->error() == QNetworkReply::NoError &&
                         isSuccess(m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt());
    const qint64 length = isFound ? m_reply->rawHeader("Content-Length"_ba).toLongLong() : 0;
    const bool wasToClose = m_response.header("Connection"_ba).toLower().contains("close");
    const bool isWhole = !m_hasReconnected || (length > 0 ? length == m_body->size() : wasToClose);
    if (isWhole)
        finishBody();
    else
        fail(transportFailure(QNetworkReply::RemoteHostClosedError, false, true));
}

void NetworkExchange::finishBody()
{
    if (const auto finished = m_body->finish(m_response); !finished)
        fail(finished.error());
    else
        end(std::move(m_response));
}

void NetworkExchange::followRedirect()
{
    auto next = redirected(m_request, m_status, m_reply->rawHeader("Location"_ba));
    if (!next || ++m_redirects > maximumRedirects) {
        fail(httpFailure(HttpError::Kind::redirect));
        return;
    }
    dropReply();
    m_request = std::move(*next);
    qCDebug(networkLog) << "redirected to" << redacted(m_request.url);
    send();
}

void NetworkExchange::fail(HttpError error)
{
    end(std::unexpected(std::move(error)));
}

void NetworkExchange::end(Result result)
{
    if (!m_done)
        return;
    m_idleTimer.stop();
    m_totalTimer.stop();
    dropReply();
    std::exchange(m_done, nullptr)(std::move(result));
}

void NetworkExchange::dropReply()
{
    m_body.reset();
    if (!m_reply)
        return;
    // Much of this runs in signals of the reply: it goes later.
    QNetworkReply *reply = std::exchange(m_reply, nullptr);
    reply->disconnect(this);
    if (reply->isRunning())
        reply->abort();
    reply->deleteLater();
}

void NetworkExchange::touch()
{
    m_sinceLastByte.start();
}

void NetworkExchange::checkSilence()
{
    // Restarting the timer with each piece would cost more than looking at the clock when it fires.
    const std::chrono::milliseconds silence(m_sinceLastByte.elapsed());
    if (silence < m_request.idleTimeout)
        m_idleTimer.start(m_request.idleTimeout - silence);
    else
        fail(httpFailure(HttpError::Kind::timeout));
}

} // namespace cadorel
