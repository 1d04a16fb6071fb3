// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/RunningPlayer.h"
#include "EndToEnd/VirtualDisplay.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"

#include <QDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr float audible = 0.01F;

} // namespace

/// What a listener does with the program: the real window on a display of its own, the real sound on a sound
/// server of its own.
class TestListening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aSongIsHeardAndFoundPausedAfterARestart();
    void spacePlaysAndPauses();
    void aFileThatIsNoMusicIsListedAndSaysWhyItDoesNotPlay();
    void aFileDeletedWhilePlayingPlaysOn();
    void theSecondPlayerRaisesTheFirstAndEnds();
    void aDamagedPreferencesFileAndIndexLoseNoSong();
    void theFirstFrameDoesNotWaitForAThousandFiles();

private:
    void put(const QString &source, const QString &name);
    /// Asks for the first row by the keyboard, which the list has from the start, until it plays: its song is
    /// listed a moment before it has a row.
    bool playFirstRow();

    SoundFiles m_files;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<VirtualDisplay> m_display;
    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<RunningPlayer> m_player;
};

void TestListening::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_display = std::make_unique<VirtualDisplay>();
    QVERIFY(m_display->start());
    m_server = std::make_unique<SoundServer>();
    QVERIFY(m_server->start());
    m_recorder = std::make_unique<Recorder>(*m_server);
    QVERIFY(QDir().mkpath(RunningPlayer::musicFolder(m_home->path())));
    m_player = std::make_unique<RunningPlayer>(m_display->name(), m_home->path());
}

void TestListening::cleanup()
{
    m_player.reset();
    m_recorder.reset();
    m_server.reset();
    m_display.reset();
    m_home.reset();
}

void TestListening::put(const QString &source, const QString &name)
{
    QVERIFY(QFile::copy(source, RunningPlayer::musicFolder(m_home->path()) + u'/' + name));
}

bool TestListening::playFirstRow()
{
    const QString said = u"▶️ 播放: "_s;
    for (int attempt = 0; attempt < 20 && !m_player->output().contains(said); ++attempt) {
        m_player->key(u"Home"_s);
        m_player->key(u"Return"_s);
        std::ignore = QTest::qWaitFor([&] { return m_player->output().contains(said); }, 1000);
    }
    return m_player->output().contains(said);
}

void TestListening::aSongIsHeardAndFoundPausedAfterARestart()
{
    const QString tones = m_files.make(u"tones.flac"_s, {{440, 4}, {1320, 30}});
    QVERIFY(!tones.isEmpty());
    put(tones, u"两个音 🎵.flac"_s);
    QVERIFY(m_player->start());
    QVERIFY(m_player->says(u"💾 已更新歌曲索引"_s));
    QCOMPARE(m_player->windowTitle(), u"Tarnova 音乐"_s);
    QVERIFY(playFirstRow());
    QVERIFY(m_player->says(u"✅ PlayerItem 状态: readyToPlay"_s));
    QVERIFY(m_recorder->hearSound(audible, 10s));
    QVERIFY(m_recorder->hearTone(440));
    QTRY_COMPARE(m_player->windowTitle(), u"两个音 🎵"_s);
    // On into the second tone, then the desktop logs out.
    QVERIFY(m_recorder->hearTone(1320));
    QVERIFY(m_player->stop());

    m_player = std::make_unique<RunningPlayer>(m_display->name(), m_home->path());
    QVERIFY(m_player->start());
    QVERIFY(m_player->output().contains(u"📂 本地音乐: 从缓存加载 1 首歌曲"_s));
    QCOMPARE(m_player->windowTitle(), u"两个音 🎵"_s);
    QCOMPARE(m_recorder->hertzNow(), 0.0);
    m_recorder->clear();
    m_player->key(u"space"_s);
    QVERIFY(m_recorder->hearSound(audible, 10s));
    QVERIFY(std::abs(m_recorder->hertzNow() - 1320) < 5); // at once: it did not start anew
    QVERIFY(m_player->stop());
}

void TestListening::spacePlaysAndPauses()
{
    put(m_files.make(u"long.flac"_s, {{700, 40}}), u"长.flac"_s);
    QVERIFY(m_player->start());
    QVERIFY(m_player->says(u"💾 已更新歌曲索引"_s));
    QVERIFY(playFirstRow());
    QVERIFY(m_recorder->hearSound(audible, 10s));
    m_player->key(u"space"_s);
    QVERIFY(m_recorder->hearSilence(500ms, 10s));
    m_recorder->clear();
    m_player->key(u"space"_s);
    QVERIFY(m_recorder->hearSound(audible, 10s));
    QCOMPARE(m_player->output().count(u"▶️ 播放: "_s), 1); // resumed, not started anew
    QVERIFY(m_player->stop());
}

void TestListening::aFileThatIsNoMusicIsListedAndSaysWhyItDoesNotPlay()
{
    QFile text(RunningPlayer::musicFolder(m_home->path()) + u"/不是音乐.mp3"_s);
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("this is no music\n");
    text.close();
    QVERIFY(m_player->start());
    QVERIFY(m_player->says(u"✅ 添加: 不是音乐"_s));
    QVERIFY(m_player->says(u"💾 已更新歌曲索引"_s));
    QVERIFY(playFirstRow());
    QVERIFY(m_player->says(u"❌ PlayerItem 状态: failed - "_s));
    QVERIFY(m_player->stop());
}

void TestListening::aFileDeletedWhilePlayingPlaysOn()
{
    put(m_files.make(u"deleted.flac"_s, {{600, 5}, {1800, 20}}), u"删除.flac"_s);
    QVERIFY(m_player->start());
    QVERIFY(m_player->says(u"💾 已更新歌曲索引"_s));
    QVERIFY(playFirstRow());
    QVERIFY(m_recorder->hearSound(audible, 10s));
    QVERIFY(QFile::remove(RunningPlayer::musicFolder(m_home->path()) + u"/删除.flac"_s));
    QVERIFY(m_recorder->hearTone(1800));
    QVERIFY(m_player->stop());

    // The next start drops the song and has no place to come back to.
    m_player = std::make_unique<RunningPlayer>(m_display->name(), m_home->path());
    QVERIFY(m_player->start());
    QCOMPARE(m_player->windowTitle(), u"Tarnova 音乐"_s);
    QVERIFY(m_player->stop());
}

void TestListening::theSecondPlayerRaisesTheFirstAndEnds()
{
    QVERIFY(m_player->start());
    QProcess second;
    second.setProcessEnvironment(m_player->environment());
    second.start(QStringLiteral(CADOREL_BUILD_DIR "/cadorel"), QStringList());
    QTRY_COMPARE_WITH_TIMEOUT(second.state(), QProcess::NotRunning, 20000);
    QCOMPARE(second.exitStatus(), QProcess::NormalExit);
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(m_player->isRunning());
    QVERIFY(m_player->stop());
}

void TestListening::aDamagedPreferencesFileAndIndexLoseNoSong()
{
    put(m_files.make(u"kept.flac"_s, {{500, 2}}), u"留下.flac"_s);
    const QString data = m_home->path() + u"/.local/share/cadorel"_s;
    QVERIFY(QDir().mkpath(data + u"/LocalMusic"_s));
    for (const auto &[name, text] : {std::pair{u"/preferences.sqlite"_s, QByteArray(5000, 'x')},
                                     std::pair{u"/LocalMusic/index.json"_s, "[{\"id\":\"1\",\"tit"_ba}}) {
        QFile file(data + name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    QVERIFY(m_player->start());
    QVERIFY(m_player->says(u"✅ 添加: 留下"_s));
    QVERIFY(m_player->stop());
    QCOMPARE(QDir(data).entryList({u"preferences.sqlite.damaged-*"_s}).size(), 1);
}

void TestListening::theFirstFrameDoesNotWaitForAThousandFiles()
{
    const QString tone = m_files.make(u"short.flac"_s, {{500, 0.5}});
    constexpr int count = 1000;
    for (int i = 0; i < count; ++i)
        put(tone, u"歌 %1.flac"_s.arg(i, 4, 10, QChar(u'0')));
    QVERIFY(m_player->start());
    const qsizetype firstFrame = m_player->output().indexOf(u"first frame"_s);
    QVERIFY(m_player->output().indexOf(u"✅ 添加: "_s) == -1 ||
            m_player->output().indexOf(u"✅ 添加: "_s) > firstFrame);
    // The window answers while the files are taken up: it plays its first row when it is asked to.
    QVERIFY(m_player->says(u"✅ 添加: "_s));
    QVERIFY(playFirstRow());
    QVERIFY(m_player->says(u"💾 已更新歌曲索引"_s, 60s));
    QCOMPARE(m_player->output().count(u"✅ 添加: "_s), count);
    QVERIFY(m_player->stop());
}

QTEST_GUILESS_MAIN(TestListening)
#include "tst_listening.moc"
