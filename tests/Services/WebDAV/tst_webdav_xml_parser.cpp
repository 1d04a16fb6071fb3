// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/ConsoleLines.h"
#include "Services/WebDAV/WebDAVXMLParser.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

QList<WebDAVFile> parse(const QByteArray &data)
{
    return WebDAVXMLParser(data, QUrl(u"https://h.example/"_s)).parse();
}

/// The one entry of an answer with these properties.
QByteArray answer(const QByteArray &properties, const QByteArray &href = "/dav/a.mp3")
{
    return "<D:multistatus xmlns:D=\"DAV:\"><D:response><D:href>" + href + "</D:href><D:propstat><D:prop>" +
           properties + "</D:prop></D:propstat></D:response></D:multistatus>";
}

WebDAVFile only(const QList<WebDAVFile> &files)
{
    if (files.size() == 1)
        return files.first();
    WebDAVFile notOne;
    notOne.name = notOne.path = u"%1 entries"_s.arg(files.size());
    return notOne;
}

const QByteArray listing = R"(<?xml version="1.0" encoding="utf-8"?>
<D:multistatus xmlns:D="DAV:">
  <D:response>
    <D:href>/dav/%E9%9F%B3%E4%B9%90/</D:href>
    <D:propstat>
      <D:prop>
        <D:displayname>音乐</D:displayname>
        <D:getlastmodified>Sat, 09 Mar 2024 08:07:06 GMT</D:getlastmodified>
        <D:resourcetype><D:collection/></D:resourcetype>
      </D:prop>
      <D:status>HTTP/1.1 200 OK</D:status>
    </D:propstat>
    <D:propstat>
      <D:prop><D:getcontentlength/><D:getcontenttype/></D:prop>
      <D:status>HTTP/1.1 404 Not Found</D:status>
    </D:propstat>
  </D:response>
  <D:response>
    <D:href>/dav/%E9%9F%B3%E4%B9%90/a%20b.mp3</D:href>
    <D:propstat>
      <D:prop>
        <D:displayname>晴天.mp3</D:displayname>
        <D:getcontentlength>5000000000</D:getcontentlength>
        <D:getcontenttype>audio/mpeg</D:getcontenttype>
        <D:getlastmodified>Sat, 09 Mar 2024 08:07:06 GMT</D:getlastmodified>
        <D:resourcetype/>
      </D:prop>
      <D:status>HTTP/1.1 200 OK</D:status>
    </D:propstat>
  </D:response>
</D:multistatus>
)";

void compareListing(const QList<WebDAVFile> &files)
{
    const QDateTime date(QDate(2024, 3, 9), QTime(8, 7, 6), Qt::UTC);
    QCOMPARE(files.size(), 2);
    QCOMPARE(files[0].name, u"音乐"_s);
    QCOMPARE(files[0].path, u"/dav/音乐"_s);
    QVERIFY(files[0].isDirectory);
    QCOMPARE(files[0].size, 0);
    QCOMPARE(files[0].modifiedDate, date);
    QVERIFY(!files[0].contentType);
    QCOMPARE(files[1].name, u"晴天.mp3"_s);
    QCOMPARE(files[1].path, u"/dav/音乐/a b.mp3"_s);
    QVERIFY(!files[1].isDirectory);
    QCOMPARE(files[1].size, 5'000'000'000);
    QCOMPARE(files[1].modifiedDate, date);
    QCOMPARE(files[1].contentType, u"audio/mpeg"_s);
    QVERIFY(files[0].id != files[1].id);
}

} // namespace

class TestWebDAVXMLParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_lines.take(); }
    /// Whatever is read here is XML: the search for less is never tried.
    void cleanup() { QCOMPARE(m_lines.take(), QStringList()); }

    void anyPrefixIsRead_data();
    void anyPrefixIsRead();
    void namesCountInAnyCase();
    void prefixesMayDifferWithinAnAnswer();
    void answerWithoutResponsesIsEmpty_data();
    void answerWithoutResponsesIsEmpty();

    void nameIsTheDisplayNameOrTheLastComponent_data();
    void nameIsTheDisplayNameOrTheLastComponent();
    void hrefIsDecoded_data();
    void hrefIsDecoded();
    void responseWithoutHrefIsLeftOut();
    void lengthIsANumberOrZero_data();
    void lengthIsANumberOrZero();
    void otherDatesAreAbsentAndTheEntryStays();

    void piecesAreTrimmedAndJoined_data();
    void piecesAreTrimmedAndJoined();
    void textBehindAChildElementIsDropped();
    void textBetweenElementsIsIgnored();
    void textOutsideOfResponsesIsIgnored();
    void repeatedElements();
    void responseInsideAResponseEndsBoth();
    void nothingIsKeptFromOneResponseToTheNext();
    void textAcrossPiecesOfTheReaderIsWhole();
    void orderIsThatOfTheAnswer();

private:
    ConsoleLines m_lines;
};

void TestWebDAVXMLParser::anyPrefixIsRead_data()
{
    QTest::addColumn<QByteArray>("data");
    const auto withPrefix = [](const QByteArray &prefix, const QByteArray &declaration) {
        return QByteArray(listing)
            .replace("xmlns:D=", declaration)
            .replace("<D:", "<" + prefix)
            .replace("</D:", "</" + prefix);
    };
    QTest::newRow("D") << listing;
    QTest::newRow("d") << withPrefix("d:", "xmlns:d=");
    QTest::newRow("none") << withPrefix("", "xmlns=");
    QTest::newRow("lp1") << withPrefix("lp1:", "xmlns:lp1=");
    QTest::newRow("a") << withPrefix("a:", "xmlns:a=");
    QTest::newRow("ns0") << withPrefix("ns0:", "xmlns:ns0=");
    QTest::newRow("Chinese") << withPrefix("网:", "xmlns:网=");
    QTest::newRow("not declared") << withPrefix("x:", "a=");
}

void TestWebDAVXMLParser::anyPrefixIsRead()
{
    QFETCH(const QByteArray, data);
    compareListing(parse(data));
}

void TestWebDAVXMLParser::namesCountInAnyCase()
{
    QByteArray data = listing;
    for (const char *name : {"multistatus", "response", "href", "displayname", "getcontentlength",
                             "getcontenttype", "getlastmodified", "collection"}) {
        data.replace("D:" + QByteArray(name) + ">", "D:" + QByteArray(name).toUpper() + ">");
        data.replace("D:" + QByteArray(name) + "/>", "D:" + QByteArray(name).toUpper() + "/>");
    }
    data.replace("<D:multistatus", "<D:MULTISTATUS");
    compareListing(parse(data));
}

void TestWebDAVXMLParser::prefixesMayDifferWithinAnAnswer()
{
    compareListing(parse(QByteArray(listing)
                             .replace("D:getlastmodified", "lp1:getlastmodified")
                             .replace("D:collection", "g0:collection")
                             .replace("D:displayname", "displayname")));
}

void TestWebDAVXMLParser::answerWithoutResponsesIsEmpty_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("empty multistatus") << "<D:multistatus xmlns:D='DAV:'/>"_ba;
    QTest::newRow("something else") << "<html><body><p>Hello</p></body></html>"_ba;
    QTest::newRow("hrefs alone") << "<a><D:href xmlns:D='DAV:'>/a</D:href><D:collection/></a>"_ba;
}

void TestWebDAVXMLParser::answerWithoutResponsesIsEmpty()
{
    QFETCH(const QByteArray, data);
    QVERIFY(parse(data).isEmpty());
}

void TestWebDAVXMLParser::nameIsTheDisplayNameOrTheLastComponent_data()
{
    QTest::addColumn<QByteArray>("displayName");
    QTest::addColumn<QByteArray>("href");
    QTest::addColumn<QString>("name");
    const auto row = [](const char *name, const QByteArray &displayName, const QByteArray &href,
                        const QString &expected) { QTest::newRow(name) << displayName << href << expected; };
    row("display name", "<D:displayname>显示</D:displayname>", "/a/b.mp3", u"显示"_s);
    row("empty", "<D:displayname/>", "/a/b.mp3", u"b.mp3"_s);
    row("blank", "<D:displayname> \n </D:displayname>", "/a/b.mp3", u"b.mp3"_s);
    row("none", "", "/a/b%20c.mp3", u"b c.mp3"_s);
    row("none, a folder", "", "/a/%E4%B8%AD/", u"中"_s);
    row("none, the root", "", "/", u"/"_s);
    row("none, slashes", "", "///", u"/"_s);
    row("none, two slashes behind", "", "/a/b//", u"b"_s);
    row("none, no slash", "", "b.mp3", u"b.mp3"_s);
    row("none, an escaped slash", "", "/a%2Fb", u"b"_s);
    row("none, a whole address", "", "https://h.example/a/b", u"b"_s);
}

void TestWebDAVXMLParser::nameIsTheDisplayNameOrTheLastComponent()
{
    QFETCH(const QByteArray, displayName);
    QFETCH(const QByteArray, href);
    QTEST(only(parse(answer(displayName, href))).name, "name");
}

void TestWebDAVXMLParser::hrefIsDecoded_data()
{
    QTest::addColumn<QByteArray>("href");
    QTest::addColumn<QString>("path");
    const auto row = [](const char *href, const QString &path) {
        QTest::newRow(href) << QByteArray(href) << path;
    };
    row("/a%20b%23%3f%25", u"/a b#?%"_s);
    row("/%e4%b8%ad/中", u"/中/中"_s);
    row("/a+b", u"/a+b"_s);
    row("/a&amp;b&#37;20c", u"/a&b c"_s);
    row("/", u""_s);
    row("/a/", u"/a"_s);
    row("/a//", u"/a/"_s);
    row("https://h.example:81/a/", u"https://h.example:81/a"_s);
    row("/100%/", u"/100%"_s);
    row("/%D6%D0/a%20b", u"/%D6%D0/a%20b"_s);
    row("/%E4%B8", u"/%E4%B8"_s);
    row("/a?b#c", u"/a?b#c"_s);
}

void TestWebDAVXMLParser::hrefIsDecoded()
{
    QFETCH(const QByteArray, href);
    QTEST(only(parse(answer({}, href))).path, "path");
}

void TestWebDAVXMLParser::responseWithoutHrefIsLeftOut()
{
    QCOMPARE(only(parse("<m><response><displayname>a</displayname></response>"
                        "<response><href> \n </href></response>"
                        "<response><href>/b</href></response></m>"))
                 .path,
             u"/b"_s);
}

void TestWebDAVXMLParser::lengthIsANumberOrZero_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<qint64>("size");
    QTest::newRow("number") << " 12345\n"_ba << qint64{12345};
    QTest::newRow("largest") << "9223372036854775807"_ba << std::numeric_limits<qint64>::max();
    QTest::newRow("too large") << "9223372036854775808"_ba << qint64{0};
    QTest::newRow("no number") << "many"_ba << qint64{0};
    QTest::newRow("with a unit") << "12 KB"_ba << qint64{0};
    QTest::newRow("grouped") << "12,345"_ba << qint64{0};
    QTest::newRow("fraction") << "1.5"_ba << qint64{0};
    QTest::newRow("hexadecimal") << "0x10"_ba << qint64{0};
    QTest::newRow("empty") << ""_ba << qint64{0};
}

void TestWebDAVXMLParser::lengthIsANumberOrZero()
{
    QFETCH(const QByteArray, text);
    QTEST(only(parse(answer("<D:getcontentlength>" + text + "</D:getcontentlength>"))).size, "size");
}

void TestWebDAVXMLParser::otherDatesAreAbsentAndTheEntryStays()
{
    for (const QByteArray &text : {"2024-03-09T08:07:06Z"_ba, "yesterday"_ba, ""_ba}) {
        const WebDAVFile file = only(parse(answer("<D:getlastmodified>" + text + "</D:getlastmodified>")));
        QCOMPARE(file.path, u"/dav/a.mp3"_s);
        QVERIFY(!file.modifiedDate);
    }
}

void TestWebDAVXMLParser::piecesAreTrimmedAndJoined_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("name");
    QTest::newRow("white space around") << "\n\t  a b \r\n"_ba << u"a b"_s;
    QTest::newRow("wide blanks around") << "　a　b\u00a0"_ba << u"a　b"_s;
    QTest::newRow("character references") << "&lt;a&gt; &amp; &#x4E2D;&quot;&apos;"_ba << u"<a> & 中\"'"_s;
    QTest::newRow("section") << "<![CDATA[<a> &amp; b]]>"_ba << u"<a> &amp; b"_s;
    QTest::newRow("section between") << "a <![CDATA[ b ]]> c"_ba << u"abc"_s;
    QTest::newRow("comment between") << "a <!-- x --> b"_ba << u"ab"_s;
    QTest::newRow("instruction between") << "a<?x y?>b"_ba << u"ab"_s;
}

void TestWebDAVXMLParser::piecesAreTrimmedAndJoined()
{
    QFETCH(const QByteArray, text);
    QTEST(only(parse(answer("<D:displayname>" + text + "</D:displayname>"))).name, "name");
}

void TestWebDAVXMLParser::textBehindAChildElementIsDropped()
{
    QCOMPARE(only(parse(answer("<D:displayname>a<D:b>c</D:b>d</D:displayname>"))).name, u"a"_s);
}

void TestWebDAVXMLParser::textBetweenElementsIsIgnored()
{
    const WebDAVFile file =
        only(parse("<m><response>1<href>/a</href>2<prop>3<displayname>n</displayname>4</prop>5"
                   "</response></m>"));
    QCOMPARE(file.path, u"/a"_s);
    QCOMPARE(file.name, u"n"_s);
}

void TestWebDAVXMLParser::textOutsideOfResponsesIsIgnored()
{
    const WebDAVFile file =
        only(parse("<m><href>/x</href><displayname>x</displayname><response><href>/a</href>"
                   "</response><displayname>y</displayname><collection/></m>"));
    QCOMPARE(file.path, u"/a"_s);
    QCOMPARE(file.name, u"a"_s);
    QVERIFY(!file.isDirectory);
}

void TestWebDAVXMLParser::repeatedElements()
{
    const WebDAVFile file =
        only(parse(answer("<D:displayname>a</D:displayname><D:displayname>b</D:displayname>"
                          "<D:getcontentlength>1</D:getcontentlength>"
                          "<D:getcontentlength>x</D:getcontentlength>"
                          "<D:getcontentlength>3</D:getcontentlength>"
                          "<D:getcontentlength/>")));
    QCOMPARE(file.name, u"ab"_s);
    QCOMPARE(file.size, 3);
}

void TestWebDAVXMLParser::responseInsideAResponseEndsBoth()
{
    QCOMPARE(only(parse("<m><response><href>/a</href><response><href>/b</href></response>"
                        "<href>/c</href></response></m>"))
                 .path,
             u"/b"_s);
}

void TestWebDAVXMLParser::nothingIsKeptFromOneResponseToTheNext()
{
    const QList<WebDAVFile> files =
        parse("<m><response><href>/a</href><displayname>n</displayname><getcontenttype>t</getcontenttype>"
              "<getlastmodified>Sat, 09 Mar 2024 08:07:06 GMT</getlastmodified>"
              "<getcontentlength>1</getcontentlength><collection/></response>"
              "<response><href>/b</href></response></m>");
    QCOMPARE(files.size(), 2);
    QVERIFY(files[0].isDirectory);
    QCOMPARE(files[1].path, u"/b"_s);
    QCOMPARE(files[1].name, u"b"_s);
    QVERIFY(!files[1].isDirectory);
    QCOMPARE(files[1].size, 0);
    QVERIFY(!files[1].modifiedDate);
    QVERIFY(!files[1].contentType);
}

void TestWebDAVXMLParser::textAcrossPiecesOfTheReaderIsWhole()
{
    // The text is read in pieces of some thousand bytes: one of these shifts puts each byte at a seam.
    const QString name = u"a b 中文 😀 é & z"_s.repeated(1000);
    const QByteArray text = name.toHtmlEscaped().toUtf8();
    for (int shift = 0; shift < 8; ++shift) {
        const QByteArray data = answer("<D:displayname>" + text + "</D:displayname>");
        QCOMPARE(only(parse("<!--" + QByteArray(shift, 'x') + "-->" + data)).name, name);
    }
}

void TestWebDAVXMLParser::orderIsThatOfTheAnswer()
{
    constexpr int count = 2000;
    QByteArray data = "<m>";
    for (int i = 0; i < count; ++i)
        data += "<response><href>/" + QByteArray::number((i * 7919) % count) + "</href></response>";
    const QList<WebDAVFile> files = parse(data + "</m>");
    QCOMPARE(files.size(), count);
    QSet<QString> ids;
    for (int i = 0; i < count; ++i) {
        QCOMPARE(files[i].path, u"/%1"_s.arg((i * 7919) % count));
        ids.insert(files[i].id);
    }
    QCOMPARE(ids.size(), count);
}

QTEST_GUILESS_MAIN(TestWebDAVXMLParser)
#include "tst_webdav_xml_parser.moc"
