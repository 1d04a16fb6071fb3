// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/HttpAnswer.h"
#include "Platform/HttpClient.h"
#include "Platform/Network/ResponseBody.h"

#include <QElapsedTimer>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace cadorel {

/// One request from its first byte to the end of its answer, redirects included. Lives on the network thread.
/// Destroyed before it has ended, it breaks the connection, removes its file and tells nobody.
class NetworkExchange : public QObject
{
    Q_OBJECT
public:
    using Result = HttpAnswer::Result;
    using Done = std::function<void(Result result)>;

    /// A pool of connections that asks nothing, stores nothing and follows nothing by itself.
    static QNetworkAccessManager *makeManager(QObject *parent);

    /// @param manager outlives the exchange; null gives it connections of its own
    /// @param done called once, in start() already where a request cannot be sent
    NetworkExchange(HttpRequest request, QNetworkAccessManager *manager, Done done);
    ~NetworkExchange() override;

    void start(bool isPaused);
    void cancel();
    void setPaused(bool isPaused);

private:
    void send();
    void takeHead();
    void takeBody();
    void replyFinished();
    std::expected<void, HttpError> openBody();
    bool isRedirecting() const;
    /// Length that the body has to have; -1 where it may be any.
    qint64 announcedLength() const;
    bool hasTransportError() const;
    /// The reply has ended, and what it brought is taken: was that all?
    void conclude();
    void complete();
    /// Whether the end of the body may be that of the connection, which Qt 6.4 often takes for a good end.
    bool isEndDoubtful() const;
    /// Asks for the head once more: where that goes over the same connection, the server had ended the body.
    void checkEnd();
    void endChecked();
    void finishBody();
    void followRedirect();
    void fail(HttpError error);
    void end(Result result);
    void dropReply();

    void touch();
    void checkSilence();

    HttpRequest m_request;
    QNetworkAccessManager *m_manager;
    Done m_done;
    QNetworkReply *m_reply = nullptr;
    std::optional<ResponseBody> m_body;
    int m_status = 0;
    int m_redirects = 0;
    bool m_isPaused = false;
    bool m_isReplyFinished = false;
    bool m_isUntrusted = false;
    /// The answer but for its body, once that has been taken.
    HttpResponse m_response;
    bool m_hasReconnected = false;
    QElapsedTimer m_sinceLastByte;
    QTimer m_idleTimer;
    QTimer m_totalTimer;
};

} // namespace cadorel
