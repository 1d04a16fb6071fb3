// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/TestPlatform.h"

#include "Services/Import/ImportIndex.h"
#include "Utils/KeychainHelper.h"
#include "Utils/StableHash.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>
#include <QThreadPool>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace

TestPlatform::TestPlatform()
{
    const QString home = m_home.path();
    platform.directories = {.documents = home + u"/Music/Cadorel"_s,
                            .applicationSupport = home + u"/share/cadorel"_s,
                            .caches = home + u"/cache/cadorel"_s};
    for (const QString &directory : {platform.directories.documents, platform.directories.caches,
                                     platform.directories.applicationSupport + u"/LocalMusic"_s})
        QDir().mkpath(directory);
    platform.preferences = std::make_unique<FakePreferences>();
    platform.clock = std::make_unique<FakeClock>();
    platform.random = std::make_unique<FakeRandom>();
    platform.system = std::make_unique<FakeSystem>();
    platform.assetReader = std::make_unique<FakeAssetReader>();
    platform.audioSession = std::make_unique<FakeAudioSession>();
    platform.nowPlayingCenter = std::make_shared<FakeNowPlayingCenter>();
    platform.remoteCommandCenter = std::make_shared<FakeRemoteCommandCenter>();
    platform.httpClient = std::make_unique<FakeHttpClient>();
    platform.secretStore = std::make_unique<FakeSecretStore>();
    KeychainHelper::setStore(platform.secretStore.get());
    platform.filePicker = std::make_unique<FakeFilePicker>();
    platform.makeStreamPlayer = [this] {
        auto player = std::make_unique<FakeStreamPlayer>();
        m_streamPlayers.append(player.get());
        return player;
    };
}

TestPlatform::~TestPlatform()
{
    // A request that nobody answers would wait for ever.
    while (!web().pending.empty())
        web().answer(std::unexpected(HttpError{HttpError::Kind::cancelled, u"the test has ended"_s}));
    // Calls that are held back end.
    platform.secretStore->close();
    KeychainHelper::queue().waitForDone();
    settle();
    KeychainHelper::setStore(nullptr);
}

QString TestPlatform::addMusicFile(const QString &name, const QByteArray &bytes) const
{
    const QString path = platform.directories.documents + u'/' + name;
    writeFile(path, bytes);
    return path;
}

QString TestPlatform::addMetadataFile(const QString &name, const QByteArray &bytes) const
{
    const QString path = platform.directories.applicationSupport + u"/LocalMusic/"_s + name;
    writeFile(path, bytes);
    return path;
}

Song TestPlatform::addImportedSong(const QString &name, const QString &title, const QString &artist,
                                   const QString &album, int trackNumber)
{
    SongFields fields;
    fields.id = stableHash(name);
    fields.title = title;
    fields.artist = artist;
    fields.album = album;
    fields.albumId = u"album_"_s + stableHash(album);
    fields.duration = 180;
    fields.trackNumber = trackNumber;
    fields.assetURL = QUrl::fromLocalFile(addMusicFile(name));
    m_index.append(Song(fields));
    addMetadataFile(u"index.json"_s, "[" + indexRecords(m_index) + "]");
    return m_index.constLast();
}

void settle()
{
    // A call may bring another one: a chain of awaits is a handful of turns long.
    constexpr int turns = 20;
    for (int turn = 0; turn < turns; ++turn)
        QCoreApplication::processEvents();
}

} // namespace cadorel
