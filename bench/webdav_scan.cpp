// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: a walk over a server of 100,000 files that answers at once, and how long the window stands still
// meanwhile.
#include "Support/MadeServer.h"
#include "Support/Report.h"
#include "Support/RunningPlayer.h"
#include "Support/ServerBench.h"
#include "Support/StallWatch.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QCoroTask>
#include <QEventLoop>
#include <QPromise>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int fileCount = 100'000;

/// A web of one server, whose answers are made beforehand.
class MadeWeb : public HttpClient
{
public:
    explicit MadeWeb(int directories)
    {
        const QString base = madeServer().basePath;
        const int perDirectory = fileCount / directories;
        QStringList names;
        for (int i = 0; i < directories; ++i) {
            const QString name = u"专辑 %1"_s.arg(i);
            names.append(name + u'/');
            QStringList files;
            for (int j = 0; j < perDirectory; ++j)
                files.append(u"%1 夜航星.mp3"_s.arg(i * perDirectory + j));
            add(base + u'/' + name, files);
        }
        add(base, names);
    }

    QCoro::Task<std::expected<HttpResponse, HttpError>> send(HttpRequest request) override
    {
        HttpResponse response;
        response.url = request.url;
        response.body = m_answers.value(request.url.path());
        response.status = response.body.isEmpty() ? 404 : 207;
        response.headers = {{"Content-Type", "application/xml"}};
        // Not before the next turn of the event loop, as from a network.
        const auto promise = std::make_shared<QPromise<void>>();
        promise->start();
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [promise] { promise->finish(); }, Qt::QueuedConnection);
        co_await promise->future();
        co_return response;
    }

private:
    void add(const QString &path, const QStringList &names)
    {
        QByteArray body = R"(<?xml version="1.0" encoding="utf-8"?><D:multistatus xmlns:D="DAV:">)";
        for (const QString &name : QStringList{QString()} + names) {
            const bool isDirectory = name.isEmpty() || name.endsWith(u'/');
            body += "<D:response><D:href>" + QUrl::toPercentEncoding(path + u'/' + name, "/") +
                    "</D:href><D:propstat><D:prop>";
            body += isDirectory
                        ? "<D:resourcetype><D:collection/></D:resourcetype>"
                        : "<D:getcontentlength>4000000</D:getcontentlength><D:getcontenttype>audio/mpeg"
                          "</D:getcontenttype><D:resourcetype/>";
            body += "<D:getlastmodified>Tue, 14 Nov 2023 22:13:20 GMT</D:getlastmodified></D:prop>"
                    "<D:status>HTTP/1.1 200 OK</D:status></D:propstat></D:response>";
        }
        m_answers.insert(path + u'/', body + "</D:multistatus>");
    }

    QHash<QString, QByteArray> m_answers;
};

QCoro::Task<void> walk(WebDAVService &service, QEventLoop &loop)
{
    co_await service.scanMusic(madeServer());
    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
}

void measure(Report &report, int directories)
{
    ServerBench bench;
    storeServer(bench.preferences(), {});
    bench.setHttpClient(std::make_unique<MadeWeb>(directories));
    bench.start();
    bench.waitForSongs();
    for (const QString &round : {u"first walk"_s, u"walk anew"_s}) {
        StallWatch stalls;
        QElapsedTimer timer;
        timer.start();
        QEventLoop loop;
        const QCoro::Task<void> scan = walk(bench.service(), loop);
        loop.exec();
        if (bench.service().webDAVSongs().size() != fileCount)
            qFatal("the server is not walked");
        constexpr double msPerSecond = 1000;
        const double seconds = static_cast<double>(timer.elapsed()) / msPerSecond;
        letPass(1s); // the list takes the songs up
        tellStall(report, u"100,000 files in %1 directories, %2"_s.arg(directories).arg(round),
                  stalls.take());
        report.add({.what = u"  time of the walk"_s, .value = seconds, .unit = u"s"_s});
    }
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    for (const int directories : {1'000, 1})
        measure(report, directories);
    return 0;
}
