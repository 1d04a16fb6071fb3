// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Pulse/StreamMemory.h"

#include "Platform/Pulse/PulseConnection.h"

#include <QByteArray>

#include <pulse/ext-stream-restore.h>

#include <algorithm>
#include <mutex>
#include <optional>

namespace cadorel {

namespace {

/// What the server remembers of a group, but for the device.
struct Sound
{
    pa_channel_map map;
    pa_cvolume volume;
    int mute;
};

struct Reading
{
    PulseThread &thread;
    QByteArray group;
    std::optional<Sound> found;
    bool isDone = false;
};

void take(pa_context *, const pa_ext_stream_restore_info *entry, int end, void *data)
{
    auto &reading = *static_cast<Reading *>(data);
    if (end == 0 && entry && reading.group == entry->name && entry->device && *entry->device)
        reading.found = Sound{.map = entry->channel_map, .volume = entry->volume, .mute = entry->mute};
    if (end != 0) {
        reading.isDone = true;
        reading.thread.signal();
    }
}

struct Writing
{
    PulseThread &thread;
    bool isDone = false;
};

void finish(pa_context *, int, void *data)
{
    auto &writing = *static_cast<Writing *>(data);
    writing.isDone = true;
    writing.thread.signal();
}

} // namespace

void forgetDevice(PulseConnection &connection, const char *group, std::chrono::milliseconds limit)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    std::unique_lock lock(connection.thread());
    // Whatever is not done in time must not come later: what it would be written to is gone by then.
    const auto wait = [&](const PulsePtr<pa_operation> &asked, const bool &isDone) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (asked && !connection.waitFor(lock, std::max(left, std::chrono::milliseconds(0)),
                                         [&] { return isDone || connection.hasFailed(); }))
            pa_operation_cancel(asked.get());
        return isDone;
    };
    Reading reading{.thread = connection.thread(), .group = group, .found = {}};
    const PulsePtr<pa_operation> read(pa_ext_stream_restore_read(connection.context(), take, &reading));
    if (!wait(read, reading.isDone) || !reading.found)
        return;
    const pa_ext_stream_restore_info entry{.name = group,
                                           .channel_map = reading.found->map,
                                           .volume = reading.found->volume,
                                           .device = nullptr,
                                           .mute = reading.found->mute};
    Writing writing{.thread = connection.thread()};
    const PulsePtr<pa_operation> write(
        pa_ext_stream_restore_write(connection.context(), PA_UPDATE_REPLACE, &entry, 1, 0, finish, &writing));
    wait(write, writing.isDone);
}

} // namespace cadorel
