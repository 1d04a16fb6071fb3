// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeAssetReader.h"
#include "Fakes/FakeAudioSession.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakeFilePicker.h"
#include "Fakes/FakeHttpClient.h"
#include "Fakes/FakeNowPlayingCenter.h"
#include "Fakes/FakePreferences.h"
#include "Fakes/FakeRandom.h"
#include "Fakes/FakeRemoteCommandCenter.h"
#include "Fakes/FakeSecretStore.h"
#include "Fakes/FakeStreamPlayer.h"
#include "Fakes/FakeSystem.h"
#include "Models/Song.h"
#include "Platform/Platform.h"

#include <QTemporaryDir>

namespace cadorel {

/// A machine made of fakes in a temporary home, and the stores that a test puts there beforehand.
class TestPlatform
{
public:
    TestPlatform();
    ~TestPlatform();
    Q_DISABLE_COPY_MOVE(TestPlatform)

    Platform platform;

    FakePreferences &preferences() { return static_cast<FakePreferences &>(*platform.preferences); }
    FakeClock &clock() { return static_cast<FakeClock &>(*platform.clock); }
    FakeRandom &random() { return static_cast<FakeRandom &>(*platform.random); }
    FakeSystem &system() { return static_cast<FakeSystem &>(*platform.system); }
    FakeAssetReader &assetReader() { return static_cast<FakeAssetReader &>(*platform.assetReader); }
    FakeAudioSession &audioSession() { return static_cast<FakeAudioSession &>(*platform.audioSession); }
    FakeNowPlayingCenter &nowPlayingCenter()
    {
        return static_cast<FakeNowPlayingCenter &>(*platform.nowPlayingCenter);
    }
    FakeRemoteCommandCenter &remoteCommandCenter()
    {
        return static_cast<FakeRemoteCommandCenter &>(*platform.remoteCommandCenter);
    }
    FakeHttpClient &web() { return static_cast<FakeHttpClient &>(*platform.httpClient); }
    /// What KeychainHelper keeps passwords in while this machine lives.
    FakeSecretStore &secrets() { return static_cast<FakeSecretStore &>(*platform.secretStore); }
    FakeFilePicker &filePicker() { return static_cast<FakeFilePicker &>(*platform.filePicker); }

    /// The stream player that was made; null before the first need of it, and it goes with its owner.
    FakeStreamPlayer *streamPlayer() const
    {
        return m_streamPlayers.isEmpty() ? nullptr : m_streamPlayers.constLast();
    }
    int streamPlayersMade() const { return static_cast<int>(m_streamPlayers.size()); }

    /// A file in the music directory. @return its path
    QString addMusicFile(const QString &name, const QByteArray &bytes = "sound") const;
    /// A file beside the import index. @return its path
    QString addMetadataFile(const QString &name, const QByteArray &bytes) const;
    /// A record of the import index, its file made; an import service that is built later lists it. The id is
    /// that of the file name.
    Song addImportedSong(const QString &name, const QString &title,
                         const QString &artist = QStringLiteral("歌手"),
                         const QString &album = QStringLiteral("专辑"), int trackNumber = 0);

private:
    QTemporaryDir m_home;
    QList<FakeStreamPlayer *> m_streamPlayers;
    QList<Song> m_index;
};

/// Lets every call that waits in the event loop of this thread run, and what those bring.
void settle();

} // namespace cadorel
