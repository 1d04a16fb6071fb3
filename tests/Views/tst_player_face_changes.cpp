// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LyricLineModel.h"
#include "Views/HeapUse.h"
#include "Views/PlayerFaceTest.h"

#include <algorithm>
#include <functional>
#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Song after song in the real window: nothing of one is seen with another, and none leaves anything behind.
class PlayerFaceChangesTest : public PlayerFaceTest
{
    Q_OBJECT
private Q_SLOTS:
    void aThousandSongsLeaveNothingStaleAndNothingBehind();
    void aThousandSongsLeaveNothingBehindOnThePageOfTheLyrics();

private:
    /// A library whose songs have covers of one colour each and lyrics that name them.
    void showColouredLibrary()
    {
        for (int i = 0; i < colours.size(); ++i) {
            const QString name = QString::asprintf("%02d.mp3", i);
            t->addFile(name,
                       {u"歌 %1"_s.arg(i), u"歌手"_s, u"专辑"_s, 100,
                        i == 0 ? QByteArray() : TestWindow::picture(colours.at(i), colours.at(i), {64, 64})});
            t->reader->assets[name].all->append(lyricsTag(u"[00:01.00]歌词 %1\n[00:50.00]完 %1"_s.arg(i)));
        }
        QVERIFY(t->scan());
        QVERIFY(t->show());
    }
    /// Row of the song that plays.
    int playingRow() const { return currentTitle().section(u' ', 1).toInt(); }

    /// Goes on to the next song that many times, each of which is ready at once.
    void change(int times)
    {
        for (int i = 0; i < times; ++i) {
            t->viewModel->next();
            t->player->lastItem()->answerDuration(100);
            t->player->lastItem()->becomeReady();
            // What the fakes remember of the past is not the program's.
            t->player->items.clear();
            t->player->calls.clear();
            t->clock->advance(std::chrono::milliseconds(100));
            QCoreApplication::processEvents();
        }
    }
    /// A thousand song changes or more in rounds, after each of which @p isShown. @return bytes that the best
    /// round has left
    qint64 leastGrowth(const std::function<bool()> &isShown)
    {
        constexpr int rounds = 5;
        constexpr int mostRounds = 15;
        constexpr int round = 200;
        constexpr int rest = 2;
        qint64 least = std::numeric_limits<qint64>::max();
        for (int i = 0; i < rounds || (i < mostRounds && least >= smallGrowth); ++i) {
            const qint64 before = settledHeap(*t->engine);
            const int row = playingRow();
            // A round ends where it has begun: what is stale there would look right.
            change(round - rest);
            if (playingRow() == row || !QTest::qWaitFor(isShown))
                return std::numeric_limits<qint64>::max();
            change(rest);
            // Every song has come up as often as the others.
            if (playingRow() != row || !QTest::qWaitFor(isShown))
                return std::numeric_limits<qint64>::max();
            least = std::min(least, settledHeap(*t->engine) - before);
        }
        return least;
    }

    /// Of two hundred song changes: less than one object for each would take.
    static constexpr qint64 smallGrowth = 20'000;
    /// The first one stands for a song without a cover.
    const QList<QColor> colours{Qt::black, QColor(200, 30, 30), QColor(30, 160, 30), QColor(30, 30, 200),
                                QColor(200, 200, 30)};
};

void PlayerFaceChangesTest::aThousandSongsLeaveNothingStaleAndNothingBehind()
{
    t->themeService->setCassetteStyle(CassetteStyle::none);
    showColouredLibrary();
    QVERIFY(playRow(0));
    QVERIFY(openFromDisc());
    const auto isShown = [this] {
        const int row = playingRow();
        const QPoint place = TestWindow::centre(t->item(u"albumCoverPlace"_s));
        return shownTitle() == currentTitle() && lyrics().count() == 2 &&
               lyrics().lines()->index(0).data(LyricLineModel::TextRole).toString() ==
                   u"歌词 %1"_s.arg(row) &&
               slider() && (row == 0 || isLike(t->window->grabWindow().pixelColor(place), colours.at(row)));
    };
    const auto isOnDisc = [this] {
        const int row = playingRow();
        const QString name = QAccessible::queryAccessibleInterface(disc())->text(QAccessible::Name);
        return name.contains(currentTitle()) &&
               (row == 0 ||
                isLike(t->window->grabWindow().pixelColor(TestWindow::centre(disc())), colours.at(row)));
    };
    change(1001); // caches fill; the song has a cover
    QTRY_VERIFY(isShown());
    settledHeap(*t->engine);
    const auto objects = [this] { return contentView()->findChildren<QObject *>().size(); };
    const qsizetype objectsBefore = objects();
    // What is left behind is left in each round; a cache that fills late grows in the first ones.
    QVERIFY(leastGrowth(isShown) < smallGrowth);
    QTRY_COMPARE(objects(), objectsBefore);

    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->item(u"nowPlayingView"_s));
    QTRY_VERIFY(isOnDisc());
    change(200);
    QVERIFY(leastGrowth(isOnDisc) < smallGrowth);
    // One without a cover at last.
    change(4);
    QCOMPARE(playingRow(), 0);
    QTRY_VERIFY(disc()->findChild<QQuickItem *>(u"placeholderNote"_s)->isVisible());
}

void PlayerFaceChangesTest::aThousandSongsLeaveNothingBehindOnThePageOfTheLyrics()
{
    showColouredLibrary();
    QVERIFY(playRow(0));
    QVERIFY(openFromDisc());
    t->screens->nowPlaying()->setCurrentPage(NowPlayingViewModel::LyricsPage);
    // The line that is not the current one is a blurred picture.
    const auto isShown = [this] {
        const QQuickItem *line = t->item(u"lyricLine1"_s);
        return line && line->isVisible() && line->property("text").toString() == u"完 %1"_s.arg(playingRow());
    };
    change(401);
    QTRY_VERIFY(isShown());
    settledHeap(*t->engine);
    QVERIFY(leastGrowth(isShown) < smallGrowth);
}

QTEST_MAIN(PlayerFaceChangesTest)
#include "tst_player_face_changes.moc"
