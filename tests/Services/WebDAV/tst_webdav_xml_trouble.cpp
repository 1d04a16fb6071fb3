// SPDX-License-Identifier: GPL-3.0-or-later
// Answers that are no XML, are not UTF-8 or mean harm.
#include "Fakes/ConsoleLines.h"
#include "Services/WebDAV/WebDAVXMLParser.h"

#include <QStringEncoder>
#include <QTemporaryFile>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString errorStart = u"❌ WebDAV XML 解析错误: "_s;
const QString failureStart = u"❌ WebDAV XML 解析失败: "_s;
const QString searchLine = u"📡 尝试备用解析方法..."_s;

QList<WebDAVFile> parse(const QByteArray &data)
{
    return WebDAVXMLParser(data, QUrl(u"https://h.example/"_s)).parse();
}

QString foundLine(int count)
{
    return u"📡 备用解析找到 %1 个项目"_s.arg(count);
}

const QByteArray response =
    "<D:response><D:href>/dav/%E4%B8%AD.mp3</D:href><D:propstat><D:prop><D:displayname>名</D:displayname>"
    "<D:getcontentlength>5</D:getcontentlength></D:prop></D:propstat></D:response>";
const QByteArray body = "<D:multistatus xmlns:D=\"DAV:\">" + response + "</D:multistatus>";

} // namespace

class TestWebDAVXMLTrouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_lines.take(); }

    void emptyAnswerIsTold();
    void whatStandsAroundTheXmlDoesNoHarm_data();
    void whatStandsAroundTheXmlDoesNoHarm();
    void everyEncodingIsRead_data();
    void everyEncodingIsRead();
    void bytesOfNoEncodingGiveNothing();

    void malformedAnswerIsSearched();
    void whatWasReadBeforeTheErrorIsNotListedTwice();
    void textWithoutResponsesGivesNothing_data();
    void textWithoutResponsesGivesNothing();
    void searchTellsFoldersFromFiles_data();
    void searchTellsFoldersFromFiles();
    void searchDecodesHrefs_data();
    void searchDecodesHrefs();
    void errorTextCannotForgeLogLines();

    void documentTypeDoesNoHarm_data();
    void documentTypeDoesNoHarm();
    void filesAreNotRead();
    void entitiesAreNotExpanded_data();
    void entitiesAreNotExpanded();
    void hostileAnswerEnds_data();
    void hostileAnswerEnds();

private:
    ConsoleLines m_lines;
};

void TestWebDAVXMLTrouble::emptyAnswerIsTold()
{
    QVERIFY(parse({}).isEmpty());
    QCOMPARE(m_lines.take(), QStringList{u"⚠️ WebDAV XML: 数据为空"_s});
}

void TestWebDAVXMLTrouble::whatStandsAroundTheXmlDoesNoHarm_data()
{
    QTest::addColumn<QByteArray>("data");
    const QByteArray declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    QTest::newRow("nothing") << body;
    QTest::newRow("declaration") << declaration + body;
    QTest::newRow("white space before") << "\r\n \t\v\f" + declaration + body;
    QTest::newRow("wide blanks before") << "　\u00a0\u2028\u0085" + declaration + body;
    QTest::newRow("white space behind") << declaration + body + "\n\n \u2003\t";
    QTest::newRow("byte order mark") << "\ufeff" + declaration + body;
    QTest::newRow("byte order mark, an encoding that it is not")
        << "\ufeff<?xml version='1.0' encoding='UTF-16'?>" + body;
    QTest::newRow("a long comment") << "<!--" + QByteArray(100'000, 'x') + "-->" + body;
    QTest::newRow("white space, byte order mark") << "\n \ufeff" + declaration + body;
    QTest::newRow("another version") << "<?xml version=\"1.1\"?>" + body;
    QTest::newRow("an encoding that is none") << "<?xml version=\"1.0\" encoding=\"utf8mb4\"?>" + body;
    QTest::newRow("an encoding that it is not") << "<?xml version=\"1.0\" encoding=\"UTF-16\"?>" + body;
    QTest::newRow("a one-byte encoding") << "<?xml\nversion='1.0' encoding='ISO-8859-1'?>" + body;
    QTest::newRow("comment and instruction") << declaration + "<!-- x --><?y z?>" + body + "<!-- x -->";
}

void TestWebDAVXMLTrouble::whatStandsAroundTheXmlDoesNoHarm()
{
    QFETCH(const QByteArray, data);
    const QList<WebDAVFile> files = parse(data);
    QCOMPARE(m_lines.take(), QStringList());
    QCOMPARE(files.size(), 1);
    QCOMPARE(files.first().path, u"/dav/中.mp3"_s);
    QCOMPARE(files.first().name, u"名"_s);
    QCOMPARE(files.first().size, 5);
}

void TestWebDAVXMLTrouble::everyEncodingIsRead_data()
{
    QTest::addColumn<QString>("encoding");
    QTest::addColumn<QByteArray>("mark");
    QTest::newRow("GBK") << u"GBK"_s << ""_ba;
    QTest::newRow("GB18030") << u"gb18030"_s << ""_ba;
    QTest::newRow("Big5") << u"Big5"_s << ""_ba;
    QTest::newRow("UTF-16LE") << u"UTF-16LE"_s << "\xff\xfe"_ba;
    QTest::newRow("UTF-16BE") << u"UTF-16BE"_s << "\xfe\xff"_ba;
}

void TestWebDAVXMLTrouble::everyEncodingIsRead()
{
    QFETCH(const QString, encoding);
    QFETCH(const QByteArray, mark);
    QStringEncoder encoder(encoding.toLatin1().constData());
    QVERIFY(encoder.isValid());
    const QString text = u"<?xml version=\"1.0\" encoding=\"%1\"?>"_s.arg(encoding) + QString::fromUtf8(body);
    const QByteArray data = mark + QByteArray(encoder.encode(text));
    QVERIFY(!data.isValidUtf8());
    const QList<WebDAVFile> files = parse(data);
    QCOMPARE(files.size(), 1);
    QCOMPARE(files.first().path, u"/dav/中.mp3"_s);
    QCOMPARE(files.first().name, u"名"_s);
    QCOMPARE(m_lines.take(), QStringList());
}

void TestWebDAVXMLTrouble::bytesOfNoEncodingGiveNothing()
{
    QVERIFY(parse(QByteArray(body).replace("名", "\xd6\xd0")).isEmpty());
    const QStringList lines = m_lines.take();
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[0].startsWith(errorStart) && lines[0].size() > errorStart.size());
    QCOMPARE(lines[1], failureStart + lines[0].sliced(errorStart.size()));
}

void TestWebDAVXMLTrouble::malformedAnswerIsSearched()
{
    const QList<WebDAVFile> files =
        parse("<D:multistatus>" + response + "<D:response><D:href>/dav/dir/</D:href>" +
              "<D:getcontentlength>7</D:getcontentlength>&nbsp;</D:response>");
    QCOMPARE(files.size(), 2);
    QCOMPARE(files[0].name, u"中.mp3"_s);
    QCOMPARE(files[0].path, u"/dav/中.mp3"_s);
    QVERIFY(!files[0].isDirectory);
    QCOMPARE(files[1].name, u"dir"_s);
    QCOMPARE(files[1].path, u"/dav/dir"_s);
    QVERIFY(files[1].isDirectory);
    for (const WebDAVFile &file : files) {
        QCOMPARE(file.size, 0);
        QVERIFY(!file.modifiedDate && !file.contentType);
    }
    QVERIFY(files[0].id != files[1].id);
    const QStringList lines = m_lines.take();
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines[0].startsWith(errorStart) && lines[0].size() > errorStart.size());
    QCOMPARE(lines[1], failureStart + lines[0].sliced(errorStart.size()));
    QCOMPARE(lines[2], searchLine);
    QCOMPARE(lines[3], foundLine(2));
}

void TestWebDAVXMLTrouble::whatWasReadBeforeTheErrorIsNotListedTwice()
{
    QCOMPARE(parse("<D:multistatus>" + response.repeated(3) + "</wrong>").size(), 3);
    // Under a prefix that the search does not know nothing is left of them.
    const QByteArray other = QByteArray(response).replace("D:", "x:");
    QCOMPARE(parse("<x:multistatus>" + other.repeated(3) + "</wrong>").size(), 0);
}

void TestWebDAVXMLTrouble::textWithoutResponsesGivesNothing_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("text") << "hello"_ba;
    QTest::newRow("white space alone") << " \n"_ba;
    QTest::newRow("page") << "<!DOCTYPE html><html><head><meta></head><p>Hi<br></html>"_ba;
    QTest::newRow("JSON") << "{\"error\": 1}"_ba;
    QTest::newRow("NUL") << "\0"_ba;
    QTest::newRow("cut off") << body.first(60);
    QTest::newRow("cut off in the declaration") << "<?xml version=\"1.0\""_ba;
    QTest::newRow("less-than sign") << "<"_ba;
}

void TestWebDAVXMLTrouble::textWithoutResponsesGivesNothing()
{
    QFETCH(const QByteArray, data);
    QVERIFY(parse(data).isEmpty());
    const QStringList lines = m_lines.take();
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[3], foundLine(0));
}

void TestWebDAVXMLTrouble::searchTellsFoldersFromFiles_data()
{
    QTest::addColumn<QByteArray>("block");
    QTest::addColumn<bool>("isDirectory");
    QTest::newRow("slash at the end") << "<D:href>/a/</D:href>"_ba << true;
    QTest::newRow("escaped slash at the end") << "<D:href>/a%2F</D:href>"_ba << true;
    QTest::newRow("collection") << "<D:href>/a</D:href><D:collection/>"_ba << true;
    QTest::newRow("collection, other case") << "<D:href>/a</D:href><d:collection \n/>"_ba << true;
    QTest::newRow("collection before") << "<D:collection/><D:href>/a</D:href>"_ba << true;
    QTest::newRow("neither") << "<D:href>/a</D:href>"_ba << false;
    QTest::newRow("another prefix") << "<D:href>/a</D:href><x:collection/>"_ba << false;
    QTest::newRow("collection with an end") << "<D:href>/a</D:href><D:collection></D:collection>"_ba << false;
}

void TestWebDAVXMLTrouble::searchTellsFoldersFromFiles()
{
    QFETCH(const QByteArray, block);
    const QList<WebDAVFile> files = parse("<D:response>" + block + "</D:response>&");
    QCOMPARE(files.size(), 1);
    QCOMPARE(files.first().path, u"/a"_s);
    QCOMPARE(files.first().name, u"a"_s);
    QTEST(files.first().isDirectory, "isDirectory");
}

void TestWebDAVXMLTrouble::searchDecodesHrefs_data()
{
    QTest::addColumn<QByteArray>("href");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::newRow("escapes") << "/a/%E4%B8%AD b"_ba << u"/a/中 b"_s << u"中 b"_s;
    QTest::newRow("GBK") << "/a/%D6%D0"_ba << u"/a/%D6%D0"_s << u"%D6%D0"_s;
    QTest::newRow("broken") << "/a/100%"_ba << u"/a/100%"_s << u"100%"_s;
    QTest::newRow("root") << "/"_ba << u""_s << u"/"_s;
    QTest::newRow("address") << "http://h/a/"_ba << u"http://h/a"_s << u"a"_s;
    QTest::newRow("character references stay") << "/a&amp;b"_ba << u"/a&amp;b"_s << u"a&amp;b"_s;
}

void TestWebDAVXMLTrouble::searchDecodesHrefs()
{
    QFETCH(const QByteArray, href);
    const QList<WebDAVFile> files = parse("<d:response><d:href>" + href + "</d:href></d:response>&");
    QCOMPARE(files.size(), 1);
    QTEST(files.first().path, "path");
    QTEST(files.first().name, "name");
}

void TestWebDAVXMLTrouble::errorTextCannotForgeLogLines()
{
    for (const QByteArray &data : {"<a>&\n✓ forged;</a>"_ba, "<a>&" + QByteArray(1'000'000, 'x') + ";</a>",
                                   "<!DOCTYPE a PUBLIC '" + QByteArray(1'000'000, '{') + "' ''><a/>",
                                   "<a></b\n✓ forged></a>"_ba, "<!DOCTYPE a PUBLIC '{\n✓ forged' ''><a/>"_ba,
                                   "<!DOCTYPE a PUBLIC '{\x1b[2J' ''><a/>"_ba, "<a b='\x1b[2J' b=''>"_ba}) {
        parse(data);
        const QStringList lines = m_lines.take();
        QCOMPARE(lines.size(), 4);
        for (const QString &line : lines) {
            QVERIFY(!line.contains(u'\n') && !line.contains(u'\x1b'));
            QVERIFY(line.size() < 300);
        }
    }
}

void TestWebDAVXMLTrouble::documentTypeDoesNoHarm_data()
{
    QTest::addColumn<QByteArray>("documentType");
    QTest::newRow("plain") << "<!DOCTYPE multistatus>"_ba;
    QTest::newRow("of somewhere else") << "<!DOCTYPE m SYSTEM \"http://127.0.0.1:1/x.dtd\">"_ba;
    QTest::newRow("with entities") << "<!DOCTYPE m [<!ENTITY a 'b'><!ELEMENT m ANY>]>"_ba;
}

void TestWebDAVXMLTrouble::documentTypeDoesNoHarm()
{
    QFETCH(const QByteArray, documentType);
    QCOMPARE(parse(documentType + body).size(), 1);
    QCOMPARE(m_lines.take(), QStringList());
}

void TestWebDAVXMLTrouble::filesAreNotRead()
{
    QTemporaryFile file;
    QVERIFY(file.open() && file.write("geheim") > 0 && file.flush());
    const QByteArray address = QUrl::fromLocalFile(file.fileName()).toEncoded();
    const QByteArray named = QByteArray(body).replace("名", "x&e;");
    const QByteArray parameter = "<!ENTITY % p SYSTEM '" + address + "'> %p;";
    for (const QByteArray &data :
         {"<!DOCTYPE m [<!ENTITY e SYSTEM '" + address + "'>]>" + named,
          "<!DOCTYPE m SYSTEM '" + address + "'>" + named, "<!DOCTYPE m [" + parameter + "]>" + body}) {
        for (const WebDAVFile &found : parse(data))
            QVERIFY(!found.name.contains(u"geheim"_s));
    }
}

void TestWebDAVXMLTrouble::entitiesAreNotExpanded_data()
{
    QTest::addColumn<QByteArray>("declarations");
    QTest::addColumn<QByteArray>("use");
    QByteArray laughs = "<!ENTITY l0 'ha'>";
    for (int i = 1; i < 10; ++i) {
        const QByteArray previous = "&l" + QByteArray::number(i - 1) + ";";
        laughs += "<!ENTITY l" + QByteArray::number(i) + " '" + previous.repeated(10) + "'>";
    }
    QTest::newRow("a billion laughs") << laughs << "&l9;"_ba;
    QTest::newRow("in an attribute") << laughs << "<x y='&l9;'/>"_ba;
    QTest::newRow("a large one, often")
        << "<!ENTITY l '" + QByteArray(100'000, 'x') + "'>" << QByteArray("&l;").repeated(100'000);
    QTest::newRow("itself") << "<!ENTITY a '&b;'><!ENTITY b '&a;'>"_ba << "&a;"_ba;
    QTest::newRow("elements") << "<!ENTITY a '<x>yy</x>'>"_ba << "&a;"_ba;
}

void TestWebDAVXMLTrouble::entitiesAreNotExpanded()
{
    QFETCH(const QByteArray, declarations);
    QFETCH(const QByteArray, use);
    const QByteArray data = QByteArray(body).replace("名", use);
    const QList<WebDAVFile> files = parse("<!DOCTYPE m [" + declarations + "]>" + data);
    QCOMPARE(files.size(), 1);
    QCOMPARE(files.first().name, u"中.mp3"_s);
    QCOMPARE(m_lines.take().size(), 4);
}

void TestWebDAVXMLTrouble::hostileAnswerEnds_data()
{
    // Time that grows by the square would need hours for these.
    constexpr qsizetype depth = 100'000;
    constexpr qsizetype many = 500'000;
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<qsizetype>("count");
    const auto row = [](const char *name, const QByteArray &data, qsizetype count) {
        QTest::newRow(name) << data << count;
    };
    row("deep",
        "<m>" + QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth) + response + "</m>",
        1);
    row("deep responses",
        "<m>" + QByteArray("<response>").repeated(depth) + "<href>/a</href>" +
            QByteArray("</response>").repeated(depth) + "</m>",
        1);
    row("never closed", QByteArray("<a>").repeated(many), 0);
    row("never closed responses", QByteArray("<D:response>").repeated(many), 0);
    const auto attributes = [](int number) {
        QByteArray text;
        for (int i = 0; i < number; ++i)
            text += " a" + QByteArray::number(i) + "=''";
        return text;
    };
    row("a long tag", "<m><a" + attributes(many) + "/>" + response + "</m>", 1);
    row("many attributes in many tags",
        "<m>" + ("<a" + attributes(500) + "/>").repeated(many / 1000) + response + "</m>", 1);
    row("a long name", "<m><" + QByteArray(many, 'a') + "/>" + response + "</m>", 1);
    row("a long href", "<m><response><href>/" + QByteArray("%41").repeated(many) + "</href></response></m>",
        1);
    row("many pieces",
        "<m><response><href>" + QByteArray("a<!---->").repeated(many) + "</href></response></m>", 1);
    row("many references",
        "<m><response><href>" + QByteArray("&amp;").repeated(many) + "</href></response></m>", 1);
    row("a long comment", "<m><!--" + QByteArray("<a ").repeated(many) + "-->" + response + "</m>", 1);
    row("nothing but less-than signs", QByteArray(many, '<'), 0);
    row("nothing but blanks", QByteArray(many, ' '), 0);
    row("wide blanks around", QByteArray("　").repeated(many) + body + QByteArray("　").repeated(many), 1);
    row("long declaration", "<?xml " + QByteArray(many, 'x'), 0);
}

void TestWebDAVXMLTrouble::hostileAnswerEnds()
{
    QFETCH(const QByteArray, data);
    QFETCH(const qsizetype, count);
    QCOMPARE(parse(data).size(), count);
}

QTEST_GUILESS_MAIN(TestWebDAVXMLTrouble)
#include "tst_webdav_xml_trouble.moc"
