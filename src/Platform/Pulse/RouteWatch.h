// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/AudioSession.h"
#include "Platform/Pulse/SoundScene.h"

#include <QList>

#include <optional>

namespace cadorel {

/// Tells from what a server plays which way out this process's sound has, and why it changed.
class RouteWatch
{
public:
    using Reason = AudioSession::RouteChangeReason;

    /// Takes the next scene. @return each reason at most once; that the old device has gone comes first
    QList<Reason> update(const SoundScene &scene);
    /// The server has gone; the next scene is a first one.
    void lose();

private:
    /// A stream of ours and the sink that it played on.
    struct Use
    {
        std::uint32_t stream;
        SoundSink sink;
    };
    /// What became of a use.
    enum class Fate { unchanged, moved, gone, undecided };

    static Fate fate(const Use &use, const SoundScene &scene);
    static bool isNewIn(const SoundScene &scene, const SoundScene &before);
    static QList<Use> usesOf(const SoundScene &scene);

    std::optional<SoundScene> m_last;
    /// What sounds, or did so last.
    QList<Use> m_uses;
};

} // namespace cadorel
