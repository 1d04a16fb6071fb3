// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"
#include "Services/Import/JobGate.h"

#include <QCoroTask>
#include <QHash>
#include <QObject>
#include <QString>
#include <QUrl>

#include <expected>
#include <memory>
#include <optional>

namespace cadorel {

/// Copies of songs on servers, in the folder "WebDAVCache" of the caches. A copy is named by the last
/// component of its song's address alone, so that songs of the same name share one. Main thread; file work is
/// done on the thread pool. A download that is under way when the cache goes leaves nothing behind.
class CloudSongCache : public QObject
{
    Q_OBJECT
public:
    /// Why there is no copy.
    struct Failure
    {
        enum class Kind {
            credentials, ///< the address has no user or no password
            address,     ///< without them it is no address any more
            download,    ///< the server did not give the whole song
            noFile,      ///< what it gave was empty
            storage,     ///< the copy could not be written
            cancelled,   ///< the cache has gone
        };
        Kind kind = Kind::cancelled;
        /// For a listener to read, without a credential.
        QString description = {};
    };
    /// Path of a copy.
    using Result = std::expected<QString, Failure>;

    /// @param platform outlives the cache
    explicit CloudSongCache(Platform &platform);
    ~CloudSongCache() override;
    Q_DISABLE_COPY_MOVE(CloudSongCache)

    /// Name of the copy of the song at @p url: the last component of its path without percent encoding. One
    /// that could lead elsewhere, or that no file can have, is made harmless.
    static QString fileName(const QUrl &url);
    /// The copy of the song at @p url; nothing when there is none.
    std::optional<QString> cachedFile(const QUrl &url) const;
    /// A copy of that name is on its way.
    bool isDownloading(const QUrl &url) const { return m_downloads.contains(fileName(url)); }
    /// Fetches the song with the credentials of its address and puts it in the place of an earlier copy.
    /// While a copy of that name is on its way already, that one is waited for.
    QCoro::Task<Result> download(QUrl url);
    /// While the result lives, downloads leave the line to others.
    [[nodiscard]] std::shared_ptr<void> holdDownloads();

private:
    struct Download;
    void updatePausing();
    QString filePath(const QUrl &url) const { return m_directory + u'/' + fileName(url); }
    QCoro::Task<Result> fetch(QUrl url, std::shared_ptr<Download> download);

    Platform &m_platform;
    QString m_directory;
    QString m_temporaryPrefix;
    int m_downloadsMade = 0;
    QHash<QString, std::shared_ptr<Download>> m_downloads; ///< by name of the copy
    std::weak_ptr<void> m_hold;
    JobGate m_gate;
};

} // namespace cadorel
