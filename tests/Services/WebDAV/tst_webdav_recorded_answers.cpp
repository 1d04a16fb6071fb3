// SPDX-License-Identifier: GPL-3.0-or-later
// What real servers answered, read into entries: tests/Fixtures/webdav/README.md tells what they differ in.
#include "Fakes/ConsoleLines.h"
#include "Services/WebDAV/WebDAVXMLParser.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QTest>

#include <algorithm>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString directory = QStringLiteral(CADOREL_SOURCE_DIR "/tests/Fixtures/webdav");

/// The entries of a folder by path: whether each is a folder.
QMap<QString, bool> expectedEntries(const QString &folder)
{
    if (folder == u"root")
        return {{u""_s, true},
                {u"/开场.mp3"_s, false},
                {u"/readme.txt"_s, false},
                {u"/no ending"_s, false},
                {u"/.hidden.mp3"_s, false},
                {u"/With Spaces"_s, true},
                {u"/中文专辑"_s, true},
                {u"/#1 & 100% a+b_c"_s, true},
                {u"/Empty"_s, true}};
    if (folder == u"chinese")
        return {{u"/中文专辑"_s, true}, {u"/中文专辑/歌曲 一.flac"_s, false}, {u"/中文专辑/Disc 2"_s, true}};
    if (folder == u"special") {
        const QString own = u"/#1 & 100% a+b_c"_s;
        QMap<QString, bool> entries{{own, true}, {own + u"/Emoji 🎵 ♥"_s, true}};
        for (const QString &name :
             {u"#1 song.mp3"_s, u"50% off.mp3"_s, u"%41 literal.mp3"_s, u"C+D.ogg"_s, u"Soul & Blues.m4a"_s,
              u"track_01.mp3"_s, u"Why?.mp3"_s, u"Quote's [live] {take}; a=b, c \"d\" <e>.wav"_s})
            entries.insert(own + u'/' + name, false);
        return entries;
    }
    return {{u"/Empty"_s, true}};
}

} // namespace

class TestWebDAVRecordedAnswers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isReadCompletely_data();
    void isReadCompletely();
};

void TestWebDAVRecordedAnswers::isReadCompletely_data()
{
    QTest::addColumn<QString>("file");
    const QStringList files = QDir(directory).entryList({u"*.xml"_s}, QDir::Files);
    QVERIFY(!files.isEmpty());
    for (const QString &file : files)
        QTest::addRow("%s", qPrintable(file)) << file;
}

void TestWebDAVRecordedAnswers::isReadCompletely()
{
    QFETCH(const QString, file);
    const QString server = file.section(u'-', 0, 0);
    const QString folder = file.section(u'-', 1).chopped(4);
    QFile answer(directory + u'/' + file);
    QVERIFY(answer.open(QIODevice::ReadOnly));

    ConsoleLines lines;
    const QList<WebDAVFile> files = WebDAVXMLParser(answer.readAll(), QUrl()).parse();
    QCOMPARE(lines.take(), QStringList());

    QMap<QString, bool> expected = expectedEntries(folder);
    if (server == u"nginx")
        expected.removeIf([](const auto &entry) { return entry.key().contains(u"/."_s); });
    QMap<QString, bool> found;
    const QDateTime date(QDate(2024, 3, 9), QTime(8, 7, 6), Qt::UTC);
    for (const WebDAVFile &entry : files) {
        found.insert(entry.path, entry.isDirectory);
        QCOMPARE(entry.name, entry.path.isEmpty() ? u"/"_s : entry.path.section(u'/', -1));
        QCOMPARE(entry.modifiedDate, date);
        QVERIFY(entry.isDirectory || entry.size > 0);
    }
    QCOMPARE(found, expected);
    QCOMPARE(files.size(), expected.size());
}

QTEST_GUILESS_MAIN(TestWebDAVRecordedAnswers)
#include "tst_webdav_recorded_answers.moc"
