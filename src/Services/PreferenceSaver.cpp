// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/PreferenceSaver.h"

#include "Platform/Preferences.h"

#include <QtConcurrent>

#include <QCoroFuture>

#include <utility>

namespace cadorel {

PreferenceSaver::PreferenceSaver(Preferences &preferences, const QString &key, std::function<Job()> source)
    : m_preferences(preferences)
    , m_key(key)
    , m_source(std::move(source))
{
    connect(&m_watcher, &QFutureWatcher<std::optional<QByteArray>>::finished, this,
            &PreferenceSaver::finished);
}

PreferenceSaver::~PreferenceSaver()
{
    disconnect(&m_watcher, nullptr, this, nullptr);
    if (m_isEncoding) {
        const std::optional<QByteArray> value = m_watcher.future().takeResult();
        if (!m_isWaiting)
            store(value);
    }
    if (m_isWaiting)
        store(m_source().encode());
    for (QPromise<void> &idler : m_idlers)
        idler.finish();
}

void PreferenceSaver::request()
{
    const bool isOnItsWay = std::exchange(m_isWaiting, true) || m_isEncoding;
    if (!isOnItsWay)
        QMetaObject::invokeMethod(this, &PreferenceSaver::start, Qt::QueuedConnection);
}

QCoro::Task<void> PreferenceSaver::idle()
{
    if (!m_isEncoding && !m_isWaiting)
        co_return;
    m_idlers.emplace_back().start();
    co_await m_idlers.back().future();
}

void PreferenceSaver::start()
{
    m_isWaiting = false;
    m_isEncoding = true;
    const Job job = m_source();
    if (!job.isQuick) {
        m_watcher.setFuture(QtConcurrent::run(job.encode));
        return;
    }
    store(job.encode());
    m_isEncoding = false;
    for (QPromise<void> &idler : std::exchange(m_idlers, {}))
        idler.finish();
}

void PreferenceSaver::finished()
{
    store(m_watcher.future().takeResult());
    m_isEncoding = false;
    if (m_isWaiting) {
        start();
        return;
    }
    for (QPromise<void> &idler : std::exchange(m_idlers, {}))
        idler.finish();
}

void PreferenceSaver::store(const std::optional<QByteArray> &value)
{
    if (value)
        m_preferences.setData(m_key, *value);
}

} // namespace cadorel
