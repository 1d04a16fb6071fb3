// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/MadeSong.h"
#include "Platform/HttpClient.h"
#include "Platform/Platform.h"
#include "Servers/SubsonicServer.h"
#include "Services/NavidromeService.h"

#include <QTemporaryDir>

#include <memory>

namespace cadorel {

/// A folder of made songs for a server.
class SubsonicMusic
{
public:
    QString path() const { return m_directory.path(); }
    /// @param name of the file, in the folder
    bool add(const QString &name, const MadeSong &song) const;
    /// Lyrics where the server looks for them: a text beside the song's file.
    bool addLyrics(const QString &name, const QString &text) const;
    bool remove(const QString &name) const;
    QByteArray bytes(const QString &name) const;

private:
    QTemporaryDir m_directory;
};

/// The player's side of a Subsonic server with the real network, preferences and passwords in memory.
class LiveNavidrome
{
public:
    LiveNavidrome();
    ~LiveNavidrome();
    Q_DISABLE_COPY_MOVE(LiveNavidrome)

    /// Name and password with everything that an address has to escape.
    static const QString &user();
    static const QString &password();
    /// The server as a listener sets it up.
    static NavidromeConfig config(const SubsonicServer &server);

    NavidromeService &service() { return *m_service; }
    /// Saves the server and connects to it. @return what is wrong with it; empty when nothing is
    QString connectTo(const NavidromeConfig &config, const QString &word = password());
    /// Why the test of a connection fails; empty when it does not.
    QString test(const NavidromeConfig &config, const QString &word = password());
    /// The songs that a search finds, by title.
    QStringList search(const QString &query);
    /// The listed song of that title; fails the test when there is none.
    Song song(const QString &title);
    /// The answer that an address gives. @return no status when there is none
    HttpResponse fetch(const std::optional<QUrl> &url);
    QByteArray storedConfigs() const;

private:
    Platform m_platform;
    std::unique_ptr<NavidromeService> m_service;
};

} // namespace cadorel
