// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/CoverRegistry.h"
#include "ViewModels/SongListModel.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

#include <numeric>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

Song song(const QString &id, const QString &title = {}, double duration = 0)
{
    return Song(SongFields{.id = id,
                           .title = title,
                           .artist = u"歌手"_s,
                           .album = u"专辑"_s,
                           .albumId = u"album_1"_s,
                           .duration = duration,
                           .trackNumber = 0,
                           .dateAdded = QDateTime::fromSecsSinceEpoch(0, Qt::UTC),
                           .artworkURL = std::nullopt,
                           .assetURL = std::nullopt,
                           .embeddedLyrics = std::nullopt,
                           .artworkData = {}});
}

QList<Song> numbered(const QList<int> &numbers)
{
    QList<Song> songs;
    for (const int number : numbers)
        songs.append(song(QString::number(number), u"T%1"_s.arg(number)));
    return songs;
}

QList<Song> numbered(int count)
{
    QList<int> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbered(numbers);
}

/// The rows as a view sees them that follows the signals only: it keeps one entry per row and reads a row
/// again when it is told to.
class Follower : public QObject
{
public:
    explicit Follower(const SongListModel &model)
        : m_model(model)
    {
        reread();
        connect(&model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex &, int first, int last) {
                    for (int row = first; row <= last; ++row)
                        rows.insert(row, textOf(row));
                });
        connect(&model, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex &, int first, int last) { rows.remove(first, last - first + 1); });
        connect(&model, &QAbstractItemModel::rowsMoved, this,
                [this](const QModelIndex &, int first, int last, const QModelIndex &, int to) {
                    const QStringList moved = rows.mid(first, last - first + 1);
                    rows.remove(first, moved.size());
                    for (qsizetype i = 0; i < moved.size(); ++i)
                        rows.insert((to > first ? to - moved.size() : to) + i, moved.at(i));
                });
        connect(&model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex &first, const QModelIndex &last) {
                    for (int row = first.row(); row <= last.row(); ++row)
                        rows[row] = textOf(row);
                });
        connect(&model, &QAbstractItemModel::modelReset, this, [this] {
            ++resets;
            reread();
        });
    }

    QStringList rows;
    int resets = 0;

private:
    QString textOf(int row) const
    {
        const QModelIndex index = m_model.index(row);
        return index.data(SongListModel::SongIdRole).toString() + u'|' +
               index.data(SongListModel::TitleRole).toString();
    }
    void reread()
    {
        rows.clear();
        for (int row = 0; row < m_model.count(); ++row)
            rows.append(textOf(row));
    }
    const SongListModel &m_model;
};

QStringList texts(const QList<Song> &songs)
{
    QStringList result;
    for (const Song &one : songs)
        result.append(one.id() + u'|' + SongListModel::displayTitle(one));
    return result;
}

} // namespace

class SongListModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rolesShowTheSong();
    void titleFallsBackToTheFileName_data();
    void titleFallsBackToTheFileName();
    void durationIsEmptyWhenUnknown();
    void coverAddressFollowsTheCover();
    void currentSongIsMarked();
    void appendInsertsOnce();
    void removalAndMoveAreOneStepEach();
    void changedContentsAreAnnouncedInRanges();
    void repeatedIdsAreRows();
    void aQuiteDifferentListResets();
    void randomListsReachTheViewsUnharmed_data();
    void randomListsReachTheViewsUnharmed();
    void appendToAHundredThousand();
};

void SongListModelTest::rolesShowTheSong()
{
    SongListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSongs({song(u"a"_s, u"晴天\n第二行"_s, 269.9)});
    const QModelIndex row = model.index(0);
    QCOMPARE(row.data(SongListModel::SongIdRole).toString(), u"a"_s);
    QCOMPARE(row.data(SongListModel::TitleRole).toString(), u"晴天 第二行"_s);
    QCOMPARE(row.data(SongListModel::SubtitleRole).toString(), u"歌手 · 专辑"_s);
    QCOMPARE(row.data(SongListModel::DurationTextRole).toString(), u"4:29"_s);
    QCOMPARE(row.data(SongListModel::IsCurrentRole).toBool(), false);
    QCOMPARE(model.rowOf(u"a"_s), 0);
    QCOMPARE(model.rowOf(u"b"_s), -1);
    QVERIFY(!model.data(QModelIndex(), SongListModel::TitleRole).isValid());
}

void SongListModelTest::titleFallsBackToTheFileName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    QTest::newRow("no file") << QString() << u"未知歌曲"_s;
    QTest::newRow("plain") << u"/music/夜曲.mp3"_s << u"夜曲"_s;
    QTest::newRow("stored copy") << u"/music/0123456789ABCDEF_夜曲.live.mp3"_s << u"夜曲.live"_s;
    QTest::newRow("nothing after the hash") << u"/music/0123456789ABCDEF_.mp3"_s << u"0123456789ABCDEF_"_s;
}

void SongListModelTest::titleFallsBackToTheFileName()
{
    QFETCH(QString, path);
    Song one = song(u"a"_s, u"  "_s);
    if (!path.isEmpty())
        one.setAssetURL(QUrl::fromLocalFile(path));
    QTEST(SongListModel::displayTitle(one), "title");
}

void SongListModelTest::durationIsEmptyWhenUnknown()
{
    SongListModel model;
    model.setSongs({song(u"a"_s, u"A"_s, 0), song(u"b"_s, u"B"_s, -1), song(u"c"_s, u"C"_s, qQNaN())});
    for (int row = 0; row < 3; ++row)
        QCOMPARE(model.index(row).data(SongListModel::DurationTextRole).toString(), QString());
}

void SongListModelTest::coverAddressFollowsTheCover()
{
    CoverRegistry registry(2);
    Song plain = song(u"a"_s);
    QCOMPARE(registry.source(plain), registry.source(song(u"b"_s)));

    Song covered = plain;
    covered.setArtworkData(ArtworkData("12345"));
    const QString first = registry.source(covered);
    QCOMPARE(registry.artwork(first.section(u'/', -1)).bytes(), QByteArray("12345"));
    covered.setArtworkData(ArtworkData("123456"));
    QVERIFY(registry.source(covered) != first);

    // Bounded: the oldest is forgotten.
    Song other = song(u"c"_s);
    other.setArtworkData(ArtworkData("1"));
    registry.source(other);
    QVERIFY(!registry.artwork(first.section(u'/', -1)).isPresent());

    SongListModel model;
    model.setSongs({covered});
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    covered.setArtworkData(ArtworkData("1234567"));
    model.setSongs({covered});
    QCOMPARE(changed.size(), 1);
}

void SongListModelTest::currentSongIsMarked()
{
    SongListModel model;
    model.setSongs(numbered(5));
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    model.setCurrentSongId(u"2"_s);
    QCOMPARE(changed.size(), 1);
    QVERIFY(model.index(2).data(SongListModel::IsCurrentRole).toBool());
    model.setCurrentSongId(u"2"_s);
    QCOMPARE(changed.size(), 1);
    model.setCurrentSongId(u"4"_s);
    QCOMPARE(changed.size(), 3);
    QVERIFY(!model.index(2).data(SongListModel::IsCurrentRole).toBool());
    QVERIFY(model.index(4).data(SongListModel::IsCurrentRole).toBool());
    model.setCurrentSongId({});
    QVERIFY(!model.index(4).data(SongListModel::IsCurrentRole).toBool());
}

void SongListModelTest::appendInsertsOnce()
{
    SongListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy counts(&model, &SongListModel::countChanged);
    QList<Song> songs = numbered(10);
    model.setSongs(songs);
    QCOMPARE(counts.size(), 1);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    songs.append(numbered({100, 101, 102}));
    model.setSongs(songs);
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted.at(0).at(1).toInt(), 10);
    QCOMPARE(inserted.at(0).at(2).toInt(), 12);
    model.setSongs(songs);
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(changed.size(), 0);
    QCOMPARE(reset.size(), 0);
    QCOMPARE(counts.size(), 2);
}

void SongListModelTest::removalAndMoveAreOneStepEach()
{
    SongListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSongs(numbered({0, 1, 2, 3, 4, 5}));
    QSignalSpy removed(&model, &QAbstractItemModel::rowsRemoved);
    QSignalSpy moved(&model, &QAbstractItemModel::rowsMoved);
    model.setSongs(numbered({0, 3, 4, 5}));
    QCOMPARE(removed.size(), 1);
    model.setSongs(numbered({3, 4, 5, 0}));
    QCOMPARE(moved.size(), 1);
    QCOMPARE(removed.size(), 1);
    QCOMPARE(texts(model.songs()), texts(numbered({3, 4, 5, 0})));
}

void SongListModelTest::changedContentsAreAnnouncedInRanges()
{
    SongListModel model;
    QList<Song> songs = numbered(8);
    model.setSongs(songs);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    for (const int row : {1, 2, 3, 6})
        songs[row].setTitle(u"neu"_s);
    // A record of its own with the same contents changes nothing.
    songs[7] = song(u"7"_s, u"T7"_s);
    model.setSongs(songs);
    QCOMPARE(changed.size(), 2);
    QCOMPARE(changed.at(0).at(0).toModelIndex().row(), 1);
    QCOMPARE(changed.at(0).at(1).toModelIndex().row(), 3);
    QCOMPARE(changed.at(1).at(0).toModelIndex().row(), 6);
    QCOMPARE(changed.at(1).at(1).toModelIndex().row(), 6);
}

void SongListModelTest::repeatedIdsAreRows()
{
    SongListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const Follower follower(model);
    for (const QList<int> &numbers : {QList<int>{1, 1, 2}, {2, 1, 1}, {1, 2, 1, 1}, {1}}) {
        model.setSongs(numbered(numbers));
        QCOMPARE(follower.rows, texts(numbered(numbers)));
    }
}

void SongListModelTest::aQuiteDifferentListResets()
{
    SongListModel model;
    const Follower follower(model);
    QList<int> numbers(2000);
    std::iota(numbers.begin(), numbers.end(), 0);
    model.setSongs(numbered(numbers));
    QCOMPARE(follower.resets, 0);
    std::shuffle(numbers.begin(), numbers.end(), QRandomGenerator(7));
    model.setSongs(numbered(numbers));
    QCOMPARE(follower.resets, 1);
    QCOMPARE(follower.rows, texts(numbered(numbers)));
}

void SongListModelTest::randomListsReachTheViewsUnharmed_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void SongListModelTest::randomListsReachTheViewsUnharmed()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    SongListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const Follower follower(model);
    QSignalSpy counts(&model, &SongListModel::countChanged);
    QList<Song> songs;
    int nextId = 0;
    for (int round = 0; round < 30; ++round) {
        const int edits = static_cast<int>(random.bounded(6));
        for (int edit = 0; edit < edits; ++edit) {
            const qsizetype at = random.bounded(static_cast<int>(songs.size()) + 1);
            const qsizetype length = qMin(qsizetype{1} + random.bounded(5), songs.size() - at);
            switch (random.bounded(4)) {
            case 0:
                for (qsizetype i = random.bounded(8); i >= 0; --i)
                    songs.insert(at, song(QString::number(nextId++), u"neu"_s));
                break;
            case 1:
                songs.remove(at, length);
                break;
            case 2:
                std::rotate(songs.begin(), songs.begin() + at, songs.begin() + at + length);
                break;
            default:
                if (at < songs.size())
                    songs[at].setTitle(u"T%1"_s.arg(random.bounded(100)));
            }
        }
        const qsizetype countSignals = counts.size();
        const bool countDiffers = model.count() != songs.size();
        model.setSongs(songs);
        QCOMPARE(follower.rows, texts(songs));
        QCOMPARE(counts.size(), countSignals + (countDiffers ? 1 : 0));
    }
    QCOMPARE(follower.resets, 0);
}

void SongListModelTest::appendToAHundredThousand()
{
    SongListModel model;
    QList<Song> songs = numbered(100'000);
    model.setSongs(songs);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QBENCHMARK
    {
        songs.append(song(QString::number(1'000'000 + songs.size()), u"neu"_s));
        model.setSongs(songs);
    }
    QCOMPARE(inserted.size(), songs.size() - 100'000);
    QCOMPARE(inserted.constLast().at(1).toLongLong(), songs.size() - 1);
}

QTEST_GUILESS_MAIN(SongListModelTest)
#include "tst_song_list_model.moc"
