// SPDX-License-Identifier: GPL-3.0-or-later
#include "LoaderBench.h"
#include "Platform/Linux/Tags/FileAssetReader.h"

#include <QSignalSpy>
#include <QTimer>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace cadorel {

/// The player over libmpv with bytes that a loader gives.
class MpvResourceLoaderTest : public LoaderBench
{
    Q_OBJECT

private Q_SLOTS:
    void playsToTheEnd_data();
    void playsToTheEnd();
    void asksForAllOfItOnce();
    void waitsForALateAnswer();
    void readsWhatIsThereAlready();
    void seeksToTheSample_data();
    void seeksToTheSample();
    void seeksBeforeTheAnswer();
    void tellsThePreciseDuration();
    void tellsTheEngineDurationOfWhatIsNotComplete();
    void failsWithTheLoadersText();
    void failsWhenTheLoaderRefuses_data();
    void failsWhenTheLoaderRefuses();
    void failsInTheMiddle();
    void failsWithoutSound_data();
    void failsWithoutSound();
    void triesAgainAfterAFailure();
    void endedItemAsksAgain();
    void tellsNoAddressToAnybody();
};

void MpvResourceLoaderTest::playsToTheEnd_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shownName");
    for (const char *name :
         {"a.flac", "a.mp3", "a.m4a", "a.aac", "a.ogg", "a.opus", "a.wav", "a.aiff", "a.mka"})
        QTest::newRow(name) << QString::fromLatin1(name) << QString::fromLatin1(name);
    QTest::newRow("MP3 without an ending") << u"a.mp3"_s << u"a"_s;
    QTest::newRow("MP3 with a strange ending") << u"a.mp3"_s << u"a.%E6%AD%8C, pause=yes"_s;
    QTest::newRow("FLAC with a wrong ending") << u"a.flac"_s << u"a.mp3"_s;
}

void MpvResourceLoaderTest::playsToTheEnd()
{
    QFETCH(const QString, name);
    QFETCH(const QString, shownName);
    const QByteArray file = bytes(m_files.make(name, {{440, 0.5}}));
    QVERIFY(!file.isEmpty());
    m_loader->answerAll(file);
    const auto item = load(shownName);
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    m_player->play();
    QVERIFY(becomes(item, Status::readyToPlay));
    QVERIFY(item->seekableRange());
    QVERIFY(std::abs(item->duration() - 0.5) < 0.15);
    QTRY_COMPARE_WITH_TIMEOUT(ends.size(), 1, 20'000);
    QCOMPARE(item->status(), Status::readyToPlay);
    QCOMPARE(m_loader->requests.size(), 1);
    QVERIFY(m_loader->cancelled.isEmpty());
}

void MpvResourceLoaderTest::asksForAllOfItOnce()
{
    const auto item = m_player->makeItem({.url = address(u"a.flac"_s), .resourceLoader = m_loader.get()});
    QCoreApplication::processEvents();
    QVERIFY(m_loader->requests.isEmpty());
    m_player->replaceCurrentItem(item);
    QTRY_COMPARE(m_loader->requests.size(), 1);
    ResourceLoadingRequest &request = *m_loader->requests.constFirst();
    QCOMPARE(request.request(), address(u"a.flac"_s));
    QVERIFY(request.contentInformationRequest());
    QCOMPARE(request.dataRequest()->requestedOffset(), 0);
    QCOMPARE(request.dataRequest()->requestedLength(), ResourceLoadingRequest::toTheEnd);
    FakeResourceLoader::answer(request, m_song);
    QVERIFY(becomes(item, Status::readyToPlay));
    std::optional<bool> finished;
    m_player->seek(15, 0, 0, [&](bool done) { finished = done; });
    QTRY_VERIFY(finished.has_value());
    QCOMPARE(m_loader->requests.size(), 1);
}

void MpvResourceLoaderTest::waitsForALateAnswer()
{
    QSignalSpy controls(m_player.get(), &StreamPlayer::timeControlStatusChanged);
    const auto item = load(u"a.mp3"_s);
    m_player->play();
    QCOMPARE(m_player->timeControlStatus(), Control::waitingToPlay);
    QTRY_COMPARE(m_loader->requests.size(), 1);
    bool answered = false;
    QTimer::singleShot(1s, this, [&] {
        QCOMPARE(m_player->timeControlStatus(), Control::waitingToPlay);
        QCOMPARE(item->status(), Status::unknown);
        QVERIFY(!m_player->timerActive());
        FakeResourceLoader::answer(*m_loader->requests.constFirst(), m_mp3);
        answered = true;
    });
    QVERIFY(becomes(item, Status::readyToPlay));
    QVERIFY(answered);
    QTRY_COMPARE(m_player->timeControlStatus(), Control::playing);
    QCOMPARE(controls.size(), 2);
    QVERIFY(item->currentTime() < 1);
}

void MpvResourceLoaderTest::readsWhatIsThereAlready()
{
    const auto item = load(u"a.flac"_s);
    QTRY_COMPARE(m_loader->requests.size(), 1);
    ResourceLoadingRequest &request = *m_loader->requests.constFirst();
    FakeResourceLoader::tellLength(request, m_song.size());
    request.dataRequest()->respond(m_song.first(m_song.size() / 2));
    QVERIFY(becomes(item, Status::readyToPlay));
    std::optional<bool> finished;
    m_player->seek(18, 0, 0, [&](bool done) { finished = done; });
    request.dataRequest()->respond(m_song.sliced(m_song.size() / 2));
    request.finishLoading();
    QTRY_VERIFY(finished.has_value());
    QVERIFY(finished == true);
}

void MpvResourceLoaderTest::seeksToTheSample_data()
{
    QTest::addColumn<bool>("mp3");
    QTest::newRow("FLAC") << false;
    QTest::newRow("MP3") << true;
}

void MpvResourceLoaderTest::seeksToTheSample()
{
    QFETCH(const bool, mp3);
    m_loader->answerAll(mp3 ? m_mp3 : m_song);
    const auto item = load(mp3 ? u"a.mp3"_s : u"a.flac"_s);
    QVERIFY(becomes(item, Status::readyToPlay));
    for (const double target : {13.3, 2.7}) {
        std::optional<bool> finished;
        // Being exact costs nothing here: no tolerance is made use of.
        m_player->seek(target, 1.5, 1.5, [&](bool done) { finished = done; });
        QTRY_VERIFY(finished.has_value());
        QVERIFY(finished == true);
        QVERIFY2(std::abs(item->currentTime() - target) <= 0.001,
                 qPrintable(QString::number(item->currentTime())));
    }
}

void MpvResourceLoaderTest::seeksBeforeTheAnswer()
{
    const auto item = load(u"a.flac"_s);
    QTRY_COMPARE(m_loader->requests.size(), 1);
    std::optional<bool> finished;
    m_player->seek(12, 0.5, 0.5, [&](bool done) { finished = done; });
    FakeResourceLoader::answer(*m_loader->requests.constFirst(), m_song);
    QTRY_VERIFY(finished.has_value());
    QVERIFY(finished == true);
    QVERIFY(std::abs(item->currentTime() - 12) <= 0.001);
}

void MpvResourceLoaderTest::tellsThePreciseDuration()
{
    // Without a header the length can only be estimated by the first packets, which lie.
    const FileAssetReader reader;
    makePlayer(reader);
    const QByteArray song =
        bytes(m_files.make(u"quiet.mp3"_s, {{440, 2}, {0, 18}},
                           {u"-q:a"_s, u"5"_s, u"-write_xing"_s, u"0"_s, u"-id3v2_version"_s, u"0"_s}));
    QVERIFY(!song.isEmpty());
    const auto item = load(u"a.mp3"_s, true);
    auto task = item->loadDuration();
    QTRY_COMPARE(m_loader->requests.size(), 1);
    QVERIFY(!task.isReady());
    FakeResourceLoader::answer(*m_loader->requests.constFirst(), song);
    const auto seconds = QCoro::waitFor(std::move(task));
    QVERIFY(seconds);
    QVERIFY2(std::abs(*seconds - 20) < 0.1, qPrintable(QString::number(*seconds)));
    QCOMPARE(item->duration(), *seconds);
    // Without the wish it is an estimate.
    m_loader->answerAll(song);
    const auto estimate = QCoro::waitFor(load(u"b.mp3"_s)->loadDuration());
    QVERIFY(estimate);
    QVERIFY2(std::abs(*estimate - 20) > 0.2, qPrintable(QString::number(*estimate)));
    m_player.reset();
}

void MpvResourceLoaderTest::tellsTheEngineDurationOfWhatIsNotComplete()
{
    m_reader.onOpen = [](const QString &) { QFAIL("half a file was scanned"); };
    const auto item = load(u"a.flac"_s, true);
    QTRY_COMPARE(m_loader->requests.size(), 1);
    ResourceLoadingRequest &request = *m_loader->requests.constFirst();
    FakeResourceLoader::tellLength(request, m_song.size());
    request.dataRequest()->respond(m_song.first(m_song.size() / 2));
    const auto seconds = QCoro::waitFor(item->loadDuration());
    QVERIFY(seconds);
    QVERIFY(std::abs(*seconds - 20) < 0.001);
}

void MpvResourceLoaderTest::failsWithTheLoadersText()
{
    const auto item = load(u"a.flac"_s);
    m_player->play();
    QTRY_COMPARE(m_loader->requests.size(), 1);
    QSignalSpy statuses(item.get(), &PlayerItem::statusChanged);
    m_loader->requests.constFirst()->finishLoading(
        {.domain = u"test"_s, .code = 404, .description = u"HTTP 404"_s});
    QVERIFY(becomes(item, Status::failed));
    QCOMPARE(item->errorDescription(), u"HTTP 404"_s);
    QCOMPARE(statuses.size(), 1);
    QCOMPARE(m_player->timeControlStatus(), Control::paused);
    const auto seconds = QCoro::waitFor(item->loadDuration());
    QVERIFY(!seconds);
    QCOMPARE(seconds.error(), u"HTTP 404"_s);
    QVERIFY(m_loader->cancelled.isEmpty());
}

void MpvResourceLoaderTest::failsWhenTheLoaderRefuses_data()
{
    QTest::addColumn<QString>("reason");
    QTest::addColumn<QString>("description");
    QTest::newRow("with a reason") << u"缺少认证信息"_s << u"缺少认证信息"_s;
    QTest::newRow("without a reason") << QString() << u"无法加载网络音频，请检查网络或服务器"_s;
}

void MpvResourceLoaderTest::failsWhenTheLoaderRefuses()
{
    QFETCH(const QString, reason);
    m_loader->onRequest = [reason](const FakeResourceLoader::Request &request) {
        if (!reason.isEmpty())
            request->finishLoading({.domain = u"test"_s, .code = -1, .description = reason});
        return false;
    };
    const auto item = load(u"a.flac"_s);
    QVERIFY(becomes(item, Status::failed));
    QTEST(item->errorDescription(), "description");
}

void MpvResourceLoaderTest::failsInTheMiddle()
{
    const QByteArray song = bytes(m_files.make(u"middle.wav"_s, {{440, 6}}));
    const auto item = load(u"a.wav"_s);
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    m_player->play();
    QTRY_COMPARE(m_loader->requests.size(), 1);
    ResourceLoadingRequest &request = *m_loader->requests.constFirst();
    FakeResourceLoader::tellLength(request, song.size());
    request.dataRequest()->respond(song.first(song.size() / 2));
    QVERIFY(becomes(item, Status::readyToPlay));
    request.finishLoading({.domain = u"test"_s, .code = 1, .description = u"连接中断"_s});
    QVERIFY(becomes(item, Status::failed));
    QCOMPARE(item->errorDescription(), u"连接中断"_s);
    QCOMPARE(ends.size(), 0);
}

void MpvResourceLoaderTest::failsWithoutSound_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("a page") << "<html><body>Please sign in</body></html>"_ba.repeated(100);
    QTest::newRow("zeros") << QByteArray(100'000, '\0');
    QTest::newRow("nothing") << QByteArray();
}

void MpvResourceLoaderTest::failsWithoutSound()
{
    QFETCH(const QByteArray, file);
    m_loader->answerAll(file);
    const auto item = load(u"a.flac"_s);
    QVERIFY(becomes(item, Status::failed));
    QCOMPARE(item->errorDescription(), u"无法播放此文件：格式无法识别"_s);
}

void MpvResourceLoaderTest::triesAgainAfterAFailure()
{
    m_loader->onRequest = [](const FakeResourceLoader::Request &request) {
        request->finishLoading({.domain = u"test"_s, .code = 503, .description = u"HTTP 503"_s});
        return true;
    };
    QVERIFY(becomes(load(u"a.flac"_s), Status::failed));
    m_loader->answerAll(m_song);
    QVERIFY(becomes(load(u"a.flac"_s), Status::readyToPlay));
    QCOMPARE(m_loader->requests.size(), 2);
    // A file of this machine has nothing to do with what the loader said.
    auto file = m_player->makeItem({.url = QUrl::fromLocalFile(m_files.path(u"nowhere.flac"_s))});
    m_player->replaceCurrentItem(file);
    QVERIFY(becomes(file, Status::failed));
    QCOMPARE(file->errorDescription(), u"文件不存在"_s);
}

void MpvResourceLoaderTest::endedItemAsksAgain()
{
    m_loader->answerAll(m_moment);
    const auto item = load(u"a.flac"_s);
    QSignalSpy ends(item.get(), &PlayerItem::didPlayToEnd);
    m_player->play();
    QTRY_COMPARE(ends.size(), 1);
    m_player->play();
    QTRY_COMPARE(ends.size(), 2);
    QCOMPARE(m_loader->requests.size(), 2);
    m_player->replaceCurrentItem(nullptr);
    // Nothing of it is kept once it is unloaded and closed.
    std::weak_ptr<ResourceLoadingRequest> last = m_loader->requests.constLast();
    m_loader->requests.clear();
    QTRY_VERIFY(last.expired());
}

void MpvResourceLoaderTest::tellsNoAddressToAnybody()
{
    const QString logFile = m_files.path(u"libmpv.log"_s);
    makePlayer(m_reader, {{"log-file", QFile::encodeName(logFile)}, {"msg-level", "all=trace"}});
    static QStringList *heard = nullptr;
    QStringList lines;
    heard = &lines;
    QLoggingCategory::setFilterRules(u"cadorel.*=true"_s);
    const QtMessageHandler before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { *heard << line; });
    const auto restore = qScopeGuard([before] {
        qInstallMessageHandler(before);
        QLoggingCategory::setFilterRules({});
    });
    m_loader->answerAll(m_song);
    QVERIFY(becomes(load(u"a.flac"_s), Status::readyToPlay));
    m_loader->answerAll("no song");
    const auto failing = load(u"b.flac"_s);
    QVERIFY(becomes(failing, Status::failed));
    m_player.reset();
    const QByteArray log = bytes(logFile);
    QVERIFY(log.contains("webdavstream://"));
    const QString told = QString::fromUtf8(log) + lines.join(u'\n') + failing->errorDescription();
    for (const QString &secret : {u"anna"_s, u"s3cret"_s, u"secretpath"_s, u"music.example"_s})
        QVERIFY2(!told.contains(secret), "an address was told");
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::MpvResourceLoaderTest)
#include "tst_mpv_resource_loader.moc"
