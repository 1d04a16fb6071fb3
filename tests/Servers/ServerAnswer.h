// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>

#include <chrono>
#include <optional>

namespace cadorel {

/// What MisbehavingServer answers to a request. Made by one of the static functions, changed by the others:
/// `ServerAnswer::ok(xml, "application/xml").chunked().endingAfter(100)`.
class ServerAnswer
{
public:
    /// How the end of the body is told.
    enum class Framing { contentLength, chunked, untilClose };

    /// 200 with this body.
    static ServerAnswer ok(const QByteArray &body, const QByteArray &type = "application/octet-stream");
    /// Any status; the body is a short page in HTML unless another is given.
    static ServerAnswer status(int status, const QByteArray &body = "<html><body>No.</body></html>");
    /// 401 that asks for Basic authentication.
    static ServerAnswer unauthorized();
    /// A redirect to this Location, sent as it stands.
    static ServerAnswer redirect(int status, const QByteArray &location);
    /// 200 with @p head, then @p count times @p filler, then @p tail, made while it is sent.
    static ServerAnswer streamed(const QByteArray &head, const QByteArray &filler, qint64 count,
                                 const QByteArray &tail, const QByteArray &type = "application/xml");
    /// These bytes in place of an answer, then the end of the connection.
    static ServerAnswer raw(const QByteArray &bytes);
    /// Nothing, until MisbehavingServer::release() is called.
    static ServerAnswer silence();
    /// Nothing but the end of the connection.
    static ServerAnswer hangUp();

    /// Adds a header, also one that is there already.
    ServerAnswer with(const QByteArray &name, const QByteArray &value) const;
    ServerAnswer chunked() const;
    ServerAnswer untilClose() const;
    /// The Content-Length says this, whatever is sent.
    ServerAnswer announcing(qint64 length) const;
    /// Sends the head and so much of the body, then ends the connection.
    ServerAnswer endingAfter(qint64 bodyBytes) const;
    /// Sends so much of the body (-1: not even the head), the rest when MisbehavingServer::release() is
    /// called.
    ServerAnswer holdingAt(qint64 bodyBytes) const;
    /// Begins when so much time has passed: what a server of this machine answers comes within microseconds.
    ServerAnswer after(std::chrono::milliseconds delay) const;
    /// Sends the body in pieces of this size, one each time the interval has passed.
    ServerAnswer trickling(qsizetype pieceSize, std::chrono::milliseconds interval) const;

    int statusCode() const { return m_status; }
    /// The status line and the headers; for raw() the bytes themselves.
    QByteArray head() const;
    Framing framing() const { return m_framing; }
    qint64 bodySize() const;
    /// A piece of the body, not longer than that.
    QByteArray body(qint64 offset, qint64 length) const;
    bool isRaw() const { return m_isRaw; }
    /// Whether the connection ends with the answer.
    bool endsConnection() const;
    std::optional<qint64> endAfter() const { return m_endAfter; }
    std::optional<qint64> holdAt() const { return m_holdAt; }
    std::chrono::milliseconds delay() const { return m_delay; }
    qsizetype pieceSize() const { return m_pieceSize; }
    std::chrono::milliseconds pieceInterval() const { return m_pieceInterval; }

private:
    int m_status = 200;
    QList<QPair<QByteArray, QByteArray>> m_headers;
    QByteArray m_bodyHead;
    QByteArray m_filler;
    qint64 m_fillerCount = 0;
    QByteArray m_bodyTail;
    Framing m_framing = Framing::contentLength;
    std::optional<qint64> m_announced;
    std::optional<qint64> m_endAfter;
    std::optional<qint64> m_holdAt;
    std::chrono::milliseconds m_delay{0};
    qsizetype m_pieceSize = 0;
    std::chrono::milliseconds m_pieceInterval{0};
    bool m_isRaw = false;
};

} // namespace cadorel
