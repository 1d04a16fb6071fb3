// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/PulseOutputDevices.h"

#include "Platform/Pulse/MediaRole.h"
#include "Platform/Pulse/PulseLog.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <exception>
#include <utility>

namespace cadorel {

namespace {

/// What servers offer so that there is something to play on where there is nothing.
constexpr auto noDevice = "auto_null";

/// A server that starts anew finds its devices one after the other, some over the air.
constexpr std::chrono::seconds comingLimit{5};

bool isHeadphones(const SoundSink &sink)
{
    constexpr std::array forms{"headphone", "headset", "hands-free"};
    return std::ranges::any_of(forms, [&sink](const char *form) { return sink.formFactor == form; }) ||
           sink.activePort.contains("headphone") || sink.activePort.contains("headset");
}

QList<OutputDevice> devicesIn(const SoundScene &scene)
{
    QSet<std::uint32_t> inUse;
    for (const SoundStream &stream : scene.streams)
        if (stream.isOurs)
            inUse.insert(stream.sink);
    QList<OutputDevice> devices;
    for (const SoundSink &sink : scene.sinks) {
        if (sink.name == noDevice)
            continue;
        devices.append(
            {.id = QString::fromUtf8(sink.name),
             .name = QString::fromUtf8(sink.description.isEmpty() ? sink.name : sink.description),
             .kind = isHeadphones(sink) ? OutputDevice::Kind::headphones : OutputDevice::Kind::speaker,
             .isDefault = sink.name == scene.defaultSink,
             .isInUse = inUse.contains(sink.index)});
    }
    return devices;
}

} // namespace

PulseOutputDevices::PulseOutputDevices()
{
    connect(&m_server, &SoundServerWatch::sceneChanged, this, &PulseOutputDevices::takeScene);
    // The choice outlives a server that starts anew: its devices have the same names.
    connect(&m_server, &SoundServerWatch::lost, this, [this] {
        m_scene = {};
        m_settled.clear();
        m_isComing = !m_chosen.isEmpty();
        m_patience.stop();
        setDevices({});
    });
    m_patience.setSingleShot(true);
    m_patience.setInterval(comingLimit);
    connect(&m_patience, &QTimer::timeout, this, [this] {
        m_isComing = false;
        takeScene(m_scene);
    });
}

PulseOutputDevices::~PulseOutputDevices()
{
    // What a server moves at somebody's wish it remembers, while the choice is one for this process.
    if (m_hasChosen)
        m_server.forgetDeviceOf(streamGroup);
}

void PulseOutputDevices::activate()
{
    try {
        m_server.start();
    } catch (const std::exception &error) {
        qCWarning(pulseLog) << "devices are not looked for:" << error.what();
    }
}

void PulseOutputDevices::choose(const QString &id)
{
    const auto device = std::ranges::find(m_devices, id, &OutputDevice::id);
    if (!id.isEmpty() && device == m_devices.cend())
        return;
    const QByteArray sink = id.toUtf8();
    m_chosenName = id.isEmpty() ? QString() : device->name;
    m_hasChosen = m_hasChosen || !id.isEmpty();
    m_isComing = false;
    m_patience.stop();
    // Also where nothing changes: a stream that was moved elsewhere by other means comes along.
    moveStreams(sink.isEmpty() ? m_scene.defaultSink : sink, {});
    if (std::exchange(m_chosen, sink) != sink)
        Q_EMIT chosenDeviceChanged();
}

bool PulseOutputDevices::isAwaited()
{
    if (m_isComing && !m_patience.isActive())
        m_patience.start();
    return m_isComing;
}

void PulseOutputDevices::takeScene(const SoundScene &scene)
{
    m_scene = scene;
    QSet<std::uint32_t> ours;
    for (const SoundStream &stream : scene.streams)
        if (stream.isOurs)
            ours.insert(stream.index);
    const bool isThere = m_chosen.isEmpty() ||
                         std::ranges::find(scene.sinks, m_chosen, &SoundSink::name) != scene.sinks.cend();
    if (!isThere && isAwaited()) {
        setDevices(devicesIn(scene));
        return;
    }
    if (isThere) {
        m_isComing = false;
        m_patience.stop();
    }
    // An engine may open a stream before it learns of the choice; where the listener moves one later, it
    // stays.
    if (isThere && !m_chosen.isEmpty())
        moveStreams(m_chosen, m_settled);
    m_settled = ours;
    setDevices(devicesIn(scene));
    if (!isThere)
        loseChoice();
}

void PulseOutputDevices::loseChoice()
{
    m_chosen.clear();
    const QString name = std::exchange(m_chosenName, QString());
    Q_EMIT chosenDeviceChanged();
    Q_EMIT chosenDeviceLost(name);
}

void PulseOutputDevices::moveStreams(const QByteArray &sink, const QSet<std::uint32_t> &except)
{
    const auto target = std::ranges::find(m_scene.sinks, sink, &SoundSink::name);
    if (target == m_scene.sinks.cend())
        return;
    for (const SoundStream &stream : std::as_const(m_scene.streams))
        if (stream.isOurs && stream.sink != target->index && !except.contains(stream.index))
            m_server.move(stream.index, sink);
}

void PulseOutputDevices::setDevices(const QList<OutputDevice> &devices)
{
    if (std::exchange(m_devices, devices) != devices)
        Q_EMIT devicesChanged();
}

} // namespace cadorel
