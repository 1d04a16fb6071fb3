// SPDX-License-Identifier: GPL-3.0-or-later
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

OnlineSong whole()
{
    return {.id = u"7"_s,
            .name = u"晚风"_s,
            .artist = u"歌手"_s,
            .album = u"专辑"_s,
            .platform = MusicPlatform::qq,
            .picUrl = u"封面"_s,
            .lrcUrl = u"歌词"_s};
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
        const OnlineSong song = whole();
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
        whole().writeJson(writer);
        const QJsonObject expected{{u"id"_s, u"7"_s},        {u"name"_s, u"晚风"_s},
                                   {u"artist"_s, u"歌手"_s}, {u"album"_s, u"专辑"_s},
                                   {u"platform"_s, u"qq"_s}, {u"picUrl"_s, u"封面"_s},
                                   {u"lrcUrl"_s, u"歌词"_s}};
        QCOMPARE(QJsonDocument::fromJson(writer.take()).object(), expected);
    }
};

QTEST_GUILESS_MAIN(OnlineSongTest)
#include "tst_online_song.moc"
