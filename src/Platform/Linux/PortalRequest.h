// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFuture>
#include <QHash>
#include <QObject>
#include <QPromise>
#include <QVariantMap>

namespace cadorel {

/// One request to the desktop's portal, from before the call until the portal's answer. Main thread.
class PortalRequest : public QObject
{
    Q_OBJECT

public:
    /// How the portal says that a request ended (org.freedesktop.portal.Request), and our own word for a
    /// portal that went away before.
    enum class Ending : uint { success = 0, cancelled = 1, other = 2, portalGone = 0xffff };

    struct Answer
    {
        Ending ending = Ending::portalGone;
        QVariantMap results;
    };

    /// Listens for the answer of @p portal, a unique bus name, before the call is made.
    PortalRequest(const QDBusConnection &bus, const QString &portal);
    ~PortalRequest() override;
    Q_DISABLE_COPY_MOVE(PortalRequest)

    /// Value of the option "handle_token" that goes with the call.
    QString token() const { return m_token; }
    /// Tells the handle that the call returned; an answer under it may have come already.
    void setHandle(const QString &path);
    /// The answer; finished as soon as it is there, also if nobody waits yet.
    QFuture<Answer> answer() { return m_answer.future(); }

private Q_SLOTS:
    void receive(const QDBusMessage &message);

private:
    void finish(const Answer &answer);

    const QString m_token;
    QString m_handle;
    /// Answers by handle that came before ours was known.
    QHash<QString, Answer> m_earlyAnswers;
    QPromise<Answer> m_answer;
    bool m_isFinished = false;
};

} // namespace cadorel
