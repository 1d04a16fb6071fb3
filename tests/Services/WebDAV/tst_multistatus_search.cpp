// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/MultistatusSearch.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

struct Found
{
    std::optional<QString> href;
    bool hasCollection = false;

    bool operator==(const Found &) const = default;
};

QList<Found> search(const QByteArray &text)
{
    QList<Found> result;
    MultistatusSearch found(text);
    while (const auto response = found.next()) {
        result.append({response->href ? std::optional(QString::fromUtf8(*response->href)) : std::nullopt,
                       response->hasCollection});
    }
    return result;
}

/// What the search stands for.
QList<Found> searchByExpressions(const QByteArray &text)
{
    static const QRegularExpression response(uR"(<[dD]:response[^>]*>([\s\S]*?)</[dD]:response>)"_s);
    static const QRegularExpression href(uR"(<[dD]:href>([^<]+)</[dD]:href>)"_s);
    static const QRegularExpression collection(uR"(<[dD]:collection\s*/>)"_s);
    QList<Found> result;
    const QString subject = QString::fromUtf8(text);
    for (auto matches = response.globalMatch(subject); matches.hasNext();) {
        const QString block = matches.next().captured(1);
        const QRegularExpressionMatch match = href.match(block);
        result.append({match.hasMatch() ? std::optional(match.captured(1)) : std::nullopt,
                       collection.match(block).hasMatch()});
    }
    return result;
}

} // namespace

class TestMultistatusSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsWhatTheExpressionsFind_data();
    void findsWhatTheExpressionsFind();
    void findsWhatTheExpressionsFindInAnyText();
    void hostileTextTakesOnePass_data();
    void hostileTextTakesOnePass();
};

void TestMultistatusSearch::findsWhatTheExpressionsFind_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("hrefs");
    const auto row = [](const char *name, const char *text, const QStringList &hrefs) {
        QTest::newRow(name) << QByteArray(text) << hrefs;
    };
    row("nothing", "", {});
    row("no response", "<D:href>/a</D:href>", {});
    row("one", "<D:response><D:href>/a</D:href></D:response>", {u"/a"_s});
    row("either case, mixed", "<d:response><D:href>/a</d:href></D:response>", {u"/a"_s});
    row("another prefix", "<x:response><x:href>/a</x:href></x:response>", {});
    row("upper-case name", "<D:RESPONSE><D:HREF>/a</D:HREF></D:RESPONSE>", {});
    row("two", "<D:response><D:href>/a</D:href></D:response>x<D:response><D:href>/b</D:href></D:response>",
        {u"/a"_s, u"/b"_s});
    row("attributes", "<D:response xmlns:D='DAV:'\n a=\"<\"><D:href>/a</D:href></D:response>", {u"/a"_s});
    row("a longer name counts too", "<D:responsedescription><D:href>/a</D:href></D:response>", {u"/a"_s});
    row("no href", "<D:response></D:response><D:response><D:href>/b</D:href></D:response>",
        {u"none"_s, u"/b"_s});
    row("empty href, then another", "<D:response><D:href></D:href><D:href>/b</D:href></D:response>",
        {u"/b"_s});
    row("href with markup, then another",
        "<D:response><D:href>/a<b/></D:href><D:href>/b</D:href></D:response>", {u"/b"_s});
    row("href with attributes", "<D:response><D:href a=''>/a</D:href></D:response>", {u"none"_s});
    row("the first of two", "<D:response><D:href>/a</D:href><D:href>/b</D:href></D:response>", {u"/a"_s});
    row("blanks stay", "<D:response><D:href> /a\n</D:href></D:response>", {u" /a\n"_s});
    row("cut off", "<D:response><D:href>/a</D:href></D:response><D:response><D:href>/b</D:href>", {u"/a"_s});
    row("cut off in the tag", "<D:response><D:href>/a</D:href></D:response><D:response", {u"/a"_s});
    row("cut off in the href", "<D:response><D:href>/a</D:hre</D:response>", {u"none"_s});
    row("not closed, then another",
        "<D:response><D:href>/a</D:href><D:response><D:href>/b</D:href></D:response>", {u"/a"_s});
    row("starts inside a start", "<<D:response><D:href><D:href>/a</D:href></D:response>", {u"/a"_s});
    row("Chinese", "<D:response><D:href>/音乐/😀</D:href></D:response>", {u"/音乐/😀"_s});
}

void TestMultistatusSearch::findsWhatTheExpressionsFind()
{
    QFETCH(const QByteArray, text);
    QStringList hrefs;
    for (const Found &found : search(text))
        hrefs.append(found.href.value_or(u"none"_s));
    QTEST(hrefs, "hrefs");
    QCOMPARE(search(text), searchByExpressions(text));
}

void TestMultistatusSearch::findsWhatTheExpressionsFindInAnyText()
{
    const QList<QByteArray> pieces = {"<D:response>",
                                      "<d:response",
                                      ">",
                                      "</D:response>",
                                      "</d:response>",
                                      "<D:href>",
                                      "</D:href>",
                                      "</d:href>",
                                      "<d:href>",
                                      "/a",
                                      "中",
                                      "<",
                                      "</",
                                      "D",
                                      ":href>",
                                      "<D:collection",
                                      " \n",
                                      "/>",
                                      "<d:collection/>",
                                      ":response>"};
    constexpr int texts = 20'000;
    constexpr int longest = 14;
    QRandomGenerator random(20240309);
    int withHref = 0;
    int withCollection = 0;
    for (int i = 0; i < texts; ++i) {
        QByteArray text = random.bounded(2) == 0 ? "<D:response>" : "";
        for (int count = random.bounded(longest); count > 0; --count)
            text += pieces[random.bounded(pieces.size())];
        if (random.bounded(2) == 0)
            text += "<D:href>/b</D:href></D:response>";
        const QList<Found> found = search(text);
        QVERIFY2(found == searchByExpressions(text), text.constData());
        withHref += !found.isEmpty() && found.first().href ? 1 : 0;
        withCollection += !found.isEmpty() && found.first().hasCollection ? 1 : 0;
    }
    QVERIFY(withHref > texts / 10);
    QVERIFY(withCollection > texts / 100);
}

void TestMultistatusSearch::hostileTextTakesOnePass_data()
{
    QTest::addColumn<QByteArray>("piece");
    for (const char *piece : {"<D:response>", "<D:response", "<D:response x", "<D:response><D:href>",
                              "<D:href>", "<", "</D:response", ":response", ">", "<D:collection ",
                              "<D:response></D:response>", "<D:response><D:href>x</D:response>"})
        QTest::newRow(piece) << QByteArray(piece);
}

void TestMultistatusSearch::hostileTextTakesOnePass()
{
    // Time that grows by the square would need days for this much.
    constexpr qsizetype size = 16'000'000;
    QFETCH(const QByteArray, piece);
    const QByteArray text = piece.repeated(size / piece.size());
    qsizetype count = 0;
    MultistatusSearch found(text);
    while (found.next())
        ++count;
    QCOMPARE(count, piece.contains("</D:response>") ? size / piece.size() : 0);
    const QByteArray block = "<D:response>" + text;
    QVERIFY(!MultistatusSearch(block + "<D:href").next() || piece.contains("</D:response>"));
    QVERIFY(MultistatusSearch(block + "></D:response>").next());
}

QTEST_GUILESS_MAIN(TestMultistatusSearch)
#include "tst_multistatus_search.moc"
