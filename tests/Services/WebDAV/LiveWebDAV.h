// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakePreferences.h"
#include "Fakes/FakeSecretStore.h"
#include "Platform/Platform.h"
#include "Servers/DavTree.h"
#include "Servers/WebDAVServer.h"
#include "Services/WebDAVService.h"

#include <memory>

namespace cadorel {

/// The player's WebDAV side, with the real network, against one real server. The preferences and the
/// passwords outlive the service, as they do between two runs.
class LiveWebDAV
{
public:
    /// @param kind one of WebDAVServer::kinds()
    explicit LiveWebDAV(const QString &kind);
    ~LiveWebDAV();
    Q_DISABLE_COPY_MOVE(LiveWebDAV)

    /// Name and password with everything that an address or a header has to escape.
    static const QString &user();
    static const QString &password();

    DavTree tree;
    std::unique_ptr<WebDAVServer> server;
    Platform platform;

    /// Serves the tree.
    bool startServer();
    /// The server as a listener sets it up.
    WebDAVConfig config(const QString &basePath = QStringLiteral("/")) const;
    /// The service; made at the first call.
    WebDAVService &service();
    /// The program ends, and starts again with this web.
    bool restartService(std::unique_ptr<HttpClient> web);
    /// Saves the server, walks it and waits for the end.
    bool scan(const WebDAVConfig &config);
    /// Why the test of a connection fails, for a listener to read; empty when it does not.
    QString test(const WebDAVConfig &config, const QString &password);
    /// The same of a connection.
    QString connectTo(const WebDAVConfig &config);
    /// Paths on the server of all songs, in their order.
    QStringList songPaths();
    /// The bytes that a song's address gives with user and password from the address itself.
    QByteArray fetch(const Song &song);

private:
    std::unique_ptr<WebDAVService> m_service;
};

} // namespace cadorel
