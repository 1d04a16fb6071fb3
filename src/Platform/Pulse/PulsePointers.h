// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <pulse/pulseaudio.h>

#include <memory>

namespace cadorel {

/// Gives up the reference of an object, or frees what belongs to its owner alone.
struct PulseDeleter
{
    void operator()(pa_context *context) const { pa_context_unref(context); }
    void operator()(pa_operation *operation) const { pa_operation_unref(operation); }
    void operator()(pa_proplist *list) const { pa_proplist_free(list); }
    void operator()(pa_stream *stream) const { pa_stream_unref(stream); }
    void operator()(pa_threaded_mainloop *loop) const { pa_threaded_mainloop_free(loop); }
};

/// One reference of ours. What belongs to a thread is let go while its lock is held.
template <typename T>
using PulsePtr = std::unique_ptr<T, PulseDeleter>;

} // namespace cadorel
