// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/ServerAnswer.h"

namespace cadorel {

using namespace Qt::StringLiterals;

ServerAnswer ServerAnswer::ok(const QByteArray &body, const QByteArray &type)
{
    ServerAnswer answer;
    answer.m_bodyHead = body;
    return answer.with("Content-Type"_ba, type);
}

ServerAnswer ServerAnswer::status(int status, const QByteArray &body)
{
    ServerAnswer answer = ok(body, "text/html; charset=utf-8"_ba);
    answer.m_status = status;
    return answer;
}

ServerAnswer ServerAnswer::unauthorized()
{
    return status(401).with("WWW-Authenticate"_ba, "Basic realm=\"music\""_ba);
}

ServerAnswer ServerAnswer::redirect(int status, const QByteArray &location)
{
    return ServerAnswer::status(status, "<html><body>Over there.</body></html>"_ba)
        .with("Location"_ba, location);
}

ServerAnswer ServerAnswer::streamed(const QByteArray &head, const QByteArray &filler, qint64 count,
                                    const QByteArray &tail, const QByteArray &type)
{
    ServerAnswer answer = ok(head, type);
    answer.m_filler = filler;
    answer.m_fillerCount = count;
    answer.m_bodyTail = tail;
    return answer;
}

ServerAnswer ServerAnswer::raw(const QByteArray &bytes)
{
    ServerAnswer answer;
    answer.m_bodyHead = bytes;
    answer.m_isRaw = true;
    answer.m_framing = Framing::untilClose;
    return answer;
}

ServerAnswer ServerAnswer::silence()
{
    return ok({}).holdingAt(-1);
}

ServerAnswer ServerAnswer::hangUp()
{
    return raw({});
}

ServerAnswer ServerAnswer::with(const QByteArray &name, const QByteArray &value) const
{
    ServerAnswer answer = *this;
    answer.m_headers.append({name, value});
    return answer;
}

ServerAnswer ServerAnswer::chunked() const
{
    ServerAnswer answer = *this;
    answer.m_framing = Framing::chunked;
    return answer;
}

ServerAnswer ServerAnswer::untilClose() const
{
    ServerAnswer answer = *this;
    answer.m_framing = Framing::untilClose;
    return answer;
}

ServerAnswer ServerAnswer::announcing(qint64 length) const
{
    ServerAnswer answer = *this;
    answer.m_announced = length;
    return answer;
}

ServerAnswer ServerAnswer::endingAfter(qint64 bodyBytes) const
{
    ServerAnswer answer = *this;
    answer.m_endAfter = bodyBytes;
    return answer;
}

ServerAnswer ServerAnswer::holdingAt(qint64 bodyBytes) const
{
    ServerAnswer answer = *this;
    answer.m_holdAt = bodyBytes;
    return answer;
}

ServerAnswer ServerAnswer::after(std::chrono::milliseconds delay) const
{
    ServerAnswer answer = holdingAt(-1);
    answer.m_delay = delay;
    return answer;
}

ServerAnswer ServerAnswer::trickling(qsizetype pieceSize, std::chrono::milliseconds interval) const
{
    ServerAnswer answer = *this;
    answer.m_pieceSize = pieceSize;
    answer.m_pieceInterval = interval;
    return answer;
}

QByteArray ServerAnswer::head() const
{
    if (m_isRaw)
        return {};
    QByteArray head = "HTTP/1.1 " + QByteArray::number(m_status) + " Scripted\r\n";
    for (const auto &[name, value] : m_headers)
        head += name + ": " + value + "\r\n";
    const bool hasNoBody = m_status == 204 || m_status == 304;
    if (m_framing == Framing::chunked)
        head += "Transfer-Encoding: chunked\r\n";
    else if (m_announced || (m_framing == Framing::contentLength && !hasNoBody))
        head += "Content-Length: " + QByteArray::number(m_announced.value_or(bodySize())) + "\r\n";
    if (m_framing == Framing::untilClose)
        head += "Connection: close\r\n";
    return head + "\r\n";
}

qint64 ServerAnswer::bodySize() const
{
    return m_bodyHead.size() + m_filler.size() * m_fillerCount + m_bodyTail.size();
}

QByteArray ServerAnswer::body(qint64 offset, qint64 length) const
{
    const qint64 fillerStart = m_bodyHead.size();
    const qint64 tailStart = fillerStart + m_filler.size() * m_fillerCount;
    QByteArray piece;
    while (piece.size() < length && offset < bodySize()) {
        const qint64 missing = length - piece.size();
        QByteArray part;
        if (offset < fillerStart) {
            part = m_bodyHead.mid(offset, missing);
        } else if (offset < tailStart) {
            const qint64 within = (offset - fillerStart) % m_filler.size();
            part = m_filler.mid(within, missing);
        } else {
            part = m_bodyTail.mid(offset - tailStart, missing);
        }
        offset += part.size();
        piece += part;
    }
    return piece;
}

bool ServerAnswer::endsConnection() const
{
    return m_isRaw || m_endAfter || m_framing == Framing::untilClose ||
           (m_framing == Framing::contentLength && m_announced && *m_announced > bodySize());
}

} // namespace cadorel
