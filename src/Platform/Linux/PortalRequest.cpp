// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PortalRequest.h"

#include <QDBusServiceWatcher>
#include <QUuid>

#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

PortalRequest::PortalRequest(const QDBusConnection &bus, const QString &portal)
    : m_bus(bus)
    , m_portal(portal)
    , m_token(u"cadorel_"_s + QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex()))
{
    m_answer.start();
    auto *watcher = new QDBusServiceWatcher(portal, bus, QDBusServiceWatcher::WatchForUnregistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceUnregistered, this, [this] { finish({}); });
    // The form of the path is a rule of the portal: the caller's unique name without the colon, the token.
    listen(u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(
        bus.baseService().sliced(1).replace(u'.', u'_'), m_token));
}

PortalRequest::~PortalRequest() = default;

void PortalRequest::setHandle(const QString &path)
{
    if (path != m_path)
        listen(path);
}

void PortalRequest::listen(const QString &path)
{
    m_path = path;
    m_bus.connect(m_portal, path, u"org.freedesktop.portal.Request"_s, u"Response"_s, this,
                  SLOT(receive(uint, QVariantMap)));
}

void PortalRequest::receive(uint response, const QVariantMap &results)
{
    const bool isKnown = response <= static_cast<uint>(Ending::other);
    finish({.ending = isKnown ? static_cast<Ending>(response) : Ending::other, .results = results});
}

void PortalRequest::finish(const Answer &answer)
{
    if (std::exchange(m_isFinished, true))
        return;
    m_answer.addResult(answer);
    m_answer.finish();
}

} // namespace cadorel
