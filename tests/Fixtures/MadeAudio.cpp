// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadeAudio.h"

#include "Fixtures/RareAudio.h"

#include <QFile>
#include <QHash>
#include <QMutex>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr int stereoRate = 44100;

/// Arguments of ffmpeg that make a format.
const QHash<QString, QStringList> &encoders()
{
    // AC-3 is the sound of RealMedia that ffmpeg writes with times.
    static const QStringList real{u"-c:a"_s, u"ac3"_s, u"-f"_s, u"rm"_s};
    static const QHash<QString, QStringList> table{
        {u"mp3"_s, {u"-c:a"_s, u"libmp3lame"_s, u"-id3v2_version"_s, u"0"_s, u"-f"_s, u"mp3"_s}},
        {u"m4a"_s, {u"-c:a"_s, u"aac"_s, u"-f"_s, u"ipod"_s}},
        {u"alac"_s, {u"-c:a"_s, u"alac"_s, u"-f"_s, u"ipod"_s}},
        {u"wav"_s, {u"-c:a"_s, u"pcm_s16le"_s, u"-f"_s, u"wav"_s}},
        {u"aiff"_s, {u"-c:a"_s, u"pcm_s16be"_s, u"-f"_s, u"aiff"_s}},
        {u"aac"_s, {u"-c:a"_s, u"aac"_s, u"-f"_s, u"adts"_s}},
        {u"flac"_s, {u"-c:a"_s, u"flac"_s, u"-f"_s, u"flac"_s}},
        {u"ogg"_s, {u"-c:a"_s, u"libvorbis"_s, u"-f"_s, u"ogg"_s}},
        {u"oga"_s, {u"-c:a"_s, u"flac"_s, u"-f"_s, u"ogg"_s}},
        {u"opus"_s, {u"-ar"_s, u"48000"_s, u"-c:a"_s, u"libopus"_s, u"-f"_s, u"ogg"_s}},
        // Speex knows 32 kHz at most.
        {u"spx"_s, {u"-ac"_s, u"1"_s, u"-ar"_s, u"32000"_s, u"-c:a"_s, u"libspeex"_s, u"-f"_s, u"ogg"_s}},
        {u"wma"_s, {u"-c:a"_s, u"wmav2"_s, u"-f"_s, u"asf"_s}},
        {u"wv"_s, {u"-c:a"_s, u"wavpack"_s, u"-f"_s, u"wv"_s}},
        {u"tta"_s, {u"-c:a"_s, u"tta"_s, u"-f"_s, u"tta"_s}},
        {u"mka"_s, {u"-c:a"_s, u"libvorbis"_s, u"-f"_s, u"matroska"_s}},
        {u"ra"_s, real},
        {u"rm"_s, real},
        {u"rmvb"_s, real},
    };
    return table;
}

QByteArray encode(const QString &format, double seconds, int frequency, const QStringList &encoder)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("audio."_L1 + format);
    const QString tone = u"sine=frequency=%1:sample_rate=%2:duration=%3"_s.arg(frequency)
                             .arg(stereoRate)
                             .arg(seconds, 0, 'f', 6);
    QStringList arguments{u"-f"_s,        u"lavfi"_s,         u"-i"_s, tone, u"-ac"_s, u"2"_s,
                          u"-bitexact"_s, u"-map_metadata"_s, u"-1"_s};
    arguments += encoders().value(format);
    arguments += encoder;
    arguments += path;
    QFile file(path);
    return runFfmpeg(arguments) && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray makeRare(const QString &format, double seconds, int frequency)
{
    if (format == "dsf"_L1)
        return makeDsf(seconds, frequency);
    if (format == "dff"_L1)
        return makeDff(seconds, frequency);
    if (format == "ape"_L1)
        return makeApe(seconds);
    return format == "tak"_L1 ? makeTak(seconds) : QByteArray();
}

} // namespace

QStringList madeFormats()
{
    return encoders().keys() + QStringList{u"dsf"_s, u"dff"_s, u"ape"_s, u"tak"_s};
}

bool runFfmpeg(const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(u"ffmpeg"_s,
                  QStringList{u"-hide_banner"_s, u"-loglevel"_s, u"error"_s, u"-y"_s} + arguments);
    constexpr int limit = 60'000;
    return process.waitForFinished(limit) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

QByteArray makeAudio(const QString &format, double seconds, int frequency, const QStringList &encoder)
{
    static QMutex mutex;
    static QHash<QString, QByteArray> made;
    const QString key = u"%1 %2 %3 %4"_s.arg(format).arg(seconds).arg(frequency).arg(encoder.join(u' '));
    const QMutexLocker lock(&mutex);
    const auto found = made.constFind(key);
    if (found != made.cend())
        return *found;
    QByteArray bytes = encoders().contains(format) ? encode(format, seconds, frequency, encoder)
                                                   : makeRare(format, seconds, frequency);
    made.insert(key, bytes);
    return bytes;
}

} // namespace cadorel
