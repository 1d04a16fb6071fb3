// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioEngine.h"
#include "Platform/EqualizerEngine/AudioOutput.h"
#include "Platform/EqualizerEngine/BiquadEqualizer.h"
#include "Platform/EqualizerEngine/DecodedAudioFile.h"
#include "Platform/EqualizerEngine/StreamingPlayerNode.h"

#include <functional>
#include <memory>

namespace cadorel {

/// Files through a StreamingPlayerNode and a BiquadEqualizer to an output. The output stays open from one
/// song to the next while the format stays, silent and at no cost while nothing plays.
class OutputAudioEngine : public AudioEngine
{
public:
    using OutputFactory = std::function<std::unique_ptr<AudioOutput>()>;
    using FileOpener = std::function<std::shared_ptr<AudioFile>(const QUrl &url)>;

    /// @param makeOutput makes one for each time that a device is opened
    /// @param openFile as openFile() tells
    explicit OutputAudioEngine(OutputFactory makeOutput, FileOpener openFile = DecodedAudioFile::open);
    ~OutputAudioEngine() override;
    Q_DISABLE_COPY_MOVE(OutputAudioEngine)

    std::shared_ptr<AudioFile> openFile(const QUrl &url) override { return m_openFile(url); }
    PlayerNode &playerNode() override { return m_node; }
    EqualizerUnit &equalizer() override { return m_equalizer; }
    void connectNodes(const AudioFormat &format) override;
    void start() override;
    bool isRunning() const override { return m_output && m_output->isOpen(); }

private:
    void closeOutput();

    const OutputFactory m_makeOutput;
    const FileOpener m_openFile;
    BiquadEqualizer m_equalizer;
    StreamingPlayerNode m_node;
    std::unique_ptr<AudioOutput> m_output;
};

} // namespace cadorel
