// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/OnlineSong.h"
#include "Platform/Platform.h"
#include "Services/Seams/OnlineSongAddresses.h"

#include <QList>
#include <QObject>
#include <QPair>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

/// The endpoint of the online music API, and every address that is built on it. A change takes effect at the
/// next address, also for songs that are listed already. Main thread.
class APIConfigService : public QObject, public OnlineSongAddresses
{
    Q_OBJECT
    Q_PROPERTY(QString baseURL READ baseURL WRITE setBaseURL NOTIFY baseURLChanged)
public:
    /// A reserved example address: the listener names the server.
    static const QString defaultBaseURL;
    static const QString defaultQuality;

    /// @param platform outlives the service
    explicit APIConfigService(Platform &platform);

    static APIConfigService &shared();

    QString baseURL() const { return m_baseURL; }
    void setBaseURL(const QString &baseURL);
    void resetToDefault();
    /// `baseURL` with "api/" behind it.
    QString apiEndpoint() const;
    /// The text is an address of scheme "http" or "https", in lower case.
    static bool isValidURL(const QString &text);

    // Each address below is there unless the joined text is no address.

    /// @param params names and values, as they are
    std::optional<QUrl> buildURL(const QString &source, const QString &id, const QString &type,
                                 const QList<QPair<QString, QString>> &params = {}) const;
    std::optional<QUrl> buildSearchURL(const QString &source, const QString &keyword, int limit) const;
    std::optional<QUrl> buildAggregateSearchURL(const QString &keyword, int limit) const;
    std::optional<QUrl> buildTopListsURL(const QString &source) const;
    std::optional<QUrl> buildTopListSongsURL(const QString &source, const QString &id) const;

    std::optional<QUrl> getPlayUrl(const OnlineSong &song, const QString &quality) const override;
    std::optional<QUrl> getCoverUrl(const OnlineSong &song) const override;
    std::optional<QUrl> getLyricUrl(const OnlineSong &song) const;

Q_SIGNALS:
    void baseURLChanged();

private:
    Platform &m_platform;
    QString m_baseURL;
};

} // namespace cadorel
