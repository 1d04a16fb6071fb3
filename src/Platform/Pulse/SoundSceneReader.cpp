// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/SoundSceneReader.h"

#include "Platform/Pulse/PulseLog.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <array>
#include <mutex>
#include <span>
#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

/// The module that asks streams for silence while another one of a certain role plays.
constexpr auto corkModule = "module-role-cork";
/// What it makes way for when its argument names nothing.
constexpr auto usualTrigger = "phone";

constexpr auto changesThatMatter = static_cast<pa_subscription_mask_t>(
    PA_SUBSCRIPTION_MASK_SINK_INPUT | PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_CARD |
    PA_SUBSCRIPTION_MASK_MODULE | PA_SUBSCRIPTION_MASK_SERVER);

PortAvailability availabilityOf(int available)
{
    switch (available) {
    case PA_PORT_AVAILABLE_NO:
        return PortAvailability::unavailable;
    case PA_PORT_AVAILABLE_YES:
        return PortAvailability::available;
    default:
        return PortAvailability::unknown;
    }
}

template <typename Port>
QList<SoundPort> portsOf(Port *const *ports, std::uint32_t count)
{
    QList<SoundPort> list;
    for (const Port *port : std::span(ports, ports ? count : 0))
        list.append({.name = port->name, .availability = availabilityOf(port->available)});
    return list;
}

/// The value of one of a module's arguments, which may be in quotes; null when it is not given.
QString argumentValue(const QString &argument, const QString &name)
{
    const QRegularExpression pattern(u"(?:^|\\s)%1=(?:\"([^\"]*)\"|'([^']*)'|(\\S*))"_s.arg(name));
    const QRegularExpressionMatch match = pattern.match(argument);
    return match.hasMatch() ? match.captured(match.lastCapturedIndex()) : QString();
}

bool differ(const QByteArray &one, const QByteArray &other)
{
    return !one.isEmpty() && !other.isEmpty() && one != other;
}

} // namespace

SoundSceneReader::SoundSceneReader(PulseConnection &connection, SceneChanged sceneChanged)
    : m_connection(connection)
    , m_sceneChanged(std::move(sceneChanged))
    , m_self{.process = QByteArray::number(QCoreApplication::applicationPid()), .machine = {}, .program = {}}
{
    const std::scoped_lock guard(m_connection.thread());
    subscribe();
    // Our own record says best how the server calls this process.
    pa_context *context = m_connection.context();
    keep(pa_context_get_client_info(context, pa_context_get_index(context), takeOwnClient, this));
    refresh();
}

SoundSceneReader::~SoundSceneReader()
{
    const std::scoped_lock guard(m_connection.thread());
    pa_context_set_subscribe_callback(m_connection.context(), nullptr, nullptr);
    for (const PulsePtr<pa_operation> &operation : m_operations)
        pa_operation_cancel(operation.get());
    m_operations.clear();
}

void SoundSceneReader::subscribe()
{
    pa_context *context = m_connection.context();
    pa_context_set_subscribe_callback(
        context,
        [](pa_context *, pa_subscription_event_type_t, std::uint32_t, void *self) {
            static_cast<SoundSceneReader *>(self)->refresh();
        },
        this);
    keep(pa_context_subscribe(context, changesThatMatter, nullptr, nullptr));
}

void SoundSceneReader::keep(pa_operation *operation)
{
    std::erase_if(m_operations, [](const PulsePtr<pa_operation> &kept) {
        return pa_operation_get_state(kept.get()) != PA_OPERATION_RUNNING;
    });
    if (operation)
        m_operations.emplace_back(operation);
}

void SoundSceneReader::refresh()
{
    if (m_pending > 0)
        m_isStale = true;
    else
        ask();
}

void SoundSceneReader::ask()
{
    m_isStale = false;
    m_isComplete = true;
    m_next = {};
    m_heard.clear();
    m_clients.clear();
    pa_context *context = m_connection.context();
    // Streams first, then what they play on: a sink that goes in between is missed, and one that a stream has
    // left by the listener's wish is still there.
    const std::array<pa_operation *, 6> lists{pa_context_get_sink_input_info_list(context, takeStream, this),
                                              pa_context_get_client_info_list(context, takeClient, this),
                                              pa_context_get_sink_info_list(context, takeSink, this),
                                              pa_context_get_card_info_list(context, takeCard, this),
                                              pa_context_get_server_info(context, takeServer, this),
                                              pa_context_get_module_info_list(context, takeModule, this)};
    for (pa_operation *list : lists) {
        if (list)
            ++m_pending;
        keep(list);
    }
}

void SoundSceneReader::answered(bool isComplete)
{
    m_isComplete = m_isComplete && isComplete;
    if (--m_pending > 0)
        return;
    finish();
    if (m_isStale)
        ask();
}

void SoundSceneReader::finish()
{
    if (!m_isComplete) {
        qCInfo(pulseLog) << "the sound server did not tell what it plays:" << m_connection.errorText();
        return;
    }
    for (Heard &heard : m_heard) {
        heard.stream.isOurs = isOurs(heard);
        m_next.streams.append(heard.stream);
    }
    if (m_hasLast && m_next == m_last)
        return;
    m_hasLast = true;
    m_last = m_next;
    m_sceneChanged(m_last);
}

SoundSceneReader::Identity SoundSceneReader::identityIn(const pa_proplist *properties)
{
    return {.process = pa_proplist_gets(properties, PA_PROP_APPLICATION_PROCESS_ID),
            .machine = pa_proplist_gets(properties, PA_PROP_APPLICATION_PROCESS_MACHINE_ID),
            .program = pa_proplist_gets(properties, PA_PROP_APPLICATION_PROCESS_BINARY)};
}

bool SoundSceneReader::isOurs(const Heard &heard) const
{
    // Streams that did not come through the server's own protocol may leave it to their client's record.
    const Identity player = heard.player.process.isEmpty() ? m_clients.value(heard.client) : heard.player;
    // Processes in containers share numbers, and machines do.
    return player.process == m_self.process && !differ(player.machine, m_self.machine) &&
           !differ(player.program, m_self.program);
}

void SoundSceneReader::addTriggers(SoundScene &scene, const QByteArray &module, const QByteArray &argument)
{
    if (module != corkModule)
        return;
    const QString given = QString::fromUtf8(argument);
    const QString roles = argumentValue(given, u"trigger_roles"_s);
    static const QRegularExpression separator(u"[,/]"_s);
    for (const QString &role : (roles.isNull() ? QString::fromLatin1(usualTrigger) : roles).split(separator))
        scene.triggerRoles.insert(role.toUtf8());
    static const QRegularExpression yes(u"^(1|y|yes|t|true|on)$"_s,
                                        QRegularExpression::CaseInsensitiveOption);
    if (yes.match(argumentValue(given, u"global"_s)).hasMatch())
        scene.triggersReachAllSinks = true;
}

void SoundSceneReader::takeOwnClient(pa_context *, const pa_client_info *info, int end, void *self)
{
    if (end != 0)
        return;
    if (Identity told = identityIn(info->proplist); !told.process.isEmpty())
        static_cast<SoundSceneReader *>(self)->m_self = std::move(told);
}

void SoundSceneReader::takeStream(pa_context *, const pa_sink_input_info *info, int end, void *self)
{
    auto *reader = static_cast<SoundSceneReader *>(self);
    if (end != 0)
        return reader->answered(end > 0);
    reader->m_heard.append({.stream = {.index = info->index,
                                       .sink = info->sink,
                                       .role = pa_proplist_gets(info->proplist, PA_PROP_MEDIA_ROLE),
                                       .isOurs = false,
                                       .isCorked = info->corked != 0,
                                       .isMuted = info->mute != 0},
                            .player = identityIn(info->proplist),
                            .client = info->client});
}

void SoundSceneReader::takeClient(pa_context *, const pa_client_info *info, int end, void *self)
{
    auto *reader = static_cast<SoundSceneReader *>(self);
    if (end != 0)
        return reader->answered(end > 0);
    reader->m_clients.insert(info->index, identityIn(info->proplist));
}

void SoundSceneReader::takeSink(pa_context *, const pa_sink_info *info, int end, void *self)
{
    auto *reader = static_cast<SoundSceneReader *>(self);
    if (end != 0)
        return reader->answered(end > 0);
    reader->m_next.sinks.append({.index = info->index,
                                 .card = info->card,
                                 .activePort = info->active_port ? info->active_port->name : "",
                                 .ports = portsOf(info->ports, info->n_ports),
                                 .name = info->name,
                                 .description = info->description,
                                 .formFactor = pa_proplist_gets(info->proplist, PA_PROP_DEVICE_FORM_FACTOR)});
}

void SoundSceneReader::takeServer(pa_context *, const pa_server_info *info, void *self)
{
    auto *reader = static_cast<SoundSceneReader *>(self);
    if (info)
        reader->m_next.defaultSink = info->default_sink_name;
    reader->answered(info != nullptr);
}

void SoundSceneReader::takeCard(pa_context *, const pa_card_info *info, int end, void *self)
{
    auto *reader = static_cast<SoundSceneReader *>(self);
    if (end != 0)
        return reader->answered(true); // Not every server can say.
    reader->m_next.cards.append({.index = info->index, .ports = portsOf(info->ports, info->n_ports)});
}

void SoundSceneReader::takeModule(pa_context *, const pa_module_info *info, int end, void *self)
{
    auto *reader = static_cast<SoundSceneReader *>(self);
    if (end != 0)
        return reader->answered(true); // Not every server can say.
    addTriggers(reader->m_next, info->name, info->argument);
}

} // namespace cadorel
