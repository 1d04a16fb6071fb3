// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioFile.h"
#include "Platform/EqualizerUnit.h"
#include "Platform/PlayerNode.h"

#include <QUrl>

#include <memory>

namespace cadorel {

/// The second engine: a player node, an equalizer and the sound device, in this order. Main thread.
class AudioEngine
{
public:
    virtual ~AudioEngine() = default;

    /// Opens a local file for reading. @throws std::runtime_error, its text for a listener, when it is not
    /// there or cannot be decoded
    virtual std::shared_ptr<AudioFile> openFile(const QUrl &url) = 0;

    virtual PlayerNode &playerNode() = 0;
    virtual EqualizerUnit &equalizer() = 0;

    /// Takes the node and the equalizer apart and puts them together for @p format. The node is stopped.
    virtual void connectNodes(const AudioFormat &format) = 0;
    /// Opens the sound device in the format connected. @throws std::runtime_error, its text for a listener,
    /// when there is none
    virtual void start() = 0;
    /// Whether the device is open; false again when it has gone away.
    virtual bool isRunning() const = 0;
};

} // namespace cadorel
