// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeSubsonic.h"
#include "Fakes/PlayerBench.h"
#include "Services/NavidromeService.h"
#include "Utils/Tasks.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/NavidromeServerFormViewModel.h"
#include "ViewModels/NavidromeServerListModel.h"
#include "ViewModels/NavidromeServerPageViewModel.h"
#include "ViewModels/NavidromeServersViewModel.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/WebDAVServerListModel.h"

#include <QTest>

namespace cadorel {

/// The view model of Subsonic servers over the real service, on a machine of fakes.
class NavidromeBench : public PlayerBench
{
public:
    using Content = NavidromeServerPageViewModel::Content;

    NavidromeBench()
    {
        start();
        m_service = std::make_unique<NavidromeService>(home.platform);
        m_viewModel = std::make_unique<CadorelViewModel>(player(), importService(), LibrarySources{});
        m_servers = std::make_unique<NavidromeServersViewModel>(*m_viewModel, *m_service);
    }
    ~NavidromeBench()
    {
        m_servers.reset();
        m_viewModel.reset();
        m_service.reset();
        settle();
    }
    Q_DISABLE_COPY_MOVE(NavidromeBench)

    FakeSubsonic web{home.web()};

    NavidromeService &service() { return *m_service; }
    NavidromeServersViewModel &servers() { return *m_servers; }
    NavidromeServerListModel &list() { return *m_servers->servers(); }
    NavidromeServerFormViewModel &form() { return *m_servers->form(); }
    NavidromeServerPageViewModel &page() { return *m_servers->page(); }

    /// Stores a server, its password included. @return its id
    QString add(const QString &name, const QString &serverURL = QStringLiteral("http://music.test:4533"))
    {
        NavidromeConfig config;
        config.name = name;
        config.serverURL = serverURL;
        config.username = QStringLiteral("listener");
        detach(m_service->saveConfig(config, QStringLiteral("sesame")));
        if (!QTest::qWaitFor([this, &config] { return m_service->configs().contains(config); }))
            qFatal("a server is not stored");
        return config.uuidText();
    }
    /// Opens the page of a server that has these songs.
    QString openPage(const QStringList &titles)
    {
        web.setSongs(titles);
        const QString id = add(QStringLiteral("家"));
        m_servers->openServer(id);
        if (!answerUntilIdle())
            qFatal("the page does not come to rest");
        return id;
    }
    /// Waits for a request and answers it.
    bool answerOne()
    {
        return QTest::qWaitFor([this] { return web.answerOne(); });
    }
    bool answerUntilIdle()
    {
        return QTest::qWaitFor([this] {
            web.answerAll();
            return !page().isBusy();
        });
    }
    QStringList titles()
    {
        QStringList titles;
        for (const Song &song : page().songs()->songs())
            titles.append(song.title());
        return titles;
    }
    QString status(int row) { return list().index(row).data(WebDAVServerListModel::StatusRole).toString(); }

private:
    std::unique_ptr<NavidromeService> m_service;
    std::unique_ptr<CadorelViewModel> m_viewModel;
    std::unique_ptr<NavidromeServersViewModel> m_servers;
};

} // namespace cadorel
