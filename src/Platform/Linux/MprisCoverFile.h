// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QImage>
#include <QList>
#include <QObject>
#include <QString>

#include <atomic>
#include <memory>
#include <optional>

namespace cadorel {

/// The cover of the current song as a file that the desktop can show, for this user's eyes alone. Each cover
/// has a name of its own, because desktops remember pictures by their names. The file before stays for panels
/// that are still reading it; older ones, and those that an earlier run left behind, are removed. Main
/// thread; pictures are encoded and written by workers, one at a time.
class MprisCoverFile : public QObject
{
    Q_OBJECT
public:
    /// Longer side of a file's picture, in pixels.
    static constexpr int longestSide = 1024;

    /// @param directory is made when a cover is written, and is nobody else's
    explicit MprisCoverFile(QString directory);
    /// Removes the files.
    ~MprisCoverFile() override;
    Q_DISABLE_COPY_MOVE(MprisCoverFile)

    /// Wants this picture shown. Cheap when it is the one wanted already, by QImage::cacheKey().
    void setCover(const std::optional<QImage> &cover);
    /// Address of the file with the picture that is wanted; empty while there is none, and for good when it
    /// cannot be written.
    QString url() const { return m_url; }

Q_SIGNALS:
    /// A file stands.
    void urlChanged();

private:
    struct File
    {
        qint64 key = 0;
        QString path;
    };

    QCoro::Task<void> sweepThenWrite();
    QCoro::Task<void> writeWanted();
    void publish(File file);

    const QString m_directory;
    /// What the names of this run's files begin with.
    const QString m_prefix;
    /// Tells a worker that nobody waits for its file any more.
    const std::shared_ptr<std::atomic_bool> m_isAbandoned;
    QImage m_cover;
    /// That of the picture that is wanted; 0 for none.
    qint64 m_key = 0;
    qint64 m_refusedKey = 0;
    QString m_url;
    QList<File> m_files;
    int m_written = 0;
    bool m_isBusy = false;
    bool m_hasComplained = false;
};

} // namespace cadorel
