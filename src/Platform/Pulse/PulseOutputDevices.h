// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/OutputDevices.h"
#include "Platform/Pulse/SoundScene.h"
#include "Platform/Pulse/SoundServerWatch.h"

#include <QByteArray>
#include <QSet>

namespace cadorel {

/// The sinks of a sound server, PulseAudio or one that speaks its protocol. The streams themselves belong to
/// others; the server moves them at the wish of this connection, whichever engine they are of.
class PulseOutputDevices : public OutputDevices
{
    Q_OBJECT
public:
    PulseOutputDevices();
    ~PulseOutputDevices() override;

    void activate() override;
    QList<OutputDevice> devices() const override { return m_devices; }
    QString chosenDevice() const override { return QString::fromUtf8(m_chosen); }
    void choose(const QString &id) override;

private:
    void takeScene(const SoundScene &scene);
    void setDevices(const QList<OutputDevice> &devices);
    void moveStreams(const QByteArray &sink, const QSet<std::uint32_t> &except);

    SoundServerWatch m_server;
    SoundScene m_scene;
    QList<OutputDevice> m_devices;
    /// Name of the chosen sink; empty for the default.
    QByteArray m_chosen;
    /// Streams of this process that have been seen at their place.
    QSet<std::uint32_t> m_settled;
};

} // namespace cadorel
