// SPDX-License-Identifier: GPL-3.0-or-later
#include "StreamingBench.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QUrl songA = StreamingBench::song(u"a.flac"_s);
const QUrl songB = StreamingBench::song(u"b.flac"_s);
const QUrl songC = StreamingBench::song(u"c.flac"_s);

/// Downloads a song of 100 bytes, and keeps the answer when @p player wants it.
StreamingBench::Request download(StreamingBench &bench, const QUrl &song)
{
    auto request = bench.ask(song);
    if (!bench.answer(song.fileName(), StreamingBench::file(QByteArray(100, 'x'))))
        return {};
    return request;
}

/// Whether a song is answered from memory.
bool isKept(StreamingBench &bench, const QUrl &song)
{
    const auto asked = bench.home.web().sent.size();
    const auto request = bench.ask(song);
    const bool kept = request->isFinished();
    if (!kept) {
        bench.service->didCancel(request);
        bench.home.web().answer(song.fileName(), std::unexpected(HttpError{HttpError::Kind::connection, {}}));
        settle();
    }
    return kept && bench.home.web().sent.size() == asked;
}

} // namespace

/// What the streaming service keeps, what yields to what, and when the line is free.
class WebDAVStreamingMemoryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void longestUnusedFileGoesFirst();
    void everythingStaysWithinTheBudget();
    void fileInUseStays();
    void newestFileStaysWhateverItsSize();
    void downloadThatNobodyWaitsForYields();
    void yieldedDownloadGoesOnWhenItIsWantedAgain();
    void yieldedDownloadGoesOnWhenTheOtherFails();
    void lineIsFreeWhenNothingIsAskedFor();
    void lineIsFreeAfterTheDownload_data();
    void lineIsFreeAfterTheDownload();
    void lineIsTakenFromTheAssetOn();
    void lineIsFreeWhenTheAssetIsNeverLoaded();
    void lineIsFreeWhenAnotherAssetFollows();
    void lineIsFreeWhenTheFileIsThere();
    void listenerIsServedWhenTheyLeaveTheSong();
    void listenerIsServedByTheWholeFile();
    void endOfTheServiceEndsEverything();
};

void WebDAVStreamingMemoryTest::longestUnusedFileGoesFirst()
{
    StreamingBench bench(250);
    download(bench, songA);
    download(bench, songB);
    bench.ask(songA);
    download(bench, songC);
    QVERIFY(isKept(bench, songA));
    QVERIFY(isKept(bench, songC));
    QVERIFY(!isKept(bench, songB));
}

void WebDAVStreamingMemoryTest::everythingStaysWithinTheBudget()
{
    StreamingBench bench(300);
    for (const QUrl &song : {songA, songB, songC})
        download(bench, song);
    for (const QUrl &song : {songA, songB, songC})
        QVERIFY(isKept(bench, song));
}

void WebDAVStreamingMemoryTest::fileInUseStays()
{
    StreamingBench bench(150);
    auto player = download(bench, songA);
    download(bench, songB);
    QVERIFY(isKept(bench, songA));
    player.reset();
    download(bench, songC);
    QVERIFY(!isKept(bench, songA));
    QVERIFY(!isKept(bench, songB));
    QVERIFY(isKept(bench, songC));
}

void WebDAVStreamingMemoryTest::newestFileStaysWhateverItsSize()
{
    StreamingBench bench(10);
    download(bench, songA);
    QVERIFY(isKept(bench, songA));
    download(bench, songB);
    QVERIFY(isKept(bench, songB));
    QVERIFY(!isKept(bench, songA));
}

void WebDAVStreamingMemoryTest::downloadThatNobodyWaitsForYields()
{
    StreamingBench bench;
    const auto first = bench.ask(songA);
    HttpTransfer &left = bench.lastTransfer();
    bench.service->didCancel(first);
    settle();
    QVERIFY(!left.isPaused());
    const auto second = bench.ask(songB);
    HttpTransfer &wanted = bench.lastTransfer();
    QVERIFY(left.isPaused());
    QVERIFY(!wanted.isPaused());
    QVERIFY(!left.isCancelled());
    QVERIFY(bench.answer(u"b.flac"_s, StreamingBench::file("sound")));
    QVERIFY(second->isFinished());
    QVERIFY(!left.isPaused());
    QVERIFY(bench.answer(u"a.flac"_s, StreamingBench::file("sound")));
    QVERIFY(isKept(bench, songA));
}

void WebDAVStreamingMemoryTest::yieldedDownloadGoesOnWhenItIsWantedAgain()
{
    StreamingBench bench;
    bench.service->didCancel(bench.ask(songA));
    HttpTransfer &first = bench.lastTransfer();
    const auto second = bench.ask(songB);
    HttpTransfer &other = bench.lastTransfer();
    QVERIFY(first.isPaused());
    bench.service->didCancel(second);
    const auto again = bench.ask(songA);
    QVERIFY(!first.isPaused());
    QVERIFY(other.isPaused());
    QCOMPARE(bench.home.web().sent.size(), 2);
    QVERIFY(bench.answer(u"a.flac"_s, StreamingBench::file("sound")));
    QVERIFY(again->isFinished());
}

void WebDAVStreamingMemoryTest::yieldedDownloadGoesOnWhenTheOtherFails()
{
    StreamingBench bench;
    bench.service->didCancel(bench.ask(songA));
    HttpTransfer &first = bench.lastTransfer();
    const auto second = bench.ask(songB);
    QVERIFY(first.isPaused());
    QVERIFY(bench.answer(u"b.flac"_s, StreamingBench::file({}, {}, 404)));
    QVERIFY(!first.isPaused());
}

void WebDAVStreamingMemoryTest::lineIsFreeWhenNothingIsAskedFor()
{
    StreamingBench bench;
    const auto other = bench.ask(songB);
    QVERIFY(bench.service->downloadSettled(songA).isReady());
    QVERIFY(!bench.service->downloadSettled(songB).isReady());
}

void WebDAVStreamingMemoryTest::lineIsFreeAfterTheDownload_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("success") << 200;
    QTest::newRow("failure") << 404;
    QTest::newRow("cleared") << 0;
}

void WebDAVStreamingMemoryTest::lineIsFreeAfterTheDownload()
{
    QFETCH(const int, status);
    StreamingBench bench;
    const auto request = bench.ask(songA);
    const auto one = bench.service->downloadSettled(songA);
    const auto two = bench.service->downloadSettled(songA);
    settle();
    QVERIFY(!one.isReady() && !two.isReady());
    if (status > 0)
        QVERIFY(bench.answer(u"a.flac"_s, StreamingBench::file("sound", "audio/flac", status)));
    else
        bench.service->clearCache(songA);
    settle();
    QVERIFY(one.isReady() && two.isReady());
    QVERIFY(bench.service->downloadSettled(songA).isReady());
}

void WebDAVStreamingMemoryTest::lineIsTakenFromTheAssetOn()
{
    StreamingBench bench;
    const QUrl streaming = bench.streaming(songA);
    const auto settled = bench.service->downloadSettled(songA);
    QVERIFY(!settled.isReady());
    QVERIFY(bench.service->shouldWaitForLoadingOfRequestedResource(StreamingBench::whole(streaming)));
    settle();
    QVERIFY(!settled.isReady());
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    QVERIFY(bench.answer(u"a.flac"_s, StreamingBench::file("sound")));
    QVERIFY(settled.isReady());
}

void WebDAVStreamingMemoryTest::lineIsFreeWhenTheAssetIsNeverLoaded()
{
    StreamingBench bench;
    bench.streaming(songA);
    const auto settled = bench.service->downloadSettled(songA);
    QVERIFY(!settled.isReady());
    bench.home.clock().advance(WebDAVStreamingService::loadingGrace);
    settle();
    QVERIFY(settled.isReady());
    QCOMPARE(bench.home.clock().activeTimers(), 0);
}

void WebDAVStreamingMemoryTest::lineIsFreeWhenAnotherAssetFollows()
{
    StreamingBench bench;
    bench.streaming(songA);
    const auto settled = bench.service->downloadSettled(songA);
    bench.streaming(songB);
    settle();
    QVERIFY(settled.isReady());
    QVERIFY(!bench.service->downloadSettled(songB).isReady());
}

void WebDAVStreamingMemoryTest::lineIsFreeWhenTheFileIsThere()
{
    StreamingBench bench;
    download(bench, songA);
    bench.streaming(songA);
    QVERIFY(bench.service->downloadSettled(songA).isReady());
}

void WebDAVStreamingMemoryTest::listenerIsServedWhenTheyLeaveTheSong()
{
    StreamingBench bench;
    const auto request = bench.ask(songA);
    const auto served = bench.service->listenerServed(songA);
    const auto settled = bench.service->downloadSettled(songA);
    QVERIFY(!served.isReady());
    bench.service->didCancel(request);
    settle();
    QVERIFY(served.isReady());
    QVERIFY(!settled.isReady());
    QVERIFY(bench.answer(u"a.flac"_s, StreamingBench::file("sound")));
    QVERIFY(settled.isReady());
}

void WebDAVStreamingMemoryTest::listenerIsServedByTheWholeFile()
{
    StreamingBench bench;
    bench.streaming(songA);
    const auto expected = bench.service->listenerServed(songA);
    QVERIFY(!expected.isReady());
    const auto request = bench.ask(songA);
    const auto served = bench.service->listenerServed(songA);
    QVERIFY(!served.isReady());
    QVERIFY(bench.answer(u"a.flac"_s, StreamingBench::file("sound")));
    QVERIFY(expected.isReady());
    QVERIFY(served.isReady());
    QVERIFY(bench.service->listenerServed(songA).isReady());
}

void WebDAVStreamingMemoryTest::endOfTheServiceEndsEverything()
{
    StreamingBench bench;
    const auto lifetime = bench.service->lifetime();
    const auto request = bench.ask(songA);
    const auto settled = bench.service->downloadSettled(songA);
    bench.lines.take();
    bench.service.reset();
    settle();
    QVERIFY(lifetime.expired());
    QVERIFY(request->error());
    QVERIFY(settled.isReady());
    QVERIFY(bench.home.web().pending.empty());
    QCOMPARE(bench.home.clock().activeTimers(), 0);
    QVERIFY(bench.lines.take().isEmpty());
}

QTEST_GUILESS_MAIN(WebDAVStreamingMemoryTest)
#include "tst_webdav_streaming_memory.moc"
