// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/PictureFile.h"
#include "ViewModels/PlaylistsBench.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Kind = PlaylistEditorViewModel::Kind;

class PlaylistEditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void createsAPlaylistOfTheChosenKind_data();
    void createsAPlaylistOfTheChosenKind();
    void nameOfBlanksIsAccepted();
    void nothingTypedCreatesNothing();
    void longAndColourfulNamesAreKept();
    void cancelledSheetCreatesNothing();
    void renameStartsWithTheName();
    void renamedPlaylistThatIsGoneIsLeftAlone();
    void cancelledRenameChangesNothing();
    void favouritesCanBeRenamed();
    void desktopsDialogIsAskedForOnePicture();
    void withoutADesktopDialogOursIsRequested();
    void cancelledDialogLeavesTheCover();
    void badPictureIsSaidAndTheOldCoverStays_data();
    void badPictureIsSaidAndTheOldCoverStays();
    void nextChoiceTakesTheNoticeAway();
    void coverIsRemoved();
    void ofTwoPicturesTheLastOneStays();
    void pictureOfADeletedPlaylistIsDropped();
    void deletionIsAskedAndDone();
    void cancelledDeletionKeepsThePlaylist();
    void favouritesAreNeverAskedAbout();
    void editorThatGoesWhileAPictureIsReadIsSafe();
    void largePhotographIsMadeSmall();
};

void PlaylistEditorTest::createsAPlaylistOfTheChosenKind_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<PlaylistType>("type");
    QTest::newRow("local") << Kind::Local << PlaylistType::local;
    QTest::newRow("online") << Kind::Online << PlaylistType::online;
}

void PlaylistEditorTest::createsAPlaylistOfTheChosenKind()
{
    QFETCH(const Kind, kind);
    QFETCH(const PlaylistType, type);
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.editor().beginCreate();
    QVERIFY(bench.editor().showCreateSheet());
    QVERIFY(!bench.editor().isTypeFixed());
    bench.editor().setSelectedType(kind);
    bench.editor().newPlaylistName()->edit(u"新歌单"_s);
    bench.editor().createPlaylist();
    QVERIFY(!bench.editor().showCreateSheet());
    QCOMPARE(bench.editor().newPlaylistName()->text(), QString());
    const Playlist made = bench.service().playlists().constLast();
    QCOMPARE(made.name, u"新歌单"_s);
    QCOMPARE(made.description, QString());
    QCOMPARE(made.type, type);
}

void PlaylistEditorTest::nameOfBlanksIsAccepted()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.editor().beginCreate();
    bench.editor().newPlaylistName()->edit(u"  "_s);
    QVERIFY(bench.editor().canCreate());
    bench.editor().createPlaylist();
    QCOMPARE(bench.service().playlists().constLast().name, u"  "_s);
}

void PlaylistEditorTest::nothingTypedCreatesNothing()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.editor().beginCreate();
    QVERIFY(!bench.editor().canCreate());
    bench.editor().createPlaylist();
    QVERIFY(bench.editor().showCreateSheet());
    QCOMPARE(bench.service().playlists().size(), 2);
}

void PlaylistEditorTest::longAndColourfulNamesAreKept()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const QString name = u"长😀"_s.repeated(100);
    bench.editor().beginCreate();
    bench.editor().newPlaylistName()->edit(name);
    bench.editor().createPlaylist();
    QCOMPARE(bench.service().playlists().constLast().name, name);
    QTRY_COMPARE(PlaylistsBench::names(bench.list()).constLast(), name);
}

void PlaylistEditorTest::cancelledSheetCreatesNothing()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.editor().beginCreate();
    bench.editor().newPlaylistName()->edit(u"不要"_s);
    bench.editor().cancelCreate();
    QVERIFY(!bench.editor().showCreateSheet());
    QCOMPARE(bench.service().playlists().size(), 2);
    bench.editor().beginCreate();
    QCOMPARE(bench.editor().newPlaylistName()->text(), QString());
}

void PlaylistEditorTest::renameStartsWithTheName()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"旧名"_s);
    bench.editor().beginRename(playlist.id);
    QVERIFY(bench.editor().showRenameSheet());
    QCOMPARE(bench.editor().renameText()->text(), u"旧名"_s);
    bench.editor().renameText()->edit(QString());
    QVERIFY(!bench.editor().canRename());
    bench.editor().rename();
    QVERIFY(bench.editor().showRenameSheet());
    bench.editor().renameText()->edit(u" "_s);
    bench.editor().rename();
    QVERIFY(!bench.editor().showRenameSheet());
    QCOMPARE(bench.stored(playlist.id).name, u" "_s);
}

void PlaylistEditorTest::renamedPlaylistThatIsGoneIsLeftAlone()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.editor().beginRename(playlist.id);
    bench.service().deletePlaylist(playlist);
    bench.editor().renameText()->edit(u"乙"_s);
    bench.editor().rename();
    QVERIFY(!bench.editor().showRenameSheet());
    QCOMPARE(bench.service().playlists().size(), 2);
    bench.editor().beginRename(playlist.id);
    QVERIFY(!bench.editor().showRenameSheet());
}

void PlaylistEditorTest::cancelledRenameChangesNothing()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.editor().beginRename(playlist.id);
    bench.editor().renameText()->edit(u"乙"_s);
    bench.editor().cancelRename();
    bench.editor().rename();
    QCOMPARE(bench.stored(playlist.id).name, u"甲"_s);
}

void PlaylistEditorTest::favouritesCanBeRenamed()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.editor().beginRename(PlaylistService::favoritesPlaylistId);
    bench.editor().renameText()->edit(u"最爱"_s);
    bench.editor().rename();
    QCOMPARE(bench.stored(PlaylistService::favoritesPlaylistId).name, u"最爱"_s);
}

void PlaylistEditorTest::desktopsDialogIsAskedForOnePicture()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    QSignalSpy own(&bench.editor(), &PlaylistEditorViewModel::ownPictureDialogRequested);
    bench.home.filePicker().answer = QList<QUrl>{bench.picture(u"c.png"_s, {40, 20})};
    bench.editor().chooseCover(playlist.id);
    QTRY_VERIFY(bench.stored(playlist.id).coverImageData);
    const FilePicker::Request request = bench.home.filePicker().requests.constFirst();
    QCOMPARE(request.kind, FilePicker::Kind::picture);
    QVERIFY(request.extensions.contains(u"jpg"_s) && request.extensions.contains(u"png"_s));
    QVERIFY(!request.extensions.contains(u"mp3"_s));
    QCOMPARE(own.size(), 0);
    // Made so large that it covers the square.
    QCOMPARE(bench.stored(playlist.id).coverImage().value().size(), QSize(600, 300));
    QVERIFY(bench.editor().coverNotice().isEmpty());
}

void PlaylistEditorTest::withoutADesktopDialogOursIsRequested()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    QSignalSpy own(&bench.editor(), &PlaylistEditorViewModel::ownPictureDialogRequested);
    bench.editor().chooseCover(playlist.id);
    QTRY_COMPARE(own.size(), 1);
    bench.editor().takeCover({bench.picture(u"c.png"_s)});
    QTRY_VERIFY(bench.stored(playlist.id).coverImageData);
    bench.home.platform.filePicker.reset();
    bench.editor().chooseCover(playlist.id);
    QTRY_COMPARE(own.size(), 2);
}

void PlaylistEditorTest::cancelledDialogLeavesTheCover()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.home.filePicker().answer = QList<QUrl>();
    bench.editor().chooseCover(playlist.id);
    settle();
    QCOMPARE(bench.home.filePicker().requests.size(), 1);
    QVERIFY(!bench.stored(playlist.id).coverImageData);
    QVERIFY(bench.editor().coverNotice().isEmpty());
}

void PlaylistEditorTest::badPictureIsSaidAndTheOldCoverStays_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("text") << QByteArray("not a picture");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("begun") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
    QTest::newRow("gone") << QByteArray("-");
}

void PlaylistEditorTest::badPictureIsSaidAndTheOldCoverStays()
{
    QFETCH(const QByteArray, bytes);
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.home.filePicker().answer = QList<QUrl>{bench.picture(u"good.png"_s)};
    bench.editor().chooseCover(playlist.id);
    QTRY_VERIFY(bench.stored(playlist.id).coverImageData);
    const QByteArray before = *bench.stored(playlist.id).coverImageData;

    const QUrl bad = bench.picture(u"bad.png"_s);
    if (bytes == "-") {
        QVERIFY(QFile::remove(bad.toLocalFile()));
    } else {
        QFile file(bad.toLocalFile());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }
    bench.home.filePicker().answer = QList<QUrl>{bad};
    bench.editor().chooseCover(playlist.id);
    QTRY_VERIFY(bench.editor().coverNotice().contains(u"bad.png"_s));
    QCOMPARE(bench.stored(playlist.id).coverImageData, std::optional(before));
    bench.editor().dismissCoverNotice();
    QVERIFY(bench.editor().coverNotice().isEmpty());
}

void PlaylistEditorTest::nextChoiceTakesTheNoticeAway()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.home.filePicker().answer = QList<QUrl>{QUrl(u"https://pic.example/a.png"_s)};
    bench.editor().chooseCover(playlist.id);
    QTRY_VERIFY(!bench.editor().coverNotice().isEmpty());
    bench.home.filePicker().answer = QList<QUrl>();
    bench.editor().chooseCover(playlist.id);
    QVERIFY(bench.editor().coverNotice().isEmpty());
}

void PlaylistEditorTest::coverIsRemoved()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.home.filePicker().answer = QList<QUrl>{bench.picture(u"c.png"_s)};
    bench.editor().chooseCover(playlist.id);
    QTRY_VERIFY(bench.data(playlist.id, PlaylistListModel::HasCoverRole).toBool());
    bench.editor().removeCover(playlist.id);
    QVERIFY(!bench.stored(playlist.id).coverImageData);
    QTRY_VERIFY(!bench.data(playlist.id, PlaylistListModel::HasCoverRole).toBool());
    bench.editor().removeCover(u"never there"_s);
}

void PlaylistEditorTest::ofTwoPicturesTheLastOneStays()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.home.filePicker().answer = QList<QUrl>{bench.picture(u"large.png"_s, {3000, 3000})};
    bench.editor().chooseCover(playlist.id);
    bench.home.filePicker().answer = QList<QUrl>{bench.picture(u"small.png"_s, {20, 40})};
    bench.editor().chooseCover(playlist.id);
    QThreadPool::globalInstance()->waitForDone();
    settle();
    QTRY_VERIFY(bench.stored(playlist.id).coverImageData);
    QThreadPool::globalInstance()->waitForDone();
    settle();
    QCOMPARE(bench.stored(playlist.id).coverImage().value().size(), QSize(300, 600));
}

void PlaylistEditorTest::pictureOfADeletedPlaylistIsDropped()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.home.filePicker().answer = QList<QUrl>{bench.picture(u"c.png"_s)};
    bench.editor().chooseCover(playlist.id);
    bench.service().deletePlaylist(playlist);
    QThreadPool::globalInstance()->waitForDone();
    settle();
    QCOMPARE(bench.service().playlists().size(), 2);
    QVERIFY(bench.editor().coverNotice().isEmpty());
}

void PlaylistEditorTest::deletionIsAskedAndDone()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.editor().askToDelete(playlist.id);
    QVERIFY(bench.editor().asksToDelete());
    QCOMPARE(bench.editor().pendingDeleteName(), u"甲"_s);
    QVERIFY(bench.service().playlist(playlist.id));
    bench.editor().confirmDelete();
    QVERIFY(!bench.editor().asksToDelete());
    QVERIFY(!bench.service().playlist(playlist.id));
}

void PlaylistEditorTest::cancelledDeletionKeepsThePlaylist()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    const Playlist playlist = bench.addLocal(u"甲"_s);
    bench.editor().askToDelete(playlist.id);
    bench.editor().cancelDelete();
    bench.editor().confirmDelete();
    QVERIFY(bench.service().playlist(playlist.id));
}

void PlaylistEditorTest::favouritesAreNeverAskedAbout()
{
    PlaylistsBench bench;
    bench.startPlaylists();
    bench.editor().askToDelete(PlaylistService::favoritesPlaylistId);
    bench.editor().askToDelete(PlaylistService::favoritesOnlinePlaylistId);
    bench.editor().askToDelete(u"never there"_s);
    QVERIFY(!bench.editor().asksToDelete());
    bench.editor().confirmDelete();
    QCOMPARE(bench.service().playlists().size(), 2);
}

void PlaylistEditorTest::editorThatGoesWhileAPictureIsReadIsSafe()
{
    auto bench = std::make_unique<PlaylistsBench>();
    bench->startPlaylists();
    const Playlist playlist = bench->addLocal(u"甲"_s);
    bench->home.filePicker().answer = QList<QUrl>{bench->picture(u"c.png"_s, {2000, 2000})};
    bench->editor().chooseCover(playlist.id);
    bench.reset();
    QThreadPool::globalInstance()->waitForDone();
    settle();
}

void PlaylistEditorTest::largePhotographIsMadeSmall()
{
    const PlaylistsBench bench;
    QCOMPARE(readPicture(bench.picture(u"wide.png"_s, {4000, 2000}).toLocalFile()).size(), QSize(1200, 600));
    QCOMPARE(readPicture(bench.picture(u"small.png"_s, {40, 20}).toLocalFile()).size(), QSize(40, 20));
    // Scaled to the side of a cover, a strip would fill the memory.
    QVERIFY(readPicture(bench.picture(u"strip.png"_s, {4000, 2}).toLocalFile()).isNull());
}

QTEST_GUILESS_MAIN(PlaylistEditorTest)
#include "tst_playlist_editor.moc"
