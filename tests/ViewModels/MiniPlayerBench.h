// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/PlayerBench.h"
#include "Services/PlaylistService.h"
#include "Services/ThemeService.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/MiniPlayerViewModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/QueueViewModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace cadorel {

/// The mini player and the queue over real services, on a machine of fakes.
class MiniPlayerBench : public PlayerBench
{
public:
    MiniPlayerBench() = default;
    ~MiniPlayerBench()
    {
        m_testers.clear();
        m_queue.reset();
        m_miniPlayer.reset();
        m_playback.reset();
        m_viewModel.reset();
        m_playlists.reset();
    }
    Q_DISABLE_COPY_MOVE(MiniPlayerBench)

    FakeDesktopAppearance desktop;

    MiniPlayerViewModel &startMiniPlayer()
    {
        start();
        themeManager = std::make_unique<ThemeManager>(home.preferences(), desktop);
        themeService = std::make_unique<ThemeService>(home.preferences(), *themeManager, desktop);
        m_playlists = std::make_unique<PlaylistService>(home.platform, importService());
        m_viewModel = std::make_unique<CadorelViewModel>(
            player(), importService(), LibrarySources{.playlistService = m_playlists.get()});
        m_playback = std::make_unique<PlaybackViewModel>(*m_viewModel, &addresses);
        m_queue = std::make_unique<QueueViewModel>(
            *m_viewModel, [this](const OnlineSong &song) { return addresses.getCoverUrl(song); });
        makeMiniPlayer();
        watch(m_miniPlayer->fan());
        watch(m_queue->songs());
        watch(m_queue->upcoming());
        return *m_miniPlayer;
    }
    /// As the next start makes it, with what is stored.
    MiniPlayerViewModel &restartMiniPlayer()
    {
        m_testers.clear();
        m_miniPlayer.reset();
        themeService = std::make_unique<ThemeService>(home.preferences(), *themeManager, desktop);
        makeMiniPlayer();
        return *m_miniPlayer;
    }
    MiniPlayerViewModel &miniPlayer() { return *m_miniPlayer; }
    QueueViewModel &queue() { return *m_queue; }
    CadorelViewModel &viewModel() { return *m_viewModel; }
    PlaylistService &playlists() { return *m_playlists; }

    /// A finger that is set down on the disc, goes by @p way and is taken off.
    void drag(const QPointF &way)
    {
        const QPointF from = miniPlayer().effectivePosition();
        miniPlayer().press(from);
        miniPlayer().move(from + way / 2);
        miniPlayer().move(from + way);
        miniPlayer().release(from + way);
    }
    /// A finger that rests until the fan opens, goes by @p way and is taken off.
    void holdAndSlide(const QPointF &way)
    {
        const QPointF from = miniPlayer().effectivePosition();
        miniPlayer().press(from);
        miniPlayer().longPress();
        miniPlayer().move(from + way);
        miniPlayer().release(from + way);
    }
    /// From the disc to the button of that action.
    QPointF wayTo(ControlAction action)
    {
        for (const auto &[each, offset] : MiniPlayerGeometry::actionPositions(miniPlayer().side())) {
            if (each == action)
                return offset;
        }
        return {};
    }

    std::unique_ptr<ThemeManager> themeManager;
    std::unique_ptr<ThemeService> themeService;

private:
    void makeMiniPlayer()
    {
        m_miniPlayer =
            std::make_unique<MiniPlayerViewModel>(*m_viewModel, *m_playback, *m_playlists, *themeService);
    }
    void watch(QAbstractItemModel *model)
    {
        m_testers.push_back(std::make_unique<QAbstractItemModelTester>(
            model, QAbstractItemModelTester::FailureReportingMode::QtTest));
    }

    std::unique_ptr<PlaylistService> m_playlists;
    std::unique_ptr<CadorelViewModel> m_viewModel;
    std::unique_ptr<PlaybackViewModel> m_playback;
    std::unique_ptr<MiniPlayerViewModel> m_miniPlayer;
    std::unique_ptr<QueueViewModel> m_queue;
    std::vector<std::unique_ptr<QAbstractItemModelTester>> m_testers;
};

} // namespace cadorel
