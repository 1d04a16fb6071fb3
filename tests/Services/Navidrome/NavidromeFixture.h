// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/Await.h"
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeSubsonic.h"
#include "Fakes/TestPlatform.h"
#include "Services/NavidromeService.h"

#include <QByteArray>
#include <QTest>
#include <QUrlQuery>

#include <memory>
#include <optional>

namespace cadorel {

/// An answer in a table of test data, which cannot hold what lacks an equality.
struct MadeAnswer
{
    FakeHttpClient::Result result;
};

/// The Navidrome service on a machine made of fakes, and servers that answer as a test tells them to.
class NavidromeFixture
{
public:
    NavidromeFixture() = default;
    ~NavidromeFixture();
    Q_DISABLE_COPY_MOVE(NavidromeFixture)

    /// A server that nobody has saved yet, whose password "sesame" lies in the credential store. Its host is
    /// @p name with ".test" behind it.
    NavidromeConfig makeConfig(const QString &name = QStringLiteral("home"));
    /// Puts servers into the preferences, for a service that is started later.
    void store(const QList<NavidromeConfig> &configs);
    QList<NavidromeConfig> storedConfigs();

    /// Builds the service, in place of an earlier one.
    NavidromeService &start();
    /// The same with one server, which is connected.
    NavidromeConfig startConnected(const QString &name = QStringLiteral("home"));
    void stop();
    NavidromeService &service() { return *m_service; }

    /// The answer to every request for an endpoint from now on, such as "ping.view".
    void addAnswer(const QString &endpoint, const FakeHttpClient::Result &answer)
    {
        m_servers.setAnswer(endpoint, answer);
    }
    /// Answers what is asked until the operation has ended. @return its result
    template <typename T>
    auto serve(QCoro::Task<T> task)
    {
        const auto ended = QTest::qWaitFor(
            [this, &task] {
                m_servers.answerAll();
                return task.isReady();
            },
            patienceMs);
        using Result = decltype(await(std::move(task)));
        return ended ? await(std::move(task)) : Result();
    }
    /// Waits until so many requests wait for an answer. @return whether they do
    bool waitForPending(std::size_t count);

    /// Endpoints of the requests so far.
    QStringList askedEndpoints() const { return m_servers.askedEndpoints(); }
    /// Query of the last request.
    QUrlQuery lastQuery();
    /// Titles in list order.
    QStringList titles() const;

    TestPlatform &machine() { return m_machine; }
    FakeHttpClient &web() { return m_machine.web(); }
    ConsoleLines &console() { return m_console; }

private:
    ConsoleLines m_console;
    TestPlatform m_machine;
    FakeSubsonic m_servers{m_machine.web()};
    std::unique_ptr<NavidromeService> m_service;
};

} // namespace cadorel
