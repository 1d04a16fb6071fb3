// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioEngine.h"

#include <QList>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace cadorel {

/// A decoded file of silence, as long as a test wants.
class FakeAudioFile : public AudioFile
{
public:
    FakeAudioFile(QUrl url, AudioFormat format, qint64 length)
        : m_url(std::move(url))
        , m_format(format)
        , m_length(length)
    {
    }

    const QUrl &url() const override { return m_url; }
    AudioFormat processingFormat() const override { return m_format; }
    qint64 length() const override { return m_length; }
    void seek(qint64 frame) override { m_position = std::min(frame, m_length); }
    qint64 read(float *interleaved, qint64 frameCount) override
    {
        const qint64 count = std::min(frameCount, m_length - m_position);
        std::fill_n(interleaved, count * m_format.channelCount, 0.0F);
        m_position += count;
        return count;
    }

private:
    QUrl m_url;
    AudioFormat m_format;
    qint64 m_length;
    qint64 m_position = 0;
};

/// A second engine that makes no sound: `calls` in order, one text each, and a clock that the test moves.
class FakeAudioEngine : public AudioEngine
{
public:
    QStringList calls;
    /// Of every file that is opened.
    AudioFormat format{.sampleRate = 44100, .channelCount = 2};
    double length = 200; ///< seconds
    /// Why the next files cannot be opened, and the device cannot; empty lets it.
    std::string openFailure;
    std::string startFailure;
    float volume = -1;
    /// Called when the gain for the whole sound is set.
    std::function<void()> onGlobalGain;

    /// What is scheduled.
    struct Segment
    {
        QUrl file;
        qint64 startFrame;
        qint64 frameCount;
        friend bool operator==(const Segment &, const Segment &) = default;
    };
    QList<Segment> segments() const { return m_node.segments; }
    /// Lets the listener hear @p seconds more of what plays; nothing moves while it does not.
    void advance(double seconds)
    {
        if (m_node.isPlaying())
            m_node.sampleTime += seconds * m_node.sampleRate;
    }
    /// The sound device goes away.
    void loseDevice() { m_isRunning = false; }

    std::shared_ptr<AudioFile> openFile(const QUrl &url) override
    {
        calls.append(QStringLiteral("open ") + url.fileName());
        if (!openFailure.empty())
            throw std::runtime_error(openFailure);
        return std::make_shared<FakeAudioFile>(url, format, static_cast<qint64>(length * format.sampleRate));
    }
    PlayerNode &playerNode() override { return m_node; }
    EqualizerUnit &equalizer() override { return m_equalizer; }
    void connectNodes(const AudioFormat &connected) override
    {
        calls.append(QStringLiteral("connect %1 %2").arg(connected.sampleRate).arg(connected.channelCount));
        m_node.drop();
        m_isRunning = m_isRunning && connected == m_connected;
        m_connected = connected;
        m_node.sampleRate = connected.sampleRate;
    }
    void start() override
    {
        calls.append(QStringLiteral("start"));
        if (m_isRunning)
            return;
        m_node.playing = false;
        if (!startFailure.empty())
            throw std::runtime_error(startFailure);
        m_isRunning = true;
    }
    bool isRunning() const override { return m_isRunning; }

private:
    struct Node : PlayerNode
    {
        explicit Node(FakeAudioEngine &owner)
            : engine(owner)
        {
        }

        void scheduleSegment(std::shared_ptr<AudioFile> file, qint64 startFrame, qint64 frameCount) override
        {
            engine.calls.append(QStringLiteral("schedule %1+%2").arg(startFrame).arg(frameCount));
            segments.append({file->url(), startFrame, frameCount});
        }
        void play() override
        {
            engine.calls.append(QStringLiteral("node play"));
            if (!engine.m_isRunning)
                return;
            playing = true;
            started = true;
        }
        void pause() override
        {
            engine.calls.append(QStringLiteral("node pause"));
            playing = false;
        }
        void stop() override
        {
            engine.calls.append(QStringLiteral("node stop"));
            drop();
        }
        bool isPlaying() const override { return playing && engine.m_isRunning; }
        void setVolume(float value) override { engine.volume = value; }
        std::optional<NodeTime> playerTime() const override
        {
            return started ? std::optional(NodeTime{.sampleTime = sampleTime, .sampleRate = sampleRate})
                           : std::nullopt;
        }

        void drop()
        {
            playing = false;
            started = false;
            sampleTime = 0;
            segments.clear();
        }

        FakeAudioEngine &engine;
        QList<Segment> segments;
        bool playing = false;
        bool started = false;
        double sampleTime = 0;
        double sampleRate = 0;
    };
    struct Unit : EqualizerUnit
    {
        explicit Unit(FakeAudioEngine &owner)
            : engine(owner)
        {
        }

        int bandCount() const override { return static_cast<int>(bands.size()); }
        EqualizerBand band(int index) const override { return bands.at(index); }
        void setBand(int index, const EqualizerBand &band) override { bands[index] = band; }
        double globalGain() const override { return gain; }
        void setGlobalGain(double decibels) override
        {
            engine.calls.append(QStringLiteral("gain %1").arg(decibels));
            gain = decibels;
            if (engine.onGlobalGain)
                engine.onGlobalGain();
        }

        FakeAudioEngine &engine;
        QList<EqualizerBand> bands = QList<EqualizerBand>(10);
        double gain = 0;
    };

    Node m_node{*this};
    Unit m_equalizer{*this};
    AudioFormat m_connected;
    bool m_isRunning = false;
};

} // namespace cadorel
