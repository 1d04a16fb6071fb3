// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ServerBench.h"

#include "Fakes/FakeSecretStore.h"
#include "Platform/Sql/SqlitePreferences.h"
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Support/MadeServer.h"
#include "Support/RunningPlayer.h"
#include "Utils/KeychainHelper.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/SongListModel.h"

namespace cadorel {

using namespace std::chrono_literals;

ServerBench::ServerBench()
    : m_platform(m_home.platform())
{
    m_platform.preferences = std::make_unique<SqlitePreferences>(preferencesFile());
    auto secrets = std::make_unique<FakeSecretStore>();
    secrets->put(madeServer().passwordKeychainKey(), "secret");
    m_platform.secretStore = std::move(secrets);
    KeychainHelper::setStore(m_platform.secretStore.get());
}

ServerBench::~ServerBench()
{
    m_library.reset();
    m_viewModel.reset();
    m_service.reset();
    KeychainHelper::setStore(nullptr);
}

void ServerBench::start()
{
    // As at the start of the program: nothing of the songs is in memory.
    m_platform.preferences.reset();
    m_platform.preferences = std::make_unique<SqlitePreferences>(preferencesFile());
    m_imports = std::make_unique<LocalMusicImportService>(m_platform);
    m_player = std::make_unique<AudioPlayerService>(m_platform, *m_imports);
    m_service = std::make_unique<WebDAVService>(m_platform);
    m_viewModel = std::make_unique<CadorelViewModel>(*m_player, *m_imports,
                                                     LibrarySources{.webDAVService = m_service.get()});
    m_library = std::make_unique<LibraryViewModel>(*m_viewModel, m_platform);
}

void ServerBench::waitForSongs()
{
    const QCoro::Task<void> loading = m_service->songsLoaded();
    if (!waitFor([&] { return loading.isReady() && rows() == m_service->webDAVSongs().size(); }, 60s))
        qFatal("the songs of the server are not listed");
}

int ServerBench::rows() const
{
    return m_library->songs()->count();
}

} // namespace cadorel
