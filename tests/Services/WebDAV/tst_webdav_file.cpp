// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/WebDAVFile.h"

#include <QTest>
#include <QUuid>

#include <functional>

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestWebDAVFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newFileHasAnIdOfItsOwn();
    void extensionIsTakenFromTheName_data();
    void extensionIsTakenFromTheName();
    void sizeIsShownInStepsOfAThousand();
    void equalityCoversEveryField();
};

void TestWebDAVFile::newFileHasAnIdOfItsOwn()
{
    const WebDAVFile file;
    QCOMPARE(file.id, QUuid::fromString(file.id).toString(QUuid::WithoutBraces).toUpper());
    QVERIFY(file.id != WebDAVFile().id);
    QVERIFY(!file.isDirectory);
    QCOMPARE(file.size, 0);
}

void TestWebDAVFile::extensionIsTakenFromTheName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<bool>("isAudio");
    QTest::newRow("audio") << u"歌曲.mp3"_s << u"mp3"_s << true;
    QTest::newRow("upper case") << u"a.FLAC"_s << u"flac"_s << true;
    QTest::newRow("two dots") << u"a.mp3.txt"_s << u"txt"_s << false;
    QTest::newRow("dots inside") << u"1. a.b.m4a"_s << u"m4a"_s << true;
    QTest::newRow("none") << u"mp3"_s << u""_s << false;
    QTest::newRow("hidden") << u".mp3"_s << u""_s << false;
    QTest::newRow("dot at the end") << u"a."_s << u""_s << false;
    QTest::newRow("dot in a folder") << u"a.mp3/b"_s << u""_s << false;
    QTest::newRow("folder and file") << u"a/b.ogg"_s << u"ogg"_s << true;
    QTest::newRow("empty") << u""_s << u""_s << false;
}

void TestWebDAVFile::extensionIsTakenFromTheName()
{
    QFETCH(const QString, name);
    WebDAVFile file;
    file.name = name;
    file.path = u"/path.wav"_s;
    QTEST(file.fileExtension(), "extension");
    QTEST(file.isAudioFile(), "isAudio");
}

void TestWebDAVFile::sizeIsShownInStepsOfAThousand()
{
    WebDAVFile file;
    QCOMPARE(file.formattedSize(), u"Zero KB"_s);
    file.size = 3'400'000;
    QCOMPARE(file.formattedSize(), u"3.4 MB"_s);
}

void TestWebDAVFile::equalityCoversEveryField()
{
    WebDAVFile file;
    file.modifiedDate = QDateTime::fromSecsSinceEpoch(1, Qt::UTC);
    file.contentType = u"audio/mpeg"_s;
    const WebDAVFile copy = file;
    QCOMPARE(copy, file);
    QCOMPARE(qHash(copy, 1), qHash(file, 1));
    const std::initializer_list<std::function<void(WebDAVFile &)>> changes = {
        [](WebDAVFile &f) { f.id = u"other"_s; },
        [](WebDAVFile &f) { f.name = u"other"_s; },
        [](WebDAVFile &f) { f.path = u"other"_s; },
        [](WebDAVFile &f) { f.isDirectory = true; },
        [](WebDAVFile &f) { f.size = 1; },
        [](WebDAVFile &f) { f.modifiedDate.reset(); },
        [](WebDAVFile &f) { f.contentType = u"other"_s; },
        [](WebDAVFile &f) { f.contentType.reset(); }};
    for (const auto &change : changes) {
        WebDAVFile changed = file;
        change(changed);
        QVERIFY(changed != file);
        QVERIFY(qHash(changed, 1) != qHash(file, 1));
    }
}

QTEST_GUILESS_MAIN(TestWebDAVFile)
#include "tst_webdav_file.moc"
