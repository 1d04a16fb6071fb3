// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSemaphore>
#include <QThreadPool>

namespace cadorel {

/// Keeps the thread pool from its work: what is given to it waits until release(), or for the end of this.
class BusyWorkers
{
public:
    BusyWorkers()
    {
        m_pool->setMaxThreadCount(1);
        m_pool->start([this] {
            m_begun.release();
            m_gate.acquire();
        });
        m_begun.acquire();
    }
    ~BusyWorkers()
    {
        release();
        m_pool->waitForDone();
        m_pool->setMaxThreadCount(m_usual);
    }
    Q_DISABLE_COPY_MOVE(BusyWorkers)

    void release()
    {
        if (m_isBusy)
            m_gate.release();
        m_isBusy = false;
    }

private:
    QThreadPool *m_pool = QThreadPool::globalInstance();
    int m_usual = m_pool->maxThreadCount();
    QSemaphore m_begun;
    QSemaphore m_gate;
    bool m_isBusy = true;
};

} // namespace cadorel
