// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Platform.h"
#include "ViewModels/PacedRefresh.h"

#include <QObject>
#include <QString>
#include <QUuid>

namespace cadorel {

class CadorelViewModel;
class WebDAVScans;
class WebDAVServerFormViewModel;
class WebDAVServerListModel;
class WebDAVServerPageViewModel;
class WebDAVService;

/// The servers that a listener has set up, the form for one of them, and the page of one of them. Servers are
/// named by the text of their id. Main thread.
class WebDAVServersViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/WebDAVServerFormViewModel.h")
    Q_MOC_INCLUDE("ViewModels/WebDAVServerListModel.h")
    Q_MOC_INCLUDE("ViewModels/WebDAVServerPageViewModel.h")
    Q_PROPERTY(cadorel::WebDAVServerListModel *servers READ servers CONSTANT)
    Q_PROPERTY(cadorel::WebDAVServerFormViewModel *form READ form CONSTANT)
    Q_PROPERTY(cadorel::WebDAVServerPageViewModel *page READ page CONSTANT)

public:
    /// @param viewModel, @param service and @param platform outlive this object
    WebDAVServersViewModel(CadorelViewModel &viewModel, WebDAVService &service, Platform &platform);
    ~WebDAVServersViewModel() override;
    Q_DISABLE_COPY_MOVE(WebDAVServersViewModel)

    WebDAVServerListModel *servers() const { return m_servers; }
    WebDAVServerFormViewModel *form() const { return m_form; }
    WebDAVServerPageViewModel *page() const { return m_page; }

    Q_INVOKABLE void addServer();
    Q_INVOKABLE void editServer(const QString &id);
    Q_INVOKABLE void openServer(const QString &id);
    Q_INVOKABLE void scanServer(const QString &id);
    /// Every server that is switched on.
    Q_INVOKABLE void scanAll();
    /// Takes the server, its password and its songs away; the files on it stay.
    Q_INVOKABLE void deleteServer(const QString &id);

private:
    void refreshServers();
    void countSongs();
    void serverSaved(const QUuid &server, bool isMoved);

    WebDAVService &m_service;
    WebDAVScans *m_scans;
    WebDAVServerListModel *m_servers;
    WebDAVServerFormViewModel *m_form;
    WebDAVServerPageViewModel *m_page;
    PacedRefresh m_count;
};

} // namespace cadorel
