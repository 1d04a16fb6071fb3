// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Servers/ServedRequest.h"
#include "Servers/ServerAnswer.h"

#include <QByteArray>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>

#include <memory>
#include <optional>

namespace cadorel {

class ServerScript;

/// One accepted connection: reads requests one after the other and plays the script's answers. Lives on the
/// server's thread and deletes itself when the connection ends.
class ServerConnection : public QObject
{
    Q_OBJECT
public:
    /// Takes the socket over.
    ServerConnection(QTcpSocket *socket, std::shared_ptr<ServerScript> script, QObject *parent);
    ~ServerConnection() override;

    /// Sends what the answer under way holds back.
    void release();

private:
    void read();
    /// @return whether a whole request had arrived
    bool takeRequest();
    void answer();
    void send();
    /// How much of the body may be sent now.
    qint64 limit() const;
    void write(const QByteArray &bytes);
    void finishAnswer();

    QTcpSocket *m_socket;
    std::shared_ptr<ServerScript> m_script;
    QByteArray m_received;
    ServedRequest m_request;
    std::optional<ServerAnswer> m_answer;
    bool m_isHeadSent = false;
    bool m_isReleased = false;
    qint64 m_sent = 0;
    QTimer m_trickle;
};

} // namespace cadorel
