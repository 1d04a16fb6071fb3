// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/TestApp.h"
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/TestPlatform.h"
#include "Platform/Preferences.h"
#include "Platform/SharedServices.h"

#include <QDir>
#include <QLoggingCategory>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestCadorelApp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { t = std::make_unique<TestApp>(); }
    void cleanup() { t.reset(); }
    void updatesAreAskedBeforeAnnouncements();
    void aForcedUpdateMakesNoAnnouncementRequest();
    void backgroundAndInactiveBothWriteTheSnapshot_data();
    void backgroundAndInactiveBothWriteTheSnapshot();
    void theEndKeepsThePlaceAlsoOfAPlayerOutOfSight_data();
    void theEndKeepsThePlaceAlsoOfAPlayerOutOfSight();
    void becomingActiveDoesNothing();
    void theFirstFrameTakesUpFilesPutIntoTheMusicFolder();
    void theSharedServicesComeUpInTheirOrder();

private:
    /// Where the next start would go on; -1 if nowhere.
    double storedPosition() const
    {
        const auto snapshot = PlaybackSnapshot::decoded(
            t->platform.preferences->dataValue(u"lastPlaybackState"_s).value_or(QByteArray()));
        return snapshot ? snapshot->position : -1;
    }

    std::unique_ptr<TestApp> t;
};

void TestCadorelApp::updatesAreAskedBeforeAnnouncements()
{
    t->app->rootAppeared();
    QCOMPARE(t->channels.calls, QStringList({u"launch"_s, u"updates"_s}));
    t->channels.updateAnswer.finish();
    QTRY_COMPARE(t->channels.calls, QStringList({u"launch"_s, u"updates"_s, u"announcements"_s}));
}

void TestCadorelApp::aForcedUpdateMakesNoAnnouncementRequest()
{
    QSignalSpy changes(t->app.get(), &CadorelApp::isForceUpdateRequiredChanged);
    t->app->rootAppeared();
    QVERIFY(!t->app->isForceUpdateRequired());
    t->channels.forced = true;
    bool answered = false;
    t->channels.updateAnswer.future().then(this, [&answered] { answered = true; });
    t->channels.updateAnswer.finish();
    QTRY_VERIFY(answered);
    QTRY_VERIFY(t->app->isForceUpdateRequired());
    QCOMPARE(changes.size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(t->channels.calls, QStringList({u"launch"_s, u"updates"_s}));
}

void TestCadorelApp::backgroundAndInactiveBothWriteTheSnapshot_data()
{
    QTest::addColumn<CadorelApp::ScenePhase>("phase");
    QTest::newRow("background") << CadorelApp::ScenePhase::background;
    QTest::newRow("inactive") << CadorelApp::ScenePhase::inactive;
}

void TestCadorelApp::backgroundAndInactiveBothWriteTheSnapshot()
{
    QFETCH(CadorelApp::ScenePhase, phase);
    QVERIFY(t->playASong());
    t->streamPlayer->tick(4.5);
    t->app->setScenePhase(phase);
    QCOMPARE(t->app->scenePhase(), phase);
    QCOMPARE(storedPosition(), 4.5);
    QCOMPARE(t->channels.calls, QStringList({u"background"_s}));
}

void TestCadorelApp::theEndKeepsThePlaceAlsoOfAPlayerOutOfSight_data()
{
    QTest::addColumn<CadorelApp::ScenePhase>("phase");
    QTest::newRow("in sight") << CadorelApp::ScenePhase::active;
    QTest::newRow("without the keyboard") << CadorelApp::ScenePhase::inactive;
    QTest::newRow("minimised") << CadorelApp::ScenePhase::background;
}

void TestCadorelApp::theEndKeepsThePlaceAlsoOfAPlayerOutOfSight()
{
    QFETCH(CadorelApp::ScenePhase, phase);
    QVERIFY(t->playASong());
    t->streamPlayer->tick(2);
    t->app->setScenePhase(phase);
    t->streamPlayer->tick(7.5);
    t->channels.calls.clear();
    t->app->aboutToEnd();
    QCOMPARE(storedPosition(), 7.5);
    QCOMPARE(t->app->scenePhase(), CadorelApp::ScenePhase::background);
    // It went there once.
    const bool wasThere = phase == CadorelApp::ScenePhase::background;
    QCOMPARE(t->channels.calls, wasThere ? QStringList() : QStringList({u"background"_s}));
}

void TestCadorelApp::becomingActiveDoesNothing()
{
    QVERIFY(t->playASong());
    t->app->setScenePhase(CadorelApp::ScenePhase::inactive);
    t->channels.calls.clear();
    t->platform.preferences->remove(u"lastPlaybackState"_s);
    t->app->setScenePhase(CadorelApp::ScenePhase::active);
    QVERIFY(!t->platform.preferences->contains(u"lastPlaybackState"_s));
    QCOMPARE(t->channels.calls, QStringList());
    QVERIFY(t->player->isPlaying());
}

void TestCadorelApp::theFirstFrameTakesUpFilesPutIntoTheMusicFolder()
{
    QFile file(t->platform.directories.documents + u"/放在这里.mp3"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QCOMPARE(t->importService->importedSongs().size(), 0);
    t->app->firstFrameDrawn();
    QTRY_COMPARE(t->importService->importedSongs().size(), 1);
    QTRY_VERIFY(!t->importService->isScanning());
}

void TestCadorelApp::theSharedServicesComeUpInTheirOrder()
{
    TestPlatform machine;
    machine.platform.desktopAppearance = std::make_unique<FakeDesktopAppearance>(ColorScheme::dark);
    setProcessPlatform(&machine.platform);
    QLoggingCategory::setFilterRules(u"cadorel.platform.shared.debug=true"_s);
    static QStringList made;
    made.clear();
    const QtMessageHandler before =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &message) {
            if (message.startsWith(u"made "_s))
                made.append(message.mid(5).section(u"::"_s, -1));
        });
    auto app = CadorelApp::onSharedServices(machine.platform, {});
    qInstallMessageHandler(before);
    QLoggingCategory::setFilterRules({});

    QCOMPARE(&app->themeService(), &ThemeService::shared());
    QCOMPARE(&app->themeManager(), &ThemeManager::shared());
    QCOMPARE(app->viewModel().audioPlayer(), &AudioPlayerService::shared());
    app.reset();
    releaseSharedServices();
    setProcessPlatform(nullptr);

    // What the player itself needs comes before it.
    QCOMPARE(made.removeAll({}), 0);
    QCOMPARE(made.mid(made.indexOf(u"AudioPlayerService"_s)),
             QStringList({u"AudioPlayerService"_s, u"PlaylistService"_s, u"OnlineMusicService"_s,
                          u"WebDAVService"_s, u"ThemeManager"_s, u"ThemeService"_s}));
    QCOMPARE(made.constFirst(), u"LocalMusicImportService"_s);
}

QTEST_GUILESS_MAIN(TestCadorelApp)
#include "tst_cadorel_app.moc"
