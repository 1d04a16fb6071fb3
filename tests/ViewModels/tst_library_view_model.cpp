// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/AudioFiles.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/ViewModelBench.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// A home whose import finds every file readable, and the place from which files come.
class LibraryBench : public ViewModelBench
{
public:
    LibraryBench()
    {
        home.assetReader().otherwise = FakeAsset{
            .duration = 100, .common = QList<FakeTag>(), .all = QList<FakeTag>(), .lyrics = std::nullopt};
    }

    LibraryViewModel &startLibrary()
    {
        m_library = std::make_unique<LibraryViewModel>(startViewModel(), home.platform);
        m_tester = std::make_unique<QAbstractItemModelTester>(
            m_library->songs(), QAbstractItemModelTester::FailureReportingMode::QtTest);
        return *m_library;
    }

    /// A file outside of the player's home.
    QUrl source(const QString &name) const
    {
        const QString path = m_source.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write("sound of " + name.toUtf8()) <= 0)
            qFatal("cannot write %s", qPrintable(path));
        return QUrl::fromLocalFile(path);
    }
    QUrl sourceFolder(const QString &name) const { return QUrl::fromLocalFile(m_source.filePath(name)); }

    bool isIdle() { return !importService().isImporting() && !importService().isScanning(); }

private:
    QTemporaryDir m_source;
    std::unique_ptr<LibraryViewModel> m_library;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

QStringList titles(const LibraryViewModel &library)
{
    QStringList texts;
    for (const Song &song : library.songs()->songs())
        texts.append(song.title());
    return texts;
}

bool isCurrent(const LibraryViewModel &library, int row)
{
    return library.songs()->index(row).data(SongListModel::IsCurrentRole).toBool();
}

} // namespace

class LibraryViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void listsAllSongsFromTheStart();
    void marksTheCurrentSong();
    void restoredSongIsMarkedFromTheStart();
    void newSongsOfASourceAppear();
    void playSongAtTakesAllSongsAsTheQueue();
    void playSongAtOutsideTheRowsDoesNothing();
    void deletedSongGoesWithItsFile();
    void deleteOfAnUnknownSongDoesNothing();
    void importedFileAppears();
    void filesAndFoldersAreImportedTogether();
    void laterRequestWaitsForTheFirst();
    void fileOfAnotherKindIsRefusedWithANotice();
    void severalRefusedFilesAreCounted();
    void nextImportTakesTheNoticeAway();
    void nothingToImportDoesNothing();
    void desktopsDialogIsAskedForFiles();
    void desktopsDialogIsAskedForAFolder();
    void cancelledDialogImportsNothing();
    void withoutADesktopDialogOursIsRequested();
    void musicFolderIsOpened();
    void musicFolderThatNothingOpensIsNamed();
    void dismissedImportErrorIsGone();
};

void LibraryViewModelTest::listsAllSongsFromTheStart()
{
    LibraryBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"imported"_s);
    bench.mediaLibrary.songList = fileSongs({u"m"_s});
    bench.webDAV.songList = fileSongs({u"w"_s});
    QCOMPARE(titles(bench.startLibrary()), (QStringList{u"Title m"_s, u"imported"_s, u"Title w"_s}));
}

void LibraryViewModelTest::marksTheCurrentSong()
{
    LibraryBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s, u"b"_s});
    LibraryViewModel &library = bench.startLibrary();
    library.playSongAt(1);
    QVERIFY(!isCurrent(library, 0));
    QVERIFY(isCurrent(library, 1));
    bench.player().next();
    QVERIFY(isCurrent(library, 0));
    QVERIFY(!isCurrent(library, 1));
    bench.player().playOnlineSong(onlineSong(u"a"_s), {});
    QVERIFY(!isCurrent(library, 0));
}

void LibraryViewModelTest::restoredSongIsMarkedFromTheStart()
{
    LibraryBench bench;
    const Song song = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    bench.start().playSong(song, {});
    bench.answerDuration(100);
    bench.player().pause();
    bench.stop();
    QVERIFY(isCurrent(bench.startLibrary(), 0));
}

void LibraryViewModelTest::newSongsOfASourceAppear()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    QSignalSpy spy(library.songs(), &SongListModel::countChanged);
    bench.webDAV.songList = fileSongs({u"v"_s, u"w"_s});
    Q_EMIT bench.webDAV.changed();
    QTRY_COMPARE(titles(library), (QStringList{u"Title v"_s, u"Title w"_s}));
    QCOMPARE(spy.size(), 1);
}

void LibraryViewModelTest::playSongAtTakesAllSongsAsTheQueue()
{
    LibraryBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s, u"b"_s, u"c"_s});
    bench.startLibrary().playSongAt(2);
    QCOMPARE(songOf(bench.player()).id(), u"c"_s);
    QCOMPARE(bench.player().currentIndex(), 2);
    QCOMPARE(bench.player().queue().size(), 3);
}

void LibraryViewModelTest::playSongAtOutsideTheRowsDoesNothing()
{
    LibraryBench bench;
    bench.mediaLibrary.songList = fileSongs({u"a"_s});
    LibraryViewModel &library = bench.startLibrary();
    library.playSongAt(-1);
    library.playSongAt(1);
    QVERIFY(!bench.player().currentSong());
}

void LibraryViewModelTest::deletedSongGoesWithItsFile()
{
    LibraryBench bench;
    const Song song = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    bench.home.addImportedSong(u"b.mp3"_s, u"B"_s);
    LibraryViewModel &library = bench.startLibrary();
    library.deleteSong(song.id());
    QTRY_COMPARE(titles(library), (QStringList{u"B"_s}));
    QVERIFY(!QFile::exists(song.assetPath()));
}

void LibraryViewModelTest::deleteOfAnUnknownSongDoesNothing()
{
    LibraryBench bench;
    const Song song = bench.home.addImportedSong(u"a.mp3"_s, u"A"_s);
    bench.startLibrary().deleteSong(u"another"_s);
    QVERIFY(QFile::exists(song.assetPath()));
    QCOMPARE(bench.importService().importedSongs().size(), 1);
}

void LibraryViewModelTest::importedFileAppears()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    library.importUrls({bench.source(u"歌.mp3"_s)});
    QTRY_COMPARE(library.songs()->count(), 1);
    QCOMPARE(bench.importService().importedSongs().size(), 1);
    QVERIFY(library.importNotice().isEmpty());
    QTRY_VERIFY(bench.isIdle());
}

void LibraryViewModelTest::filesAndFoldersAreImportedTogether()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    bench.source(u"folder/c.mp3"_s);
    bench.source(u"folder/deep/d.FLAC"_s);
    library.importUrls({bench.source(u"a.mp3"_s), bench.sourceFolder(u"folder"_s), bench.source(u"b.m4a"_s)});
    QTRY_COMPARE(library.songs()->count(), 4);
    QTRY_VERIFY(bench.isIdle());
    QVERIFY(library.importNotice().isEmpty());
}

void LibraryViewModelTest::laterRequestWaitsForTheFirst()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    bench.source(u"one/a.mp3"_s);
    bench.source(u"one/b.mp3"_s);
    bench.source(u"two/c.mp3"_s);
    library.importUrls({bench.sourceFolder(u"one"_s)});
    // The import service refuses a second folder while it imports one.
    library.importUrls({bench.sourceFolder(u"two"_s)});
    library.importUrls({bench.source(u"d.mp3"_s)});
    QTRY_COMPARE(library.songs()->count(), 4);
    QTRY_VERIFY(bench.isIdle());
}

void LibraryViewModelTest::fileOfAnotherKindIsRefusedWithANotice()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    QSignalSpy spy(&library, &LibraryViewModel::importNoticeChanged);
    library.importUrls({bench.source(u"notes.txt"_s), bench.source(u"a.mp3"_s)});
    QTRY_COMPARE(library.songs()->count(), 1);
    QCOMPARE(library.importNotice(), u"不支持的文件格式: notes.txt"_s);
    QCOMPARE(spy.size(), 1);
}

void LibraryViewModelTest::severalRefusedFilesAreCounted()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    library.importUrls({bench.source(u"notes.txt"_s), QUrl(u"https://h.example/a.mp3"_s)});
    QTRY_COMPARE(library.importNotice(), u"有 2 个文件的格式不受支持"_s);
    QVERIFY(bench.importService().importedSongs().isEmpty());
}

void LibraryViewModelTest::nextImportTakesTheNoticeAway()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    library.importUrls({bench.source(u"notes.txt"_s)});
    QTRY_VERIFY(!library.importNotice().isEmpty());
    library.importUrls({bench.source(u"a.mp3"_s)});
    QTRY_VERIFY(library.importNotice().isEmpty());
    QTRY_COMPARE(library.songs()->count(), 1);
}

void LibraryViewModelTest::nothingToImportDoesNothing()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    bench.console.take();
    library.importUrls({});
    settle();
    QCOMPARE(bench.console.take(), QStringList());
}

void LibraryViewModelTest::desktopsDialogIsAskedForFiles()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    QSignalSpy own(&library, &LibraryViewModel::ownPickerRequested);
    bench.home.filePicker().answer = QList<QUrl>{bench.source(u"a.mp3"_s)};
    library.chooseFiles();
    QTRY_COMPARE(library.songs()->count(), 1);
    const FilePicker::Request request = bench.home.filePicker().requests.constFirst();
    QCOMPARE(request.kind, FilePicker::Kind::files);
    QCOMPARE(request.extensions, supportedExtensions());
    QVERIFY(!request.title.isEmpty());
    QVERIFY(!request.filterName.isEmpty());
    QCOMPARE(own.size(), 0);
}

void LibraryViewModelTest::desktopsDialogIsAskedForAFolder()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    bench.source(u"folder/a.mp3"_s);
    bench.home.filePicker().answer = QList<QUrl>{bench.sourceFolder(u"folder"_s)};
    library.chooseFolder();
    QTRY_COMPARE(library.songs()->count(), 1);
    QCOMPARE(bench.home.filePicker().requests.constFirst().kind, FilePicker::Kind::folder);
    QTRY_VERIFY(bench.isIdle());
}

void LibraryViewModelTest::cancelledDialogImportsNothing()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    QSignalSpy own(&library, &LibraryViewModel::ownPickerRequested);
    bench.home.filePicker().answer = QList<QUrl>();
    library.chooseFiles();
    settle();
    QCOMPARE(bench.home.filePicker().requests.size(), 1);
    QCOMPARE(own.size(), 0);
    QVERIFY(bench.importService().importedSongs().isEmpty());
}

void LibraryViewModelTest::withoutADesktopDialogOursIsRequested()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    QSignalSpy own(&library, &LibraryViewModel::ownPickerRequested);
    library.chooseFiles();
    QTRY_COMPARE(own.size(), 1);
    QCOMPARE(own.constFirst().constFirst().toBool(), false);
    bench.home.platform.filePicker.reset();
    library.chooseFolder();
    QTRY_COMPARE(own.size(), 2);
    QCOMPARE(own.constLast().constFirst().toBool(), true);
}

void LibraryViewModelTest::musicFolderIsOpened()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    library.openMusicFolder();
    QCOMPARE(bench.home.system().opened,
             QList<QUrl>{QUrl::fromLocalFile(bench.home.platform.directories.documents)});
    QVERIFY(library.importNotice().isEmpty());
}

void LibraryViewModelTest::musicFolderThatNothingOpensIsNamed()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    bench.home.system().canOpen = false;
    library.openMusicFolder();
    QVERIFY(library.importNotice().contains(bench.home.platform.directories.documents));
}

void LibraryViewModelTest::dismissedImportErrorIsGone()
{
    LibraryBench bench;
    LibraryViewModel &library = bench.startLibrary();
    library.importUrls({QUrl::fromLocalFile(u"/nowhere/a.mp3"_s), bench.source(u"x.txt"_s)});
    QTRY_VERIFY(bench.importService().importError());
    QVERIFY(!library.importNotice().isEmpty());
    library.dismissImportError();
    QVERIFY(!bench.importService().importError());
    QVERIFY(library.importNotice().isEmpty());
}

QTEST_GUILESS_MAIN(LibraryViewModelTest)
#include "tst_library_view_model.moc"
