// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFutureWatcher>
#include <QObject>

#include <utility>

namespace cadorel {

/// Calls @p callback with the result of @p future, on the thread of @p context, unless that is destroyed
/// before. QFuture::then() with a context looks at the context on the thread that finishes, where it may be
/// destroyed meanwhile (Qt 6.4).
template <typename Result, typename Callback>
void whenFinished(const QFuture<Result> &future, QObject *context, Callback callback)
{
    auto *watcher = new QFutureWatcher<Result>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context,
                     [watcher, callback = std::move(callback)] {
                         watcher->deleteLater();
                         callback(watcher->result());
                     });
    watcher->setFuture(future);
}

} // namespace cadorel
