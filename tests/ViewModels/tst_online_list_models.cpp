// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/OnlineSongListModel.h"
#include "ViewModels/TopListListModel.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Model = OnlineSongListModel;

namespace {

OnlineSong song(const QString &id, const QString &name = u"歌"_s,
                MusicPlatform platform = MusicPlatform::netease)
{
    return {.id = id,
            .name = name,
            .artist = u"歌手"_s,
            .album = u"专辑"_s,
            .platform = platform,
            .picUrl = {},
            .lrcUrl = {}};
}

QStringList keysOf(const Model &model)
{
    QStringList keys;
    for (int row = 0; row < model.count(); ++row)
        keys.append(model.index(row).data(Model::SongIdRole).toString());
    return keys;
}

} // namespace

class OnlineListModelsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void rowSaysWhatASongIs();
    void textOfManyLinesIsOneLine();
    void songWithoutNamesStillHasATitle();
    void platformStandsWhereSongsOfSeveralAreMixed();
    void platformComesToRowsThatWereThere();
    void sameIdOnAnotherPlatformIsAnotherSong();
    void rowsThatStayKeepTheirPlace();
    void changedNameIsToldForItsRow();
    void everyRowOfTheCurrentSongIsMarked();
    void movedCoversAreReadAgain();
    void randomListsAreShownAsTheyAre();
    void chartsAreTold();
    void chartsOfAnotherPlatformAreOtherCharts();
};

void OnlineListModelsTest::rowSaysWhatASongIs()
{
    QList<QString> asked;
    Model model(
        [&asked](const OnlineSong &of) {
            asked.append(of.id);
            return std::optional(QUrl(u"https://api.example/pic?id="_s + of.id));
        },
        nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSongs({song(u"7"_s, u"夜航"_s)});
    const QModelIndex row = model.index(0);
    QCOMPARE(row.data(Model::SongIdRole), u"netease:7"_s);
    QCOMPARE(row.data(Model::TitleRole), u"夜航"_s);
    QCOMPARE(row.data(Model::SubtitleRole), u"歌手·专辑"_s);
    QCOMPARE(row.data(Model::DurationTextRole), QString());
    QCOMPARE(row.data(Model::IsDeletableRole), false);
    asked.clear();
    QVERIFY(row.data(Model::CoverSourceRole).toString().startsWith(u"image://"_s));
    QCOMPARE(asked, QList<QString>{u"7"_s});
    QVERIFY(!row.data(Model::CoverSourceRole).toString().contains(u"api.example"_s));
}

void OnlineListModelsTest::textOfManyLinesIsOneLine()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    OnlineSong odd = song(u"1"_s, u" 一\n二\r\t三 "_s);
    odd.artist = u"\n"_s;
    model.setSongs({odd});
    QCOMPARE(model.index(0).data(Model::TitleRole), u"一 二  三"_s);
    // Without an artist there is nothing to join.
    QCOMPARE(model.index(0).data(Model::SubtitleRole), u"专辑"_s);
}

void OnlineListModelsTest::songWithoutNamesStillHasATitle()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    OnlineSong nameless;
    nameless.id = u"1"_s;
    model.setSongs({nameless});
    QCOMPARE(model.index(0).data(Model::TitleRole), u"未知歌曲"_s);
    QCOMPARE(model.index(0).data(Model::SubtitleRole), QString());
}

void OnlineListModelsTest::platformStandsWhereSongsOfSeveralAreMixed()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    model.setSongs({song(u"1"_s), song(u"2"_s)});
    QCOMPARE(model.index(0).data(Model::PlatformTextRole), QString());
    model.setSongs({song(u"1"_s), song(u"2"_s, u"歌"_s, MusicPlatform::kuwo)});
    QCOMPARE(model.index(0).data(Model::PlatformTextRole), u"网易云"_s);
    QCOMPARE(model.index(1).data(Model::PlatformTextRole), u"酷我"_s);
}

void OnlineListModelsTest::platformComesToRowsThatWereThere()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    model.setSongs({song(u"1"_s), song(u"2"_s)});
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setSongs({song(u"1"_s), song(u"2"_s), song(u"3"_s, u"歌"_s, MusicPlatform::qq)});
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.constFirst().at(0).toModelIndex().row(), 0);
    QCOMPARE(changes.constFirst().at(1).toModelIndex().row(), 2);
    QCOMPARE(changes.constFirst().at(2).value<QList<int>>(), QList<int>{Model::PlatformTextRole});
}

void OnlineListModelsTest::sameIdOnAnotherPlatformIsAnotherSong()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    model.setSongs({song(u"1"_s), song(u"1"_s, u"歌"_s, MusicPlatform::qq)});
    QCOMPARE(keysOf(model), (QStringList{u"netease:1"_s, u"qq:1"_s}));
    model.setCurrentSong(song(u"1"_s, u"歌"_s, MusicPlatform::qq));
    QCOMPARE(model.index(0).data(Model::IsCurrentRole), false);
    QCOMPARE(model.index(1).data(Model::IsCurrentRole), true);
    QCOMPARE(model.rowOf(u"qq:1"_s), 1);
    QCOMPARE(model.rowOf(u"kuwo:1"_s), -1);
}

void OnlineListModelsTest::rowsThatStayKeepTheirPlace()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setSongs({song(u"1"_s), song(u"2"_s), song(u"3"_s)});
    const QPersistentModelIndex third = model.index(2);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QSignalSpy counts(&model, &RowModel::countChanged);
    model.setSongs({song(u"0"_s), song(u"3"_s), song(u"4"_s)});
    QCOMPARE(third.row(), 1);
    QVERIFY(resets.isEmpty());
    QVERIFY(counts.isEmpty()); // three before, three now
    model.setSongs({});
    QCOMPARE(model.count(), 0);
    QCOMPARE(counts.size(), 1);
}

void OnlineListModelsTest::changedNameIsToldForItsRow()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    model.setSongs({song(u"1"_s), song(u"2"_s), song(u"3"_s)});
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setSongs({song(u"1"_s), song(u"2"_s, u"新名"_s), song(u"3"_s)});
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.constFirst().at(0).toModelIndex().row(), 1);
    QCOMPARE(changes.constFirst().at(1).toModelIndex().row(), 1);
    QCOMPARE(model.index(1).data(Model::TitleRole), u"新名"_s);
}

void OnlineListModelsTest::everyRowOfTheCurrentSongIsMarked()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    model.setSongs({song(u"1"_s), song(u"2"_s), song(u"1"_s)});
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.setCurrentSong(song(u"1"_s));
    QCOMPARE(changes.size(), 2);
    QCOMPARE(model.index(2).data(Model::IsCurrentRole), true);
    model.setCurrentSong(song(u"1"_s));
    QCOMPARE(changes.size(), 2);
    model.setCurrentSong(std::nullopt);
    QCOMPARE(changes.size(), 4);
    QCOMPARE(model.index(0).data(Model::IsCurrentRole), false);
}

void OnlineListModelsTest::movedCoversAreReadAgain()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    model.moveCovers();
    QVERIFY(changes.isEmpty()); // there are none
    model.setSongs({song(u"1"_s), song(u"2"_s)});
    model.moveCovers();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.constFirst().at(1).toModelIndex().row(), 1);
    QCOMPARE(changes.constFirst().at(2).value<QList<int>>(), QList<int>{Model::CoverSourceRole});
}

void OnlineListModelsTest::randomListsAreShownAsTheyAre()
{
    Model model([](const OnlineSong &) { return std::nullopt; }, nullptr);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QRandomGenerator random(20);
    for (int round = 0; round < 300; ++round) {
        QList<OnlineSong> songs;
        const int count = random.bounded(12);
        for (int i = 0; i < count; ++i) {
            const auto platform = allMusicPlatforms().at(random.bounded(3));
            songs.append(song(QString::number(random.bounded(6)), u"歌"_s, platform));
        }
        model.setSongs(songs);
        QStringList keys;
        for (const OnlineSong &each : songs)
            keys.append(Model::key(each));
        QCOMPARE(keysOf(model), keys);
    }
}

void OnlineListModelsTest::chartsAreTold()
{
    TopListListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const TopList hot = {.id = u"1"_s, .name = u"热歌\n榜"_s, .updateFrequency = u"每天更新"_s};
    const TopList fresh = {.id = u"2"_s, .name = u"新歌榜"_s, .updateFrequency = u"定期更新"_s};
    model.setCharts({hot, fresh});
    QCOMPARE(model.index(0).data(TopListListModel::NameRole), u"热歌 榜"_s);
    QCOMPARE(model.index(1).data(TopListListModel::UpdateFrequencyRole), u"定期更新"_s);
    QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    TopList renamed = fresh;
    renamed.updateFrequency = u"每周更新"_s;
    model.setCharts({hot, renamed});
    QCOMPARE(changes.size(), 1);
    QCOMPARE(model.index(1).data(TopListListModel::UpdateFrequencyRole), u"每周更新"_s);
}

void OnlineListModelsTest::chartsOfAnotherPlatformAreOtherCharts()
{
    TopListListModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    const TopList chart = {.id = u"1"_s, .name = u"热歌榜"_s, .updateFrequency = u"每天更新"_s};
    model.setCharts({chart});
    const QPersistentModelIndex before = model.index(0);
    TopList other = chart;
    other.platform = MusicPlatform::qq;
    model.setCharts({other});
    QVERIFY(!before.isValid());
    QCOMPARE(model.count(), 1);
}

QTEST_GUILESS_MAIN(OnlineListModelsTest)
#include "tst_online_list_models.moc"
