// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/CadorelApp.h"
#include "Fakes/FakeAssetReader.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakePreferences.h"
#include "Fakes/FakeRandom.h"
#include "Fakes/FakeStreamPlayer.h"
#include "Fakes/FakeSystem.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/Seams/ServerChannels.h"
#include "Utils/Console.h"

#include <QTemporaryDir>
#include <QTest>

#include <QCoroFuture>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// The makers' channels: they note what they were asked, and the update check answers when the test says so.
class FakeChannels : public UsageLog, public UpdateCheck, public AnnouncementCheck
{
public:
    QStringList calls;
    bool forced = false;
    QPromise<void> updateAnswer;

    FakeChannels() { updateAnswer.start(); }
    void logAppLaunch() override { calls.append(u"launch"_s); }
    void logAppBackground() override { calls.append(u"background"_s); }
    QCoro::Task<void> checkForUpdates(bool forceShowPopup) override
    {
        calls.append(forceShowPopup ? u"updates with popup"_s : u"updates"_s);
        co_await updateAnswer.future();
    }
    bool isForceUpdateRequired() const override { return forced; }
    QCoro::Task<void> checkAnnouncements() override
    {
        calls.append(u"announcements"_s);
        co_return;
    }
};

} // namespace

class TestCadorelApp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void updatesAreAskedBeforeAnnouncements();
    void aForcedUpdateMakesNoAnnouncementRequest();
    void backgroundAndInactiveBothWriteTheSnapshot_data();
    void backgroundAndInactiveBothWriteTheSnapshot();
    void becomingActiveDoesNothing();
    void theFirstFrameTakesUpFilesPutIntoTheMusicFolder();

private:
    void playASong();

    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<Platform> m_platform;
    std::unique_ptr<LocalMusicImportService> m_importService;
    std::unique_ptr<AudioPlayerService> m_player;
    std::unique_ptr<FakeChannels> m_channels;
    std::unique_ptr<CadorelApp> m_app;
    FakeStreamPlayer *m_streamPlayer = nullptr;
};

void TestCadorelApp::init()
{
    setConsoleSink([](const QString &) {});
    m_home = std::make_unique<QTemporaryDir>();
    m_platform = std::make_unique<Platform>();
    m_platform->directories = {.documents = m_home->filePath(u"Music"_s),
                               .applicationSupport = m_home->filePath(u"data"_s),
                               .caches = m_home->filePath(u"cache"_s)};
    QVERIFY(QDir().mkpath(m_platform->directories.documents));
    m_platform->preferences = std::make_unique<FakePreferences>();
    m_platform->clock = std::make_unique<FakeClock>();
    m_platform->random = std::make_unique<FakeRandom>();
    m_platform->system = std::make_unique<FakeSystem>();
    m_platform->assetReader = std::make_unique<FakeAssetReader>();
    m_platform->makeStreamPlayer = [this] {
        auto player = std::make_unique<FakeStreamPlayer>();
        m_streamPlayer = player.get();
        return player;
    };
    m_importService = std::make_unique<LocalMusicImportService>(*m_platform);
    m_player = std::make_unique<AudioPlayerService>(*m_platform, *m_importService);
    m_channels = std::make_unique<FakeChannels>();
    m_app = std::make_unique<CadorelApp>(*m_platform, *m_player, *m_importService, LibrarySources(),
                                         AppChannels{m_channels.get(), m_channels.get(), m_channels.get()});
}

void TestCadorelApp::cleanup()
{
    m_app.reset();
    m_channels.reset();
    m_player.reset();
    m_importService.reset();
    m_platform.reset();
    setConsoleSink({});
}

void TestCadorelApp::playASong()
{
    SongFields fields;
    fields.id = u"1"_s;
    fields.assetURL = QUrl::fromLocalFile(m_home->filePath(u"song.mp3"_s));
    m_player->playSong(Song(fields), {});
    m_streamPlayer->lastItem()->answerDuration(10.0);
    QTRY_COMPARE(m_player->duration(), 10.0);
    m_platform->preferences->remove(u"lastPlaybackState"_s);
}

void TestCadorelApp::updatesAreAskedBeforeAnnouncements()
{
    m_app->rootAppeared();
    QCOMPARE(m_channels->calls, QStringList({u"launch"_s, u"updates"_s}));
    m_channels->updateAnswer.finish();
    QTRY_COMPARE(m_channels->calls, QStringList({u"launch"_s, u"updates"_s, u"announcements"_s}));
}

void TestCadorelApp::aForcedUpdateMakesNoAnnouncementRequest()
{
    m_app->rootAppeared();
    m_channels->forced = true;
    bool answered = false;
    m_channels->updateAnswer.future().then(this, [&answered] { answered = true; });
    m_channels->updateAnswer.finish();
    QTRY_VERIFY(answered);
    QCoreApplication::processEvents();
    QCOMPARE(m_channels->calls, QStringList({u"launch"_s, u"updates"_s}));
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
    playASong();
    m_streamPlayer->tick(4.5);
    m_app->setScenePhase(phase);
    const auto snapshot = PlaybackSnapshot::decoded(
        m_platform->preferences->dataValue(u"lastPlaybackState"_s).value_or(QByteArray()));
    QVERIFY(snapshot);
    QCOMPARE(snapshot->position, 4.5);
    QCOMPARE(m_channels->calls, QStringList({u"background"_s}));
}

void TestCadorelApp::becomingActiveDoesNothing()
{
    playASong();
    m_app->setScenePhase(CadorelApp::ScenePhase::inactive);
    m_channels->calls.clear();
    m_platform->preferences->remove(u"lastPlaybackState"_s);
    m_app->setScenePhase(CadorelApp::ScenePhase::active);
    QVERIFY(!m_platform->preferences->contains(u"lastPlaybackState"_s));
    QCOMPARE(m_channels->calls, QStringList());
    QVERIFY(m_player->isPlaying());
}

void TestCadorelApp::theFirstFrameTakesUpFilesPutIntoTheMusicFolder()
{
    QFile file(m_platform->directories.documents + u"/放在这里.mp3"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QCOMPARE(m_importService->importedSongs().size(), 0);
    m_app->firstFrameDrawn();
    QTRY_COMPARE(m_importService->importedSongs().size(), 1);
    QTRY_VERIFY(!m_importService->isScanning());
}

QTEST_GUILESS_MAIN(TestCadorelApp)
#include "tst_cadorel_app.moc"
