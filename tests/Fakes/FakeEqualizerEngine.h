// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/EqualizerEngine.h"

#include <QStringList>

#include <functional>
#include <stdexcept>

namespace cadorel {

/// An equalizer engine that makes no sound: `calls` in order, one text each.
class FakeEqualizerEngine : public EqualizerEngine
{
public:
    QStringList calls;
    bool enabled = false;
    /// As a listener switches it.
    void setEnabled(bool value)
    {
        enabled = value;
        Q_EMIT isEnabledChanged(value);
    }
    bool playing = false;
    double position = 0;
    /// Length of every file.
    double length = 200;
    float volume = -1;
    /// Why the next file cannot be prepared; empty prepares it.
    std::string failure;
    /// Why it cannot play; empty plays.
    std::string playFailure;
    /// Called when it begins to sound.
    std::function<void()> onPlay;

    bool isEnabled() const override { return enabled; }
    bool isPlaying() const override { return playing; }
    double currentTime() const override { return position; }
    double duration() const override { return length; }

    void prepareToPlay(const QUrl &file) override
    {
        calls.append(QStringLiteral("prepare ") + file.fileName());
        playing = false;
        position = 0;
        if (!failure.empty())
            throw std::runtime_error(failure);
    }
    void play() override
    {
        calls.append(QStringLiteral("play"));
        if (!playFailure.empty())
            throw std::runtime_error(playFailure);
        if (onPlay)
            onPlay();
        playing = true;
    }
    void pause() override
    {
        calls.append(QStringLiteral("pause"));
        playing = false;
    }
    void stop() override
    {
        calls.append(QStringLiteral("stop"));
        playing = false;
    }
    void seek(double time) override
    {
        calls.append(QStringLiteral("seek ") + QString::number(time));
        position = time;
    }
    void setVolume(float value) override { volume = value; }
};

} // namespace cadorel
