// SPDX-License-Identifier: GPL-3.0-or-later
// Charts of the online platforms.
#include "Services/Online/OnlineAnswers.h"
#include "Services/OnlineMusicService.h"

#include <QPointer>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

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
    publishSongs(m_topListSongs, songs, &OnlineMusicService::topListSongsChanged);
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
    const AnswerOrder::Moment begun = m_topListLoads.begin();
    setIsLoadingTopLists(true);
    const std::optional<QUrl> url = m_apiConfig.buildTopListsURL(rawValue(platform));
    if (!url) {
        setIsLoadingTopLists(false);
        co_return;
    }
    const auto answer = co_await ask<TopListsResponse>(
        *url, {.request = u"📊 获取排行榜列表: "_s, .status = {}, .answer = u"📥 排行榜列表响应: "_s},
        &OnlineMusicService::m_topListLoads);
    if (!self)
        co_return;
    if (!answer.content) {
        print(u"❌ 获取排行榜列表错误: "_s + answer.content.error());
    } else if (const auto items = listIn(*answer.content, &TopListsData::list)) {
        QList<TopList> lists;
        for (const TopListItem &item : *items)
            lists.append(TopList::from(item, platform));
        // What was asked for before the charts were cleared may be of another server.
        if (begun > m_topListsCleared && answer.arrived > m_topListsArrived.value(platform)) {
            m_topListsArrived.insert(platform, answer.arrived);
            m_topLists.insert(platform, lists);
            Q_EMIT topListsChanged();
            Q_EMIT changed();
        }
        print(u"✅ 获取到 "_s + QString::number(lists.size()) + u" 个排行榜"_s);
    } else {
        print(u"⚠️ 解析排行榜列表失败"_s);
    }
    if (m_topListLoads.endsWait(answer.arrived))
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
    m_topListSongLoads.show(m_topListSongLoads.begin());
    setIsLoadingTopListSongs(true);
    setTopListSongs({});
    const std::optional<QUrl> url = m_apiConfig.buildTopListSongsURL(rawValue(topList.platform), topList.id);
    if (!url) {
        setIsLoadingTopListSongs(false);
        co_return;
    }
    const auto answer = co_await ask<TopListSongsResponse>(*url,
                                                           {.request = u"🎵 获取排行榜歌曲: "_s,
                                                            .status = {},
                                                            .answer = u"📥 排行榜歌曲响应: "_s,
                                                            .shownCharacters = shownOfSongs},
                                                           &OnlineMusicService::m_topListSongLoads);
    if (!self)
        co_return;
    if (!answer.content) {
        print(u"❌ 获取排行榜歌曲错误: "_s + answer.content.error());
    } else if (const auto items = listIn(*answer.content, &TopListSongsData::list)) {
        QList<OnlineSong> songs;
        for (const TopListSongItem &item : *items)
            songs.append(songOf(item, topList.platform));
        if (m_topListSongLoads.show(answer.arrived))
            setTopListSongs(songs);
        print(u"✅ 获取到 "_s + QString::number(songs.size()) + u" 首歌曲"_s);
    } else {
        print(u"⚠️ 解析排行榜歌曲失败"_s);
    }
    if (m_topListSongLoads.endsWait(answer.arrived))
        setIsLoadingTopListSongs(false);
}

void OnlineMusicService::clearTopListsCache()
{
    m_topListsCleared = m_topListLoads.arrive();
    if (m_topLists.isEmpty())
        return;
    m_topLists.clear();
    Q_EMIT topListsChanged();
    Q_EMIT changed();
}

} // namespace cadorel
