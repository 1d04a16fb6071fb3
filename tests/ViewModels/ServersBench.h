// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeFolders.h"
#include "Fakes/PlayerBench.h"
#include "Services/WebDAVService.h"
#include "Utils/Tasks.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/SongListModel.h"
#include "ViewModels/WebDAVServerFormViewModel.h"
#include "ViewModels/WebDAVServerListModel.h"
#include "ViewModels/WebDAVServerPageViewModel.h"
#include "ViewModels/WebDAVServersViewModel.h"

#include <QTest>

namespace cadorel {

/// The servers' view model over the real service, on a machine of fakes.
class ServersBench : public PlayerBench
{
public:
    ServersBench() = default;
    ~ServersBench() { end(); }
    Q_DISABLE_COPY_MOVE(ServersBench)

    FakeFolders folders{home.web()};

    WebDAVServersViewModel &startServers()
    {
        start();
        m_service = std::make_unique<WebDAVService>(home.platform);
        m_viewModel = std::make_unique<CadorelViewModel>(player(), importService(),
                                                         LibrarySources{.webDAVService = m_service.get()});
        m_servers = std::make_unique<WebDAVServersViewModel>(*m_viewModel, *m_service, home.platform);
        return *m_servers;
    }
    /// Ends everything and starts anew with what the machine keeps.
    WebDAVServersViewModel &startAgain()
    {
        end();
        stop();
        return startServers();
    }
    WebDAVService &service() { return *m_service; }
    WebDAVServersViewModel &servers() { return *m_servers; }
    WebDAVServerListModel &list() { return *m_servers->servers(); }
    WebDAVServerFormViewModel &form() { return *m_servers->form(); }
    WebDAVServerPageViewModel &page() { return *m_servers->page(); }

    /// The form for a new server, with everything filled in.
    WebDAVServerFormViewModel &openFilledForm()
    {
        startServers().addServer();
        form().name()->edit(QStringLiteral("家里的 NAS"));
        form().serverURL()->edit(QStringLiteral("https://dav.example.com"));
        form().username()->edit(QStringLiteral("listener"));
        form().password()->edit(QStringLiteral("secret"));
        form().basePath()->edit(QStringLiteral("/music"));
        return form();
    }
    static WebDAVConfig config(const QString &name, const QString &basePath = QStringLiteral("/music"))
    {
        WebDAVConfig config;
        config.name = name;
        config.serverURL = QStringLiteral("https://dav.example.com");
        config.username = QStringLiteral("listener");
        config.basePath = basePath;
        return config;
    }
    /// Stores a server, its password included. @return its id
    QString add(const WebDAVConfig &config, const QString &password = QStringLiteral("secret"))
    {
        detach(m_service->saveConfig(config, password));
        const bool isThere =
            QTest::qWaitFor([this, &config] { return m_service->configs().contains(config); });
        if (!isThere)
            qFatal("a server is not stored");
        return config.uuidText();
    }
    QString add(const QString &name) { return add(config(name)); }
    /// Stores a server and finds its songs.
    QString addScanned(const WebDAVConfig &config, const QStringList &files)
    {
        folders.add(config.basePath, files);
        const QString id = add(config);
        scan(id);
        return id;
    }
    /// Waits for a request and answers it.
    bool answerOne()
    {
        return QTest::qWaitFor([this] { return folders.answerOne(); });
    }
    /// Scans a server to the end.
    void scan(const QString &id)
    {
        m_servers->scanServer(id);
        if (!QTest::qWaitFor([this] {
                folders.answerAll();
                return isIdle();
            }))
            qFatal("a scan does not end");
        settle();
    }
    bool isIdle() const
    {
        for (int row = 0; row < m_servers->servers()->count(); ++row) {
            const QString status = data(row, WebDAVServerListModel::StatusRole).toString();
            if (status.startsWith(QStringLiteral("正在")) || status.startsWith(QStringLiteral("等待")))
                return false;
        }
        return true;
    }
    QVariant data(int row, int role) const
    {
        const WebDAVServerListModel *model = m_servers->servers();
        return model->index(row).data(role);
    }
    QString status(int row) const { return data(row, WebDAVServerListModel::StatusRole).toString(); }

private:
    void end()
    {
        // The songs' list may still be on its way to the preferences.
        if (m_service && !QTest::qWaitFor([task = m_service->songsStored()] { return task.isReady(); }))
            qFatal("the songs are not stored");
        m_servers.reset();
        m_viewModel.reset();
        m_service.reset();
        settle();
    }

    std::unique_ptr<WebDAVService> m_service;
    std::unique_ptr<CadorelViewModel> m_viewModel;
    std::unique_ptr<WebDAVServersViewModel> m_servers;
};

} // namespace cadorel
