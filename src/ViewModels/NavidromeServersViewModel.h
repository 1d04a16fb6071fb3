// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QUuid>

namespace cadorel {

class CadorelViewModel;
class NavidromeServerFormViewModel;
class NavidromeServerListModel;
class NavidromeServerPageViewModel;
class NavidromeService;

/// The Subsonic servers that a listener has set up, the form for one of them, and the page of one of them.
/// Servers are named by the text of their id. Main thread.
class NavidromeServersViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/NavidromeServerFormViewModel.h")
    Q_MOC_INCLUDE("ViewModels/NavidromeServerListModel.h")
    Q_MOC_INCLUDE("ViewModels/NavidromeServerPageViewModel.h")
    Q_PROPERTY(cadorel::NavidromeServerListModel *servers READ servers CONSTANT)
    Q_PROPERTY(cadorel::NavidromeServerFormViewModel *form READ form CONSTANT)
    Q_PROPERTY(cadorel::NavidromeServerPageViewModel *page READ page CONSTANT)
    Q_PROPERTY(QString connectedServerId READ connectedServerId NOTIFY connectedServerChanged)

public:
    /// @param viewModel and @param service outlive this object
    NavidromeServersViewModel(CadorelViewModel &viewModel, NavidromeService &service);
    ~NavidromeServersViewModel() override;
    Q_DISABLE_COPY_MOVE(NavidromeServersViewModel)

    NavidromeServerListModel *servers() const { return m_servers; }
    NavidromeServerFormViewModel *form() const { return m_form; }
    NavidromeServerPageViewModel *page() const { return m_page; }

    /// Empty while there is none.
    QString connectedServerId() const;

    Q_INVOKABLE void addServer();
    Q_INVOKABLE void editServer(const QString &id);
    /// Shows the page of a server, which connects to it and lists songs.
    Q_INVOKABLE void openServer(const QString &id);
    /// Asks the connected server, if there is one, for other songs.
    Q_INVOKABLE void refresh();
    /// Takes the server and its password away; its songs stay where they are listed.
    Q_INVOKABLE void deleteServer(const QString &id);

Q_SIGNALS:
    void connectedServerChanged();

private:
    /// The account or the address of a server has changed: the connection to it goes, and its page, if it is
    /// open, makes a new one.
    void reconnect(const QUuid &server);
    void refreshServers();
    void showConnection();

    NavidromeService &m_service;
    NavidromeServerListModel *m_servers;
    NavidromeServerFormViewModel *m_form;
    NavidromeServerPageViewModel *m_page;
};

} // namespace cadorel
