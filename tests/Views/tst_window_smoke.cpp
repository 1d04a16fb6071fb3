// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "ViewModels/LibraryViewModel.h"
#include "Views/RootScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

/// Goes through the states of the window in every look and size, each of which must come up without a
/// warning, with a name on every control and with no text that leaves the window.
class WindowSmokeTest : public RootScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void everyStateComesUp_data();
    void everyStateComesUp();
};

void WindowSmokeTest::everyStateComesUp_data()
{
    addLooks(true);
}

void WindowSmokeTest::everyStateComesUp()
{
    QVERIFY(showInLook());
    QCOMPARE(t->window->color(), t->themeManager->currentTheme()->backgroundColor());
    check(u"empty"_s);

    const QString endless = u"很长的名字"_s.repeated(40);
    t->addFile(u"a.mp3"_s, {endless, endless, endless, 36'000, TestWindow::picture(Qt::red, Qt::green)});
    t->addFile(u"b.mp3"_s, {u"<b>不是标记</b> & 🎵"_s, u"Ünï"_s, {}, 0, "no picture"});
    QVERIFY(t->scan());
    QTRY_VERIFY(t->row(1));
    check(u"library"_s);

    QVERIFY(playRow(0, 36'000));
    t->player->tick(20'000);
    QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
    check(u"playing"_s);
    QVERIFY(openNowPlaying());
    check(u"now playing"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"nowPlayingCover"_s));

    t->click(u"importButton"_s);
    QTRY_VERIFY(t->object(u"importMenu"_s)->property("opened").toBool());
    check(u"import menu"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->object(u"importMenu"_s)->property("visible").toBool());

    QTest::keyClick(t->window, Qt::Key_Down);
    QTest::keyClick(t->window, Qt::Key_Delete);
    QTRY_VERIFY(t->object(u"deleteDialog"_s)->property("opened").toBool());
    check(u"delete dialog"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->object(u"deleteDialog"_s)->property("visible").toBool());

    t->player->lastItem()->fail(endless);
    t->library->importUrls({QUrl::fromLocalFile(u"/nowhere/"_s + endless + u".png"_s)});
    QTRY_VERIFY(t->shows(u"playErrorBanner"_s) && t->shows(u"importBanner"_s));
    check(u"errors"_s);

    for (const bool folder : {false, true}) {
        Q_EMIT t->library->ownPickerRequested(folder);
        QTRY_VERIFY(t->object(u"pickerSheet"_s)->property("opened").toBool());
        check(u"picker"_s);
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->object(u"pickerSheet"_s)->property("visible").toBool());
    }
}

QTEST_MAIN(WindowSmokeTest)
#include "tst_window_smoke.moc"
