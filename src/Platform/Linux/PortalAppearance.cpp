// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PortalAppearance.h"

#include "Platform/Linux/LinuxLog.h"
#include "Utils/Tasks.h"

#include <QCoroDBusPendingCall>
#include <QCoroFuture>
#include <QDBusArgument>
#include <QDBusPendingCall>
#include <QPointer>
#include <QtConcurrent>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

// XDG Desktop Portal, org.freedesktop.portal.Settings.
constexpr QLatin1StringView portalService{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView portalPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView settingsInterface{"org.freedesktop.portal.Settings"};

// Every desktop's, and those that only some have.
const QString appearanceSpace = u"org.freedesktop.appearance"_s;
const QString gnomeSpace = u"org.gnome.desktop.interface"_s;

const QString colorSchemeKey = u"color-scheme"_s;
const QString reducedMotionKey = u"reduced-motion"_s;
const QString animationsKey = u"enable-animations"_s;
const QString textScaleKey = u"text-scaling-factor"_s;

// Values of "color-scheme"; every other one is no preference. Of "reduced-motion" only 1 asks for it.
constexpr uint prefersDark = 1;
constexpr uint prefersLight = 2;
constexpr uint prefersReducedMotion = 1;

QDBusMessage settingsQuestion()
{
    QDBusMessage question =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, u"ReadAll"_s);
    question << QStringList{appearanceSpace, gnomeSpace};
    return question;
}

double bounded(double textScale)
{
    if (!std::isfinite(textScale) || textScale <= 0)
        return 1;
    return std::clamp(textScale, PortalAppearance::leastTextScale, PortalAppearance::mostTextScale);
}

} // namespace

PortalAppearance::PortalAppearance(std::function<QDBusConnection()> connect)
    : m_wishes(wishes())
{
    QObject::connect(&m_palette, &DesktopAppearance::colorSchemeChanged, this, &PortalAppearance::update);
    detach(join(std::move(connect)));
}

PortalAppearance::~PortalAppearance() = default;

QCoro::Task<void> PortalAppearance::join(std::function<QDBusConnection()> connect)
{
    const QPointer<PortalAppearance> self(this);
    // Asked by the worker, the portal has answered by the time the main loop draws the first frame.
    const auto joinAndAsk = [](const std::function<QDBusConnection()> &connectToBus) {
        const QDBusConnection bus = connectToBus();
        return std::pair(bus, bus.asyncCall(settingsQuestion()));
    };
    const std::pair<QDBusConnection, QDBusPendingCall> joined =
        co_await QtConcurrent::run(joinAndAsk, std::move(connect));
    if (!self)
        co_return;
    QDBusConnection bus = joined.first;
    if (!bus.isConnected()) {
        qCInfo(linuxLog) << "nobody tells how the desktop wants to look: there is no session bus";
        co_return;
    }
    bus.connect(portalService, portalPath, settingsInterface, u"SettingChanged"_s, this,
                SLOT(changeSetting(QString, QString, QDBusVariant)));
    m_portal.emplace(portalService, bus, QDBusServiceWatcher::WatchForRegistration);
    QObject::connect(&*m_portal, &QDBusServiceWatcher::serviceRegistered, this,
                     [this, bus] { detach(readSettings(bus.asyncCall(settingsQuestion()))); });
    detach(readSettings(joined.second));
    // Once more, for what has changed before anybody listened.
    co_await readSettings(bus.asyncCall(settingsQuestion()));
}

QCoro::Task<void> PortalAppearance::readSettings(QDBusPendingCall question)
{
    const QPointer<PortalAppearance> self(this);
    const QDBusMessage answer = co_await question;
    if (self)
        takeAnswer(answer);
}

void PortalAppearance::takeAnswer(const QDBusMessage &answer)
{
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != u"a{sa{sv}}") {
        qCInfo(linuxLog).noquote() << "no portal for settings:" << answer.errorMessage();
        return;
    }
    m_settings = qdbus_cast<QMap<QString, QVariantMap>>(answer.arguments().constFirst());
    update();
}

void PortalAppearance::changeSetting(const QString &space, const QString &key, const QDBusVariant &value)
{
    if (space != appearanceSpace && space != gnomeSpace)
        return;
    m_settings[space].insert(key, value.variant());
    update();
}

void PortalAppearance::update()
{
    const Wishes before = std::exchange(m_wishes, wishes());
    const Wishes now = m_wishes;
    const QPointer<PortalAppearance> self(this);
    if (now.colorScheme != before.colorScheme)
        Q_EMIT colorSchemeChanged();
    if (self && now.reducesMotion != before.reducesMotion)
        Q_EMIT reducesMotionChanged();
    if (self && now.textScale != before.textScale)
        Q_EMIT textScaleChanged();
}

PortalAppearance::Wishes PortalAppearance::wishes() const
{
    Wishes wishes{.colorScheme = m_palette.colorScheme()};
    const uint scheme = setting(appearanceSpace, colorSchemeKey).toUInt();
    if (scheme == prefersDark)
        wishes.colorScheme = ColorScheme::dark;
    else if (scheme == prefersLight)
        wishes.colorScheme = ColorScheme::light;
    const QVariant animations = setting(gnomeSpace, animationsKey);
    wishes.reducesMotion = setting(appearanceSpace, reducedMotionKey).toUInt() == prefersReducedMotion ||
                           (animations.isValid() && !animations.toBool());
    const QVariant textScale = setting(gnomeSpace, textScaleKey);
    if (textScale.isValid())
        wishes.textScale = bounded(textScale.toDouble());
    return wishes;
}

QVariant PortalAppearance::setting(const QString &space, const QString &key) const
{
    return m_settings.value(space).value(key);
}

} // namespace cadorel
