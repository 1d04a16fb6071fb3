// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QUrl>

namespace cadorel {

/// The second playback engine: it takes over local files while the equalizer is on. Main thread.
class EqualizerEngine : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// The listener has the equalizer switched on.
    virtual bool isEnabled() const = 0;
    /// Sound comes out: false too when the device has gone away.
    virtual bool isPlaying() const = 0;
    /// Position in seconds.
    virtual double currentTime() const = 0;
    /// Length of the loaded file in seconds, 0 with none.
    virtual double duration() const = 0;

    /// Loads a file and stands at its start. @throws std::runtime_error when it cannot be decoded or no sound
    /// device opens
    virtual void prepareToPlay(const QUrl &file) = 0;
    /// @throws std::runtime_error when no sound device opens
    virtual void play() = 0;
    virtual void pause() = 0;
    virtual void stop() = 0;
    /// Goes on playing from there if it plays. At or past the end follows silence, and the position goes on.
    /// @param time seconds
    virtual void seek(double time) = 0;
    /// Amplitude factor, 0...1.
    virtual void setVolume(float volume) = 0;

Q_SIGNALS:
    void isEnabledChanged(bool isEnabled);
};

} // namespace cadorel
