// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Pulse/PulseConnection.h"
#include "Platform/Pulse/SoundScene.h"

#include <QByteArrayList>
#include <QHash>

#include <functional>
#include <vector>

namespace cadorel {

/// Follows what a server plays, by its word that something changed: nothing runs between two changes.
class SoundSceneReader
{
public:
    /// Called on the thread, its lock held, with the first scene and with each that differs.
    using SceneChanged = std::function<void(const SoundScene &scene)>;

    /// @param connection is ready, and outlives the reader
    SoundSceneReader(PulseConnection &connection, SceneChanged sceneChanged);
    /// No callback runs afterwards.
    ~SoundSceneReader();
    Q_DISABLE_COPY_MOVE(SoundSceneReader)

    /// Adds the roles that a module of the server, loaded with @p argument, makes way for; nothing when it is
    /// another module.
    static void addTriggers(SoundScene &scene, const QByteArray &module, const QByteArray &argument);

private:
    /// Who a process is, as its connections tell it to the server; empty where one does not.
    struct Identity
    {
        QByteArray process;
        QByteArray machine;
        QByteArray program;
    };
    /// What a stream's record says, before the clients are known.
    struct Heard
    {
        SoundStream stream;
        Identity player;
        std::uint32_t client;
    };

    static Identity identityIn(const pa_proplist *properties);
    bool isOurs(const Heard &heard) const;
    void subscribe();
    void refresh();
    void ask();
    void answered(bool isComplete);
    void finish();
    /// Keeps a request until its answer is there; null is one that the server cannot be asked.
    void keep(pa_operation *operation);

    static void takeOwnClient(pa_context *, const pa_client_info *info, int end, void *self);
    static void takeStream(pa_context *, const pa_sink_input_info *info, int end, void *self);
    static void takeClient(pa_context *, const pa_client_info *info, int end, void *self);
    static void takeSink(pa_context *, const pa_sink_info *info, int end, void *self);
    static void takeCard(pa_context *, const pa_card_info *info, int end, void *self);
    static void takeServer(pa_context *, const pa_server_info *info, void *self);
    static void takeModule(pa_context *, const pa_module_info *info, int end, void *self);

    PulseConnection &m_connection;
    SceneChanged m_sceneChanged;
    std::vector<PulsePtr<pa_operation>> m_operations;
    Identity m_self;

    // The lists under way.
    int m_pending = 0;
    bool m_isComplete = true;
    bool m_isStale = false; ///< something changed since they were asked for
    SoundScene m_next;
    QList<Heard> m_heard;
    QHash<std::uint32_t, Identity> m_clients;

    SoundScene m_last;
    bool m_hasLast = false;
};

} // namespace cadorel
