// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/LocalSearchViewModel.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/ViewModelBench.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Content = LocalSearchViewModel::Content;

namespace {

/// A search over a library of three songs.
class SearchBench : public ViewModelBench
{
public:
    SearchBench()
    {
        mediaLibrary.songList = fileSongs({u"rain"_s, u"Train"_s, u"snow"_s});
        m_search.setViewModel(&startViewModel());
    }

    LocalSearchViewModel &search() { return m_search; }
    QStringList ids() const
    {
        QStringList found;
        for (const Song &song : m_search.songs()->songs())
            found.append(song.id());
        return found;
    }

private:
    LocalSearchViewModel m_search;
    QAbstractItemModelTester m_tester{m_search.songs(),
                                      QAbstractItemModelTester::FailureReportingMode::QtTest};
};

} // namespace

class LocalSearchViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void withoutATextThereIsNothing()
    {
        SearchBench bench;
        QCOMPARE(bench.search().content(), Content::Initial);
        QCOMPARE(bench.search().songs()->count(), 0);
    }

    void everyLetterIsFollowed()
    {
        SearchBench bench;
        const QSignalSpy contents(&bench.search(), &LocalSearchViewModel::contentChanged);
        bench.search().setSearchText(u"ra"_s);
        QCOMPARE(bench.ids(), (QStringList{u"rain"_s, u"Train"_s}));
        QCOMPARE(bench.search().content(), Content::Results);
        bench.search().setSearchText(u"RAI"_s);
        QCOMPARE(bench.ids(), (QStringList{u"rain"_s, u"Train"_s}));
        bench.search().setSearchText(u"tra"_s);
        QCOMPARE(bench.ids(), QStringList{u"Train"_s});
        QCOMPARE(contents.size(), 1);
        bench.search().setSearchText(u"trax"_s);
        QCOMPARE(bench.search().content(), Content::Empty);
        bench.search().setSearchText(QString());
        QCOMPARE(bench.search().content(), Content::Initial);
        QCOMPARE(bench.search().songs()->count(), 0);
    }

    void songsThatComeLaterAreFound()
    {
        SearchBench bench;
        bench.search().setSearchText(u"hail"_s);
        QCOMPARE(bench.search().content(), Content::Empty);
        bench.webDAV.songList = fileSongs({u"hail"_s});
        Q_EMIT bench.webDAV.changed();
        QTRY_COMPARE(bench.search().content(), Content::Results);
        QCOMPARE(bench.ids(), QStringList{u"hail"_s});
    }

    void rowPlaysWithTheWholeLibraryAsQueue()
    {
        SearchBench bench;
        bench.search().setSearchText(u"snow"_s);
        bench.search().playSongAt(0);
        QCOMPARE(songOf(bench.player()).id(), u"snow"_s);
        QCOMPARE(bench.player().queue().size(), 3);
        QVERIFY(bench.search().songs()->index(0).data(SongListModel::IsCurrentRole).toBool());
    }

    void rowThatIsGonePlaysNothing()
    {
        SearchBench bench;
        bench.search().setSearchText(u"snow"_s);
        bench.search().playSongAt(1);
        bench.search().playSongAt(-1);
        QVERIFY(!bench.player().currentSong());
    }

    void songThatPlaysIsMarkedAlsoWhenItIsFoundLater()
    {
        SearchBench bench;
        bench.viewModel().playSong(bench.mediaLibrary.songList.at(1));
        bench.search().setSearchText(u"ra"_s);
        QVERIFY(!bench.search().songs()->index(0).data(SongListModel::IsCurrentRole).toBool());
        QVERIFY(bench.search().songs()->index(1).data(SongListModel::IsCurrentRole).toBool());
    }
};

QTEST_GUILESS_MAIN(LocalSearchViewModelTest)
#include "tst_local_search_view_model.moc"
