// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/ResourceLoadingRequest.h"

#include <QTest>
#include <QtConcurrent>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

using Range = ResourceLoadingRequest::Range;

std::unique_ptr<ResourceLoadingRequest> makeRequest(qint64 offset = 0,
                                                    qint64 length = ResourceLoadingRequest::toTheEnd)
{
    return std::make_unique<ResourceLoadingRequest>(QUrl(u"webdavstream://host/https/a"_s), true,
                                                    Range{.offset = offset, .length = length});
}

/// What a read gives, or the number when that is not a count of bytes.
QByteArray readAt(ResourceLoadingRequest &request, qint64 offset, qint64 size = 100)
{
    QByteArray buffer(size, '?');
    const qint64 count = request.read(offset, buffer.data(), size);
    return count >= 0 ? buffer.first(count) : QByteArray::number(count);
}

/// A read that another thread makes.
QFuture<QByteArray> readElsewhere(ResourceLoadingRequest &request, qint64 offset)
{
    return QtConcurrent::run([&request, offset] { return readAt(request, offset); });
}

} // namespace

class ResourceLoadingRequestTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void givenBytesAreReadBeforeTheEnd();
    void offsetsAreThoseOfTheResource();
    void readWaitsForItsBytes();
    void readWaitsForTheEnd();
    void readWaitsForAFailure();
    void cancelEndsEveryWait();
    void cancelCountsOnce();
    void onlyTheFirstEndCounts();
    void contentInformationWaitsForTheLoader();
    void contentInformationOfAFailureIsNone();
    void whatIsNotAskedForIsNotThere();
};

void ResourceLoadingRequestTest::givenBytesAreReadBeforeTheEnd()
{
    const auto request = makeRequest();
    QCOMPARE(request->dataRequest()->currentOffset(), 0);
    request->dataRequest()->respond("0123");
    request->dataRequest()->respond("4567");
    QCOMPARE(request->dataRequest()->currentOffset(), 8);
    QCOMPARE(readAt(*request, 2, 4), "2345"_ba);
    QCOMPARE(readAt(*request, 6), "67"_ba);
    QVERIFY(!request->isFinished());
    request->finishLoading();
    QCOMPARE(readAt(*request, 8), QByteArray());
    QCOMPARE(readAt(*request, 800), QByteArray());
    QCOMPARE(request->data(), "01234567"_ba);
    request->dataRequest()->respond("late");
    QCOMPARE(request->data(), "01234567"_ba);
}

void ResourceLoadingRequestTest::offsetsAreThoseOfTheResource()
{
    const auto request = makeRequest(100, 4);
    QCOMPARE(request->dataRequest()->requestedOffset(), 100);
    QCOMPARE(request->dataRequest()->requestedLength(), 4);
    QCOMPARE(request->dataRequest()->currentOffset(), 100);
    request->dataRequest()->respond("abcd");
    request->finishLoading();
    QCOMPARE(readAt(*request, 102), "cd"_ba);
    QCOMPARE(readAt(*request, 99), "-1"_ba);
}

void ResourceLoadingRequestTest::readWaitsForItsBytes()
{
    const auto request = makeRequest();
    request->dataRequest()->respond("0123");
    const auto reads = readElsewhere(*request, 4);
    QVERIFY(!reads.isFinished());
    request->dataRequest()->respond("4567");
    QTRY_VERIFY(reads.isFinished());
    QCOMPARE(reads.result(), "4567"_ba);
}

void ResourceLoadingRequestTest::readWaitsForTheEnd()
{
    const auto request = makeRequest();
    const auto reads = readElsewhere(*request, 0);
    QVERIFY(!reads.isFinished());
    request->finishLoading();
    QTRY_VERIFY(reads.isFinished());
    QCOMPARE(reads.result(), QByteArray());
}

void ResourceLoadingRequestTest::readWaitsForAFailure()
{
    const auto request = makeRequest();
    request->dataRequest()->respond("0123");
    const auto reads = readElsewhere(*request, 4);
    request->finishLoading({.domain = u"test"_s, .code = 7, .description = u"说明"_s});
    QTRY_VERIFY(reads.isFinished());
    QCOMPARE(reads.result(), "-1"_ba);
    // What came before the failure can be read.
    QCOMPARE(readAt(*request, 0), "0123"_ba);
    QCOMPARE(request->error()->code, 7);
}

void ResourceLoadingRequestTest::cancelEndsEveryWait()
{
    const auto request = makeRequest();
    const auto reads = readElsewhere(*request, 0);
    const auto informs =
        QtConcurrent::run([&request] { return request->waitForContentInformation().has_value(); });
    request->cancel();
    QTRY_VERIFY(reads.isFinished() && informs.isFinished());
    QCOMPARE(reads.result(), "-1"_ba);
    QVERIFY(!informs.result());
    // The loader need not know yet.
    request->dataRequest()->respond("0123");
    request->finishLoading();
    QCOMPARE(readAt(*request, 0), "-1"_ba);
    QVERIFY(request->data().isEmpty());
}

void ResourceLoadingRequestTest::cancelCountsOnce()
{
    const auto request = makeRequest();
    QVERIFY(!request->isCancelled());
    QVERIFY(request->cancel());
    QVERIFY(!request->cancel());
    QVERIFY(request->isCancelled());
    const auto finished = makeRequest();
    finished->finishLoading();
    QVERIFY(!finished->cancel());
    QVERIFY(finished->isCancelled());
}

void ResourceLoadingRequestTest::onlyTheFirstEndCounts()
{
    const auto request = makeRequest();
    request->finishLoading();
    request->finishLoading({.domain = u"test"_s, .code = 7, .description = {}});
    QVERIFY(!request->error());
    const auto failed = makeRequest();
    failed->finishLoading({.domain = u"test"_s, .code = 7, .description = {}});
    failed->finishLoading({.domain = u"test"_s, .code = 8, .description = {}});
    failed->finishLoading();
    QCOMPARE(failed->error()->code, 7);
}

void ResourceLoadingRequestTest::contentInformationWaitsForTheLoader()
{
    const auto request = makeRequest();
    const auto length =
        QtConcurrent::run([&request] { return request->waitForContentInformation()->contentLength; });
    QVERIFY(!length.isFinished());
    request->contentInformationRequest()->contentLength = 42;
    request->dataRequest()->respond("0");
    QTRY_VERIFY(length.isFinished());
    QCOMPARE(length.result(), 42);
}

void ResourceLoadingRequestTest::contentInformationOfAFailureIsNone()
{
    const auto request = makeRequest();
    request->finishLoading(LoadingError{});
    QVERIFY(!request->waitForContentInformation());
}

void ResourceLoadingRequestTest::whatIsNotAskedForIsNotThere()
{
    ResourceLoadingRequest nothing(QUrl(u"webdavstream://host/https/a"_s), false, {});
    QVERIFY(!nothing.dataRequest());
    QVERIFY(!nothing.contentInformationRequest());
    QCOMPARE(readAt(nothing, 0), "-1"_ba);
    nothing.finishLoading();
    QVERIFY(!nothing.waitForContentInformation());
}

QTEST_GUILESS_MAIN(ResourceLoadingRequestTest)
#include "tst_resource_loading_request.moc"
