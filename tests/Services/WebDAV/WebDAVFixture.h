// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/Await.h"
#include "Fakes/ConsoleLines.h"
#include "Fakes/TestPlatform.h"
#include "Services/WebDAVService.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>
#include <QTest>

#include <memory>
#include <optional>

namespace cadorel {

/// One entry of a made listing.
struct MadeEntry
{
    QString href;
    bool isDirectory = false;
    QString displayName = {};
};

/// A multistatus answer with these entries, as a server would write it.
QByteArray multistatus(const QList<MadeEntry> &entries);
HttpResponse answerWith(int status, const QByteArray &body = {},
                        const QByteArray &contentType = "application/xml; charset=utf-8");

/// The WebDAV service on a machine made of fakes, and servers that answer as a test tells them to.
class WebDAVFixture
{
public:
    WebDAVFixture() = default;
    ~WebDAVFixture();
    Q_DISABLE_COPY_MOVE(WebDAVFixture)

    /// A server that nobody has saved yet, whose password lies in the credential store.
    WebDAVConfig makeConfig(const QString &name = QStringLiteral("家"),
                            const QString &basePath = QStringLiteral("/dav"));
    /// Puts servers into the preferences, for a service that is started later.
    void store(const QList<WebDAVConfig> &configs);
    /// Puts songs into the preferences, for a service that is started later.
    void store(const QList<Song> &songs);
    /// A song of a server, as a scan would have made it.
    static Song song(const WebDAVConfig &config, const QString &path, const QString &title);

    /// Builds the service, in place of an earlier one, and waits for its songs unless told not to.
    WebDAVService &start(bool waits = true);
    /// The same with these servers and songs, and no word about it.
    WebDAVService &startWith(const QList<WebDAVConfig> &configs, const QList<Song> &songs = {});
    void stop();
    WebDAVService &service() { return *m_service; }

    /// What a directory of a server holds: names, those of directories ending in "/". Its path is that of the
    /// request, without the "/" at its end.
    void addDirectory(const QString &path, const QStringList &names);
    /// The answer to every request for a path from now on.
    void addAnswer(const QString &path, const std::expected<HttpResponse, HttpError> &answer);
    /// Answers what is asked until the operation has ended. @return whether it has
    template <typename T>
    bool serve(const QCoro::Task<T> &task)
    {
        return QTest::qWaitFor(
            [this, &task] {
                answerPending();
                return task.isReady();
            },
            patienceMs);
    }
    void answerPending();
    /// Paths of the requests so far.
    QStringList askedPaths();
    /// The lines since the last look, but those about requests and addresses.
    QStringList takeScanLines();

    /// Titles in list order.
    QStringList titles() const;
    /// Titles that are stored; nothing when nothing readable is.
    std::optional<QStringList> storedTitles();
    QList<WebDAVConfig> storedConfigs();

    TestPlatform &machine() { return m_machine; }
    ConsoleLines &console() { return m_console; }

private:
    ConsoleLines m_console;
    TestPlatform m_machine;
    QHash<QString, std::expected<HttpResponse, HttpError>> m_answers;
    std::unique_ptr<WebDAVService> m_service;
};

} // namespace cadorel
