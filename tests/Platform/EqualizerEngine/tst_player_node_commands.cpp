// SPDX-License-Identifier: GPL-3.0-or-later
// Commands in any order: what is heard and what the clock tells are compared with a plain model.
#include "CountingFile.h"
#include "Platform/EqualizerEngine/FileOutput.h"
#include "Platform/EqualizerEngine/StreamingPlayerNode.h"

#include <QDeadlineTimer>
#include <QRandomGenerator>
#include <QTest>

#include <deque>
#include <thread>

namespace cadorel {

namespace {

constexpr AudioFormat mono{.sampleRate = 8'000, .channelCount = 1};
constexpr qint64 fadeFrames = mono.sampleRate / 250;

/// What the node has to do, without threads.
class Model
{
public:
    struct Expected
    {
        float value;
        bool exact; ///< false while it fades in
    };

    void schedule(qint64 start, qint64 count, int offset)
    {
        if (!m_hasRun)
            m_fade = start > 0 ? fadeFrames : 0;
        m_hasRun = true;
        m_segments.push_back({start, count, offset});
    }
    void play() { m_hasRun = m_plays = m_started = true; }
    void pause() { m_plays = false; }
    void stop()
    {
        m_segments.clear();
        m_hasRun = m_plays = m_started = false;
        m_time = 0;
    }
    Expected next()
    {
        ++m_time;
        const bool exact = m_fade == 0;
        m_fade -= exact ? 0 : 1;
        if (m_segments.empty())
            return {.value = 0, .exact = true};
        Segment &segment = m_segments.front();
        const float value = CountingFile::valueAt(segment.start++, segment.offset);
        if (--segment.count == 0)
            m_segments.pop_front();
        return {.value = value, .exact = exact};
    }

    bool plays() const { return m_plays; }
    std::optional<double> time() const { return m_started ? std::optional(double(m_time)) : std::nullopt; }

private:
    struct Segment
    {
        qint64 start;
        qint64 count;
        int offset;
    };

    std::deque<Segment> m_segments;
    bool m_hasRun = false;
    bool m_plays = false;
    bool m_started = false;
    qint64 m_time = 0;
    qint64 m_fade = 0;
};

} // namespace

class TestPlayerNodeCommands : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void tenThousandCommands_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed : {1U, 2U, 3U, 4U})
            QTest::addRow("seed %u", seed) << seed;
    }

    void tenThousandCommands()
    {
        QFETCH(const quint32, seed);
        QRandomGenerator random(seed);
        StreamingPlayerNode node({.process = [](float *, qint64) {}, .reset = [] {}});
        FileOutput output;
        node.setFormat(mono);
        output.open(mono, node.source());
        node.setOutput(&output);
        QList<std::shared_ptr<CountingFile>> files;
        for (int i = 0; i < 3; ++i)
            files.append(std::make_shared<CountingFile>(60'000, mono, i * 100'000));

        Model model;
        std::size_t compared = 0;
        for (int command = 0; command < 10'000; ++command) {
            switch (random.bounded(8)) {
            case 0:
            case 1:
                node.play();
                model.play();
                break;
            case 2:
                node.pause();
                model.pause();
                break;
            case 3:
                node.stop();
                model.stop();
                break;
            case 4: {
                const int which = random.bounded(3);
                const qint64 start = random.bounded(3) == 0 ? 0 : random.bounded(59'000);
                const qint64 count = random.bounded(1, 1'000);
                node.scheduleSegment(files[which], start, count);
                model.schedule(start, count, which * 100'000);
                break;
            }
            default:
                if (!model.plays())
                    break;
                const qint64 frames = random.bounded(1, 300);
                output.allow(frames);
                const QDeadlineTimer deadline(20'000);
                while (output.allowance() > 0 && !deadline.hasExpired())
                    std::this_thread::yield();
                const std::vector<float> heard = output.takeSamples();
                QCOMPARE(qint64(heard.size()), frames);
                for (const float sample : heard) {
                    const Model::Expected expected = model.next();
                    if (expected.exact)
                        QCOMPARE(sample, expected.value);
                    else
                        QVERIFY(sample <= expected.value);
                    ++compared;
                }
            }
            QCOMPARE(node.isPlaying(), model.plays());
            QCOMPARE(node.playerTime().has_value(), model.time().has_value());
            if (model.time())
                QCOMPARE(node.playerTime()->sampleTime, *model.time());
        }
        QVERIFY(compared > 50'000);
        for (const auto &file : files)
            QVERIFY(!file->wasShared());
        node.setOutput(nullptr);
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestPlayerNodeCommands)
#include "tst_player_node_commands.moc"
