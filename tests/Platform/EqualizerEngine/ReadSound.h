// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/MadeAudio.h"
#include "Platform/AudioFile.h"

#include <QFile>
#include <QHash>
#include <QTemporaryDir>

#include <algorithm>
#include <cmath>
#include <vector>

namespace cadorel {

/// Interleaved frames.
using Sound = std::vector<float>;

/// The next frames of a file, asked for in pieces of an awkward size.
inline Sound readFrames(AudioFile &file, qint64 frameCount)
{
    constexpr qint64 piece = 1777;
    const auto channels = size_t(file.processingFormat().channelCount);
    Sound sound;
    for (qint64 done = 0; done < frameCount;) {
        const qint64 wanted = std::min(piece, frameCount - done);
        sound.resize(size_t(done + wanted) * channels);
        const qint64 got = file.read(sound.data() + size_t(done) * channels, wanted);
        done += got;
        sound.resize(size_t(done) * channels);
        if (got < wanted)
            break;
    }
    return sound;
}

/// All that there is, also behind the length that was told.
inline Sound readToEnd(AudioFile &file)
{
    return readFrames(file, file.length() + 10'000'000);
}

/// The largest difference between @p part and what is in @p whole from @p frame on; infinite when that ends
/// first.
inline float difference(const Sound &whole, qint64 frame, int channels, const Sound &part)
{
    const size_t offset = size_t(frame) * size_t(channels);
    if (offset + part.size() > whole.size())
        return INFINITY;
    float largest = 0;
    for (size_t i = 0; i < part.size(); ++i)
        largest = std::max(largest, std::abs(whole[offset + i] - part[i]));
    return largest;
}

/// Files in a directory of their own.
class SongFolder
{
public:
    QString path(const QString &name) const { return m_directory.filePath(name); }
    QUrl write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
        return written ? QUrl::fromLocalFile(file.fileName()) : QUrl();
    }
    /// A rising tone in each of two channels, no stretch of which is like another.
    /// @param samples frames at @p sampleRate @param encoding for ffmpeg, between the tone and the file's
    /// name
    QUrl encode(const QString &name, qint64 samples, const QStringList &encoding = {}, int sampleRate = 44100)
    {
        using namespace Qt::StringLiterals;
        const QString tones =
            u"aevalsrc=0.4*sin(2*PI*(200*t+150*t*t))|0.3*sin(2*PI*(310*t+90*t*t)):s=%1,atrim=end_sample=%2"_s
                .arg(sampleRate)
                .arg(samples);
        const QStringList arguments =
            QStringList{u"-f"_s, u"lavfi"_s, u"-i"_s, tones} + encoding + QStringList{path(name)};
        if (m_made.value(name) != arguments && !runFfmpeg(arguments))
            return {};
        m_made.insert(name, arguments);
        return QUrl::fromLocalFile(path(name));
    }

private:
    QTemporaryDir m_directory;
    QHash<QString, QStringList> m_made;
};

} // namespace cadorel
