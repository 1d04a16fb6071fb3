// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Sound/Recorder.h"
#include "Models/Song.h"

#include <QUrl>

#include <chrono>

namespace cadorel {

/// Amplitude from which a sample counts as sound.
constexpr float audibleAmplitude = 0.02F;

/// Seconds from a command to the first sound that follows it, told by the clock of the recording.
template <typename Command>
double secondsToSound(Recorder &recorder, Command command)
{
    using namespace std::chrono_literals;
    if (!recorder.hearSilence(200ms, 20s))
        qFatal("the device does not fall silent");
    recorder.clear();
    command();
    if (!recorder.hearSound(audibleAmplitude, 20s))
        qFatal("no sound is heard");
    return static_cast<double>(recorder.firstAbove(audibleAmplitude)) / Recorder::sampleRate;
}

/// The song that a file of this machine is.
inline Song songAt(const QString &path)
{
    SongFields fields;
    fields.id = path;
    fields.title = path;
    fields.assetURL = QUrl::fromLocalFile(path);
    return Song(fields);
}

} // namespace cadorel
