// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/UnprivilegedScope.h"
#include "Services/LocalMusicImportService.h"
#include "ViewModels/FilePickerModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/SongListModel.h"
#include "Views/HeldKey.h"
#include "Views/ScreenTest.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

class FilePickerTest : public ScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void listsFoldersFirstAndAudioOnly();
    void latestFolderWins();
    void selectionBelongsToOneFolder();
    void folderModeGivesTheFolder();
    void unreadableFolderSaysSo();
    void sheetImportsTheChosenFiles();
    void sheetImportsTheFolder();
    void sheetWorksByKeyboard();
    void heldReturnChoosesOnce();

private:
    void touch(const QString &relative) const
    {
        const QString path = t->home.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        QVERIFY(QFile(path).open(QIODevice::WriteOnly));
    }
    static QStringList names(const FilePickerModel &model)
    {
        QStringList result;
        for (int row = 0; row < model.count(); ++row)
            result.append(model.index(row).data(FilePickerModel::NameRole).toString());
        return result;
    }
    void openSheet(bool folder, const QString &relative)
    {
        QVERIFY(t->show());
        Q_EMIT t->library->ownPickerRequested(folder);
        QTRY_VERIFY(t->object(u"pickerSheet"_s)->property("opened").toBool());
        auto *model = t->window->findChild<FilePickerModel *>(u"pickerSheetFiles"_s);
        QVERIFY(model);
        model->open(t->home.filePath(relative));
        QTRY_COMPARE(model->folder(), t->home.filePath(relative));
        QTRY_VERIFY(!model->isLoading());
    }
    QQuickItem *pickerRow(int index) const
    {
        QQuickItem *found = nullptr;
        QMetaObject::invokeMethod(t->item(u"pickerList"_s), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found),
                                  Q_ARG(int, index));
        return found;
    }
};

void FilePickerTest::listsFoldersFirstAndAudioOnly()
{
    for (const auto &name : {u"m/b/x.mp3"_s, u"m/a/y.mp3"_s, u"m/10.flac"_s, u"m/9.MP3"_s, u"m/封面.jpg"_s,
                             u"m/.hidden.mp3"_s, u"m/.cache/z.mp3"_s, u"m/no ending"_s})
        touch(name);
    FilePickerModel model;
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::QtTest);
    QSignalSpy loading(&model, &FilePickerModel::isLoadingChanged);
    model.open(t->home.filePath(u"m"_s));
    QVERIFY(model.isLoading());
    QTRY_COMPARE(names(model), QStringList({u"a"_s, u"b"_s, u"9.MP3"_s, u"10.flac"_s}));
    QVERIFY(!model.isLoading());
    QCOMPARE(loading.size(), 2);
    QCOMPARE(model.folderName(), u"m"_s);
    QVERIFY(model.index(0).data(FilePickerModel::IsFolderRole).toBool());
    QVERIFY(!model.index(2).data(FilePickerModel::IsFolderRole).toBool());

    model.activate(0);
    QTRY_COMPARE(names(model), QStringList({u"y.mp3"_s}));
    model.up();
    QTRY_COMPARE(model.count(), 4);
    model.setExtensions({u"jpg"_s});
    QTRY_COMPARE(names(model), QStringList({u"a"_s, u"b"_s, u"封面.jpg"_s}));
}

void FilePickerTest::latestFolderWins()
{
    touch(u"one/1.mp3"_s);
    touch(u"two/2.mp3"_s);
    FilePickerModel model;
    for (int i = 0; i < 20; ++i) {
        model.open(t->home.filePath(u"one"_s));
        model.open(t->home.filePath(u"two"_s));
        QTRY_VERIFY(!model.isLoading());
        QCOMPARE(names(model), QStringList({u"2.mp3"_s}));
    }
}

void FilePickerTest::selectionBelongsToOneFolder()
{
    touch(u"m/1.mp3"_s);
    touch(u"m/2.mp3"_s);
    touch(u"m/sub/3.mp3"_s);
    FilePickerModel model;
    model.open(t->home.filePath(u"m"_s));
    QTRY_COMPARE(model.count(), 3);
    QSignalSpy counts(&model, &FilePickerModel::selectedCountChanged);
    model.activate(2);
    model.activate(1);
    QCOMPARE(model.selectedCount(), 2);
    QCOMPARE(model.chosenUrls(), QList<QUrl>({QUrl::fromLocalFile(t->home.filePath(u"m/1.mp3"_s)),
                                              QUrl::fromLocalFile(t->home.filePath(u"m/2.mp3"_s))}));
    model.activate(1);
    QCOMPARE(model.selectedCount(), 1);
    QCOMPARE(counts.size(), 3);
    model.activate(7);
    model.activate(-1);
    QCOMPARE(model.selectedCount(), 1);
    model.activate(0);
    QTRY_COMPARE(model.count(), 1);
    QCOMPARE(model.selectedCount(), 0);
    QVERIFY(model.chosenUrls().isEmpty());
}

void FilePickerTest::folderModeGivesTheFolder()
{
    touch(u"m/1.mp3"_s);
    FilePickerModel model;
    model.setFolderMode(true);
    QVERIFY(model.chosenUrls().isEmpty());
    model.open(t->home.filePath(u"m/"_s));
    QTRY_COMPARE(model.count(), 1);
    model.activate(0);
    QCOMPARE(model.selectedCount(), 0);
    QCOMPARE(model.chosenUrls(), QList<QUrl>({QUrl::fromLocalFile(t->home.filePath(u"m"_s))}));
}

void FilePickerTest::unreadableFolderSaysSo()
{
    FilePickerModel model;
    model.setFolderMode(true);
    model.open(t->home.filePath(u"nowhere"_s));
    QTRY_COMPARE(model.errorText(), u"这个文件夹不存在"_s);
    QVERIFY(model.chosenUrls().isEmpty());
    QVERIFY(model.canGoUp());
    model.up();
    QTRY_COMPARE(model.errorText(), QString());

    touch(u"locked/1.mp3"_s);
    QFile::setPermissions(t->home.filePath(u"locked"_s), QFile::WriteOwner);
    const UnprivilegedScope withoutRights;
    QVERIFY(withoutRights.isActive());
    model.open(t->home.filePath(u"locked"_s));
    QTRY_COMPARE(model.errorText(), u"没有权限打开这个文件夹"_s);
}

void FilePickerTest::sheetImportsTheChosenFiles()
{
    for (int i = 0; i < 3; ++i)
        t->addForeignFile(u"m/%1.mp3"_s.arg(i), {u"选 %1"_s.arg(i), {}, {}, 100, {}});
    openSheet(false, u"m"_s);
    QQuickItem *accept = t->item(u"pickerAccept"_s);
    QVERIFY(!accept->isEnabled());
    QTRY_VERIFY(pickerRow(2));
    t->click(pickerRow(0));
    t->click(pickerRow(2));
    QTRY_COMPARE(accept->property("text").toString(), u"导入 2 个文件"_s);
    t->click(accept);
    QTRY_COMPARE(t->library->songs()->count(), 2);
    QTRY_VERIFY(!t->object(u"pickerSheet"_s)->property("visible").toBool());
    QCOMPARE(t->library->songs()->songs().at(1).title(), u"选 2"_s);
}

void FilePickerTest::sheetImportsTheFolder()
{
    t->addForeignFile(u"m/in/1.mp3"_s, {u"里面"_s, {}, {}, 100, {}});
    openSheet(true, u"m"_s);
    t->click(pickerRow(0));
    auto *model = t->window->findChild<FilePickerModel *>(u"pickerSheetFiles"_s);
    QTRY_COMPARE(model->folderName(), u"in"_s);
    QCOMPARE(t->item(u"pickerAccept"_s)->property("text").toString(), u"导入此文件夹"_s);
    QTRY_VERIFY(t->item(u"pickerAccept"_s)->isEnabled());
    t->click(u"pickerUp"_s);
    QTRY_COMPARE(model->folderName(), u"m"_s);
    QTRY_VERIFY(t->item(u"pickerAccept"_s)->isEnabled());
    t->click(u"pickerAccept"_s);
    QTRY_COMPARE(t->library->songs()->count(), 1);
}

void FilePickerTest::sheetWorksByKeyboard()
{
    t->addForeignFile(u"m/in/1.mp3"_s, {u"里面"_s, {}, {}, 100, {}});
    QVERIFY(QDir(QFileInfo(t->addForeignFile(u"m/2.mp3"_s, {u"外面"_s, {}, {}, 100, {}})).path())
                .mkpath(u"zzz"_s));
    openSheet(false, u"m"_s);
    auto *model = t->window->findChild<FilePickerModel *>(u"pickerSheetFiles"_s);
    QTRY_VERIFY(t->item(u"pickerList"_s)->hasActiveFocus());
    QTRY_COMPARE(model->count(), 3);
    // Back from a folder with nothing in it.
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_COMPARE(model->folderName(), u"zzz"_s);
    QTRY_VERIFY(t->item(u"pickerEmpty"_s)->isVisible());
    QTest::keyClick(t->window, Qt::Key_Backspace);
    QTRY_COMPARE(model->folderName(), u"m"_s);
    QTRY_COMPARE(model->count(), 3);
    t->item(u"pickerList"_s)->setProperty("currentIndex", -1);
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Return);
    QTRY_COMPARE(model->folderName(), u"in"_s);
    QTRY_COMPARE(model->count(), 1);
    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Space);
    QCOMPARE(model->selectedCount(), 1);
    QTest::keyClick(t->window, Qt::Key_Backspace);
    QTRY_COMPARE(model->folderName(), u"m"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->object(u"pickerSheet"_s)->property("visible").toBool());
}

void FilePickerTest::heldReturnChoosesOnce()
{
    t->addForeignFile(u"m/1.mp3"_s, {u"一"_s, {}, {}, 100, {}});
    openSheet(false, u"m"_s);
    auto *model = t->window->findChild<FilePickerModel *>(u"pickerSheetFiles"_s);
    QTRY_VERIFY(t->item(u"pickerList"_s)->hasActiveFocus());
    QTest::keyClick(t->window, Qt::Key_Down);
    holdReturn(t->window);
    QCOMPARE(model->selectedCount(), 1);
}

QTEST_MAIN(FilePickerTest)
#include "tst_file_picker.moc"
