// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: 200 random songs of a real Subsonic server, from the arrival of its answer until their rows stand
// in the list, and how long the server took for it.
#include "Fakes/FakeSecretStore.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/SubsonicServer.h"
#include "Services/NavidromeService.h"
#include "Support/MadeHome.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Utils/KeychainHelper.h"
#include "ViewModels/SongListModel.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QElapsedTimer>

#include <algorithm>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int shownSongs = NavidromeService::defaultSongCount;
/// So that half the songs of a listing are new to the list.
constexpr int songCount = 2 * shownSongs;
constexpr int rounds = 31;
constexpr double barMs = 10;
constexpr auto limit = 60s;
const QString user = u"ann"_s;
const QString password = u"secret"_s;

double msOf(const QElapsedTimer &timer)
{
    constexpr double nsPerMs = 1e6;
    return static_cast<double>(timer.nsecsElapsed()) / nsPerMs;
}

/// The real web, with a clock.
class TimedWeb : public HttpClient
{
public:
    QCoro::Task<std::expected<HttpResponse, HttpError>> send(HttpRequest request) override
    {
        QElapsedTimer timer;
        timer.start();
        std::expected<HttpResponse, HttpError> response = co_await m_web.send(request);
        answerMs = msOf(timer);
        bodySize = response ? response->bodySize : 0;
        arrived.start();
        co_return response;
    }

    /// Of the last request.
    double answerMs = 0;
    qint64 bodySize = 0;
    /// Since its answer is here.
    QElapsedTimer arrived;

private:
    NetworkHttpClient m_web;
};

/// Everything that rows show.
int read(const SongListModel &model)
{
    int texts = 0;
    const QList<int> roles = model.roleNames().keys();
    for (int row = 0; row < model.rowCount(); ++row) {
        for (const int role : roles)
            texts += model.data(model.index(row), role).isValid() ? 1 : 0;
    }
    return texts;
}

QCoro::Task<void> connectTo(NavidromeService &service, NavidromeConfig config, bool &isDone)
{
    co_await service.saveConfig(config, password);
    co_await service.connectTo(config);
    isDone = true;
}

void measure(Report &report, NavidromeService &service, const TimedWeb &web)
{
    SongListModel model;
    double shownMs = 0;
    bool isShown = false;
    QObject::connect(&service, &NavidromeService::songsChanged, &model, [&] {
        model.setSongs(service.songs());
        shownMs = msOf(web.arrived);
        isShown = true;
    });
    QList<double> shown;
    QList<double> readMs;
    QList<double> answers;
    for (int round = 0; round < rounds; ++round) {
        isShown = false;
        const QCoro::Task<void> listing = service.loadDefaultSongs();
        if (!waitFor([&] { return isShown || service.error(); }, limit) || model.rowCount() != shownSongs)
            qFatal("the server lists no songs");
        QElapsedTimer reading;
        reading.start();
        if (read(model) == 0)
            qFatal("the rows are empty");
        readMs.append(msOf(reading));
        shown.append(shownMs);
        answers.append(web.answerMs);
    }
    report.add({.what = u"200 random songs: from their answer to the rows"_s,
                .value = median(shown),
                .unit = u"ms"_s,
                .bar = barMs});
    report.add({.what = u"  the slowest of %1 times"_s.arg(rounds),
                .value = std::ranges::max(shown),
                .unit = u"ms"_s});
    report.add({.what = u"  reading all that all rows show"_s, .value = median(readMs), .unit = u"ms"_s});
    report.add({.what = u"  the server's answer, %1 kB"_s.arg(web.bodySize / 1000),
                .value = median(answers),
                .unit = u"ms"_s});
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const MadeHome home;
    const QString music = home.path(u"songs"_s);
    makeDemoSongs(songCount, music);
    SubsonicServer server;
    if (!server.start(music, user, password))
        qFatal("the server does not start");

    Platform platform = home.platform();
    auto timed = std::make_unique<TimedWeb>();
    const TimedWeb &web = *timed;
    platform.httpClient = std::move(timed);
    platform.secretStore = std::make_unique<FakeSecretStore>();
    KeychainHelper::setStore(platform.secretStore.get());
    {
        Report report;
        NavidromeService service(platform);
        NavidromeConfig config;
        config.serverURL = server.address().toString();
        config.username = user;
        bool isDone = false;
        const QCoro::Task<void> connecting = connectTo(service, config, isDone);
        if (!waitFor([&] { return isDone; }, limit) || !service.isConnected())
            qFatal("the server takes no connection");
        measure(report, service, web);
    }
    KeychainHelper::setStore(nullptr);
    return 0;
}
