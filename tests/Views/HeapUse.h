// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QQmlEngine>

#include <malloc.h>

namespace cadorel {

/// Bytes that the process has asked for and not given back, without what is only waiting to be collected. A
/// sanitizer's allocator tells none, and finds leaks itself.
inline qint64 settledHeap(QQmlEngine &engine)
{
    constexpr int turns = 5;
    for (int turn = 0; turn < turns; ++turn) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        engine.collectGarbage();
    }
    const struct mallinfo2 info = mallinfo2();
    return static_cast<qint64>(info.uordblks + info.hblkhd);
}

} // namespace cadorel
