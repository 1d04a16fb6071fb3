// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/PulseThread.h"

#include <stdexcept>

namespace cadorel {

PulseThread::PulseThread(const char *name)
    : m_loop(pa_threaded_mainloop_new())
{
    if (m_loop)
        pa_threaded_mainloop_set_name(m_loop.get(), name);
    if (!m_loop || pa_threaded_mainloop_start(m_loop.get()) < 0)
        throw std::runtime_error("no thread for the sound server");
}

PulseThread::~PulseThread()
{
    pa_threaded_mainloop_stop(m_loop.get());
}

void PulseThread::lock()
{
    if (!isCurrent())
        pa_threaded_mainloop_lock(m_loop.get());
}

void PulseThread::unlock()
{
    if (!isCurrent())
        pa_threaded_mainloop_unlock(m_loop.get());
}

void PulseThread::signal()
{
    pa_threaded_mainloop_signal(m_loop.get(), 0);
}

void PulseThread::wait()
{
    pa_threaded_mainloop_wait(m_loop.get());
}

bool PulseThread::isCurrent() const
{
    return pa_threaded_mainloop_in_thread(m_loop.get()) != 0;
}

pa_mainloop_api *PulseThread::api() const
{
    return pa_threaded_mainloop_get_api(m_loop.get());
}

} // namespace cadorel
