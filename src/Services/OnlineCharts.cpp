// SPDX-License-Identifier: GPL-3.0-or-later
// Charts of the online platforms.
#include "Services/APIConfigService.h"
#include "Services/Online/OnlineAnswers.h"
#include "Services/OnlineMusicService.h"

#include <QPointer>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int shownOfCharts = 500;
constexpr int shownOfSongs = 800;

OnlineSong songOf(const TopListSongItem &item, MusicPlatform platform)
{
    return {.id = item.id,
            .name = item.name,
            .artist = item.artist.value_or(u"未知艺术家"_s),
            .album = {},
            .platform = platform,
            .picUrl = {},
            .lrcUrl = {}};
}

} // namespace

void OnlineMusicService::setIsLoadingTopLists(bool value)
{
    publish(m_isLoadingTopLists, value, &OnlineMusicService::isLoadingTopListsChanged);
}

void OnlineMusicService::setTopListSongs(const QList<OnlineSong> &songs)
{
    // Equal songs may differ in all but id and platform.
    if (m_topListSongs.isEmpty() && songs.isEmpty())
        return;
    m_topListSongs = songs;
    Q_EMIT topListSongsChanged();
    Q_EMIT changed();
}

void OnlineMusicService::setIsLoadingTopListSongs(bool value)
{
    publish(m_isLoadingTopListSongs, value, &OnlineMusicService::isLoadingTopListSongsChanged);
}

QCoro::Task<void> OnlineMusicService::getTopLists(MusicPlatform platform)
{
    if (m_topLists.contains(platform))
        co_return;
    const QPointer<OnlineMusicService> self(this);
    setIsLoadingTopLists(true);
    const std::optional<QUrl> url = m_apiConfig.buildTopListsURL(rawValue(platform));
    if (!url) {
        setIsLoadingTopLists(false);
        co_return;
    }
    print(u"📊 获取排行榜列表: "_s + shownAddress(*url));
    try {
        const HttpResponse response = co_await fetch(*url);
        if (!self)
            co_return;
        printAnswer(u"📥 排行榜列表响应: "_s, response.body, shownOfCharts);
        const auto answer = co_await decoded<TopListsResponse>(response.body);
        if (!self)
            co_return;
        if (const std::optional<QList<TopListItem>> items = listIn(answer, &TopListsData::list)) {
            QList<TopList> lists;
            for (const TopListItem &item : *items)
                lists.append(TopList::from(item, platform));
            m_topLists.insert(platform, lists);
            Q_EMIT topListsChanged();
            Q_EMIT changed();
            print(u"✅ 获取到 "_s + QString::number(lists.size()) + u" 个排行榜"_s);
        } else {
            print(u"⚠️ 解析排行榜列表失败"_s);
        }
    } catch (const TransportError &error) {
        print(u"❌ 获取排行榜列表错误: "_s + error.description());
    }
    if (self)
        setIsLoadingTopLists(false);
}

QCoro::Task<void> OnlineMusicService::loadAllTopLists()
{
    const QPointer<OnlineMusicService> self(this);
    for (const MusicPlatform platform : allMusicPlatforms()) {
        co_await getTopLists(platform);
        if (!self)
            co_return;
    }
}

QCoro::Task<void> OnlineMusicService::getTopListSongs(TopList topList)
{
    const QPointer<OnlineMusicService> self(this);
    publish(m_currentTopList, std::optional(topList), &OnlineMusicService::currentTopListChanged);
    setIsLoadingTopListSongs(true);
    setTopListSongs({});
    const std::optional<QUrl> url = m_apiConfig.buildTopListSongsURL(rawValue(topList.platform), topList.id);
    if (!url) {
        setIsLoadingTopListSongs(false);
        co_return;
    }
    print(u"🎵 获取排行榜歌曲: "_s + shownAddress(*url));
    try {
        const HttpResponse response = co_await fetch(*url);
        if (!self)
            co_return;
        printAnswer(u"📥 排行榜歌曲响应: "_s, response.body, shownOfSongs);
        const auto answer = co_await decoded<TopListSongsResponse>(response.body);
        if (!self)
            co_return;
        if (const std::optional<QList<TopListSongItem>> items = listIn(answer, &TopListSongsData::list)) {
            QList<OnlineSong> songs;
            for (const TopListSongItem &item : *items)
                songs.append(songOf(item, topList.platform));
            setTopListSongs(songs);
            print(u"✅ 获取到 "_s + QString::number(songs.size()) + u" 首歌曲"_s);
        } else {
            print(u"⚠️ 解析排行榜歌曲失败"_s);
        }
    } catch (const TransportError &error) {
        print(u"❌ 获取排行榜歌曲错误: "_s + error.description());
    }
    if (self)
        setIsLoadingTopListSongs(false);
}

void OnlineMusicService::clearTopListsCache()
{
    if (m_topLists.isEmpty())
        return;
    m_topLists.clear();
    Q_EMIT topListsChanged();
    Q_EMIT changed();
}

} // namespace cadorel
