// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/PlayerBench.h"
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/QueueModel.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QList<Song> letters(const QString &names)
{
    QList<Song> songs;
    for (const QChar name : names)
        songs.append(fileSong(name));
    return songs;
}

PlayingQueue queueOf(const QList<Song> &songs, qsizetype current)
{
    PlayingQueue queue;
    queue.songs = songs;
    queue.current = current;
    if (current >= 0)
        queue.song = songs.at(current);
    return queue;
}

std::optional<QUrl> coverAddress(const OnlineSong &song)
{
    return QUrl(u"https://api.example/pic?id="_s + song.id);
}

/// The titles as a view knows them that follows the signals, the one that plays in brackets.
class Follower : public QObject
{
public:
    explicit Follower(const QueueModel &model)
        : m_model(model)
    {
        read();
        connect(&model, &QAbstractItemModel::modelReset, this, [this] {
            ++resets;
            read();
        });
        connect(&model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) {
                    for (int row = first; row <= last; ++row)
                        m_rows.insert(row, textOf(row));
                });
        connect(&model, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { m_rows.remove(first, last - first + 1); });
        connect(&model, &QAbstractItemModel::rowsMoved, this,
                [this](const QModelIndex &, int first, int last, const QModelIndex &, int to) {
                    const QStringList moved = m_rows.mid(first, last - first + 1);
                    m_rows.remove(first, moved.size());
                    for (qsizetype i = 0; i < moved.size(); ++i)
                        m_rows.insert((to > first ? to - moved.size() : to) + i, moved.at(i));
                });
        connect(&model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex &first, const QModelIndex &last) {
                    for (int row = first.row(); row <= last.row(); ++row)
                        m_rows[row] = textOf(row);
                });
    }
    QString text() const { return m_rows.join(u' '); }
    QString fresh() const
    {
        QStringList rows;
        for (int row = 0; row < m_model.count(); ++row)
            rows.append(textOf(row));
        return rows.join(u' ');
    }

    int resets = 0;

private:
    QString textOf(int row) const
    {
        const QModelIndex index = m_model.index(row);
        const QString title = index.data(QueueModel::TitleRole).toString().section(u' ', -1);
        const bool plays = index.data(QueueModel::IsPlayingRole).toBool();
        const QString section = index.data(QueueModel::SectionRole).toString();
        if ((section == QueueModel::playingSection) != plays)
            return u"?"_s;
        return plays ? u'[' + title + u']' : title;
    }
    void read() { m_rows = fresh().split(u' ', Qt::SkipEmptyParts); }

    const QueueModel &m_model;
    QStringList m_rows;
};

/// A model, a tester of it and a view.
struct Watched
{
    explicit Watched(QueueModel::Order order)
        : model(order, coverAddress, nullptr)
        , tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest)
        , view(model)
    {
    }
    QString show(const PlayingQueue &queue)
    {
        model.show(queue);
        return view.text() == view.fresh() ? view.text() : u"the view differs: "_s + view.text();
    }

    QueueModel model;
    QAbstractItemModelTester tester;
    Follower view;
};

} // namespace

class QueueModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rolesShowASong();
    void rolesShowAnOnlineSong();
    void namesThatAreMissingAreSaid();
    void theQueueStandsInItsOrder();
    void whatPlaysComesFirst();
    void theNextSongIsAMoveOfRows();
    void whatPlaysOutsideOfTheQueueStandsBeforeIt();
    void aSongTwiceInTheQueuePlaysOnce();
    void rowsKnowTheirPlaceInTheQueue();
    void anEmptyQueueHasNoRows();
    void anotherQueueStartsAfresh();
    void aListReadAnewKeepsItsPlace();
    void coversOfOnlineSongsMove();
    void randomQueuesReachTheViewsUnharmed_data();
    void randomQueuesReachTheViewsUnharmed();
    void aHundredThousandSongsAreShared();
};

void QueueModelTest::rolesShowASong()
{
    Watched w(QueueModel::Order::queue);
    Song song = fileSong(u"a"_s);
    song.setTitle(u"晴天\n第二行"_s);
    song.setArtworkData(ArtworkData("a cover"));
    w.show(queueOf({song}, 0));
    const QModelIndex row = w.model.index(0);
    QCOMPARE(row.data(QueueModel::TitleRole).toString(), u"晴天 第二行"_s);
    QCOMPARE(row.data(QueueModel::ArtistRole).toString(), u"Artist a"_s);
    QCOMPARE(row.data(QueueModel::CoverSourceRole).toString(), CoverRegistry::shared().source(song));
    QCOMPARE(row.data(QueueModel::IsPlayingRole).toBool(), true);
    QCOMPARE(row.data(QueueModel::SectionRole).toString(), u"正在播放"_s);
    QCOMPARE(w.model.roleNames().values().size(), 5);
    QVERIFY(!w.model.data({}, QueueModel::TitleRole).isValid());
    QVERIFY(!row.data(Qt::DecorationRole).isValid());
}

void QueueModelTest::rolesShowAnOnlineSong()
{
    Watched w(QueueModel::Order::queue);
    PlayingQueue queue;
    queue.onlineSongs = onlineSongs({u"1"_s, u"2"_s});
    queue.onlineSong = queue.onlineSongs.at(1);
    queue.current = 1;
    w.show(queue);
    const QModelIndex row = w.model.index(0);
    QCOMPARE(row.data(QueueModel::TitleRole).toString(), u"Online 1"_s);
    QCOMPARE(row.data(QueueModel::ArtistRole).toString(), u"Singer 1"_s);
    QCOMPARE(row.data(QueueModel::SectionRole).toString(), u"接下来播放"_s);
    const QString key = row.data(QueueModel::CoverSourceRole).toString().section(u'/', -1);
    QCOMPARE(CoverRegistry::shared().remoteAddress(key), coverAddress(onlineSong(u"1"_s)));
    QVERIFY(w.model.index(1).data(QueueModel::IsPlayingRole).toBool());
}

void QueueModelTest::namesThatAreMissingAreSaid()
{
    Watched w(QueueModel::Order::queue);
    w.show(queueOf({Song()}, -1));
    QCOMPARE(w.model.index(0).data(QueueModel::TitleRole).toString(), u"未知歌曲"_s);
    QCOMPARE(w.model.index(0).data(QueueModel::ArtistRole).toString(), u"未知艺术家"_s);
    PlayingQueue online;
    online.onlineSongs = {OnlineSong()};
    w.show(online);
    QCOMPARE(w.model.index(0).data(QueueModel::TitleRole).toString(), u"未知歌曲"_s);
    QCOMPARE(w.model.index(0).data(QueueModel::ArtistRole).toString(), u"未知艺术家"_s);
}

void QueueModelTest::theQueueStandsInItsOrder()
{
    Watched w(QueueModel::Order::queue);
    const QList<Song> songs = letters(u"abcd"_s);
    QCOMPARE(w.show(queueOf(songs, 1)), u"a [b] c d"_s);
    QCOMPARE(w.model.playingRow(), 1);
    QCOMPARE(w.show(queueOf(songs, 3)), u"a b c [d]"_s);
    QCOMPARE(w.show(queueOf(songs, -1)), u"a b c d"_s);
    QCOMPARE(w.model.playingRow(), -1);
    QCOMPARE(w.view.resets, 1);
}

void QueueModelTest::whatPlaysComesFirst()
{
    Watched w(QueueModel::Order::playingFirst);
    const QList<Song> songs = letters(u"abcd"_s);
    QCOMPARE(w.show(queueOf(songs, 0)), u"[a] b c d"_s);
    QCOMPARE(w.show(queueOf(songs, 1)), u"[b] c d a"_s);
    QCOMPARE(w.show(queueOf(songs, 3)), u"[d] a b c"_s);
    QCOMPARE(w.show(queueOf(songs, 0)), u"[a] b c d"_s);
    QCOMPARE(w.show(queueOf(songs, 2)), u"[c] d a b"_s);
    QCOMPARE(w.show(queueOf(songs, -1)), u"a b c d"_s);
    QCOMPARE(w.model.playingRow(), -1);
    QCOMPARE(w.view.resets, 1);
}

void QueueModelTest::theNextSongIsAMoveOfRows()
{
    Watched w(QueueModel::Order::playingFirst);
    const QList<Song> songs = letters(u"abcd"_s);
    w.show(queueOf(songs, 1));
    QSignalSpy moves(&w.model, &QAbstractItemModel::rowsMoved);
    QSignalSpy changes(&w.model, &QAbstractItemModel::dataChanged);
    w.show(queueOf(songs, 2));
    QCOMPARE(moves.size(), 1);
    QCOMPARE(moves.at(0).at(1).toInt(), 0);
    QCOMPARE(moves.at(0).at(2).toInt(), 0);
    QCOMPARE(moves.at(0).at(4).toInt(), 4);
    QCOMPARE(changes.size(), 2);
    w.show(queueOf(songs, 2));
    QCOMPARE(moves.size() + changes.size(), 3);
}

void QueueModelTest::whatPlaysOutsideOfTheQueueStandsBeforeIt()
{
    Watched w(QueueModel::Order::playingFirst);
    Watched plain(QueueModel::Order::queue);
    const QList<Song> songs = letters(u"abc"_s);
    PlayingQueue queue = queueOf(songs, -1);
    queue.onlineSong = onlineSong(u"1"_s);
    QCOMPARE(w.show(queueOf(songs, 1)), u"[b] c a"_s);
    QSignalSpy counts(&w.model, &RowModel::countChanged);
    QCOMPARE(w.show(queue), u"[1] a b c"_s);
    QCOMPARE(counts.size(), 1);
    QCOMPARE(plain.show(queue), u"a b c"_s);
    queue.onlineSong = onlineSong(u"2"_s);
    QCOMPARE(w.show(queue), u"[2] a b c"_s);
    QCOMPARE(w.show(queueOf(songs, 2)), u"[c] a b"_s);
    queue.onlineSong.reset();
    queue.song = fileSong(u"z"_s);
    QCOMPARE(w.show(queue), u"[z] a b c"_s);
    // With nothing to come there is no list.
    queue.songs.clear();
    QCOMPARE(w.show(queue), QString());
}

void QueueModelTest::aSongTwiceInTheQueuePlaysOnce()
{
    Watched w(QueueModel::Order::queue);
    Watched first(QueueModel::Order::playingFirst);
    const QList<Song> songs = letters(u"abab"_s);
    QCOMPARE(w.show(queueOf(songs, 2)), u"a b [a] b"_s);
    QCOMPARE(first.show(queueOf(songs, 2)), u"[a] b a b"_s);
}

void QueueModelTest::rowsKnowTheirPlaceInTheQueue()
{
    Watched w(QueueModel::Order::playingFirst);
    w.show(queueOf(letters(u"abcd"_s), 2));
    QCOMPARE(w.model.queueIndex(0), 2);
    QCOMPARE(w.model.queueIndex(1), 3);
    QCOMPARE(w.model.queueIndex(2), 0);
    QCOMPARE(w.model.queueIndex(4), -1);
    QCOMPARE(w.model.queueIndex(-1), -1);
    PlayingQueue queue = queueOf(letters(u"abcd"_s), -1);
    queue.song = fileSong(u"z"_s);
    w.show(queue);
    QCOMPARE(w.model.queueIndex(0), -1);
    QCOMPARE(w.model.queueIndex(1), 0);
    QCOMPARE(w.model.queueIndex(4), 3);
    QCOMPARE(w.model.queueIndex(5), -1);
}

void QueueModelTest::anEmptyQueueHasNoRows()
{
    for (const auto order : {QueueModel::Order::queue, QueueModel::Order::playingFirst}) {
        Watched w(order);
        QCOMPARE(w.show({}), QString());
        PlayingQueue queue;
        queue.song = fileSong(u"a"_s);
        QCOMPARE(w.show(queue), QString());
        QCOMPARE(w.model.playingRow(), -1);
        QCOMPARE(w.show(queueOf(letters(u"a"_s), 0)), u"[a]"_s);
        QCOMPARE(w.show(queue), QString());
        QCOMPARE(w.model.queueIndex(0), -1);
    }
}

void QueueModelTest::anotherQueueStartsAfresh()
{
    Watched w(QueueModel::Order::playingFirst);
    w.show(queueOf(letters(u"abc"_s), 1));
    QCOMPARE(w.show(queueOf(letters(u"xyab"_s), 3)), u"[b] x y a"_s);
    PlayingQueue online;
    online.onlineSongs = onlineSongs({u"1"_s, u"2"_s});
    online.onlineSong = online.onlineSongs.at(1);
    online.current = 1;
    QCOMPARE(w.show(online), u"[2] 1"_s);
    QCOMPARE(w.view.resets, 3);
}

void QueueModelTest::aListReadAnewKeepsItsPlace()
{
    Watched w(QueueModel::Order::playingFirst);
    QList<Song> songs = letters(u"abc"_s);
    w.show(queueOf(songs, 0));
    songs[2].setTitle(u"Another name"_s);
    QCOMPARE(w.show(queueOf(songs, 1)), u"[b] name a"_s);
    QCOMPARE(w.view.resets, 1);
}

void QueueModelTest::coversOfOnlineSongsMove()
{
    Watched w(QueueModel::Order::queue);
    w.model.moveCovers();
    w.show(queueOf(letters(u"ab"_s), 0));
    QSignalSpy changes(&w.model, &QAbstractItemModel::dataChanged);
    w.model.moveCovers();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.at(0).at(2).value<QList<int>>(), QList<int>{QueueModel::CoverSourceRole});
}

void QueueModelTest::randomQueuesReachTheViewsUnharmed_data()
{
    QTest::addColumn<quint32>("seed");
    for (const quint32 seed : {1U, 2U, 3U, 4U})
        QTest::addRow("%u", seed) << seed;
}

void QueueModelTest::randomQueuesReachTheViewsUnharmed()
{
    QFETCH(const quint32, seed);
    QRandomGenerator random(seed);
    Watched natural(QueueModel::Order::queue);
    Watched first(QueueModel::Order::playingFirst);
    QList<Song> songs = letters(u"abcdef"_s);
    for (int i = 0; i < 200; ++i) {
        if (random.bounded(8) == 0) {
            songs.clear();
            for (int n = random.bounded(7); n > 0; --n)
                songs.append(fileSong(QString(QChar(u'a' + random.bounded(6)))));
        }
        const int current = random.bounded(-1, static_cast<int>(songs.size()));
        PlayingQueue queue = queueOf(songs, current);
        if (current < 0 && random.bounded(2) == 0)
            queue.onlineSong = onlineSong(u"1"_s);
        QStringList inOrder;
        QStringList turned;
        for (qsizetype at = 0; at < songs.size(); ++at) {
            const QString name = songs.at(at).id();
            inOrder.append(at == current ? u'[' + name + u']' : name);
        }
        for (qsizetype at = 0; at < inOrder.size(); ++at)
            turned.append(inOrder.at((at + std::max(0, current)) % inOrder.size()));
        if (queue.onlineSong && !songs.isEmpty())
            turned.prepend(u"[1]"_s);
        QCOMPARE(natural.show(queue), inOrder.join(u' '));
        QCOMPARE(first.show(queue), turned.join(u' '));
    }
}

void QueueModelTest::aHundredThousandSongsAreShared()
{
    QList<Song> songs;
    constexpr int count = 100'000;
    songs.reserve(count);
    for (int i = 0; i < count; ++i)
        songs.append(fileSong(QString::number(i)));
    QueueModel natural(QueueModel::Order::queue, coverAddress, nullptr);
    QueueModel first(QueueModel::Order::playingFirst, coverAddress, nullptr);
    for (QueueModel *model : {&natural, &first}) {
        model->show(queueOf(songs, 0));
        QCOMPARE(model->count(), count);
        QCOMPARE(model->shown().songs.constData(), songs.constData());
        // Each next song touches a few rows, not the list.
        QSignalSpy changes(model, &QAbstractItemModel::dataChanged);
        for (int i = 1; i <= 1000; ++i)
            model->show(queueOf(songs, (i * 997) % count));
        QCOMPARE(changes.size(), 2000);
        QCOMPARE(model->shown().songs.constData(), songs.constData());
        QCOMPARE(model->index(model->playingRow()).data(QueueModel::TitleRole).toString(),
                 u"Title %1"_s.arg(997'000 % count));
    }
}

QTEST_GUILESS_MAIN(QueueModelTest)
#include "tst_queue_model.moc"
