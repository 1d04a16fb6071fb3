// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeAssetReader.h"
#include "Fixtures/Sound/FileServer.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace cadorel {

using Control = StreamPlayer::TimeControlStatus;
using Status = PlayerItem::Status;

/// The player over libmpv with addresses instead of files.
class TestMpvRemote : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void waitsUntilItIsReady();
    void waitsWhenItRunsOutOfData();
    void needNotWait();
    void seeksWithinTheTolerance_data();
    void seeksWithinTheTolerance();
    void refusesToSeekWhatDoesNot();
    void goesOnAfterALostConnection();
    void tellsTheDurationOnceItIsKnown();
    void neverTellsAnAddress_data();
    void neverTellsAnAddress();
    void aSilentServerHoldsNothingUp();

private:
    std::shared_ptr<PlayerItem> load(const QUrl &url);
    static bool becomes(const std::shared_ptr<PlayerItem> &item, Status status);

    SoundFiles m_files;
    QByteArray m_flac;
    QByteArray m_wave;
    FakeAssetReader m_reader;
    std::unique_ptr<FileServer> m_server;
    std::unique_ptr<MpvStreamPlayer> m_player;
};

void TestMpvRemote::initTestCase()
{
    const auto bytes = [this](const QString &name) {
        QFile file(m_files.make(name, {{440, 30}}));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    m_flac = bytes(u"song.flac"_s);
    m_wave = bytes(u"song.wav"_s);
    QVERIFY(!m_flac.isEmpty() && !m_wave.isEmpty());
}

void TestMpvRemote::init()
{
    m_server = std::make_unique<FileServer>(m_wave);
    m_player = std::make_unique<MpvStreamPlayer>(m_reader, QList<MpvHandle::Option>{{"ao", "null"}});
}

void TestMpvRemote::cleanup()
{
    m_player.reset();
    m_server.reset();
}

std::shared_ptr<PlayerItem> TestMpvRemote::load(const QUrl &url)
{
    auto item = m_player->makeItem({.url = url});
    m_player->replaceCurrentItem(item);
    return item;
}

bool TestMpvRemote::becomes(const std::shared_ptr<PlayerItem> &item, Status status)
{
    return QTest::qWaitFor([&] { return item->status() == status; }, 20'000);
}

void TestMpvRemote::waitsUntilItIsReady()
{
    m_server->holdAt(0);
    QSignalSpy controls(m_player.get(), &StreamPlayer::timeControlStatusChanged);
    const auto item = load(m_server->url(u"song.wav"_s));
    m_player->play();
    QCOMPARE(m_player->timeControlStatus(), Control::waitingToPlay);
    QCOMPARE(m_player->rate(), 1.0);
    QTRY_COMPARE(m_server->requests(), 1);
    QCOMPARE(m_player->timeControlStatus(), Control::waitingToPlay);
    QVERIFY(!m_player->timerActive());
    m_server->holdAt({});
    QVERIFY(becomes(item, Status::readyToPlay));
    QTRY_COMPARE(m_player->timeControlStatus(), Control::playing);
    QCOMPARE(controls.size(), 2);
    QVERIFY(item->seekableRange());
    QVERIFY(std::abs(item->duration() - 30) < 0.01);
}

void TestMpvRemote::waitsWhenItRunsOutOfData()
{
    // A good second of sound, after what libmpv looks at before it begins.
    m_server->holdAt(m_wave.size() / 10);
    const auto item = load(m_server->url(u"song.wav"_s));
    m_player->addPeriodicTimeObserver(50ms, [](double) {});
    m_player->play();
    QVERIFY(becomes(item, Status::readyToPlay));
    QTRY_COMPARE(m_player->timeControlStatus(), Control::playing);
    QVERIFY(m_player->timerActive());
    QTRY_COMPARE_WITH_TIMEOUT(m_player->timeControlStatus(), Control::waitingToPlay, 15'000);
    QCOMPARE(m_player->rate(), 1.0);
    QVERIFY(!m_player->timerActive());
    m_server->holdAt({});
    QTRY_COMPARE(m_player->timeControlStatus(), Control::playing);
    QVERIFY(m_player->timerActive());
}

void TestMpvRemote::needNotWait()
{
    m_server->holdAt(m_wave.size() / 10);
    const auto item = load(m_server->url(u"song.wav"_s));
    m_player->play();
    QTRY_COMPARE(m_player->timeControlStatus(), Control::playing);
    QTRY_COMPARE_WITH_TIMEOUT(m_player->timeControlStatus(), Control::waitingToPlay, 15'000);
    m_player->setAutomaticallyWaitsToMinimizeStalling(false);
    QTRY_COMPARE(m_player->timeControlStatus(), Control::playing);
}

void TestMpvRemote::seeksWithinTheTolerance_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("tolerance");
    for (const char *name : {"song.opus", "song.mp3", "song.flac"}) {
        for (const double tolerance : {0.0, 0.5, 1.5})
            QTest::addRow("%s, %g s", name, tolerance) << QString::fromLatin1(name) << tolerance;
    }
}

void TestMpvRemote::seeksWithinTheTolerance()
{
    QFETCH(const QString, name);
    QFETCH(const double, tolerance);
    QFile file(m_files.make(name, {{440, 30}}));
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_server = std::make_unique<FileServer>(file.readAll());
    const auto item = load(m_server->url(name));
    QVERIFY(becomes(item, Status::readyToPlay));
    for (const double target : {20.3, 7.7}) {
        std::optional<bool> finished;
        m_player->seek(target, tolerance, tolerance, [&](bool done) { finished = done; });
        QTRY_VERIFY(finished.has_value());
        QVERIFY(finished == true);
        QVERIFY2(std::abs(item->currentTime() - target) <= tolerance + 0.001,
                 qPrintable(QString::number(item->currentTime())));
    }
}

void TestMpvRemote::refusesToSeekWhatDoesNot()
{
    // A radio: no length, no ranges, and more to come.
    m_server->setSeekable(false);
    m_server->holdAt(m_wave.size() / 2);
    const auto item = load(m_server->url(u"radio.wav"_s));
    std::optional<bool> early;
    QTRY_VERIFY(m_server->bytesGiven() > 0);
    m_player->seek(29, 0.5, 0.5, [&](bool done) { early = done; });
    QTRY_VERIFY(early.has_value());
    QVERIFY(becomes(item, Status::readyToPlay));
    std::optional<bool> finished;
    m_player->seek(29, 0.5, 0.5, [&](bool done) { finished = done; });
    QTRY_VERIFY(finished.has_value());
    QVERIFY(finished == false);
}

void TestMpvRemote::goesOnAfterALostConnection()
{
    m_server->holdAt(m_wave.size() / 2);
    const auto item = load(m_server->url(u"song.wav"_s));
    QVERIFY(becomes(item, Status::readyToPlay));
    QTRY_VERIFY(m_server->bytesGiven() >= m_wave.size() / 2);
    m_server->breakConnections();
    m_server->holdAt({});
    std::optional<bool> finished;
    m_player->seek(28, 0.5, 0.5, [&](bool done) { finished = done; });
    QTRY_VERIFY_WITH_TIMEOUT(finished.has_value(), 20'000);
    QVERIFY(finished == true);
    QVERIFY(std::abs(item->currentTime() - 28) < 0.5);
}

void TestMpvRemote::tellsTheDurationOnceItIsKnown()
{
    m_server->holdAt(0);
    const auto item = load(m_server->url(u"song.wav"_s));
    auto task = item->loadDuration();
    QTRY_COMPARE(m_server->requests(), 1);
    QVERIFY(!task.isReady());
    m_server->holdAt({});
    const auto seconds = QCoro::waitFor(std::move(task));
    QVERIFY(seconds);
    QVERIFY(std::abs(*seconds - 30) < 0.01);
}

void TestMpvRemote::neverTellsAnAddress_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("unauthorized") << 401;
    QTest::newRow("missing") << 404;
    QTest::newRow("broken") << 500;
    QTest::newRow("refused") << 0;
}

void TestMpvRemote::neverTellsAnAddress()
{
    QFETCH(const int, status);
    QUrl url = m_server->url(u"secretpath.wav"_s);
    url.setUserName(u"somebody"_s);
    url.setPassword(u"password"_s);
    url.setQuery(u"u=somebody&t=token&s=salt"_s);
    if (status == 0)
        m_server.reset();
    else
        m_server->answerOnly(status);
    QStringList lines;
    static QStringList *heard = nullptr;
    heard = &lines;
    QLoggingCategory::setFilterRules(u"cadorel.*=true"_s);
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { *heard << line; });
    const auto restore = qScopeGuard([before] {
        qInstallMessageHandler(before);
        QLoggingCategory::setFilterRules({});
    });
    const auto item = load(url);
    m_player->play();
    QVERIFY(becomes(item, Status::failed));
    QCOMPARE(item->errorDescription(), u"无法加载网络音频，请检查网络或服务器"_s);
    QCOMPARE(m_player->timeControlStatus(), Control::paused);
    const auto seconds = QCoro::waitFor(item->loadDuration());
    QVERIFY(!seconds);
    const QString told = lines.join(u'\n') + item->errorDescription() + seconds.error();
    for (const QString &secret : {u"somebody"_s, u"password"_s, u"token"_s, u"secretpath"_s, u"127.0.0.1"_s})
        QVERIFY2(!told.contains(secret), qPrintable(told));
}

void TestMpvRemote::aSilentServerHoldsNothingUp()
{
    m_server->setSilent(true);
    load(m_server->url(u"song.wav"_s));
    m_player->play();
    QTRY_COMPARE(m_server->requests(), 1);
    const auto file = load(QUrl::fromLocalFile(m_files.path(u"song.wav"_s)));
    QVERIFY(becomes(file, Status::readyToPlay));
    load(m_server->url(u"song.wav"_s));
    QTRY_COMPARE(m_server->requests(), 2);
    QElapsedTimer timer;
    timer.start();
    m_player.reset();
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestMpvRemote)
#include "TestMpvRemote.moc"
