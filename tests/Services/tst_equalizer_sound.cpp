// SPDX-License-Identifier: GPL-3.0-or-later
#include "EqualizerChain.h"
#include "Fixtures/Sound/MadeWaves.h"
#include "Fixtures/Sound/MarkedSound.h"
#include "Fixtures/Sound/RunProgram.h"

#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr double toneAmplitude = 0.02;
constexpr std::array<double, 4> askedGains{-12, -6, 6, 12};
/// After this a moved slider has arrived and the filters have settled, in seconds.
constexpr double settling = 0.5;
const double rampPerFrame = ratioOf(0.25 / 64);

std::size_t bandOf(int index)
{
    return static_cast<std::size_t>(index);
}

double centre(int band)
{
    return double{EqualizerService::frequencies.at(bandOf(band))};
}

/// Amplitudes of the ten tones.
std::array<double, equalizerBandCount> tonesIn(const std::vector<float> &wave, int sampleRate)
{
    std::array<double, equalizerBandCount> tones{};
    for (int band = 0; band < equalizerBandCount; ++band)
        tones.at(bandOf(band)) = fitTone(wave, centre(band), sampleRate).amplitude;
    return tones;
}

EqualizerGains allAt(float gain)
{
    EqualizerGains gains{};
    gains.fill(gain);
    return gains;
}

} // namespace

/// What comes out of the whole equalizer engine, from real files, by its samples.
class EqualizerSoundTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void eachBandIsAsLoudAsItsSlider_data();
    void eachBandIsAsLoudAsItsSlider();
    void presetsSoundAsTheyAreListed();
    void preampIsAsLoudAsItsSlider();
    void disabledNoBitChanges();
    void flatNoBitChanges();

    void movedSlidersMakeNoClick_data();
    void movedSlidersMakeNoClick();
    void switchingTheEffectMakesNoClick();
    void fullScaleIsNotTurnedOver_data();
    void fullScaleIsNotTurnedOver();

    void clockIsWhatWasTakenOverAMinute();
    void clockIsTheSoundsPlaceInTheFile();

private:
    /// A file with these tones on both channels. @return its path, empty when it could not be made
    QString make(const QString &name, const QList<double> &hertz, double amplitude, double seconds,
                 const QStringList &encoding = {}) const;

    QTemporaryDir m_directory;
    QString m_tones;
};

QString EqualizerSoundTest::make(const QString &name, const QList<double> &hertz, double amplitude,
                                 double seconds, const QStringList &encoding) const
{
    QStringList terms;
    for (const double frequency : hertz)
        terms << u"%1*sin(2*PI*%2*t)"_s.arg(amplitude).arg(frequency);
    const QString sum = terms.join(u'+');
    const QString path = m_directory.filePath(name);
    const QStringList arguments{
        u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s,
        u"-f"_s, u"lavfi"_s, u"-i"_s,       u"aevalsrc=%1|%1:s=44100:d=%2"_s.arg(sum).arg(seconds)};
    return runProgram(u"ffmpeg"_s, arguments + encoding + QStringList{path}) ? path : QString();
}

void EqualizerSoundTest::initTestCase()
{
    QList<double> centres;
    for (int band = 0; band < equalizerBandCount; ++band)
        centres << centre(band);
    m_tones = make(u"tones.wav"_s, centres, toneAmplitude, 3);
    QVERIFY(!m_tones.isEmpty());
    QVERIFY(!make(u"tones.flac"_s, centres, toneAmplitude, 3, {u"-ar"_s, u"48000"_s}).isEmpty());
    QVERIFY(!make(u"tones.mp3"_s, centres, toneAmplitude, 3, {u"-b:a"_s, u"320k"_s}).isEmpty());
}

void EqualizerSoundTest::eachBandIsAsLoudAsItsSlider_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {"tones.wav", "tones.flac", "tones.mp3"})
        QTest::newRow(file) << m_directory.filePath(QString::fromLatin1(file));
}

void EqualizerSoundTest::eachBandIsAsLoudAsItsSlider()
{
    QFETCH(const QString, file);
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setEnabled(true);
    chain.play(file);
    const int rate = chain.format().sampleRate;
    const auto heard = [&] {
        service.seek(0);
        chain.take(settling);
        return tonesIn(chain.channel(chain.take(1), 1), rate);
    };
    const auto flat = heard();
    for (const double tone : flat)
        QVERIFY(std::abs(decibelsOf(tone / toneAmplitude)) < 0.5);

    QStringList table{u"%1: decibels measured with every other band flat"_s.arg(QFileInfo(file).fileName())};
    QString head = u"   asked"_s;
    for (int band = 0; band < equalizerBandCount; ++band)
        head += EqualizerService::frequencyLabels.at(bandOf(band)).rightJustified(8);
    table << head;
    for (const double asked : askedGains) {
        QString row = QString::number(asked, 'f', 1).rightJustified(8);
        for (int band = 0; band < equalizerBandCount; ++band) {
            service.setBands({});
            service.setBand(band, static_cast<float>(asked));
            const auto tones = heard();
            const double measured = decibelsOf(tones.at(bandOf(band)) / flat.at(bandOf(band)));
            row += QString::number(measured, 'f', 2).rightJustified(8);
            QVERIFY2(std::abs(measured - asked) < 0.5, qPrintable(row));
            // The others are touched by the skirt of its bell, and by nothing else.
            for (int other = 0; other < equalizerBandCount; ++other) {
                const double skirt = bellDecibels(centre(other), centre(band), 1, asked, rate);
                const double change = decibelsOf(tones.at(bandOf(other)) / flat.at(bandOf(other)));
                QVERIFY(std::abs(change - skirt) < 0.1);
            }
        }
        table << row;
    }
    qInfo().noquote() << table.join(u'\n');
}

void EqualizerSoundTest::presetsSoundAsTheyAreListed()
{
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setEnabled(true);
    chain.play(m_tones);
    chain.take(settling);
    const auto flat = tonesIn(chain.channel(chain.take(1), 0), chain.format().sampleRate);
    for (const EqualizerPreset preset : allEqualizerPresets()) {
        service.setCurrentPreset(preset);
        service.seek(0);
        chain.take(settling);
        const auto tones = tonesIn(chain.channel(chain.take(1), 0), chain.format().sampleRate);
        for (int band = 0; band < equalizerBandCount; ++band) {
            double expected = 0; // neighbours reach into each other
            for (int other = 0; other < equalizerBandCount; ++other)
                expected += bellDecibels(centre(band), centre(other), 1, double{service.getBand(other)},
                                         chain.format().sampleRate);
            QVERIFY(std::abs(decibelsOf(tones.at(bandOf(band)) / flat.at(bandOf(band))) - expected) < 0.1);
        }
    }
}

void EqualizerSoundTest::preampIsAsLoudAsItsSlider()
{
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setEnabled(true);
    chain.play(m_tones);
    for (const double asked : askedGains) {
        service.setPreampGain(static_cast<float>(asked));
        service.seek(0);
        chain.take(settling);
        const auto tones = tonesIn(chain.channel(chain.take(1), 0), chain.format().sampleRate);
        for (const double tone : tones)
            QVERIFY(std::abs(decibelsOf(tone / toneAmplitude) - asked) < 0.1);
    }
}

void EqualizerSoundTest::disabledNoBitChanges()
{
    const MarkedSound sound(2);
    const QString path = m_directory.filePath(u"noise.wav"_s);
    QVERIFY(sound.write(path));
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setBands(allAt(12));
    service.setPreampGain(-6);
    chain.play(path);
    QCOMPARE(chain.take(2), sound.samples());
    service.setEnabled(true);
    service.seek(0);
    QVERIFY(chain.take(2) != sound.samples());
    service.setEnabled(false);
    service.seek(0);
    QCOMPARE(chain.take(2), sound.samples());
    QCOMPARE(service.bands(), allAt(12));
}

void EqualizerSoundTest::flatNoBitChanges()
{
    const MarkedSound sound(2);
    const QString path = m_directory.filePath(u"noise.wav"_s);
    QVERIFY(sound.write(path));
    EqualizerChain chain;
    chain.service().setEnabled(true);
    chain.play(path);
    QCOMPARE(chain.take(2), sound.samples());
}

void EqualizerSoundTest::movedSlidersMakeNoClick_data()
{
    QTest::addColumn<int>("band"); // -1 is the preamp
    QTest::addRow("preamp") << -1;
    for (int band = 0; band < equalizerBandCount; ++band)
        QTest::addRow("%g Hz", centre(band)) << band;
}

void EqualizerSoundTest::movedSlidersMakeNoClick()
{
    QFETCH(const int, band);
    const double hertz = band < 0 ? 60 : centre(band);
    const double amplitude = 0.2;
    const QString path = make(u"tone%1.wav"_s.arg(band), {hertz}, amplitude, 4);
    QVERIFY(!path.isEmpty());
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setEnabled(true);
    chain.play(path);
    const auto set = [&](float gain) {
        if (band < 0)
            service.setPreampGain(gain);
        else
            service.setBand(band, gain);
    };
    // All the way at once, and dragged: from -12 to 12 and back, in steps that come while it moves.
    std::vector<float> sound = chain.take(0.3);
    const auto listen = [&](double seconds) {
        const auto more = chain.take(seconds);
        sound.insert(sound.end(), more.begin(), more.end());
    };
    for (const float gain : {-12.0F, 12.0F, -12.0F}) {
        set(gain);
        listen(0.4);
    }
    for (float gain = -12; gain <= 12; gain += 0.5F) {
        set(gain);
        listen(0.01);
    }
    listen(0.3);

    // From one frame to the next the wave moves, and its gain does by the ramp's pace, at most at the
    // loudest.
    const std::vector<float> wave = chain.channel(sound, 0);
    const double slope =
        2 * std::sin(std::numbers::pi * hertz / chain.format().sampleRate) + (rampPerFrame - 1);
    const double explained = amplitude * ratioOf(12) * slope;
    const double jump = largestJump(wave);
    QVERIFY2(jump <= 1.01 * explained, qPrintable(u"%1, not %2"_s.arg(jump).arg(explained)));
    const auto end = std::span(wave).last(wave.size() / 16);
    const double reached = fitTone(end, hertz, chain.format().sampleRate).amplitude;
    QVERIFY(std::abs(decibelsOf(reached / amplitude) - 12) < 0.5);
}

void EqualizerSoundTest::switchingTheEffectMakesNoClick()
{
    const double amplitude = 0.05;
    const QString path = make(u"bass.wav"_s, {64}, amplitude, 4);
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setBands(allAt(12));
    service.setPreampGain(6);
    chain.play(path);
    std::vector<float> sound = chain.take(0.3);
    for (const bool enabled : {true, false, true}) {
        service.setEnabled(enabled);
        const auto more = chain.take(0.4);
        sound.insert(sound.end(), more.begin(), more.end());
    }
    const std::vector<float> wave = chain.channel(sound, 0);
    double gain = 6;
    for (int band = 0; band < equalizerBandCount; ++band)
        gain += bellDecibels(64, centre(band), 1, 12, chain.format().sampleRate);
    // The preamp and the bands that reach here all move at once, the bell of 64 Hz as far as the preamp.
    const double ramp = std::pow(rampPerFrame, 4) - 1;
    const double slope = 2 * std::sin(std::numbers::pi * 64 / chain.format().sampleRate) + ramp;
    QVERIFY(largestJump(wave) <= 1.01 * amplitude * ratioOf(gain) * slope);
    const auto end = std::span(wave).last(wave.size() / 16);
    QVERIFY(std::abs(decibelsOf(fitTone(end, 64, chain.format().sampleRate).amplitude / amplitude) - gain) <
            0.5);
}

void EqualizerSoundTest::fullScaleIsNotTurnedOver_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("bass") << u"sine=f=60:d=3:r=44100,volume=18dB"_s;
    QTest::newRow("middle") << u"sine=f=1000:d=3:r=44100,volume=18dB"_s;
    QTest::newRow("noise") << u"anoisesrc=d=3:r=44100:a=1:seed=5"_s;
    QTest::newRow("square wave") << u"aevalsrc=if(lt(mod(t\\,0.01)\\,0.005)\\,1\\,-1):d=3:s=44100"_s;
}

void EqualizerSoundTest::fullScaleIsNotTurnedOver()
{
    QFETCH(const QString, source);
    const QString path = m_directory.filePath(QString::fromLatin1(QTest::currentDataTag()) + u".wav"_s);
    QVERIFY(runProgram(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-nostdin"_s, u"-y"_s, u"-f"_s, u"lavfi"_s,
                                     u"-i"_s, source, path}));
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setEnabled(true);
    chain.play(path);
    const std::vector<float> flat = chain.take(2);
    const auto [lowest, highest] = std::ranges::minmax(flat);
    QVERIFY(lowest < -0.95F && highest > 0.95F);

    // So much softer that nothing reaches full scale it tells what is asked for.
    constexpr double softer = 60;
    service.setBands(allAt(12));
    service.setPreampGain(static_cast<float>(-softer));
    service.seek(0);
    std::vector<float> wanted = chain.take(2);
    service.setPreampGain(0);
    service.seek(0);
    const std::vector<float> heard = chain.take(2);
    QCOMPARE(heard.size(), wanted.size());
    double loudest = 0;
    for (std::size_t i = 0; i < heard.size(); ++i) {
        const double asked = double{wanted[i]} * ratioOf(softer);
        loudest = std::max(loudest, std::abs(asked));
        QVERIFY(std::abs(heard[i]) <= 1);
        QVERIFY(asked * double{heard[i]} >= 0 || std::abs(asked) < 1e-3);
        QVERIFY(std::abs(double{heard[i]}) <= std::abs(asked) * 1.001 + 1e-5);
    }
    QVERIFY(loudest > 2);
    QVERIFY(std::ranges::max(heard) > 0.9F);
}

void EqualizerSoundTest::clockIsWhatWasTakenOverAMinute()
{
    const MarkedSound sound(62);
    const QString path = m_directory.filePath(u"minute.wav"_s);
    QVERIFY(sound.write(path));
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setEnabled(true);
    chain.play(path);
    QCOMPARE(service.duration(), 62.0);
    std::size_t taken = 0;
    while (taken < 60 * std::size_t{MarkedSound::sampleRate}) {
        taken += chain.take(0.7).size();
        const double counted = static_cast<double>(taken) / MarkedSound::sampleRate;
        QVERIFY(std::abs(service.currentTime() - counted) < 0.02);
        if (taken / MarkedSound::sampleRate % 7 == 0) {
            service.pause();
            QVERIFY(std::abs(service.currentTime() - counted) < 0.02);
            service.play();
        }
    }
}

void EqualizerSoundTest::clockIsTheSoundsPlaceInTheFile()
{
    const MarkedSound sound(20);
    const QString path = m_directory.filePath(u"places.wav"_s);
    QVERIFY(sound.write(path));
    EqualizerChain chain;
    EqualizerService &service = chain.service();
    service.setEnabled(true);
    chain.play(path);
    for (const double position : {0.0, 12.345, 3.0, 19.5, 0.001}) {
        service.seek(position);
        QVERIFY(std::abs(service.currentTime() - position) < 1e-9);
        const std::vector<float> heard = chain.take(0.4);
        const auto asked = static_cast<std::ptrdiff_t>(position * MarkedSound::sampleRate);
        const MarkedSound::Place place =
            sound.find(std::span(heard).last(1000), asked, asked + MarkedSound::sampleRate);
        QVERIFY(place.likeness > 0.99);
        const double heardTo = place.seconds() + 1000.0 / MarkedSound::sampleRate;
        QVERIFY(std::abs(service.currentTime() - heardTo) < 0.001);
    }
    // Past the end the clock goes on in silence.
    service.seek(25);
    QCOMPARE(chain.take(0.5), std::vector<float>(MarkedSound::sampleRate / 2));
    QVERIFY(std::abs(service.currentTime() - 25.5) < 0.001);
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::EqualizerSoundTest)
#include "tst_equalizer_sound.moc"
