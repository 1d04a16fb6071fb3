// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/LyricLine.h"
#include "Models/OnlineSong.h"
#include "Models/TopList.h"
#include "Platform/Platform.h"
#include "Services/APIConfigService.h"
#include "Services/Online/AnswerOrder.h"
#include "Services/Seams/OnlineMusicSource.h"

#include <QCoroTask>
#include <QHash>
#include <QList>
#include <QString>
#include <QUrl>

#include <expected>
#include <memory>
#include <optional>

namespace cadorel {

class HttpTransfer;

/// Searches, charts and lookups of the online music API. Outcomes are published, failures too; changed()
/// comes with every one of the signals below. Main thread.
class OnlineMusicService : public OnlineMusicSource
{
    Q_OBJECT
    Q_PROPERTY(bool isSearching READ isSearching NOTIFY isSearchingChanged)
    Q_PROPERTY(QString searchError READ searchErrorText NOTIFY searchErrorChanged)
    Q_PROPERTY(bool isLoadingTopLists READ isLoadingTopLists NOTIFY isLoadingTopListsChanged)
    Q_PROPERTY(bool isLoadingTopListSongs READ isLoadingTopListSongs NOTIFY isLoadingTopListSongsChanged)

public:
    static constexpr int defaultAggregateLimit = 100;

    /// @param platform and @param apiConfig outlive the service
    OnlineMusicService(Platform &platform, APIConfigService &apiConfig);
    ~OnlineMusicService() override;
    Q_DISABLE_COPY_MOVE(OnlineMusicService)

    static OnlineMusicService &shared();

    QList<OnlineSong> searchResults() const override { return m_searchResults; }
    bool isSearching() const { return m_isSearching; }
    const std::optional<QString> &searchError() const { return m_searchError; }
    QString searchErrorText() const { return m_searchError.value_or(QString()); }
    /// For a listener who has read it.
    void clearSearchError();
    /// Charts of the platforms that are loaded; kept as long as the process.
    const QHash<MusicPlatform, QList<TopList>> &topLists() const { return m_topLists; }
    bool isLoadingTopLists() const { return m_isLoadingTopLists; }
    /// Songs of the chart that was opened last.
    const QList<OnlineSong> &topListSongs() const { return m_topListSongs; }
    bool isLoadingTopListSongs() const { return m_isLoadingTopListSongs; }
    const std::optional<TopList> &currentTopList() const { return m_currentTopList; }

    using OnlineMusicSource::search;
    /// Searches one platform. Of two searches under way the later answer wins.
    QCoro::Task<void> search(QString keyword, MusicPlatform platform, int limit) override;
    /// Searches all platforms at once.
    QCoro::Task<void> aggregateSearch(QString keyword, int limit = defaultAggregateLimit);

    /// Asks the API for the real address of the audio; its own address when it does not tell.
    QCoro::Task<std::optional<QUrl>> getPlayUrl(OnlineSong song,
                                                QString quality = APIConfigService::defaultQuality);
    /// Empty for every failure. @param transfer a hand on the request, for who may want it no more
    QCoro::Task<QList<LyricLine>> getLyrics(OnlineSong song, std::shared_ptr<HttpTransfer> transfer = {});
    std::optional<QUrl> getCoverUrl(const OnlineSong &song) const;

    /// Loads the charts of a platform, unless they are there.
    QCoro::Task<void> getTopLists(MusicPlatform platform);
    /// Every platform, one after the other.
    QCoro::Task<void> loadAllTopLists();
    /// Opens a chart and loads its songs anew.
    QCoro::Task<void> getTopListSongs(TopList topList);
    void clearTopListsCache();

Q_SIGNALS:
    void searchResultsChanged();
    void isSearchingChanged();
    void searchErrorChanged();
    void topListsChanged();
    void isLoadingTopListsChanged();
    void topListSongsChanged();
    void isLoadingTopListSongsChanged();
    void currentTopListChanged();

private:
    /// What sets the two kinds of search apart.
    struct Search;
    struct LogMarks;
    template <typename Response>
    struct Answer;

    /// In bytes: thousands of times what a search gives.
    static constexpr qint64 largestAnswer = qint64{32} * 1024 * 1024;

    template <typename T, typename Signal>
    void publish(T &member, const T &value, Signal signal);
    void publishSongs(QList<OnlineSong> &member, const QList<OnlineSong> &songs,
                      void (OnlineMusicService::*signal)());
    void setIsSearching(bool value);
    void setSearchError(const std::optional<QString> &value);
    void setSearchResults(const QList<OnlineSong> &songs);
    void dropSearchResults();
    void setIsLoadingTopLists(bool value);
    void setTopListSongs(const QList<OnlineSong> &songs);
    void setIsLoadingTopListSongs(bool value);

    template <typename Response>
    QCoro::Task<void> runSearch(std::optional<QUrl> url, Search search);
    /// @param atMost bytes of the answer are taken; a longer one fails, or is cut where @p isCut
    QCoro::Task<std::expected<HttpResponse, HttpError>> fetch(QUrl url, qint64 atMost, bool isCut = false,
                                                              std::shared_ptr<HttpTransfer> transfer = {});
    /// Asks, reads the answer, and tells both in the log. Gives nothing of use when the service is gone.
    template <typename Response>
    QCoro::Task<Answer<Response>> ask(QUrl url, LogMarks marks, AnswerOrder OnlineMusicService::*order);

    Platform &m_platform;
    APIConfigService &m_apiConfig;
    QList<OnlineSong> m_searchResults;
    bool m_isSearching = false;
    std::optional<QString> m_searchError;
    QHash<MusicPlatform, QList<TopList>> m_topLists;
    bool m_isLoadingTopLists = false;
    QList<OnlineSong> m_topListSongs;
    bool m_isLoadingTopListSongs = false;
    std::optional<TopList> m_currentTopList;
    AnswerOrder m_searches;
    AnswerOrder m_topListLoads;
    AnswerOrder m_topListSongLoads;
    /// When the answers arrived that the charts come from.
    QHash<MusicPlatform, AnswerOrder::Moment> m_topListsArrived;
    /// When a request must have begun for its charts to be kept.
    AnswerOrder::Moment m_topListsCleared = 0;
    /// Requests under way.
    QList<std::shared_ptr<HttpTransfer>> m_transfers;
};

} // namespace cadorel
