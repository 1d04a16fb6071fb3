// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportIndexWriter.h"

#include "Services/Import/ImportIndex.h"

#include <QFile>
#include <QPointer>
#include <QtConcurrent>

#include <QCoroFuture>

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace cadorel {

namespace {

/// @return false with errno when not everything could be written
bool writeAt(int descriptor, QByteArrayView bytes, qint64 offset)
{
    while (!bytes.isEmpty()) {
        const ssize_t count = ::pwrite(descriptor, bytes.data(), static_cast<size_t>(bytes.size()), offset);
        if (count < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        bytes = bytes.sliced(count);
        offset += count;
    }
    return true;
}

enum class WriteResult { done, unchanged, torn };

/// Writes over a file's end. What makes it longer goes first, so that a full disk shows before an old byte
/// has changed.
WriteResult overwrite(int descriptor, const QByteArray &text, qint64 offset, qint64 sizeBefore)
{
    const QByteArrayView view(text);
    const qsizetype inside = std::min<qint64>(sizeBefore - offset, text.size());
    if (!writeAt(descriptor, view.sliced(inside), sizeBefore))
        return ::ftruncate(descriptor, sizeBefore) == 0 ? WriteResult::unchanged : WriteResult::torn;
    return writeAt(descriptor, view.first(inside), offset) ? WriteResult::done : WriteResult::torn;
}

} // namespace

ImportIndexWriter::ImportIndexWriter(QString path, Source source)
    : m_path(std::move(path))
    , m_source(std::move(source))
{
    connect(&m_watcher, &QFutureWatcher<Outcome>::finished, this, &ImportIndexWriter::finished);
}

ImportIndexWriter::~ImportIndexWriter()
{
    disconnect(&m_watcher, nullptr, this, nullptr);
    bool owesWrite = !m_waiting.empty();
    if (!m_served.empty()) {
        const Outcome outcome = m_watcher.result();
        m_written = outcome.written;
        owesWrite = owesWrite || outcome.needsWhole;
    }
    if (owesWrite && run(nextJob()).needsWhole) {
        m_written = {};
        run(nextJob());
    }
    for (auto *promises : {&m_served, &m_waiting}) {
        for (QPromise<void> &promise : *promises)
            promise.finish();
    }
}

QFuture<void> ImportIndexWriter::request()
{
    QPromise<void> promise;
    promise.start();
    QFuture<void> landed = promise.future();
    m_waiting.push_back(std::move(promise));
    if (!m_starting && m_served.empty()) {
        // Later in this turn of the event loop, so that all changes of the turn share the write.
        m_starting = true;
        QMetaObject::invokeMethod(this, &ImportIndexWriter::start, Qt::QueuedConnection);
    }
    return landed;
}

QCoro::Task<void> ImportIndexWriter::idle()
{
    const QPointer<ImportIndexWriter> self(this);
    while (self && (m_starting || !m_served.empty()))
        co_await (m_waiting.empty() ? m_served.back() : m_waiting.back()).future();
}

ImportIndexWriter::Job ImportIndexWriter::nextJob()
{
    Job job{.path = m_path, .songs = {}, .appends = false, .before = m_written, .after = {}};
    const qsizetype count = m_source.count();
    job.appends = m_written.known && m_written.revision == m_source.revision() && m_written.count > 0 &&
                  count >= m_written.count;
    job.songs = m_source.songs(job.appends ? m_written.count : 0);
    job.after = Written{.known = true, .revision = m_source.revision(), .count = count, .fileSize = 0};
    return job;
}

void ImportIndexWriter::start()
{
    m_starting = false;
    m_served = std::exchange(m_waiting, {});
    m_watcher.setFuture(QtConcurrent::run(&ImportIndexWriter::run, nextJob()));
}

void ImportIndexWriter::finished()
{
    const Outcome outcome = m_watcher.result();
    m_written = outcome.written;
    if (outcome.needsWhole) {
        m_watcher.setFuture(QtConcurrent::run(&ImportIndexWriter::run, nextJob()));
        return;
    }
    std::vector<QPromise<void>> served = std::exchange(m_served, {});
    if (!m_waiting.empty())
        start();
    for (QPromise<void> &promise : served)
        promise.finish();
}

ImportIndexWriter::Outcome ImportIndexWriter::run(const Job &job)
{
    return job.appends ? append(job) : rewrite(job);
}

ImportIndexWriter::Outcome ImportIndexWriter::append(const Job &job)
{
    QFile file(job.path);
    if (file.size() != job.before.fileSize || !file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return {.written = {}, .needsWhole = true}; // not the file that this writer left
    Written after = job.after;
    after.fileSize = job.before.fileSize;
    if (job.songs.isEmpty())
        return {.written = after};
    const QByteArray tail = ',' + indexRecords(job.songs) + ']';
    const qint64 bracket = job.before.fileSize - 1;
    switch (overwrite(file.handle(), tail, bracket, job.before.fileSize)) {
    case WriteResult::done:
        break;
    case WriteResult::unchanged:
        return {.written = job.before};
    case WriteResult::torn:
        return {};
    }
    after.fileSize += tail.size() - 1;
    return {.written = after};
}

ImportIndexWriter::Outcome ImportIndexWriter::rewrite(const Job &job)
{
    QFile file(job.path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered))
        return {};
    const QByteArray text = '[' + indexRecords(job.songs) + ']';
    if (overwrite(file.handle(), text, 0, file.size()) != WriteResult::done || !file.resize(text.size()))
        return {};
    Written after = job.after;
    after.fileSize = text.size();
    return {.written = after};
}

} // namespace cadorel
