// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/DecodingError.h"
#include "Services/Online/OnlineRecords.h"

#include <QJsonDocument>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

template <typename Response>
bool isRead(const QByteArray &body)
{
    return decodedOnlineAnswer<Response>(body).has_value();
}

/// A song of a search in which one field has this JSON text.
QByteArray searchWith(const QByteArray &field, const QByteArray &value)
{
    QHash<QByteArray, QByteArray> fields{{"id", R"("1")"}, {"name", R"("n")"}, {"artist", R"("a")"}};
    fields[field] = value;
    QByteArrayList members;
    for (auto it = fields.cbegin(); it != fields.cend(); ++it)
        members.append('"' + it.key() + "\":" + it.value());
    return R"({"data":{"results":[{)" + members.join(',') + "}]}}";
}

} // namespace

class OnlineRecordsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void aSearchIsReadWhole()
    {
        const auto answer = decodedOnlineAnswer<OnlineMusicSearchResponse>(
            R"({"code":200,"message":"success","other":[1],"data":{"keyword":"k","total":3.0,"results":[
                {"id":"1","name":"晚风","artist":"歌手","album":"专辑","url":"where","platform":"qq","size":7},
                {"id":"2","name":"","artist":""}]}})");
        QVERIFY(answer && answer->data && answer->data->results);
        QCOMPARE(answer->code, std::optional<qint64>(200));
        QCOMPARE(answer->message, std::optional(u"success"_s));
        QCOMPARE(answer->data->keyword, std::optional(u"k"_s));
        QCOMPARE(answer->data->total, std::optional<qint64>(3));
        QCOMPARE(answer->data->results->size(), 2);
        const OnlineMusicItem &first = answer->data->results->constFirst();
        QCOMPARE(first.name, u"晚风"_s);
        QCOMPARE(first.album, std::optional(u"专辑"_s));
        QCOMPARE(first.url, std::optional(u"where"_s));
        QCOMPARE(first.platform, std::optional(u"qq"_s));
        QVERIFY(!answer->data->results->constLast().album);
    }

    void whatIsOptionalMayBeMissingOrNull_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("nothing") << QByteArray("{}");
        QTest::newRow("nulls") << QByteArray(R"({"code":null,"message":null,"data":null})");
        QTest::newRow("empty data") << QByteArray(R"({"data":{}})");
        QTest::newRow("nulls in data") << QByteArray(R"({"data":{"keyword":null,"total":null,"results":null,
            "list":null,"source":null}})");
        QTest::newRow("large code") << QByteArray(R"({"code":20000000000})");
        QTest::newRow("other keys of any type") << QByteArray(R"({"data":{"pages":{},"x":[[]]},"y":false})");
    }
    void whatIsOptionalMayBeMissingOrNull()
    {
        QFETCH(QByteArray, body);
        QVERIFY(isRead<OnlineMusicSearchResponse>(body));
        QVERIFY(isRead<AggregateSearchResponse>(body));
        QVERIFY(isRead<TopListsResponse>(body));
        QVERIFY(isRead<TopListSongsResponse>(body));
    }

    void oneWrongTypeFailsTheWholeAnswer_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("list") << QByteArray("[]");
        QTest::newRow("text") << QByteArray(R"("data")");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("page") << QByteArray("<html></html>");
        QTest::newRow("cut") << QByteArray(R"({"data":{"results":[)");
        QTest::newRow("more behind it") << QByteArray("{}{}");
        QTest::newRow("no UTF-8") << QByteArray("{\"message\":\"\xff\xfe\"}");
        QTest::newRow("nested without end") << QByteArray(100'000, '[');
        QTest::newRow("code is a text") << QByteArray(R"({"code":"200"})");
        QTest::newRow("code is broken") << QByteArray(R"({"code":200.5})");
        QTest::newRow("message is a number") << QByteArray(R"({"message":1})");
        QTest::newRow("data is a list") << QByteArray(R"({"data":[]})");
        QTest::newRow("data is a text") << QByteArray(R"({"data":""})");
    }
    void oneWrongTypeFailsTheWholeAnswer()
    {
        QFETCH(QByteArray, body);
        QVERIFY(!isRead<OnlineMusicSearchResponse>(body));
        QVERIFY(!isRead<AggregateSearchResponse>(body));
        QVERIFY(!isRead<TopListsResponse>(body));
        QVERIFY(!isRead<TopListSongsResponse>(body));
    }

    void fieldsOfASearchAreHeldToTheirTypes_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("isRead");
        for (const QByteArray field : {"id", "name", "artist"}) {
            QTest::addRow("%s null", field.constData()) << field << QByteArray("null") << false;
            QTest::addRow("%s number", field.constData()) << field << QByteArray("12") << false;
            QTest::addRow("%s list", field.constData()) << field << QByteArray("[]") << false;
        }
        for (const QByteArray field : {"album", "url", "platform"}) {
            QTest::addRow("%s null", field.constData()) << field << QByteArray("null") << true;
            QTest::addRow("%s number", field.constData()) << field << QByteArray("12") << false;
            QTest::addRow("%s object", field.constData()) << field << QByteArray("{}") << false;
        }
        QTest::newRow("unknown field") << QByteArray("size") << QByteArray("12") << true;
    }
    void fieldsOfASearchAreHeldToTheirTypes()
    {
        QFETCH(QByteArray, field);
        QFETCH(QByteArray, value);
        const QByteArray body = searchWith(field, value);
        QTEST(::isRead<OnlineMusicSearchResponse>(body), "isRead");
        QTEST(::isRead<AggregateSearchResponse>(body), "isRead");
    }

    void theTotalBelongsToSearchesOfOnePlatform()
    {
        const QByteArray body = R"({"data":{"total":"3","results":[]}})";
        QVERIFY(!isRead<OnlineMusicSearchResponse>(body));
        QVERIFY(isRead<AggregateSearchResponse>(body));
    }

    void listsHoldObjectsOnly()
    {
        for (const QByteArray element : {"null", "1", "\"a\"", "[]"}) {
            QVERIFY(!isRead<OnlineMusicSearchResponse>(R"({"data":{"results":[)" + element + "]}}"));
            QVERIFY(!isRead<TopListsResponse>(R"({"data":{"list":[)" + element + "]}}"));
            QVERIFY(!isRead<TopListSongsResponse>(R"({"data":{"list":[)" + element + "]}}"));
        }
    }

    void chartsAreHeldToTheirTypes()
    {
        QVERIFY(isRead<TopListsResponse>(R"({"data":{"list":[{"id":"1","name":"n"}]}})"));
        QVERIFY(!isRead<TopListsResponse>(R"({"data":{"list":[{"id":1,"name":"n"}]}})"));
        QVERIFY(!isRead<TopListsResponse>(R"({"data":{"list":[{"id":"1"}]}})"));
        QVERIFY(
            !isRead<TopListsResponse>(R"({"data":{"list":[{"id":"1","name":"n","updateFrequency":7}]}})"));
        QVERIFY(isRead<TopListSongsResponse>(
            R"({"data":{"source":"qq","list":[{"id":"1","name":"n","artist":null,"types":["flac"]}]}})"));
        QVERIFY(!isRead<TopListSongsResponse>(R"({"data":{"list":[{"id":"1","name":"n","artist":1}]}})"));
        // Nobody uses them, yet they are read.
        QVERIFY(!isRead<TopListSongsResponse>(R"({"data":{"list":[{"id":"1","name":"n","types":[1]}]}})"));
        QVERIFY(!isRead<TopListSongsResponse>(R"({"data":{"list":[{"id":"1","name":"n","types":"flac"}]}})"));
        QVERIFY(!isRead<TopListSongsResponse>(R"({"data":{"source":1,"list":[]}})"));
    }

    void aChartWithoutAFrequencyHasAWordForIt()
    {
        const TopListItem item{.id = u"1"_s, .name = u"榜"_s, .updateFrequency = std::nullopt};
        QCOMPARE(TopList::from(item, MusicPlatform::qq), (TopList{.id = u"1"_s,
                                                                  .name = u"榜"_s,
                                                                  .updateFrequency = u"定期更新"_s,
                                                                  .platform = MusicPlatform::qq}));
        const TopListItem weekly{.id = u"1"_s, .name = u"榜"_s, .updateFrequency = u"每周"_s};
        QCOMPARE(TopList::from(weekly, MusicPlatform::qq).updateFrequency, u"每周"_s);
        const TopListItem mute{.id = u"1"_s, .name = u"榜"_s, .updateFrequency = QString()};
        QCOMPARE(TopList::from(mute, MusicPlatform::qq).updateFrequency, QString());
    }
};

QTEST_GUILESS_MAIN(OnlineRecordsTest)
#include "tst_online_records.moc"
