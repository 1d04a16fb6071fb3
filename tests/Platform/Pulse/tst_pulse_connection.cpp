// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/Pulse/PulseConnection.h"

#include <QFile>
#include <QTest>

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace cadorel {

namespace {

constexpr int patienceMs = 20'000;
constexpr auto patience = std::chrono::milliseconds(patienceMs);

} // namespace

/// Connections to a real sound server that comes and goes.
class TestPulseConnection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void fails_without_a_server();
    void stands_once_a_server_answers();
    void tells_the_server_whose_it_is();
    void tells_that_the_server_has_gone();
    void tells_each_state_with_the_lock_held();
    void a_wait_is_over_at_its_limit();
    void a_wait_is_over_when_what_it_waits_for_is_signalled();
    void ends_while_it_still_connects();
    void the_thread_has_its_name();

private:
    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<PulseThread> m_thread;
};

void TestPulseConnection::initTestCase()
{
    QVERIFY2(SoundServer::available(), "no PulseAudio: scripts/setup installs it");
}

void TestPulseConnection::init()
{
    m_server = std::make_unique<SoundServer>();
    m_thread = std::make_unique<PulseThread>("pulse-test");
}

void TestPulseConnection::cleanup()
{
    m_thread.reset();
    m_server.reset();
}

void TestPulseConnection::fails_without_a_server()
{
    PulseConnection connection(*m_thread);
    QVERIFY(!connection.waitUntilReady(patience));
    QVERIFY(connection.hasFailed());
    QVERIFY(!connection.errorText().isEmpty());
}

void TestPulseConnection::stands_once_a_server_answers()
{
    QVERIFY(m_server->start());
    PulseConnection connection(*m_thread);
    QVERIFY(connection.waitUntilReady(patience));
    QVERIFY(connection.isReady());
    QVERIFY(!connection.hasFailed());
    QVERIFY(connection.waitUntilReady(0ms));
}

void TestPulseConnection::tells_the_server_whose_it_is()
{
    QVERIFY(m_server->start());
    PulseConnection connection(*m_thread);
    QVERIFY(connection.waitUntilReady(patience));
    struct Told
    {
        PulseThread &thread;
        QByteArray name;
        QByteArray id;
        QByteArray icon;
    } told{.thread = *m_thread, .name = {}, .id = {}, .icon = {}};
    std::unique_lock lock(*m_thread);
    const auto receive = [](pa_context *, const pa_client_info *info, int end, void *into) {
        auto *answer = static_cast<Told *>(into);
        if (end == 0) {
            answer->name = info->name;
            answer->id = pa_proplist_gets(info->proplist, PA_PROP_APPLICATION_ID);
            answer->icon = pa_proplist_gets(info->proplist, PA_PROP_APPLICATION_ICON_NAME);
        }
        answer->thread.signal();
    };
    const PulsePtr<pa_operation> operation(pa_context_get_client_info(
        connection.context(), pa_context_get_index(connection.context()), receive, &told));
    QVERIFY(operation);
    QVERIFY(connection.waitFor(lock, patience, [&told] { return !told.name.isEmpty(); }));
    QCOMPARE(told.name, "Tarnova Music Player"_ba);
    QCOMPARE(told.id, "com.cadorel.Player"_ba);
    QVERIFY(QFile::exists(QStringLiteral(CADOREL_SOURCE_DIR) + u"/packaging/"_s +
                          QString::fromLatin1(told.id) + u".desktop"_s));
    QCOMPARE(told.icon, told.id);
}

void TestPulseConnection::tells_that_the_server_has_gone()
{
    QVERIFY(m_server->start());
    PulseConnection connection(*m_thread);
    QVERIFY(connection.waitUntilReady(patience));
    m_server->stop();
    std::unique_lock lock(*m_thread);
    QVERIFY(connection.waitFor(lock, patience, [&connection] { return connection.hasFailed(); }));
    QCOMPARE(connection.state(), PA_CONTEXT_FAILED);
}

void TestPulseConnection::tells_each_state_with_the_lock_held()
{
    QVERIFY(m_server->start());
    std::vector<pa_context_state_t> states;
    PulseConnection connection(*m_thread, [&states, this](pa_context_state_t state) {
        states.push_back(state);
        // What a callback takes again is no dead end.
        const std::scoped_lock again(*m_thread);
    });
    QVERIFY(connection.waitUntilReady(patience));
    const std::scoped_lock guard(*m_thread);
    const std::vector expected{PA_CONTEXT_CONNECTING, PA_CONTEXT_AUTHORIZING, PA_CONTEXT_SETTING_NAME,
                               PA_CONTEXT_READY};
    QCOMPARE(states, expected);
}

void TestPulseConnection::a_wait_is_over_at_its_limit()
{
    QVERIFY(m_server->start());
    PulseConnection connection(*m_thread);
    QVERIFY(connection.waitUntilReady(patience));
    std::unique_lock lock(*m_thread);
    QVERIFY(!connection.waitFor(lock, 20ms, [] { return false; }));
    QVERIFY(lock.owns_lock());
}

void TestPulseConnection::a_wait_is_over_when_what_it_waits_for_is_signalled()
{
    PulseConnection connection(*m_thread);
    std::unique_lock lock(*m_thread);
    std::pair<PulseThread *, bool> told{m_thread.get(), false};
    const auto tell = [](pa_mainloop_api *, void *into) {
        auto *pair = static_cast<std::pair<PulseThread *, bool> *>(into);
        pair->second = pair->first->isCurrent();
        pair->first->signal();
    };
    pa_mainloop_api_once(m_thread->api(), tell, &told);
    QVERIFY(connection.waitFor(lock, patience, [&told] { return told.second; }));
}

void TestPulseConnection::ends_while_it_still_connects()
{
    QVERIFY(m_server->start());
    for (int i = 0; i < 20; ++i) {
        const PulseConnection brief(*m_thread);
    }
    // The server still has those to look at.
    QVERIFY(
        QTest::qWaitFor([this] { return PulseConnection(*m_thread).waitUntilReady(patience); }, patienceMs));
}

void TestPulseConnection::the_thread_has_its_name()
{
    QByteArray told;
    const auto tell = [](pa_mainloop_api *, void *into) {
        QFile name(u"/proc/thread-self/comm"_s);
        if (name.open(QIODevice::ReadOnly))
            *static_cast<QByteArray *>(into) = name.readAll().trimmed();
    };
    {
        const std::scoped_lock guard(*m_thread);
        pa_mainloop_api_once(m_thread->api(), tell, &told);
    }
    QVERIFY(QTest::qWaitFor([&] {
        const std::scoped_lock guard(*m_thread);
        return told == "pulse-test"_ba;
    }));
}

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestPulseConnection)
#include "tst_pulse_connection.moc"
