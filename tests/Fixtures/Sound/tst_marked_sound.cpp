// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/MarkedSound.h"

#include <QTest>

#include <algorithm>

namespace cadorel {

/// Whether MarkedSound can be believed, since other tests do.
class MarkedSoundTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsAPieceToTheSample();
    void tellsHowLoudAPieceIs();
    void twoPiecesAtOnceAreLikeNone();
    void tellsWhereARecordingEnds();
    void tellsTwoPlacesApart();
    void followsAJumpWithAGap();

private:
    std::vector<float> piece(std::ptrdiff_t first, std::ptrdiff_t count) const
    {
        const auto begin = m_sound.samples().begin() + first;
        return {begin, begin + count};
    }

    const MarkedSound m_sound{5};
};

void MarkedSoundTest::findsAPieceToTheSample()
{
    for (const std::ptrdiff_t at : {0, 1, 47'999, 150'000}) {
        const MarkedSound::Place place = m_sound.find(piece(at, MarkedSound::momentSamples));
        QCOMPARE(place.sample, at);
        QVERIFY(place.likeness > 0.999);
        QVERIFY(std::abs(place.level - 1) < 0.001);
    }
    const std::vector<float> silence(MarkedSound::momentSamples);
    QCOMPARE(m_sound.find(silence).likeness, 0.0);
}

void MarkedSoundTest::tellsHowLoudAPieceIs()
{
    std::vector<float> softer = piece(1000, MarkedSound::momentSamples);
    for (float &sample : softer)
        sample *= 0.3F;
    QCOMPARE(m_sound.find(softer).sample, 1000);
    QVERIFY(std::abs(m_sound.find(softer).level - 0.3) < 0.001);
}

void MarkedSoundTest::twoPiecesAtOnceAreLikeNone()
{
    std::vector<float> both = piece(1000, 4800);
    const std::vector<float> other = piece(100'000, 4800);
    std::ranges::transform(both, other, both.begin(), std::plus());
    for (const MarkedSound::Moment &moment : m_sound.follow(both)) {
        QVERIFY(!moment.isSilent);
        QVERIFY(!moment.place);
    }
}

void MarkedSoundTest::tellsWhereARecordingEnds()
{
    std::vector<float> recording = piece(48'000, 24'000);
    for (std::size_t i = 0; i < 960; ++i)
        recording[23'040 + i] *= 1 - static_cast<float>(i) / 960;
    recording.resize(40'000);
    const std::optional<double> end = m_sound.endOf(recording, 1.2);
    QVERIFY(end && std::abs(*end - 1.5) < 0.001);
    QVERIFY(!m_sound.endOf(recording, 3));
    QVERIFY(!m_sound.endOf(std::vector<float>(40'000), 1.2));
}

void MarkedSoundTest::tellsTwoPlacesApart()
{
    std::vector<float> both = piece(1000, 120);
    const std::vector<float> other = piece(100'000, 120);
    std::ranges::transform(both, other, both.begin(), [](float a, float b) { return a / 4 + b; });
    const MarkedSound::Mix mix = m_sound.mix(both, 1000, 100'000);
    QVERIFY(std::abs(mix.first - 0.25) < 0.001);
    QVERIFY(std::abs(mix.second - 1) < 0.001);
    QVERIFY(std::abs(m_sound.mix(other, 1000, 100'000).first) < 0.001);
}

void MarkedSoundTest::followsAJumpWithAGap()
{
    std::vector<float> recording = piece(48'000, 4800);
    recording.resize(recording.size() + 4800);
    const std::vector<float> rest = piece(20'000, 4800);
    recording.insert(recording.end(), rest.begin(), rest.end());
    const std::vector<MarkedSound::Moment> moments = m_sound.follow(recording);
    QCOMPARE(moments.size(), std::size_t{30});
    for (std::size_t i = 0; i < moments.size(); ++i) {
        const auto into = static_cast<std::ptrdiff_t>(i) * MarkedSound::momentSamples;
        QCOMPARE(moments[i].recorded, into);
        QCOMPARE(moments[i].isSilent, i >= 10 && i < 20);
        QCOMPARE(moments[i].place.has_value(), !moments[i].isSilent);
        if (moments[i].place)
            QCOMPARE(moments[i].place->sample, i < 10 ? 48'000 + into : 20'000 + into - 9600);
    }
}

} // namespace cadorel

QTEST_APPLESS_MAIN(cadorel::MarkedSoundTest)
#include "tst_marked_sound.moc"
