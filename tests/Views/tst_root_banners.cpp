// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/AudioPlayerService.h"
#include "Views/RootScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

/// What has gone wrong is said over everything else, and beneath nothing.
class RootBannersTest : public RootScreenTest
{
    Q_OBJECT
private Q_SLOTS:
    void playErrorIsShownAndDismissed_data() { addThemes(); }
    void playErrorIsShownAndDismissed();
    void playErrorIsSaidOverTheCover_data() { addLooks(); }
    void playErrorIsSaidOverTheCover();
    void aDeviceThatIsGoneIsSaidOverEverything_data() { addThemes(); }
    void aDeviceThatIsGoneIsSaidOverEverything();
};

void RootBannersTest::playErrorIsShownAndDismissed()
{
    QFETCH(ThemeType, type);
    QVERIFY(showLibrary(2));
    QVERIFY(switchTo(type));
    QVERIFY(playRow(0));
    t->player->lastItem()->fail(u"文件坏了"_s);
    QTRY_VERIFY(t->shows(u"playErrorBanner"_s));
    QQuickItem *banner = t->item(u"playErrorBanner"_s);
    QCOMPARE(banner->property("text").toString(), t->audioPlayer->playErrorText());
    const QQuickItem *bar = t->item(u"tabBar"_s);
    QVERIFY(banner->mapToScene(QPointF(0, banner->height())).y() <= bar->mapToScene({}).y());
    t->click(banner->findChild<QQuickItem *>(u"dismissButton"_s));
    QTRY_VERIFY(!t->shows(u"playErrorBanner"_s));
    QVERIFY(!t->audioPlayer->playError());
}

void RootBannersTest::playErrorIsSaidOverTheCover()
{
    t->addFile(u"a.mp3"_s, {u"歌"_s, u"歌手"_s, u"专辑"_s, 200, TestWindow::picture(Qt::red, Qt::green)});
    QVERIFY(t->scan());
    QVERIFY(showInLook());
    QVERIFY(playRow(0));
    QVERIFY(openNowPlaying());
    QVERIFY(!t->shows(u"playErrorBanner"_s));
    t->player->lastItem()->fail(u"文件坏了"_s);
    QTRY_VERIFY(t->shows(u"playErrorBanner"_s));
    QVERIFY(layerOf(u"playErrorBanner"_s) > layerOf(u"nowPlayingCover"_s));
    const QQuickItem *banner = t->item(u"playErrorBanner"_s);
    const QRectF place = banner->mapRectToScene(banner->boundingRect());
    for (const auto &name : {u"topBar"_s, u"progressView"_s, u"playbackControls"_s}) {
        const QQuickItem *other = t->item(name);
        QVERIFY2(!place.intersects(other->mapRectToScene(other->boundingRect())), qPrintable(name));
    }
    check(u"error over the cover"_s);
    // It goes with the cover to where it stands otherwise, and is closed where it is.
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"nowPlayingCover"_s));
    const double bottom = banner->mapToScene(QPointF(0, banner->height())).y();
    QVERIFY(bottom <= t->item(u"tabBar"_s)->mapToScene({}).y());
    QVERIFY(openNowPlaying());
    t->click(banner->findChild<QQuickItem *>(u"dismissButton"_s));
    QTRY_VERIFY(!t->shows(u"playErrorBanner"_s));
    QVERIFY(!t->audioPlayer->playError());
    QVERIFY(showsNowPlaying());
}

void RootBannersTest::aDeviceThatIsGoneIsSaidOverEverything()
{
    QFETCH(ThemeType, type);
    QVERIFY(showLibrary(2));
    QVERIFY(switchTo(type));
    QVERIFY(playRow(0));
    const auto lose = [this] {
        t->outputDevices->setDevices({{.id = u"bt"_s, .name = u"蓝牙耳机"_s}});
        t->outputDevices->choose(u"bt"_s);
        t->outputDevices->setDevices({});
    };
    for (const bool overTheCover : {false, true}) {
        if (overTheCover)
            QVERIFY(openNowPlaying());
        lose();
        QTRY_VERIFY(t->shows(u"deviceBanner"_s));
        t->player->lastItem()->fail(u"文件坏了"_s);
        QTRY_VERIFY(t->shows(u"playErrorBanner"_s));
        // In front of everything, and neither beneath the other.
        QQuickItem *banner = t->item(u"deviceBanner"_s);
        QVERIFY(banner->property("text").toString().contains(u"蓝牙耳机"_s));
        QVERIFY(layerOf(u"miniPlayerDisc"_s) < layerOf(u"nowPlayingCover"_s));
        QVERIFY(layerOf(u"nowPlayingCover"_s) < layerOf(u"deviceBanner"_s));
        QVERIFY(layerOf(u"nowPlayingCover"_s) < layerOf(u"playErrorBanner"_s));
        const QRectF place = banner->mapRectToScene(banner->boundingRect());
        const QStringList others = overTheCover ? QStringList{u"topBar"_s, u"playbackControls"_s}
                                                : QStringList{u"tabBar"_s, u"miniPlayerDisc"_s};
        for (const QString &name : others + QStringList{u"playErrorBanner"_s}) {
            const QQuickItem *other = t->item(name);
            QVERIFY2(!place.intersects(other->mapRectToScene(other->boundingRect())), qPrintable(name));
        }
        QQuickItem *button = banner->findChild<QQuickItem *>(u"hintAction"_s);
        QCOMPARE(button->property("text").toString(), u"好"_s);
        t->click(button);
        QVERIFY(!t->shows(u"deviceBanner"_s));
        QVERIFY(t->shows(u"playErrorBanner"_s));
        QCOMPARE(showsNowPlaying(), overTheCover);
    }
}

QTEST_MAIN(RootBannersTest)
#include "tst_root_banners.moc"
