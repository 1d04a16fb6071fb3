// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/ConsoleLines.h"
#include "Fakes/FakePreferences.h"
#include "Platform/EqualizerEngine/DecodedAudioFile.h"
#include "Platform/EqualizerEngine/FileOutput.h"
#include "Platform/EqualizerEngine/OutputAudioEngine.h"
#include "Services/EqualizerService.h"

#include <QTest>

#include <memory>
#include <vector>

namespace cadorel {

/// The equalizer as it is in the program, from the file to the last sample before the device. Nothing sounds
/// but what a test takes.
class EqualizerChain
{
public:
    EqualizerChain()
        : m_service(m_preferences, std::make_unique<OutputAudioEngine>(
                                       [this] {
                                           auto output = std::make_unique<FileOutput>();
                                           m_output = output.get();
                                           return output;
                                       },
                                       DecodedAudioFile::open))
    {
    }
    Q_DISABLE_COPY_MOVE(EqualizerChain)

    EqualizerService &service() { return m_service; }

    /// Plays a file from its start, with nothing taken yet.
    void play(const QString &path)
    {
        m_service.prepareToPlay(QUrl::fromLocalFile(path));
        m_service.play();
    }
    /// The next so many seconds of what plays, interleaved; fewer when they do not come.
    std::vector<float> take(double seconds)
    {
        m_output->allow(static_cast<qint64>(std::llround(seconds * m_output->format().sampleRate)));
        (void)QTest::qWaitFor([this] { return m_output->allowance() == 0; }, 20'000);
        return m_output->takeSamples();
    }
    AudioFormat format() const { return m_output->format(); }
    /// One channel of interleaved sound.
    std::vector<float> channel(const std::vector<float> &sound, int index) const
    {
        std::vector<float> wave;
        wave.reserve(sound.size());
        const auto channels = static_cast<std::size_t>(format().channelCount);
        for (std::size_t at = static_cast<std::size_t>(index); at < sound.size(); at += channels)
            wave.push_back(sound[at]);
        return wave;
    }

private:
    ConsoleLines m_console;
    FakePreferences m_preferences;
    FileOutput *m_output = nullptr;
    EqualizerService m_service;
};

} // namespace cadorel
