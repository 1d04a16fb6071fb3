// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/SampleRing.h"

#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <numeric>
#include <thread>

namespace cadorel {

class TestSampleRing : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void givesWhatWasWrittenInOrder()
    {
        SampleRing ring(8);
        const std::array<float, 5> in{1, 2, 3, 4, 5};
        QCOMPARE(ring.write(in), std::size_t(5));
        std::array<float, 3> out{};
        QCOMPARE(ring.read(out), std::size_t(3));
        QCOMPARE(out, (std::array<float, 3>{1, 2, 3}));
        // Over the end of the store.
        QCOMPARE(ring.write(in), std::size_t(5));
        std::array<float, 7> rest{};
        QCOMPARE(ring.read(rest), std::size_t(7));
        QCOMPARE(rest, (std::array<float, 7>{4, 5, 1, 2, 3, 4, 5}));
    }

    void takesNoMoreThanFits()
    {
        SampleRing ring(4);
        const std::array<float, 6> in{1, 2, 3, 4, 5, 6};
        QCOMPARE(ring.room(), std::size_t(4));
        QCOMPARE(ring.write(in), std::size_t(4));
        QCOMPARE(ring.room(), std::size_t(0));
        QCOMPARE(ring.write(in), std::size_t(0));
        std::array<float, 6> out{};
        QCOMPARE(ring.read(out), std::size_t(4));
        QCOMPARE(ring.read(out), std::size_t(0));
        QCOMPARE(ring.filled(), std::size_t(0));
    }

    void twoThreadsLoseAndDoubleNothing()
    {
        constexpr std::size_t total = 3'000'000;
        SampleRing ring(997);
        std::thread writer([&ring] {
            QRandomGenerator random(1);
            std::vector<float> piece;
            for (std::size_t next = 0; next < total;) {
                piece.resize(std::min<std::size_t>(random.bounded(1U, 1500U), total - next));
                for (std::size_t i = 0; i < piece.size(); ++i)
                    piece[i] = float((next + i) % (1 << 24));
                const std::size_t taken = ring.write(piece);
                next += taken;
                if (taken == 0)
                    std::this_thread::yield();
            }
        });
        QRandomGenerator random(2);
        std::vector<float> piece;
        std::size_t wrong = 0;
        for (std::size_t next = 0; next < total;) {
            piece.resize(random.bounded(1U, 1500U));
            if (ring.filled() > ring.capacity())
                ++wrong;
            const std::size_t given = ring.read(piece);
            for (std::size_t i = 0; i < given; ++i)
                wrong += piece[i] == float((next + i) % (1 << 24)) ? 0 : 1;
            next += given;
            if (given == 0)
                std::this_thread::yield();
        }
        writer.join();
        QCOMPARE(wrong, std::size_t(0));
        QCOMPARE(ring.filled(), std::size_t(0));
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestSampleRing)
#include "tst_sample_ring.moc"
