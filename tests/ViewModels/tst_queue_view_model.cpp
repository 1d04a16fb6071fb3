// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/MiniPlayerBench.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class QueueViewModelTest : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<MiniPlayerBench> b;

    QueueViewModel &queue() { return b->queue(); }
    static QStringList titles(const QueueModel *model)
    {
        QStringList result;
        for (int row = 0; row < model->count(); ++row)
            result.append(model->index(row).data(QueueModel::TitleRole).toString());
        return result;
    }
    static QStringList named(const QString &word, const QStringList &names)
    {
        QStringList result;
        for (const QString &name : names)
            result.append(word + u' ' + name);
        return result;
    }

private Q_SLOTS:
    void init()
    {
        b = std::make_unique<MiniPlayerBench>();
        b->startMiniPlayer();
    }
    void cleanup() { b.reset(); }

    void itStartsEmpty();
    void itShowsTheQueueOfThePlayer();
    void theLocalQueueWinsOverTheOnlineOne();
    void aSongOutsideOfTheQueueIsShownAsPlaying();
    void manyChangesAreOneRefresh();
    void aTapPlaysTheSongAndTheQueueStays();
    void aTapOnWhatComesPlaysIt();
    void aTapPlaysAnOnlineSong();
    void aTapOutsideOfTheRowsDoesNothing();
    void aTapOnTheOutsiderStartsItAnew();
    void clearEmptiesTheQueueAndTheSongPlaysOn();
    void theStateOfTheStartIsShown();
    void spaceGoesThrough();
    void aTapOnASongThatIsThereTwicePlaysOnFromItsFirstPlace();
    void theSheetOpensAndCloses();
};

void QueueViewModelTest::itStartsEmpty()
{
    QVERIFY(queue().isEmpty());
    QCOMPARE(queue().playingRow(), -1);
    QCOMPARE(queue().songs()->count(), 0);
    QCOMPARE(queue().upcoming()->count(), 0);
}

void QueueViewModelTest::itShowsTheQueueOfThePlayer()
{
    QSignalSpy emptiness(&queue(), &QueueViewModel::isEmptyChanged);
    b->player().playSong(fileSong(u"b"_s), fileSongs({u"a"_s, u"b"_s, u"c"_s}));
    QTRY_VERIFY(!queue().isEmpty());
    QCOMPARE(emptiness.size(), 1);
    QCOMPARE(titles(queue().songs()), named(u"Title"_s, {u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(titles(queue().upcoming()), named(u"Title"_s, {u"b"_s, u"c"_s, u"a"_s}));
    QCOMPARE(queue().playingRow(), 1);
    b->player().next();
    QTRY_COMPARE(queue().playingRow(), 2);
    QCOMPARE(titles(queue().upcoming()), named(u"Title"_s, {u"c"_s, u"a"_s, u"b"_s}));
}

void QueueViewModelTest::theLocalQueueWinsOverTheOnlineOne()
{
    b->player().playOnlineSong(onlineSong(u"2"_s), onlineSongs({u"1"_s, u"2"_s}));
    QTRY_COMPARE(titles(queue().songs()), named(u"Online"_s, {u"1"_s, u"2"_s}));
    QCOMPARE(queue().playingRow(), 1);
    b->player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    QTRY_COMPARE(titles(queue().songs()), named(u"Title"_s, {u"a"_s, u"b"_s}));
    QCOMPARE(queue().playingRow(), 0);
}

void QueueViewModelTest::aSongOutsideOfTheQueueIsShownAsPlaying()
{
    b->player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    b->player().playOnlineSong(onlineSong(u"9"_s), {});
    QTRY_COMPARE(titles(queue().upcoming()), (QStringList{u"Online 9"_s, u"Title a"_s, u"Title b"_s}));
    QCOMPARE(titles(queue().songs()), named(u"Title"_s, {u"a"_s, u"b"_s}));
    QCOMPARE(queue().playingRow(), -1);
}

void QueueViewModelTest::manyChangesAreOneRefresh()
{
    b->player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s, u"c"_s}));
    QTRY_COMPARE(queue().playingRow(), 0);
    QSignalSpy moves(queue().upcoming(), &QAbstractItemModel::rowsMoved);
    QSignalSpy resets(queue().upcoming(), &QAbstractItemModel::modelReset);
    for (int i = 0; i < 100; ++i)
        b->player().next();
    QCOMPARE(moves.size(), 0);
    QTRY_COMPARE(queue().playingRow(), 1);
    QCOMPARE(moves.size(), 1);
    QCOMPARE(resets.size(), 0);
}

void QueueViewModelTest::aTapPlaysTheSongAndTheQueueStays()
{
    const QList<Song> songs = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    b->player().playSong(songs.at(0), songs);
    QTRY_VERIFY(!queue().isEmpty());
    queue().play(2);
    QCOMPARE(songOf(b->player()).id(), u"c"_s);
    QCOMPARE(b->player().currentIndex(), 2);
    QCOMPARE(b->player().queue(), songs);
}

void QueueViewModelTest::aTapOnWhatComesPlaysIt()
{
    const QList<Song> songs = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    b->player().playSong(songs.at(1), songs);
    QTRY_VERIFY(!queue().isEmpty());
    // b c a
    queue().playUpcoming(2);
    QCOMPARE(songOf(b->player()).id(), u"a"_s);
    QCOMPARE(b->player().queue(), songs);
    QTRY_COMPARE(titles(queue().upcoming()), named(u"Title"_s, {u"a"_s, u"b"_s, u"c"_s}));
}

void QueueViewModelTest::aTapPlaysAnOnlineSong()
{
    b->player().playOnlineSong(onlineSong(u"1"_s), onlineSongs({u"1"_s, u"2"_s, u"3"_s}));
    QTRY_VERIFY(!queue().isEmpty());
    queue().play(1);
    QCOMPARE(b->player().currentOnlineSong(), std::optional(onlineSong(u"2"_s)));
    QCOMPARE(b->player().onlineQueue(), onlineSongs({u"1"_s, u"2"_s, u"3"_s}));
    QTRY_COMPARE(queue().playingRow(), 1);
    queue().playUpcoming(1);
    QCOMPARE(b->player().currentOnlineSong(), std::optional(onlineSong(u"3"_s)));
}

void QueueViewModelTest::aTapOutsideOfTheRowsDoesNothing()
{
    queue().play(0);
    queue().playUpcoming(0);
    QVERIFY(!b->viewModel().hasCurrentSong());
    b->player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    QTRY_VERIFY(!queue().isEmpty());
    for (const int row : {-1, 2, 100}) {
        queue().play(row);
        queue().playUpcoming(row);
    }
    QCOMPARE(songOf(b->player()).id(), u"a"_s);
}

void QueueViewModelTest::aTapOnTheOutsiderStartsItAnew()
{
    b->player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    b->player().playSong(fileSong(u"z"_s), {});
    QTRY_COMPARE(queue().upcoming()->count(), 3);
    const auto made = b->stream().items.size();
    queue().playUpcoming(0);
    QCOMPARE(b->stream().items.size(), made + 1);
    QCOMPARE(songOf(b->player()).id(), u"z"_s);
    QCOMPARE(b->player().queue(), fileSongs({u"a"_s, u"b"_s}));
    b->player().playOnlineSong(onlineSong(u"1"_s), {});
    QTRY_COMPARE(titles(queue().upcoming()).constFirst(), u"Online 1"_s);
    queue().playUpcoming(0);
    QCOMPARE(b->player().currentOnlineSong(), std::optional(onlineSong(u"1"_s)));
    queue().playUpcoming(2);
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
}

void QueueViewModelTest::clearEmptiesTheQueueAndTheSongPlaysOn()
{
    b->player().playSong(fileSong(u"a"_s), fileSongs({u"a"_s, u"b"_s}));
    b->answerDuration(100);
    QTRY_VERIFY(!queue().isEmpty());
    const bool wasPlaying = b->player().isPlaying();
    queue().clear();
    QVERIFY(queue().isEmpty());
    QCOMPARE(queue().songs()->count() + queue().upcoming()->count(), 0);
    QVERIFY(b->player().queue().isEmpty());
    QVERIFY(b->player().onlineQueue().isEmpty());
    QCOMPARE(songOf(b->player()).id(), u"a"_s);
    QCOMPARE(b->player().isPlaying(), wasPlaying);
}

void QueueViewModelTest::theStateOfTheStartIsShown()
{
    b->player().playSong(fileSong(u"b"_s), fileSongs({u"a"_s, u"b"_s}));
    const QueueViewModel late(b->viewModel(), [](const OnlineSong &) { return std::optional<QUrl>(); });
    QVERIFY(!late.isEmpty());
    QCOMPARE(late.playingRow(), 1);
}

void QueueViewModelTest::spaceGoesThrough()
{
    b->player().playSong(fileSong(u"b"_s), fileSongs({u"a"_s, u"b"_s}));
    b->answerDuration(100);
    const bool wasPlaying = b->player().isPlaying();
    queue().togglePlayPause();
    QCOMPARE(b->player().isPlaying(), !wasPlaying);
}

void QueueViewModelTest::aTapOnASongThatIsThereTwicePlaysOnFromItsFirstPlace()
{
    // The player knows a song, not a place: so it is with every list.
    const QList<Song> songs = fileSongs({u"a"_s, u"b"_s, u"a"_s, u"c"_s});
    b->player().playSong(songs.at(1), songs);
    QTRY_COMPARE(queue().playingRow(), 1);
    queue().play(2);
    QCOMPARE(songOf(b->player()).id(), u"a"_s);
    QCOMPARE(b->player().queue(), songs);
    QTRY_COMPARE(queue().playingRow(), 0);
    b->player().next();
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
}

void QueueViewModelTest::theSheetOpensAndCloses()
{
    QSignalSpy changes(&queue(), &QueueViewModel::isOpenChanged);
    queue().open();
    queue().open();
    QVERIFY(queue().isOpen());
    queue().close();
    QVERIFY(!queue().isOpen());
    QCOMPARE(changes.size(), 2);
}

QTEST_GUILESS_MAIN(QueueViewModelTest)
#include "tst_queue_view_model.moc"
