// SPDX-License-Identifier: GPL-3.0-or-later
// Figure: a WebDAV server's folders are walked and its files become songs.
#include "Fakes/FakePreferences.h"
#include "Fakes/FakeSecretStore.h"
#include "Platform/Linux/SystemClock.h"
#include "Platform/Network/NetworkHttpClient.h"
#include "Servers/ApacheServer.h"
#include "Servers/DavTree.h"
#include "Servers/PlainRequest.h"
#include "Services/WebDAVService.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"
#include "Utils/KeychainHelper.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QElapsedTimer>
#include <QProcess>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int artists = 20;
constexpr int albumsOfArtist = 49; // with the artist's own folder 50, together 1,000
constexpr int filesInFolder = 10;
constexpr int fileCount = artists * (albumsOfArtist + 1) * filesInFolder;
constexpr int runs = 3;
constexpr double msPerSecond = 1000;
const QString user = u"user"_s;
const QString password = u"password"_s;

/// @return the folders with songs
QStringList makeTree(DavTree &tree)
{
    QStringList folders;
    const auto addSongs = [&tree, &folders](const QString &folder) {
        folders.append(folder);
        for (int track = 1; track <= filesInFolder; ++track)
            tree.addFile(folder + u"/一首歌曲 %1.mp3"_s.arg(track));
    };
    for (int artist = 1; artist <= artists; ++artist) {
        const QString folder = u"歌手 %1"_s.arg(artist);
        addSongs(folder);
        for (int album = 1; album <= albumsOfArtist; ++album)
            addSongs(folder + u"/专辑 %1"_s.arg(album));
    }
    tree.addFolder(u"empty"_s);
    return folders;
}

/// Asks for each folder and looks at no answer.
QCoro::Task<void> askForAll(HttpClient &client, QUrl address, QStringList folders)
{
    const QByteArray credentials = "Basic " + QString(user + u':' + password).toUtf8().toBase64();
    for (const QString &folder : std::as_const(folders)) {
        HttpRequest request;
        request.url = address;
        request.url.setPath(u'/' + folder + u'/', QUrl::DecodedMode);
        request.method = "PROPFIND"_ba;
        request.headers = {{"Depth"_ba, "1"_ba},
                           {"Content-Type"_ba, "application/xml"_ba},
                           {"Authorization"_ba, credentials}};
        request.body = propfindBody();
        if (!co_await client.send(request))
            qFatal("the server does not answer");
    }
}

QByteArray output(const QStringList &arguments, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(u"rclone"_s, arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        qFatal("rclone: %s", process.readAllStandardError().constData());
    return process.readAllStandardOutput();
}

/// rclone as a client of the server.
class Rclone
{
public:
    explicit Rclone(const QUrl &address)
        : m_environment(QProcessEnvironment::systemEnvironment())
    {
        m_environment.insert(u"RCLONE_CONFIG"_s, u"/dev/null"_s);
        m_environment.insert(u"RCLONE_WEBDAV_URL"_s, address.toString());
        m_environment.insert(u"RCLONE_WEBDAV_VENDOR"_s, u"other"_s);
        m_environment.insert(u"RCLONE_WEBDAV_USER"_s, user);
        const QByteArray obscured = output({u"obscure"_s, password}, m_environment);
        m_environment.insert(u"RCLONE_WEBDAV_PASS"_s, QString::fromLatin1(obscured).trimmed());
    }

    /// Time for a walk without that for a start of the program.
    double walkSeconds() const { return seconds(u":webdav:"_s, fileCount) - seconds(u":webdav:empty"_s, 0); }

private:
    double seconds(const QString &folder, int expected) const
    {
        QElapsedTimer timer;
        timer.start();
        const QByteArray listed =
            output({u"lsf"_s, u"-R"_s, u"--files-only"_s, u"--checkers"_s, u"1"_s, folder}, m_environment);
        const double taken = static_cast<double>(timer.elapsed()) / msPerSecond;
        if (listed.count('\n') != expected)
            qFatal("rclone lists %lld files", static_cast<long long>(listed.count('\n')));
        return taken;
    }

    QProcessEnvironment m_environment;
};

/// The player's side.
class Player
{
public:
    explicit Player(const WebDAVServer &server)
        : m_platform(makePlatform())
        , m_service((KeychainHelper::setStore(m_platform.secretStore.get()), m_platform))
    {
        m_config.name = u"服务器"_s;
        m_config.serverURL = server.address().toString();
        m_config.username = user;
        QCoro::waitFor(m_service.saveConfig(m_config, password));
    }

    double walkSeconds()
    {
        QElapsedTimer timer;
        timer.start();
        QCoro::waitFor(m_service.scanMusic(m_config));
        const double taken = static_cast<double>(timer.elapsed()) / msPerSecond;
        if (m_service.webDAVSongs().size() != fileCount)
            qFatal("the walk finds %lld songs, %s", static_cast<long long>(m_service.webDAVSongs().size()),
                   qPrintable(m_service.errorText()));
        return taken;
    }

    /// Time for the same requests and nothing else.
    double requestSeconds(const QUrl &address, const QStringList &folders)
    {
        QElapsedTimer timer;
        timer.start();
        QCoro::waitFor(askForAll(*m_platform.httpClient, address, folders));
        return static_cast<double>(timer.elapsed()) / msPerSecond;
    }

private:
    static Platform makePlatform()
    {
        Platform platform;
        platform.preferences = std::make_unique<FakePreferences>();
        platform.clock = std::make_unique<SystemClock>();
        platform.httpClient = std::make_unique<NetworkHttpClient>();
        platform.secretStore = std::make_unique<FakeSecretStore>();
        return platform;
    }

    Platform m_platform;
    WebDAVService m_service;
    WebDAVConfig m_config;
};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    DavTree tree;
    const QStringList folders = makeTree(tree);
    ApacheServer server;
    if (!server.start(tree.root(), user, password))
        qFatal("the server does not start");
    const Rclone rclone(server.address());
    Player player(server);

    rclone.walkSeconds(); // the server has seen all folders from here on
    const ProcessUsage usage;
    QList<double> reference;
    QList<double> requests;
    QList<double> seconds;
    QList<double> processors;
    for (int run = 0; run < runs; ++run) {
        reference.append(rclone.walkSeconds());
        requests.append(player.requestSeconds(server.address(), folders));
        const double before = usage.processorSeconds();
        seconds.append(player.walkSeconds());
        processors.append(usage.processorSeconds() - before);
    }
    report.add({.what = u"walk of 1,000 WebDAV folders with 10,000 files, songs made"_s,
                .value = std::ranges::min(seconds),
                .unit = u"s"_s,
                .reference = Reference{u"rclone lsf -R --checkers 1, without its start"_s,
                                       std::ranges::min(reference)},
                .bar = 1.2});
    // rclone waits between its requests: this tells what the walk itself costs.
    report.add({.what = u"  the same beside its requests alone"_s,
                .value = std::ranges::min(seconds),
                .unit = u"s"_s,
                .reference = Reference{u"1,000 PROPFINDs, answers not read"_s, std::ranges::min(requests)}});
    report.add(
        {.what = u"  processor time of the player"_s, .value = std::ranges::min(processors), .unit = u"s"_s});
    return 0;
}
