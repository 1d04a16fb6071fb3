// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace cadorel {

/// What a reply of libmpv answers, in the one number that libmpv hands back.
struct MpvRequest
{
    enum class Kind : quint64 {
        load,
        seek,
        heardPosition,
        positionTick,
        positionJump,
        duration,
        seekable,
        sampleRate,
        output,
        pausedForCache,
        unanswered,
    };

    Kind kind;
    /// Which seek for `seek`, else which load.
    quint64 number = 0;

    constexpr quint64 tag() const { return number << kindBits | static_cast<quint64>(kind); }
    static constexpr MpvRequest fromTag(quint64 tag)
    {
        return {.kind = static_cast<Kind>(tag & ((1U << kindBits) - 1)), .number = tag >> kindBits};
    }

private:
    static constexpr int kindBits = 4;
};

} // namespace cadorel
