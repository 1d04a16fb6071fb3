// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"
#include "Platform/Platform.h"
#include "Services/Import/AudioFiles.h"
#include "Services/Import/ImportClaims.h"
#include "Services/Import/ImportIndexWriter.h"
#include "Services/Import/JobGate.h"
#include "Services/Import/MetadataExtractor.h"

#include <QCoroTask>
#include <QDateTime>
#include <QElapsedTimer>
#include <QImage>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QUrl>

#include <optional>

namespace cadorel {

/// Owns the songs that live in the player's own storage: copies audio files in, finds those that came some
/// other way, keeps the index, and serves covers and lyrics. Nothing is thrown; failures are log lines,
/// `importError` or an absent result. Main thread; file and tag work runs on the thread pool.
class LocalMusicImportService : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isImporting READ isImporting NOTIFY isImportingChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(QString importError READ importErrorText NOTIFY importErrorChanged)
    Q_PROPERTY(QDateTime lastScanDate READ lastScanDateValue NOTIFY lastScanDateChanged)
    Q_PROPERTY(int newSongsFound READ newSongsFound NOTIFY newSongsFoundChanged)
    Q_PROPERTY(double importProgress READ importProgress NOTIFY importProgressChanged)
    Q_PROPERTY(QString importProgressText READ importProgressText NOTIFY importProgressTextChanged)

public:
    /// Loads the index; no scan runs here. @param platform outlives the service
    explicit LocalMusicImportService(Platform &platform);
    ~LocalMusicImportService() override;
    Q_DISABLE_COPY_MOVE(LocalMusicImportService)

    static LocalMusicImportService &shared();

    /// The local library in index order; new songs are at the end.
    const QList<Song> &importedSongs() const { return m_importedSongs; }
    /// A folder or batch import runs.
    bool isImporting() const { return m_isImporting; }
    /// A scan of the music directory runs.
    bool isScanning() const { return m_isScanning; }
    /// Text of the last failure of a single file.
    const std::optional<QString> &importError() const { return m_importError; }
    QString importErrorText() const { return m_importError.value_or(QString()); }
    void clearImportError() { setImportError(std::nullopt); }
    /// End of the last folder import or scan.
    const std::optional<QDateTime> &lastScanDate() const { return m_lastScanDate; }
    QDateTime lastScanDateValue() const { return m_lastScanDate.value_or(QDateTime()); }
    /// Songs added by the running or the last operation.
    int newSongsFound() const { return m_newSongsFound; }
    /// 0 to 1.
    double importProgress() const { return m_importProgress; }
    QString importProgressText() const { return m_importProgressText; }

    /// Where the audio files lie, and anything else that the listener puts there.
    const QString &musicDirectory() const { return m_musicDirectory; }
    /// Where the index, covers and lyrics lie.
    const QString &metadataDirectory() const { return m_metadataDirectory; }

    /// Copies every audio file of a folder in. Does nothing while another import runs.
    QCoro::Task<void> importFromFolder(QUrl url);
    /// Copies one file in. @return the song; nothing when it cannot be had, with `importError` telling why
    QCoro::Task<std::optional<Song>> importFile(QUrl url);
    /// Copies files in one after the other. @return the songs of those that could be had
    QCoro::Task<QList<Song>> importFiles(QList<QUrl> urls);
    /// Takes up a file that already lies in the store.
    QCoro::Task<std::optional<Song>> extractMetadataAndSave(QUrl url, QString originalName);
    /// Starts scanSandbox() and returns at once.
    void rescan();
    /// Takes up audio files that reached the music directory some other way, and drops songs whose file is
    /// gone.
    QCoro::Task<void> scanSandbox();

    /// Removes the song's file and the song. A file that cannot be removed leaves both.
    void deleteSong(const Song &song);
    /// Removes every audio file of the music directory, the index, all covers and lyrics.
    QCoro::Task<void> clearAllImportedMusic();

    /// The song's cover, decoded.
    std::optional<QImage> getArtwork(const Song &song) const;
    /// The song's lyrics, from the record or the side file.
    std::optional<QString> getLyrics(const Song &song) const;
    /// The cover file kept for an id, when there is one.
    std::optional<QUrl> artworkFileURL(const QString &id) const;
    /// The first song with the file of @p url; failing that, the first one with @p songId.
    std::optional<Song> findImportedSong(const QUrl &url, const std::optional<QString> &songId) const;
    /// Size of all audio files of the music directory, for a listener to read.
    QCoro::Task<QString> getImportedMusicSize() const;

    /// Writes the index; requests that come together share one write. @return ends when it has landed
    QFuture<void> saveImportedSongsIndex();
    void loadImportedSongs();
    /// Ends when no write of the index is under way or waiting.
    QCoro::Task<void> indexIdle() { return m_indexWriter.idle(); }

    /// Name under which an original file name is stored: its hash, "_" and the name.
    static QString storedName(const QString &originalName);
    /// The name without the hash prefix that storing gave it; another name stays as it is.
    static QString originalName(const QString &storedName);

Q_SIGNALS:
    void importedSongsChanged();
    void isImportingChanged();
    void isScanningChanged();
    void importErrorChanged();
    void lastScanDateChanged();
    void newSongsFoundChanged();
    void importProgressChanged();
    void importProgressTextChanged();
    /// Any of the above.
    void changed();

private:
    struct StoredFile;

    void migrateLegacyImportedMusicIfNeeded();
    QCoro::Task<void> importFolderContents(QUrl url);
    QCoro::Task<std::optional<Song>> importOne(QUrl url);
    QCoro::Task<Extraction> extract(QString path, QString originalName);
    StoredFile storeFile(const QByteArray &source, const QString &name, const QDateTime &now) const;
    QCoro::Task<void> yieldWhenDue();
    void dropSongsWithoutFile(const QSet<QByteArray> &missing);
    QString storedPath(const QByteArray &nativePath) const;
    bool contains(const QString &id) const;
    void append(const Song &song);
    QString targetPath(const QString &name) const;

    void setImportedSongs(const QList<Song> &songs);
    void setIsImporting(bool value);
    void setIsScanning(bool value);
    void setImportError(const std::optional<QString> &value);
    void setLastScanDate(const QDateTime &value);
    void setNewSongsFound(int value);
    void setImportProgress(double value);
    void setImportProgressText(const QString &value);
    template <typename T>
    void publish(T &member, const T &value, void (LocalMusicImportService::*signal)());

    Platform &m_platform;
    QString m_documentsDirectory;
    QString m_musicDirectory;
    QString m_metadataDirectory;

    QList<Song> m_importedSongs;
    quint64 m_revision = 0;
    bool m_isImporting = false;
    bool m_isScanning = false;
    std::optional<QString> m_importError;
    std::optional<QDateTime> m_lastScanDate;
    int m_newSongsFound = 0;
    double m_importProgress = 0;
    QString m_importProgressText;

    ImportClaims m_claims;
    /// Paths listed since the running scan looked.
    QSet<QByteArray> m_pathsListedDuringScan;
    QElapsedTimer m_sinceYield;
    QDateTime m_startedAt;
    ImportIndexWriter m_indexWriter;
    JobGate m_gate;
};

} // namespace cadorel
