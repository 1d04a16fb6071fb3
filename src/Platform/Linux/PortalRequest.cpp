// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PortalRequest.h"

#include <QDBusArgument>
#include <QDBusServiceWatcher>
#include <QUuid>

#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

PortalRequest::PortalRequest(const QDBusConnection &bus, const QString &portal)
    : m_token(u"cadorel_"_s + QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex()))
{
    m_answer.start();
    auto *watcher = new QDBusServiceWatcher(portal, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { finish({}); });
    // Of every handle: portals before 0.9 choose their own, and the answer can come before its handle.
    QDBusConnection(bus).connect(portal, QString(), u"org.freedesktop.portal.Request"_s, u"Response"_s, this,
                                 SLOT(receive(QDBusMessage)));
}

PortalRequest::~PortalRequest() = default;

void PortalRequest::setHandle(const QString &path)
{
    m_handle = path;
    if (const auto early = m_earlyAnswers.constFind(path); early != m_earlyAnswers.cend())
        finish(*early);
    m_earlyAnswers.clear();
}

void PortalRequest::receive(const QDBusMessage &message)
{
    const QList<QVariant> arguments = message.arguments();
    const uint response = arguments.value(0).toUInt();
    const bool isKnown = response <= static_cast<uint>(Ending::other);
    const Answer answer{.ending = isKnown ? static_cast<Ending>(response) : Ending::other,
                        .results = qdbus_cast<QVariantMap>(arguments.value(1))};
    if (m_handle.isEmpty())
        m_earlyAnswers.insert(message.path(), answer);
    else if (message.path() == m_handle)
        finish(answer);
}

void PortalRequest::finish(const Answer &answer)
{
    if (std::exchange(m_isFinished, true))
        return;
    m_answer.addResult(answer);
    m_answer.finish();
}

} // namespace cadorel
