// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/WebDAVService.h"
#include "Support/MadeHome.h"

#include <QString>

#include <memory>

namespace cadorel {

class AudioPlayerService;
class CadorelViewModel;
class LibraryViewModel;
class LocalMusicImportService;

/// The part of the player that shows the songs of servers, on a machine whose preferences lie on the disk and
/// whose credential store knows the password of madeServer().
class ServerBench
{
public:
    ServerBench();
    ~ServerBench();
    Q_DISABLE_COPY_MOVE(ServerBench)

    /// Stands in for the web from the next start on.
    void setHttpClient(std::unique_ptr<HttpClient> client) { m_platform.httpClient = std::move(client); }
    Preferences &preferences() { return *m_platform.preferences; }
    /// Builds the services.
    void start();
    /// Lets events come in until the stored songs are in the list.
    void waitForSongs();
    WebDAVService &service() { return *m_service; }
    /// Rows of the library's list.
    int rows() const;
    QString preferencesFile() const
    {
        return m_home.directories().applicationSupport + QStringLiteral("/preferences.sqlite");
    }

private:
    MadeHome m_home;
    Platform m_platform;
    std::unique_ptr<LocalMusicImportService> m_imports;
    std::unique_ptr<AudioPlayerService> m_player;
    std::unique_ptr<WebDAVService> m_service;
    std::unique_ptr<CadorelViewModel> m_viewModel;
    std::unique_ptr<LibraryViewModel> m_library;
};

} // namespace cadorel
