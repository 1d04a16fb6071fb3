// SPDX-License-Identifier: GPL-3.0-or-later
// Saves a picture of every state of the window, in each look, light and dark, narrow and wide, for a person
// to look at.
//   screen_gallery DIRECTORY [LOOK…] [SCHEME…] [SIZE…] [GROUP…]   all looks, schemes, sizes and groups of
//   states, or
//                                                                those named; a SIZE is as 320x568 or, with
//                                                                larger texts, 320x568@1.3
#include "Views/Gallery.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/WebDAVService.h"
#include "Utils/Console.h"
#include "ViewModels/FilePickerModel.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/WebDAVServerFormViewModel.h"
#include "ViewModels/WebDAVServerPageViewModel.h"
#include "ViewModels/WebDAVServersViewModel.h"
#include "Views/TestWindow.h"
#include "Views/UserInterface.h"

#include <QGuiApplication>
#include <QPalette>
#include <QRegularExpression>
#include <QSemaphore>
#include <QTest>

#include <cstdio>

using namespace cadorel;
using namespace cadorel::gallery;
using namespace Qt::StringLiterals;

void gallery::addSongs(TestWindow &test)
{
    const QList<TestWindow::MadeSong> songs = {
        {u"清晨的第一班船"_s, u"林间小队"_s, u"远岸"_s, 215, TestWindow::picture(0x1f6f8b, 0x99a8b2)},
        {u"Paper Lanterns"_s, u"The Quiet Harbour"_s, u"Tides"_s, 187.4,
         TestWindow::picture(0xe07a5f, 0x3d405b)},
        {u"一首名字特别特别长的歌，长到在手机的宽度上无论如何也放不下"_s,
         u"同样有着很长很长名字的一支乐队与他们的朋友们"_s, u"现场录音全集（纪念版）"_s, 3725,
         TestWindow::picture(0x81b29a, 0xf2cc8f)},
        {u"🌙 夜航 ✨"_s, u"阿眠"_s, u"夜航"_s, 301, TestWindow::picture(0x22223b, 0x9a8c98)},
        {u"A Rather Long English Title That Will Certainly Be Cut Off Somewhere"_s,
         u"Someone feat. Someone Else"_s,
         u"Collected Works, Volume Twelve"_s,
         64,
         {}},
        {u"无题"_s, {}, {}, 0, {}},
        {u"Ελληνικά και кириллица"_s, u"Ünïcödé"_s, u"Ærø"_s, 59,
         TestWindow::picture(0xffb703, 0xfb8500, {900, 300})},
        {u"雨后"_s, u"林间小队"_s, u"远岸"_s, 242, TestWindow::picture(0x1f6f8b, 0x99a8b2)},
        {u"山谷回声"_s, u"林间小队"_s, u"远岸"_s, 198, "no picture at all"},
        {u"2046"_s, u"阿眠"_s, u"夜航"_s, 333, TestWindow::picture(0x22223b, 0x9a8c98)},
        {u"Last Train"_s, u"The Quiet Harbour"_s, u"Tides"_s, 276, TestWindow::picture(0xe07a5f, 0x3d405b)},
        {u"再见，夏天"_s, u"阿眠"_s, u"夏天"_s, 254, TestWindow::picture(0xd62828, 0xfcbf49)},
    };
    int number = 0;
    for (const TestWindow::MadeSong &song : songs)
        test.addFile(QString::asprintf("%02d.mp3", ++number), song);
}

namespace {

void libraryStates(const Gallery &gallery)
{
    TestWindow test;
    addSongs(test);
    if (!test.scan())
        qFatal("the songs are not taken up");
    gallery.show(test);
    gallery.save(test, u"library"_s);

    test.library->playSongAt(2);
    const auto item = test.player->lastItem();
    item->answerDuration(3725);
    item->becomeReady();
    test.player->tick(1234);
    gallery.save(test, u"playing"_s);

    test.item(u"songList"_s)->forceActiveFocus();
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(test.window, Qt::Key_Down);
    QTest::mouseMove(test.window, TestWindow::centre(test.row(5)));
    gallery.saveHovered(test, u"keyboard-and-hover"_s);

    test.click(u"importButton"_s);
    gallery.save(test, u"import-menu"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);

    test.click(test.row(3), Qt::RightButton);
    gallery.save(test, u"song-menu"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();

    test.item(u"songList"_s)->forceActiveFocus();
    QTest::keyClick(test.window, Qt::Key_Up);
    QTest::keyClick(test.window, Qt::Key_Delete);
    gallery.save(test, u"delete-dialog"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();

    item->fail(u"打不开文件"_s);
    test.library->importUrls({QUrl::fromLocalFile(u"/nowhere/封面.png"_s)});
    gallery.save(test, u"errors"_s);
}

void importStates(const Gallery &gallery)
{
    TestWindow test;
    gallery.show(test);
    gallery.save(test, u"empty"_s);

    QSemaphore mayRead;
    QList<QUrl> urls;
    for (int i = 0; i < 20; ++i) {
        const QString name = u"/新歌 %1.mp3"_s.arg(i);
        urls.append(QUrl::fromLocalFile(test.addForeignFile(
            u"下载"_s + name, {u"新歌 %1"_s.arg(i), u"阿眠"_s, u"夜航"_s, 100.0 + i, {}})));
    }
    test.reader->onOpen = [&mayRead](const QString &) { mayRead.acquire(); };
    test.library->importUrls(urls);
    gallery.save(test, u"import-begins"_s);
    mayRead.release(7);
    gallery.save(test, u"importing"_s);
    mayRead.release(1000);
    await([&test] { return !test.importService->isImporting(); });
    test.reader->onOpen = {};
    test.importService->rescan();
    gallery.save(test, u"imported"_s);
}

void pickerStates(const Gallery &gallery)
{
    TestWindow test;
    for (const auto *folder : {"专辑", "Downloads from last year", "有声书", "现场", ".hidden"})
        QDir().mkpath(test.home.filePath(u"Music/"_s + QString::fromUtf8(folder)));
    for (int i = 1; i < 15; ++i)
        test.addForeignFile(u"Music/%1 - 一首歌的文件名可以很长很长很长很长很长.flac"_s.arg(i), {});
    gallery.show(test);
    qputenv("HOME", test.home.path().toUtf8());
    auto *files = test.window->findChild<FilePickerModel *>(u"pickerSheetFiles"_s);
    Q_EMIT test.library->ownPickerRequested(false);
    files->open(test.home.filePath(u"Music"_s));
    await([files] { return files->count() > 0 && !files->isLoading(); });
    files->activate(6);
    files->activate(8);
    files->activate(9);
    gallery.save(test, u"picker-files"_s);
    files->setFolderMode(true);
    test.window->findChild<QObject *>(u"pickerSheet"_s)->setProperty("folderMode", true);
    gallery.save(test, u"picker-folder"_s);
    files->open(u"/root/nowhere"_s);
    gallery.save(test, u"picker-error"_s);
}

WebDAVServerFormViewModel &openForm(TestWindow &test)
{
    test.servers->addServer();
    return *test.servers->form();
}

void formStates(const Gallery &gallery)
{
    TestWindow test;
    gallery.show(test);
    test.click(u"webdavTab"_s);
    gallery.save(test, u"servers-empty"_s);

    WebDAVServerFormViewModel &form = openForm(test);
    gallery.save(test, u"form-new"_s);
    test.click(u"choosePreset"_s);
    gallery.save(test, u"form-presets"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    form.applyPreset(1);
    gallery.save(test, u"form-preset-taken"_s);
    form.port()->edit(u"70000"_s);
    form.serverURL()->edit(u"dav.example.com"_s);
    form.save();
    gallery.save(test, u"form-errors"_s);
    form.serverURL()->edit(u"http://dav.example.com"_s);
    form.port()->edit(u"80"_s);
    form.name()->edit(u"一台名字特别特别长的服务器，长到在手机的宽度上放不下 🎧"_s);
    form.username()->edit(u"小明"_s);
    form.password()->edit(u"secret word"_s);
    form.test();
    await([&test] { return test.folders->isAsked(); });
    auto *view = test.item(u"formFlickable"_s);
    view->setProperty("contentY", view->property("contentHeight").toReal() - view->height());
    gallery.save(test, u"form-testing"_s);
    test.folders->refuse(401);
    test.folders->answerAll();
    gallery.save(test, u"form-test-failed"_s);
    test.folders->refuse(0);
    test.folders->add(u"/remote.php/dav/files/用户名"_s, {});
    test.click(test.item(u"passwordField"_s)->findChild<QQuickItem *>(u"revealButton"_s));
    form.test();
    await([&test] { return test.folders->answerOne(); });
    gallery.save(test, u"form-test-good"_s);
    test.secrets->hold();
    form.save();
    gallery.save(test, u"form-saving"_s);
    test.secrets->release();
    await([&form] { return !form.isOpen(); });
    test.secrets->hold();
    test.servers->editServer(test.webDAVService->configs().constFirst().uuidText());
    gallery.save(test, u"form-edit-waiting"_s);
    test.secrets->release();
    gallery.save(test, u"form-edit"_s);
}

void serverStates(const Gallery &gallery)
{
    TestWindow test;
    test.folders->add(u"/music"_s, {u"清晨的第一班船.mp3"_s, u"🌙 夜航 ✨.flac"_s,
                                    u"长"_s.repeated(300) + u".mp3"_s, u"Paper Lanterns.m4a"_s, u"a/"_s});
    test.folders->add(u"/music/a"_s, {u"2046.mp3"_s, u"무제.ogg"_s});
    const WebDAVConfig home = test.addServer(u"家里的 NAS"_s);
    const WebDAVConfig away =
        test.addServer(u"一台名字特别特别长的服务器，长到在手机的宽度上放不下 🎧"_s, u"/b"_s);
    const WebDAVConfig empty = test.addServer(u"空的服务器"_s, u"/empty"_s);
    test.addServer(u"😀"_s, u"/new"_s);
    test.folders->add(u"/empty"_s, {});
    gallery.show(test);
    const auto scan = [&test](const WebDAVConfig &config) {
        test.servers->scanServer(config.uuidText());
        await([&test] {
            test.folders->answerAll();
            return !test.webDAVService->isScanning();
        });
    };
    scan(home);
    scan(away);
    scan(empty);
    test.click(u"webdavTab"_s);
    gallery.save(test, u"servers"_s);
    test.click(u"scanAllButton"_s);
    await([&test] { return test.folders->answerOne(); });
    gallery.save(test, u"servers-scanning"_s);
    await([&test] {
        test.folders->answerAll();
        return !test.webDAVService->isScanning();
    });
    settle();
    test.item(u"serverList"_s)->forceActiveFocus();
    QTest::keyClick(test.window, Qt::Key_Down);
    gallery.save(test, u"servers-keyboard"_s);
    QTest::keyClick(test.window, Qt::Key_Menu);
    gallery.save(test, u"server-menu"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();
    QTest::keyClick(test.window, Qt::Key_Delete);
    gallery.save(test, u"server-delete"_s);
    QTest::keyClick(test.window, Qt::Key_Escape);
    settle();

    test.servers->openServer(away.uuidText());
    gallery.save(test, u"server-failed"_s);
    test.servers->openServer(empty.uuidText());
    gallery.save(test, u"server-nothing"_s);
    test.servers->openServer(test.webDAVService->configs().constLast().uuidText());
    gallery.save(test, u"server-unscanned"_s);
    test.servers->page()->scan();
    gallery.save(test, u"server-first-scan"_s);
    await([&test] { return test.folders->answerOne(); });
    test.servers->openServer(home.uuidText());
    gallery.save(test, u"server-songs"_s);
    test.servers->page()->playSongAt(2);
    gallery.save(test, u"server-playing"_s);
    test.servers->page()->scan();
    await([&test] { return test.folders->answerOne(); });
    gallery.save(test, u"server-scanning"_s);
    test.folders->refuse(500);
    await([&test] {
        test.folders->answerAll();
        return !test.webDAVService->isScanning();
    });
    test.servers->editServer(home.uuidText());
    await([&test] { return test.servers->form()->canSubmit(); });
    test.servers->form()->port()->edit(u"8443"_s);
    test.servers->form()->save();
    await([&test] { return !test.servers->form()->isOpen(); });
    gallery.save(test, u"server-stale-and-failed"_s);
}

struct Extent
{
    QSize size;
    double textScale = 1;
};

/// Those of @p all that are wanted by name, which @p wanted then names no more; all, where none is.
template <typename List, typename NameOf>
List named(QStringList &wanted, const List &all, NameOf nameOf)
{
    List found;
    for (const auto &one : all) {
        if (wanted.removeAll(nameOf(one)) > 0)
            found.append(one);
    }
    return found.isEmpty() ? all : found;
}

/// The same of the sizes.
QList<Extent> namedSizes(QStringList &wanted)
{
    static const QRegularExpression form(u"^(\\d+)x(\\d+)(?:@([\\d.]+))?$"_s);
    QList<Extent> sizes;
    wanted.removeIf([&sizes](const QString &word) {
        const QRegularExpressionMatch match = form.match(word);
        if (match.hasMatch()) {
            const double scale = match.hasCaptured(3) ? match.captured(3).toDouble() : 1;
            sizes.append({QSize(match.captured(1).toInt(), match.captured(2).toInt()), scale});
        }
        return match.hasMatch();
    });
    return sizes.isEmpty() ? QList<Extent>{{{390, 844}}, {{1000, 680}}} : sizes;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    if (argc < 2) {
        std::fputs("usage: screen_gallery DIRECTORY [LOOK…] [SCHEME…] [SIZE…] [GROUP…]\n", stderr);
        return 2;
    }
    using States = void (*)(const Gallery &gallery);
    const QList<QPair<QString, States>> groups = {
        {u"library"_s, &libraryStates},    {u"import"_s, &importStates},
        {u"picker"_s, &pickerStates},      {u"form"_s, &formStates},
        {u"server"_s, &serverStates},      {u"online"_s, &searchStates},
        {u"charts"_s, &chartStates},       {u"navidrome"_s, &navidromeStates},
        {u"playlists"_s, &playlistStates}, {u"equalizer"_s, &equalizerStates},
        {u"settings"_s, &settingsStates},  {u"player"_s, &playerStates},
        {u"sheets"_s, &sheetStates},       {u"disc"_s, &discStates},
    };
    QStringList wanted = QCoreApplication::arguments().mid(2);
    const QList<ThemeType> looks =
        named(wanted, allThemeTypes(), [](ThemeType look) { return rawValue(look); });
    const QStringList schemes =
        named(wanted, QStringList{u"light"_s, u"dark"_s}, [](const QString &s) { return s; });
    const QList<Extent> sizes = namedSizes(wanted);
    setConsoleSink([](const QString &) {});
    const QString folder = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(folder);
    installFonts();
    const QPalette light = QGuiApplication::palette();
    const QPalette dark(QColor(0x33, 0x33, 0x33));
    for (const QString &scheme : schemes) {
        QGuiApplication::setPalette(scheme == u"dark"_s ? dark : light);
        for (const Extent &extent : sizes) {
            for (const ThemeType look : looks) {
                const Gallery gallery(folder, look, scheme, extent.size, extent.textScale);
                for (const auto &[name, states] : groups) {
                    if (wanted.isEmpty() || wanted.contains(name))
                        states(gallery);
                }
            }
        }
    }
    return 0;
}
