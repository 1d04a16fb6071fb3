// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QFutureWatcher>
#include <QObject>
#include <QPromise>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace cadorel {

class Preferences;

/// Keeps one data value of the preferences, which may be tens of megabytes, as its owner's state is. Changes
/// of one turn of the event loop share a write. One state is encoded at a time, by the thread pool unless
/// that is quick; requests that come meanwhile share the next, and the last one always lands. Main thread.
class PreferenceSaver : public QObject
{
    Q_OBJECT
public:
    /// How a state becomes a value.
    struct Job
    {
        /// Called once, on any thread, never two at a time; nothing leaves the stored value as it is.
        std::function<std::optional<QByteArray>()> encode;
        /// So short a work that the main thread does it, which makes the value durable at once.
        bool isQuick = false;
    };

    /// @param preferences outlives the saver
    /// @param source gives the state to be stored, asked for on the main thread when it begins to be encoded;
    ///        the destructor may ask for it too
    PreferenceSaver(Preferences &preferences, const QString &key, std::function<Job()> source);
    /// Waits for what was asked for to land.
    ~PreferenceSaver() override;
    Q_DISABLE_COPY_MOVE(PreferenceSaver)

    /// Stores the state as it is at the end of this turn of the event loop, or later.
    void request();
    /// Ends when nothing is being encoded or waiting.
    QCoro::Task<void> idle();

private:
    void start();
    void finished();
    void store(const std::optional<QByteArray> &value);

    Preferences &m_preferences;
    const QString m_key;
    const std::function<Job()> m_source;
    QFutureWatcher<std::optional<QByteArray>> m_watcher;
    bool m_isEncoding = false;
    bool m_isWaiting = false;
    std::vector<QPromise<void>> m_idlers;
};

} // namespace cadorel
