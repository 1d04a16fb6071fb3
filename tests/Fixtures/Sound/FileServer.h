// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUrl>

#include <optional>

namespace cadorel {

/// A web server on loopback that gives one file's bytes under every path, whole or by range, and can be made
/// to hold them back. Lives in the event loop of the test.
class FileServer : public QObject
{
    Q_OBJECT
public:
    explicit FileServer(const QByteArray &content);

    QUrl url(const QString &path) const;

    /// Answers this status without a body from now on.
    void answerOnly(int status) { m_status = status; }
    /// Answers as if ranges were unknown, without a length.
    void setSeekable(bool seekable) { m_seekable = seekable; }
    /// Gives the content up to here and no further, until the next call; nothing gives all.
    void holdAt(std::optional<qint64> offset);
    /// Takes requests and never answers while true.
    void setSilent(bool silent) { m_silent = silent; }

    /// Breaks every connection; new ones are answered as before.
    void breakConnections();

    int requests() const { return m_requests; }
    qint64 bytesGiven() const { return m_given; }

private:
    struct Answer
    {
        QPointer<QTcpSocket> socket;
        qint64 next = 0;
    };

    void accept();
    void answer(QTcpSocket *socket, const QByteArray &request);
    void give();

    QByteArray m_content;
    QTcpServer m_server;
    std::optional<int> m_status;
    std::optional<qint64> m_limit;
    bool m_seekable = true;
    bool m_silent = false;
    int m_requests = 0;
    qint64 m_given = 0;
    QList<Answer> m_answers;
};

} // namespace cadorel
