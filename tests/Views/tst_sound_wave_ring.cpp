// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/BackdropScene.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The bars about a cover, and what dances beside it.
class TestSoundWaveRing : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<BackdropScene> b;

    bool showRing(ThemeType type = ThemeType::classic)
    {
        return b->show("SoundWaveRing { width: 200; height: 200; cornerRadius: 12; color: \"#FF0000\" }",
                       type);
    }
    bool showEmoji()
    {
        return b->show(
            "Item { id: root; x: 100; y: 100; required property AudioPlayerService player\n"
            "property real highest: 0; property int jumps: 0\n"
            "DancingEmoji { objectName: \"dancing\"; player: root.player; onSideChanged: ++root.jumps\n"
            "onLiftChanged: root.highest = Math.max(root.highest, lift) } }");
    }
    double energy() const { return b->scene.root()->property("energy").toDouble(); }
    double lift() const { return b->scene.item(u"dancing"_s)->property("lift").toDouble(); }
    /// How much of each bar is to be seen.
    QList<double> heights() const
    {
        QList<double> heights;
        for (const QQuickItem *bar : b->scene.items(u"bar"_s)) {
            const QPointF foot = bar->mapToItem(b->scene.root(), QPointF(bar->width() / 2, bar->height()));
            const QPointF tip = bar->mapToItem(b->scene.root(), QPointF(bar->width() / 2, 0));
            heights << std::hypot(foot.x() - tip.x(), foot.y() - tip.y());
        }
        return heights;
    }
    static double sum(const QList<double> &values)
    {
        return std::accumulate(values.cbegin(), values.cend(), 0.0);
    }
    int countRed()
    {
        const QImage image = b->scene.grab();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                count += color.red() > 200 && color.green() < 120 ? 1 : 0;
            }
        }
        return count;
    }

private Q_SLOTS:
    void init() { b = std::make_unique<BackdropScene>(); }
    void cleanup()
    {
        const QStringList warnings = b->scene.warnings.take();
        b.reset();
        QCOMPARE(warnings, QStringList());
    }

    void theBarsStandOutsideOfTheCover()
    {
        QVERIFY(showRing());
        b->play();
        QTRY_COMPARE(energy(), 1.0);
        b->tick(3);
        const QList<QQuickItem *> bars = b->scene.items(u"bar"_s);
        QVERIFY(bars.size() > 60);
        const QRectF cover(0, 0, 200, 200);
        for (const QQuickItem *bar : bars) {
            const QRectF place =
                bar->mapRectToItem(b->scene.root(), QRectF(0, 0, bar->width(), bar->height()));
            QVERIFY(!cover.intersects(place.adjusted(3, 3, -3, -3)));
            QVERIFY(cover.adjusted(-23, -23, 23, 23).contains(place));
        }
        QVERIFY(countRed() > 300);
    }

    void theBarsFollowTheLevelsOfThePlayer()
    {
        QVERIFY(showRing());
        b->play();
        QTRY_COMPARE(energy(), 1.0);
        QList<double> before = heights();
        for (int i = 0; i < 5; ++i) {
            b->tick();
            const QList<double> now = heights();
            QVERIFY(now != before);
            before = now;
            const QList<qreal> levels = b->player.player().audioLevels();
            const double lowest = *std::ranges::min_element(levels);
            const double highest = *std::ranges::max_element(levels);
            QVERIFY(qAbs(*std::ranges::min_element(now) - (3 + 13 * lowest)) < 0.01);
            QVERIFY(qAbs(*std::ranges::max_element(now) - (3 + 13 * highest)) < 0.01);
        }
    }

    void theBarsFallToRestWhenTheMusicStops()
    {
        QVERIFY(showRing());
        b->play();
        QTRY_COMPARE(energy(), 1.0);
        b->tick(4);
        const double playing = sum(heights());
        b->pause();
        // Not at once.
        QVERIFY(sum(heights()) > playing * 0.8);
        QTRY_COMPARE(energy(), 0.0);
        for (const double height : heights())
            QVERIFY(qAbs(height - 3) < 0.01);
        QVERIFY(countRed() > 100);
    }

    void nothingMovesWhileNobodySeesIt()
    {
        QVERIFY(showRing());
        b->play();
        QTRY_COMPARE(energy(), 1.0);
        b->tick();
        b->scene.root()->setVisible(false);
        const QVariantList levels = b->scene.root()->property("levels").toList();
        QCOMPARE(levels.size(), 7);
        b->tick(10);
        QCOMPARE(b->scene.root()->property("levels").toList(), levels);
        QTRY_COMPARE(energy(), 0.0);
        b->scene.root()->setVisible(true);
        QTRY_COMPARE(energy(), 1.0);
        b->tick();
        QVERIFY(b->scene.root()->property("levels").toList() != levels);
        b->scene.window()->hide();
        QTRY_VERIFY(!b->scene.root()->property("isRunning").toBool());
    }

    void aDesktopOfLessMotionSeesAFlatRing()
    {
        b->kawaii.desktop.setReducesMotion(true);
        QVERIFY(showRing());
        b->play();
        b->tick(5);
        QCOMPARE(energy(), 0.0);
        for (const double height : heights())
            QVERIFY(qAbs(height - 3) < 0.01);
        QVERIFY(countRed() > 100);
    }

    void theRingFollowsTheSizeOfTheCover()
    {
        QVERIFY(showRing());
        const qsizetype before = b->scene.items(u"bar"_s).size();
        b->scene.root()->setSize({300, 300});
        QTRY_VERIFY(b->scene.items(u"bar"_s).size() > before);
        b->scene.root()->setSize({0, 0});
        QTRY_COMPARE(b->scene.items(u"bar"_s).size(), 0);
    }

    void theEmojiOfTheListenersDances()
    {
        b->service.setDancingEmoji(u"🐷"_s);
        QVERIFY(showEmoji());
        const QQuickItem *emoji = b->scene.item(u"emoji"_s);
        QCOMPARE(emoji->property("text").toString(), u"🐷"_s);
        QVERIFY(emoji->isVisible());
        b->play();
        for (int i = 0; i < 200 && b->scene.root()->property("jumps").toInt() < 2; ++i)
            b->tick();
        QCOMPARE(b->scene.root()->property("jumps").toInt(), 2);
        QTRY_COMPARE(b->scene.root()->property("highest").toDouble(), 1.0);
        QTRY_COMPARE(lift(), 0.0);
    }

    void theEmojiStandsStillWhilePaused()
    {
        QVERIFY(showEmoji());
        b->play();
        b->tick(20);
        b->pause();
        const QVariant jumps = b->scene.root()->property("jumps");
        b->tick(100);
        QTRY_COMPARE(lift(), 0.0);
        QCOMPARE(b->scene.root()->property("jumps"), jumps);
    }

    void theEmojiStandsStillOnADesktopOfLessMotion()
    {
        b->kawaii.desktop.setReducesMotion(true);
        QVERIFY(showEmoji());
        b->play();
        b->tick(200);
        QCOMPARE(b->scene.root()->property("jumps").toInt(), 0);
        QCOMPARE(b->scene.root()->property("highest").toDouble(), 0.0);
    }

    void theListenersPictureTakesThePlaceOfTheEmoji()
    {
        QImage picture(50, 50, QImage::Format_RGB32);
        picture.fill(QColor(0, 160, 0));
        b->service.setCustomDancingImage(picture);
        QVERIFY(showEmoji());
        QVERIFY(!b->scene.item(u"emoji"_s)->isVisible());
        const auto middle = [this] {
            return b->scene.grab().pixelColor(ThemedScene::centre(b->scene.item(u"picture"_s)));
        };
        QTRY_VERIFY(isNear(middle(), QColor(0, 160, 0)));
        b->service.setDancingEmoji(u"🎵"_s);
        QTRY_VERIFY(b->scene.item(u"emoji"_s)->isVisible());
        QCOMPARE(b->scene.item(u"picture"_s)->property("source").toUrl(), QUrl());
    }

    void neitherIsAnythingToAScreenReader()
    {
        QVERIFY(b->show("Item { property AudioPlayerService player }"));
        const int before = b->kawaii.accessibleItems();
        QVERIFY(showRing());
        QCOMPARE(b->kawaii.accessibleItems(), before);
        QVERIFY(showEmoji());
        QCOMPARE(b->kawaii.accessibleItems(), before);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestSoundWaveRing)
#include "tst_sound_wave_ring.moc"
