// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/DecodingError.h"
#include "Models/MusicPlatform.h"
#include "Models/OnlineSong.h"
#include "Utils/JsonWriter.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QJsonObject whole{{u"id"_s, u"7"_s},       {u"name"_s, u"晚风"_s},   {u"artist"_s, u"歌手"_s},
                        {u"album"_s, u"专辑"_s}, {u"platform"_s, u"qq"_s}, {u"picUrl"_s, u"封面"_s},
                        {u"lrcUrl"_s, u"歌词"_s}};

bool isRead(const QJsonObject &object)
{
    try {
        OnlineSong::fromJson(object);
        return true;
    } catch (const DecodingError &) {
        return false;
    }
}

} // namespace

class OnlineSongTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void platformsHaveAnOrderAndNames()
    {
        QStringList rawValues;
        QStringList names;
        for (const MusicPlatform platform : allMusicPlatforms()) {
            rawValues.append(rawValue(platform));
            names.append(displayName(platform));
        }
        QCOMPARE(rawValues, (QStringList{u"netease"_s, u"kuwo"_s, u"qq"_s}));
        QCOMPARE(names, (QStringList{u"网易云"_s, u"酷我"_s, u"QQ音乐"_s}));
    }

    void behindTheLastPlatformComesTheFirst()
    {
        QCOMPARE(nextPlatform(MusicPlatform::netease), MusicPlatform::kuwo);
        QCOMPARE(nextPlatform(MusicPlatform::kuwo), MusicPlatform::qq);
        QCOMPARE(nextPlatform(MusicPlatform::qq), MusicPlatform::netease);
    }

    void oneIdOnTwoPlatformsIsTwoSongs()
    {
        OnlineSong song = OnlineSong::fromJson(whole);
        OnlineSong renamed = song;
        renamed.name = u"另名"_s;
        OnlineSong elsewhere = song;
        elsewhere.platform = MusicPlatform::kuwo;
        QVERIFY(song == renamed);
        QVERIFY(song != elsewhere);
        QCOMPARE((QSet<OnlineSong>{song, renamed, elsewhere}).size(), 2);
    }

    void theJsonFormHoldsEveryField()
    {
        JsonWriter writer;
        OnlineSong::fromJson(whole).writeJson(writer);
        QCOMPARE(QJsonDocument::fromJson(writer.take()).object(), whole);
    }

    void everyFieldIsRequired_data()
    {
        QTest::addColumn<QString>("key");
        for (const QString &key : whole.keys())
            QTest::newRow(qPrintable(key)) << key;
    }
    void everyFieldIsRequired()
    {
        QFETCH(QString, key);
        QVERIFY(isRead(whole));
        QJsonObject changed = whole;
        changed.remove(key);
        QVERIFY(!isRead(changed));
        changed.insert(key, QJsonValue::Null);
        QVERIFY(!isRead(changed));
        changed.insert(key, 7);
        QVERIFY(!isRead(changed));
    }

    void aPlatformThatNobodyKnowsIsNone()
    {
        QJsonObject changed = whole;
        changed.insert(u"platform"_s, u"QQ"_s);
        QVERIFY(!isRead(changed));
    }
};

QTEST_GUILESS_MAIN(OnlineSongTest)
#include "tst_online_song.moc"
