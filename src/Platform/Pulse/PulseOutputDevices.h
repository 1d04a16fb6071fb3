// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/OutputDevices.h"
#include "Platform/Pulse/SoundScene.h"
#include "Platform/Pulse/SoundServerWatch.h"

#include <QByteArray>
#include <QSet>
#include <QTimer>

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
    /// Whether the chosen sink is not there, and may still come with a server that has started anew.
    bool isAwaited();
    void loseChoice();
    void setDevices(const QList<OutputDevice> &devices);
    void moveStreams(const QByteArray &sink, const QSet<std::uint32_t> &except);

    SoundServerWatch m_server;
    SoundScene m_scene;
    QList<OutputDevice> m_devices;
    /// Name of the chosen sink; empty for the default.
    QByteArray m_chosen;
    /// As a listener knows it.
    QString m_chosenName;
    /// A choice has been made since the start: the server may have taken note of it.
    bool m_hasChosen = false;
    /// The server has gone since the chosen sink was there last.
    bool m_isComing = false;
    /// Until that is no longer believed.
    QTimer m_patience;
    /// Streams of this process that have been seen at their place.
    QSet<std::uint32_t> m_settled;
};

} // namespace cadorel
