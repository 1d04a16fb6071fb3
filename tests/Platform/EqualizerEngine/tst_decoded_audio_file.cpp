// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/DecodedAudioFile.h"
#include "Platform/EqualizerEngine/ReadSound.h"

#include <QTest>

#include <random>

using namespace Qt::StringLiterals;

namespace cadorel {

/// Every kind of file that can be imported: its length is what it gives, and a seek lands on the sample.
class DecodedAudioFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesItsLength_data();
    void givesItsLength();
    void seeksToTheSample_data() { givesItsLength_data(); }
    void seeksToTheSample();
    void madeFormatsHaveTheirLength_data();
    void madeFormatsHaveTheirLength();
    void losesNothing_data();
    void losesNothing();
    void keepsChannels_data();
    void keepsChannels();
    void channelsHaveTheirUsualPlaces_data();
    void channelsHaveTheirUsualPlaces();
    void bringsHighRatesDown_data();
    void bringsHighRatesDown();
    void readsOneBitSound_data();
    void readsOneBitSound();
    void findsBlocksOfAllSizes();
    void seekPastTheEndGivesNothing();
    void seekGoesBackToTheBeginning();
    void readInPiecesIsReadAtOnce();

private:
    /// Of the made songs; no multiple of any codec's frame, and longer than what comes before a seek.
    static constexpr qint64 samples = 150'431;
    /// A second and a bit.
    static constexpr qint64 shortSamples = 50'021;

    void verifySeeks(AudioFile &file, float tolerance, int count);

    SongFolder m_folder;
};

namespace {

/// How a format keeps the length of what went into it.
enum Length { exact, rounded };

} // namespace

void DecodedAudioFileTest::givesItsLength_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("encoding");
    QTest::addColumn<int>("sampleRate");
    QTest::addColumn<bool>("isExact");
    // The largest difference after a seek; 0 for formats that lose nothing.
    QTest::addColumn<float>("tolerance");
    // Of 16 bits: some decoders round to it.
    constexpr float oneStep = 1.1F / 32768;
    const auto lossless = [](const char *row, const char *name, const QStringList &encoding = {},
                             int rate = 44100) {
        QTest::newRow(row) << QString::fromLatin1(name) << encoding << rate << true << 0.0F;
    };
    const auto lossy = [](const char *row, const char *name, Length length, const QStringList &encoding = {},
                          int rate = 44100, float tolerance = oneStep) {
        QTest::newRow(row) << QString::fromLatin1(name) << encoding << rate << (length == exact) << tolerance;
    };
    // Noise that the decoder makes up itself is never the same.
    const QStringList aac{u"-c:a"_s, u"aac"_s, u"-aac_pns"_s, u"0"_s};
    const QStringList real{u"-c:a"_s, u"ac3"_s, u"-f"_s, u"rm"_s};
    constexpr float dither = 0.02F;
    // Of what was said before, Speex forgets little.
    constexpr float speech = 0.07F;

    lossless("wav", "a.wav");
    lossless("wav 24 bit 96 kHz", "a24.wav", {u"-c:a"_s, u"pcm_s24le"_s}, 96000);
    lossless("wav float 8 kHz", "f8.wav", {u"-c:a"_s, u"pcm_f32le"_s}, 8000);
    lossless("wav 192 kHz", "b.wav", {}, 192000);
    lossless("aiff", "a.aiff");
    lossless("flac", "a.flac");
    lossless("flac 24 bit 96 kHz", "a24.flac", {u"-sample_fmt"_s, u"s32"_s}, 96000);
    lossless("ogg flac", "flac.ogg", {u"-c:a"_s, u"flac"_s});
    lossless("m4a alac", "alac.m4a", {u"-c:a"_s, u"alac"_s});
    lossless("wv", "a.wv");
    lossless("tta", "a.tta");
    lossless("mka flac", "flac.mka", {u"-c:a"_s, u"flac"_s});
    lossless("mka wav", "wav.mka", {u"-c:a"_s, u"pcm_s16le"_s});
    lossless("caf", "a.caf");
    lossy("wav adpcm", "x.wav", rounded, {u"-c:a"_s, u"adpcm_ima_wav"_s}, 44100, 0);
    lossy("mp3", "a.mp3", exact);
    lossy("mp3 variable", "v.mp3", exact, {u"-q:a"_s, u"4"_s});
    lossy("mp3 without header", "n.mp3", rounded, {u"-write_xing"_s, u"0"_s});
    lossy("mp3 24 kHz 8 kbit/s", "l.mp3", exact, {u"-b:a"_s, u"8k"_s, u"-ac"_s, u"1"_s}, 24000);
    lossy("mp2", "mp2.mp3", rounded, {u"-c:a"_s, u"mp2"_s, u"-f"_s, u"mp2"_s});
    lossy("m4a aac", "a.m4a", exact, aac);
    lossy("m4a fragmented", "f.m4a", rounded,
          aac + QStringList{u"-movflags"_s, u"frag_keyframe+empty_moov"_s});
    lossy("aac", "a.aac", rounded, aac);
    lossy("ogg", "a.ogg", exact);
    lossy("opus", "a.opus", exact, {}, 48000);
    lossy("opus 60 ms", "b.opus", exact, {u"-frame_duration"_s, u"60"_s}, 48000);
    lossy("mka vorbis", "a.mka", rounded);
    lossy("mka opus", "opus.mka", exact, {u"-c:a"_s, u"libopus"_s}, 48000);
    lossy("mka aac", "aac.mka", rounded, aac);
    lossy("mka mp3", "mp3.mka", rounded, {u"-c:a"_s, u"libmp3lame"_s});
    lossy("wma", "a.wma", rounded);
    lossy("wma 1", "b.wma", rounded, {u"-c:a"_s, u"wmav1"_s});
    lossy("spx", "a.spx", rounded, {u"-ac"_s, u"1"_s}, 32000, speech);
    lossy("ra", "a.ra", rounded, real, 44100, dither);
    lossy("rm", "a.rm", rounded, real, 44100, dither);
    lossy("rmvb", "a.rmvb", rounded, real, 44100, dither);
}

void DecodedAudioFileTest::givesItsLength()
{
    QFETCH(const QString, name);
    QFETCH(const QStringList, encoding);
    QFETCH(const int, sampleRate);
    QFETCH(const bool, isExact);
    const QUrl url = m_folder.encode(name, samples, encoding, sampleRate);
    const auto file = DecodedAudioFile::open(url);
    QCOMPARE(file->url(), url);
    QCOMPARE(file->processingFormat().sampleRate, sampleRate);
    const Sound sound = readToEnd(*file);
    QCOMPARE(qint64(sound.size()) / file->processingFormat().channelCount, file->length());
    // Whole frames of the codec, and what an encoder puts before the song.
    constexpr qint64 largestRounding = 5000;
    QVERIFY(std::abs(file->length() - samples) <= (isExact ? 0 : largestRounding));
}

void DecodedAudioFileTest::verifySeeks(AudioFile &file, float tolerance, int count)
{
    const int channels = file.processingFormat().channelCount;
    file.seek(0);
    const Sound whole = readToEnd(file);
    QCOMPARE(qint64(whole.size()), file.length() * channels);
    std::minstd_rand random(7);
    std::vector<qint64> places{0, 1, 3000, file.length() / 2, file.length() - 1, file.length() - 3000};
    for (int i = 0; i < count; ++i)
        places.push_back(qint64(random()) % file.length());
    constexpr qint64 partLength = 5000;
    for (const qint64 place : places) {
        file.seek(place);
        const Sound part = readFrames(file, partLength);
        QCOMPARE(qint64(part.size()), std::min(partLength, file.length() - place) * channels);
        const float worst = difference(whole, place, channels, part);
        QVERIFY2(worst <= tolerance, qPrintable(u"%1 at %2"_s.arg(worst).arg(place)));
    }
}

void DecodedAudioFileTest::seeksToTheSample()
{
    QFETCH(const QString, name);
    QFETCH(const QStringList, encoding);
    QFETCH(const int, sampleRate);
    QFETCH(const float, tolerance);
    verifySeeks(*DecodedAudioFile::open(m_folder.encode(name, samples, encoding, sampleRate)), tolerance, 20);
}

void DecodedAudioFileTest::madeFormatsHaveTheirLength_data()
{
    QTest::addColumn<QString>("format");
    for (const QString &format : madeFormats())
        QTest::newRow(qPrintable(format)) << format;
}

void DecodedAudioFileTest::madeFormatsHaveTheirLength()
{
    QFETCH(const QString, format);
    constexpr double seconds = 1.5;
    const auto file = DecodedAudioFile::open(m_folder.write("song."_L1 + format, makeAudio(format, seconds)));
    const AudioFormat shape = file->processingFormat();
    QVERIFY(std::abs(double(file->length()) / shape.sampleRate - seconds) < 0.1);
    verifySeeks(*file, 0.07F, 4);
}

void DecodedAudioFileTest::losesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("codec");
    QTest::newRow("aiff") << u"a.aiff"_s << u"pcm_s16be"_s;
    QTest::newRow("flac") << u"a.flac"_s << u"flac"_s;
    QTest::newRow("ogg flac") << u"a.oga"_s << u"flac"_s;
    QTest::newRow("m4a alac") << u"a.m4a"_s << u"alac"_s;
    QTest::newRow("wv") << u"a.wv"_s << u"wavpack"_s;
    QTest::newRow("tta") << u"a.tta"_s << u"tta"_s;
    QTest::newRow("mka") << u"a.mka"_s << u"flac"_s;
}

void DecodedAudioFileTest::losesNothing()
{
    QFETCH(const QString, name);
    QFETCH(const QString, codec);
    // Both from the same 16-bit samples.
    const auto plain = DecodedAudioFile::open(m_folder.encode(u"plain.wav"_s, shortSamples));
    QVERIFY(runFfmpeg({u"-i"_s, m_folder.path(u"plain.wav"_s), u"-c:a"_s, codec, m_folder.path(name)}));
    const auto coded = DecodedAudioFile::open(QUrl::fromLocalFile(m_folder.path(name)));
    QCOMPARE(coded->processingFormat(), plain->processingFormat());
    QCOMPARE(coded->length(), plain->length());
    const Sound whole = readToEnd(*plain);
    QVERIFY(std::ranges::any_of(whole, [](float sample) { return std::abs(sample) > 0.3F; }));
    QVERIFY(readToEnd(*coded) == whole);
}

void DecodedAudioFileTest::keepsChannels_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("channels");
    QTest::addColumn<QStringList>("encoding");
    QTest::newRow("mono") << u"1.flac"_s << 1 << QStringList();
    QTest::newRow("surround wav") << u"6.wav"_s << 6 << QStringList();
    QTest::newRow("surround flac") << u"6.flac"_s << 6 << QStringList();
    QTest::newRow("eight flac") << u"8.flac"_s << 8 << QStringList();
    QTest::newRow("surround alac") << u"6.m4a"_s << 6 << QStringList{u"-c:a"_s, u"alac"_s};
}

void DecodedAudioFileTest::keepsChannels()
{
    QFETCH(const QString, name);
    QFETCH(const int, channels);
    QFETCH(const QStringList, encoding);
    // Another loudness for each channel: none is mixed or taken for another.
    QStringList tones;
    for (int i = 0; i < channels; ++i)
        tones << u"%1*sin(2*PI*100*t)"_s.arg(0.1 * (i + 1));
    const QHash<int, QString> layouts{{1, u"mono"_s}, {6, u"5.1"_s}, {8, u"7.1"_s}};
    const QString source = u"aevalsrc=%1:s=48000:d=1:c=%2"_s.arg(tones.join(u'|'), layouts.value(channels));
    const QStringList input{u"-f"_s, u"lavfi"_s, u"-i"_s, source};
    QVERIFY(runFfmpeg(input + encoding + QStringList{m_folder.path(name)}));
    const auto file = DecodedAudioFile::open(QUrl::fromLocalFile(m_folder.path(name)));
    QCOMPARE(file->processingFormat().channelCount, channels);
    const Sound sound = readToEnd(*file);
    std::vector<float> peaks(size_t(channels), 0);
    for (size_t i = 0; i < sound.size(); ++i) {
        float &peak = peaks[i % size_t(channels)];
        peak = std::max(peak, std::abs(sound[i]));
    }
    for (int i = 0; i < channels; ++i)
        QVERIFY2(std::abs(peaks[size_t(i)] - 0.1F * float(i + 1)) < 0.001F,
                 qPrintable(QString::number(peaks[size_t(i)])));
}

void DecodedAudioFileTest::channelsHaveTheirUsualPlaces_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<int>("channels");
    QTest::addColumn<int>("sounding");
    QTest::addColumn<QList<int>>("heard");
    // Left, right, middle; four: left, right, back left, back right; five: with a middle before these.
    QTest::newRow("middle of three") << u"3.0"_s << 3 << 2 << QList<int>{2};
    QTest::newRow("back of three") << u"3.0(back)"_s << 3 << 2 << QList<int>{0, 1};
    QTest::newRow("back right of quad") << u"quad"_s << 4 << 3 << QList<int>{3};
    QTest::newRow("middle of 4.0") << u"4.0"_s << 4 << 2 << QList<int>{0, 1};
    QTest::newRow("back of 4.0") << u"4.0"_s << 4 << 3 << QList<int>{2, 3};
    QTest::newRow("back left of 5.0") << u"5.0"_s << 5 << 3 << QList<int>{3};
    QTest::newRow("left side of 5.0") << u"5.0(side)"_s << 5 << 3 << QList<int>{3};
    QTest::newRow("right side of 5.1") << u"5.1(side)"_s << 6 << 5 << QList<int>{5};
    QTest::newRow("back of hexagonal") << u"hexagonal"_s << 6 << 5 << QList<int>{4, 5};
    QTest::newRow("back of 6.1") << u"6.1"_s << 7 << 4 << QList<int>{4};
    QTest::newRow("right side of 7.1") << u"7.1"_s << 8 << 7 << QList<int>{7};
}

void DecodedAudioFileTest::channelsHaveTheirUsualPlaces()
{
    QFETCH(const QString, layout);
    QFETCH(const int, channels);
    QFETCH(const int, sounding);
    QFETCH(const QList<int>, heard);
    QStringList tones(channels, u"0"_s);
    tones[sounding] = u"0.4*sin(2*PI*100*t)"_s;
    const QString source = u"aevalsrc=%1:s=48000:d=0.2:c=%2"_s.arg(tones.join(u'|'), layout);
    const QString path = m_folder.path(u"places.wav"_s);
    QVERIFY(runFfmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, source, path}));
    const auto file = DecodedAudioFile::open(QUrl::fromLocalFile(path));
    QCOMPARE(file->processingFormat().channelCount, channels);
    const Sound sound = readToEnd(*file);
    QList<int> loud;
    for (int channel = 0; channel < channels; ++channel) {
        float peak = 0;
        for (size_t i = size_t(channel); i < sound.size(); i += size_t(channels))
            peak = std::max(peak, std::abs(sound[i]));
        if (peak > 0.15F)
            loud.append(channel);
    }
    QCOMPARE(loud, heard);
}

void DecodedAudioFileTest::bringsHighRatesDown_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("given");
    QTest::newRow("8 kHz") << 8000 << 8000;
    QTest::newRow("11.025 kHz") << 11025 << 11025;
    QTest::newRow("176.4 kHz") << 176400 << 176400;
    QTest::newRow("192 kHz") << 192000 << 192000;
    QTest::newRow("352.8 kHz") << 352800 << 176400;
    QTest::newRow("384 kHz") << 384000 << 192000;
}

void DecodedAudioFileTest::bringsHighRatesDown()
{
    QFETCH(const int, rate);
    QFETCH(const int, given);
    const QString name = u"%1.flac"_s.arg(rate);
    const auto file = DecodedAudioFile::open(m_folder.encode(name, samples, {}, rate));
    QCOMPARE(file->processingFormat().sampleRate, given);
    const qint64 factor = rate / given;
    QCOMPARE(file->length(), (samples + factor - 1) / factor);
    verifySeeks(*file, factor == 1 ? 0 : 1e-6F, 10);
}

void DecodedAudioFileTest::readsOneBitSound_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("dsf") << u"dsf"_s;
    QTest::newRow("dff") << u"dff"_s;
}

void DecodedAudioFileTest::readsOneBitSound()
{
    QFETCH(const QString, format);
    const auto file = DecodedAudioFile::open(m_folder.write("a."_L1 + format, makeAudio(format, 1.5, 440)));
    QCOMPARE(file->processingFormat(), (AudioFormat{.sampleRate = 88200, .channelCount = 2}));
    QVERIFY(std::abs(file->length() - 88200 * 3 / 2) <= 88200 / 100);
    // 440 Hz pass zero 880 times a second.
    const Sound sound = readToEnd(*file);
    int crossings = 0;
    bool positive = false;
    for (size_t i = 88200; i < size_t(2 * 88200); i += 2) {
        const float sample = sound[i];
        if (std::abs(sample) > 0.02F && (sample > 0) != positive) {
            positive = sample > 0;
            ++crossings;
        }
    }
    QVERIFY2(std::abs(crossings - 440) <= 2, qPrintable(QString::number(crossings)));
    verifySeeks(*file, 1e-6F, 10);
}

void DecodedAudioFileTest::findsBlocksOfAllSizes()
{
    // Beats in silence: the encoder changes its block size many times in each page.
    const QString beats =
        u"aevalsrc=0.5*sin(2*PI*(200*t+50*t*t))*lt(mod(t\\,0.13)\\,0.01)+0.1*sin(2*PI*(90*t+7*t*t)):s=44100:d=12"_s;
    for (const QString &name : {u"beats.ogg"_s, u"beats.mka"_s}) {
        QVERIFY(
            runFfmpeg({u"-f"_s, u"lavfi"_s, u"-i"_s, beats, u"-c:a"_s, u"libvorbis"_s, m_folder.path(name)}));
        verifySeeks(*DecodedAudioFile::open(QUrl::fromLocalFile(m_folder.path(name))), 1e-5F, 30);
    }
}

void DecodedAudioFileTest::seekPastTheEndGivesNothing()
{
    const auto file = DecodedAudioFile::open(m_folder.encode(u"a.flac"_s, shortSamples));
    Sound sound(200);
    for (const qint64 place : {shortSamples, shortSamples + 1, shortSamples * 1000}) {
        file->seek(place);
        QCOMPARE(file->read(sound.data(), 100), 0);
    }
    file->seek(shortSamples - 40);
    QCOMPARE(file->read(sound.data(), 100), 40);
    QCOMPARE(file->read(sound.data(), 100), 0);
}

void DecodedAudioFileTest::seekGoesBackToTheBeginning()
{
    for (const QString &name : {u"b.m4a"_s, u"b.mp3"_s, u"b.opus"_s, u"b.wv"_s}) {
        const auto file = DecodedAudioFile::open(m_folder.encode(name, 72'000, {}, 48000));
        const Sound first = readFrames(*file, 10'000);
        QCOMPARE(first.size(), size_t(20'000));
        readToEnd(*file);
        for (const qint64 place : {qint64(0), qint64(-5)}) {
            file->seek(place);
            QVERIFY2(readFrames(*file, 10'000) == first, qPrintable(name));
        }
    }
}

void DecodedAudioFileTest::readInPiecesIsReadAtOnce()
{
    const auto file = DecodedAudioFile::open(m_folder.encode(u"p.ogg"_s, shortSamples));
    Sound atOnce(size_t(shortSamples) * 2);
    QCOMPARE(file->read(atOnce.data(), shortSamples), shortSamples);
    file->seek(0);
    Sound inPieces(atOnce.size());
    qint64 done = 0;
    for (qint64 piece = 1; done < shortSamples; piece = piece % 97 + 1)
        done += file->read(inPieces.data() + done * 2, std::min(piece, shortSamples - done));
    QVERIFY(inPieces == atOnce);
    QCOMPARE(file->read(inPieces.data(), 0), 0);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::DecodedAudioFileTest)
#include "tst_decoded_audio_file.moc"
