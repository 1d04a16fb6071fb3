// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeAssetReader.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/Linux/PulseAudioSession.h"
#include "Platform/Mpv/MpvStreamPlayer.h"

#include <QDBusConnection>
#include <QTest>

#include <memory>

namespace cadorel {

/// Time for what a sound server does on a busy machine.
constexpr int soundPatienceMs = 20'000;

/// A session beside a stream player that sounds, on a server of the test's own without a machine around it.
class SessionBench
{
public:
    /// @param systemBus where logind may be; it outlives the object
    explicit SessionBench(const QString &song,
                          const QDBusConnection &systemBus = QDBusConnection(QStringLiteral("no bus")))
        : player(reader, {{"ao", "pulse"}})
        , session(systemBus)
        , m_song(song)
    {
        QObject::connect(&session, &AudioSession::interrupted, &session,
                         [this](AudioSession::InterruptionType type, bool shouldResume) {
                             const bool began = type == AudioSession::InterruptionType::began;
                             told.append(began          ? QStringLiteral("began")
                                         : shouldResume ? QStringLiteral("ended, resume")
                                                        : QStringLiteral("ended"));
                         });
        QObject::connect(
            &session, &AudioSession::routeChanged, &session, [this](AudioSession::RouteChangeReason reason) {
                told.append(QString::fromLatin1(
                    QMetaEnum::fromType<AudioSession::RouteChangeReason>().valueToKey(int(reason))));
            });
    }

    FakeAssetReader reader;
    SoundServer server;
    MpvStreamPlayer player;
    PulseAudioSession session;
    /// What the session told, in order.
    QStringList told;

    /// The player sounds on the server's default device, and the session looks on.
    bool start() { return server.start() && play(); }
    bool play()
    {
        m_item = player.makeItem({.url = QUrl::fromLocalFile(m_song)});
        player.replaceCurrentItem(m_item);
        player.play();
        session.activate();
        return QTest::qWaitFor([this] { return !stream().isEmpty(); }, soundPatienceMs) && isWatching();
    }
    /// The server's number of the player's stream; empty when there is none.
    QString stream() const
    {
        static const QRegularExpression mine(
            QStringLiteral("Sink Input #(\\d+)(?:(?!Sink Input)[\\s\\S])*application\\.process\\.id = \"%1\"")
                .arg(QCoreApplication::applicationPid()));
        return mine.match(QString::fromUtf8(server.streams())).captured(1);
    }
    /// Whether the session has begun to look: a device that was there before is not told.
    bool isWatching()
    {
        constexpr int moments = 20;
        for (int moment = 0; moment < moments; ++moment) {
            if (!catchUp(soundPatienceMs / moments))
                continue;
            const bool isDone = catchUp();
            told.removeAll(QStringLiteral("newDeviceAvailable"));
            return isDone;
        }
        return false;
    }
    /// Whether the session has seen all that the server did so far: it tells of a device that came last.
    bool catchUp(int limitMs = soundPatienceMs)
    {
        const QByteArray module =
            server.ask({QStringLiteral("load-module"), QStringLiteral("module-null-sink")});
        const bool isSeen = !module.isEmpty() && waitFor(QStringLiteral("newDeviceAvailable"), limitMs);
        return server.unload(module) && isSeen;
    }
    /// Waits until the session has told that, and forgets it.
    bool waitFor(const QString &word, int limitMs = soundPatienceMs)
    {
        return QTest::qWaitFor([&] { return told.removeOne(word); }, limitMs);
    }

private:
    QString m_song;
    std::shared_ptr<PlayerItem> m_item;
};

} // namespace cadorel
