// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Sql/LargeValueWriter.h"

#include "Platform/Sql/SqlLog.h"
#include "Platform/Sql/SqliteConnection.h"

#include <algorithm>
#include <utility>

namespace cadorel {

LargeValueWriter::LargeValueWriter(const QString &file, Landed landed)
    : m_file(file)
    , m_landed(std::move(landed))
{
    m_pool.setMaxThreadCount(1);
}

LargeValueWriter::~LargeValueWriter()
{
    finish();
}

bool LargeValueWriter::holds(const QString &key) const
{
    const std::scoped_lock lock(m_mutex);
    return m_waiting.contains(key) || (m_isWriting && m_keyUnderWay == key);
}

void LargeValueWriter::write(const QString &key, std::optional<PreferenceRow> row, quint64 ticket)
{
    const std::scoped_lock lock(m_mutex);
    m_waiting.insert(key, Job{.row = std::move(row), .ticket = ticket});
    wake();
}

void LargeValueWriter::requestCheckpoint()
{
    const std::scoped_lock lock(m_mutex);
    wake();
}

void LargeValueWriter::finish()
{
    m_pool.waitForDone();
}

void LargeValueWriter::wake()
{
    if (std::exchange(m_isRunning, true))
        return;
    m_pool.start([this] { drain(); });
}

void LargeValueWriter::drain()
{
    // A connection belongs to one thread, and the pool may give each run another one; opening costs far less
    // than writing a large value.
    SqliteConnection connection(m_file);
    const QSqlError openError = connection.open(SqliteConnection::Mode::readWrite);
    while (true) {
        while (std::optional<std::pair<QString, Job>> next = takeJob()) {
            const auto &[key, job] = *next;
            const QSqlError error = openError.isValid() ? openError : connection.write(key, job.row);
            m_landed(key, job.ticket, error);
        }
        if (const QSqlError error = openError.isValid() ? openError : connection.checkpoint();
            error.isValid())
            qCWarning(sqlLog).noquote()
                << "preferences: the log was not moved into the file:" << error.text();
        const std::scoped_lock lock(m_mutex);
        if (m_waiting.isEmpty()) {
            m_isRunning = false;
            return;
        }
    }
}

std::optional<std::pair<QString, LargeValueWriter::Job>> LargeValueWriter::takeJob()
{
    const std::scoped_lock lock(m_mutex);
    m_isWriting = !m_waiting.isEmpty();
    if (!m_isWriting)
        return std::nullopt;
    // The oldest first, so that a key that changes all the time holds up no other.
    const auto oldest = std::min_element(m_waiting.begin(), m_waiting.end(),
                                         [](const Job &a, const Job &b) { return a.ticket < b.ticket; });
    m_keyUnderWay = oldest.key();
    std::pair<QString, Job> next(oldest.key(), std::move(oldest.value()));
    m_waiting.erase(oldest);
    return next;
}

} // namespace cadorel
