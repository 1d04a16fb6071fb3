// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"

#include <QCoroTask>
#include <QFuture>
#include <QFutureWatcher>
#include <QList>
#include <QObject>
#include <QPromise>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace cadorel {

/// Writes "index.json", one write at a time, the last state always landing: requests that come while one is
/// under way share the next. A list that only grew since the last write is written by adding the new records
/// at the file's end, so that one import into a library of 50,000 songs writes one record. Plain writes: a
/// cut in the middle costs the file, which the next scan rebuilds. Main thread; the work itself runs on the
/// thread pool.
class ImportIndexWriter : public QObject
{
    Q_OBJECT
public:
    /// Where the list to be written comes from; asked on the main thread when a write starts.
    struct Source
    {
        std::function<qsizetype()> count;
        /// Grows with every change of the list other than adding at its end.
        std::function<quint64()> revision;
        /// The songs from a position on.
        std::function<QList<Song>(qsizetype from)> songs;
    };

    ImportIndexWriter(QString path, Source source);
    /// Waits for what was asked for to land.
    ~ImportIndexWriter() override;
    Q_DISABLE_COPY_MOVE(ImportIndexWriter)

    /// Asks for a write. @return ends when a write that began after this call has landed or failed; a failure
    /// is not reported
    QFuture<void> request();

    /// Ends when nothing is being written or waiting.
    QCoro::Task<void> idle();

    /// Forgets what is known of the file: somebody else removed or replaced it.
    void invalidate() { m_written = {}; }

private:
    /// What the file holds, as far as this writer wrote it.
    struct Written
    {
        bool known = false;
        quint64 revision = 0;
        qsizetype count = 0;
        qint64 fileSize = 0;
    };
    /// One write, carried out on any thread.
    struct Job
    {
        QString path;
        QList<Song> songs;
        bool appends = false;
        Written before;
        Written after;
    };

    struct Outcome
    {
        Written written;
        /// The file was not what this writer left there: the list must be written whole.
        bool needsWhole = false;
    };

    void start();
    void finished();
    Job nextJob();
    static Outcome run(const Job &job);
    static Outcome append(const Job &job);
    static Outcome rewrite(const Job &job);

    QString m_path;
    Source m_source;
    Written m_written;
    QFutureWatcher<Outcome> m_watcher;
    bool m_starting = false;
    std::vector<QPromise<void>> m_waiting;
    std::vector<QPromise<void>> m_served;
};

} // namespace cadorel
