// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/OnlineApiServer.h"

#include "Fixtures/EndProcess.h"
#include "Fixtures/EndWithParent.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int startMs = 20'000;
constexpr int betweenLooksMs = 20;

QString program()
{
    return QStringLiteral(CADOREL_SOURCE_DIR "/tests/Servers/online-api");
}

QStringList texts(const QJsonValue &list)
{
    QStringList result;
    for (const QJsonValue &text : list.toArray())
        result.append(text.toString());
    return result;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

OnlineApiServer::~OnlineApiServer()
{
    stop();
}

bool OnlineApiServer::start(const QStringList &arguments)
{
    stop();
    m_directory = std::make_unique<QTemporaryDir>();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, m_directory->path());
    environment.insert(u"TMPDIR"_s, m_directory->path());
    environment.insert(u"PYTHONUTF8"_s, u"1"_s);
    m_process = std::make_unique<QProcess>();
    m_process->setProcessEnvironment(environment);
    m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process->setStandardOutputFile(m_directory->filePath(u"output"_s));
    m_process->setStandardInputFile(QProcess::nullDevice());
    endWithParent(*m_process);
    m_process->start(program(), QStringList{u"--port"_s, u"0"_s} + arguments);

    const QDeadlineTimer limit(startMs);
    while (!limit.hasExpired()) {
        if (const QStringList said = lines(); !said.isEmpty()) {
            m_port = said.constFirst().toUShort();
            return m_port != 0;
        }
        if (m_process->waitForFinished(betweenLooksMs) || m_process->state() == QProcess::NotRunning)
            break;
    }
    // Its own reason stands on standard error already.
    const bool isMissing = m_process->error() == QProcess::FailedToStart;
    std::fprintf(stderr, "the online music server did not start%s\n",
                 qPrintable(isMissing ? u": "_s + m_process->errorString() : QString()));
    stop();
    return false;
}

void OnlineApiServer::stop()
{
    if (!m_process)
        return;
    endProcess(*m_process);
    m_process.reset();
}

QUrl OnlineApiServer::address() const
{
    return QUrl(u"http://127.0.0.1:%1/"_s.arg(m_port));
}

QStringList OnlineApiServer::requests() const
{
    return lines().mid(1);
}

QStringList OnlineApiServer::lines() const
{
    if (!m_directory)
        return {};
    QStringList result = QString::fromUtf8(contents(m_directory->filePath(u"output"_s))).split(u'\n');
    // What follows the last line end is no whole line yet.
    result.removeLast();
    return result;
}

QList<OnlineApiServer::Song> OnlineApiServer::songs(const QString &platform)
{
    const QJsonObject data =
        QJsonDocument::fromJson(contents(program() + u"-data/%1.json"_s.arg(platform))).object();
    QList<Song> result;
    for (const QJsonValue &value : data.value("songs"_L1).toArray()) {
        const QJsonObject song = value.toObject();
        QStringList qualities = texts(song.value("qualities"_L1));
        if (qualities.isEmpty())
            qualities = {u"128k"_s, u"192k"_s, u"320k"_s, u"flac"_s};
        result.append({.platform = platform,
                       .id = song.value("id"_L1).toString(),
                       .name = song.value("name"_L1).toString(),
                       .artist = song.value("artist"_L1).toString(),
                       .album = song.value("album"_L1).toString(),
                       .frequency = song.value("frequency"_L1).toInt(),
                       .address = song.value("address"_L1).toString(u"redirect"_s),
                       .picture = song.value("picture"_L1).toString(u"jpeg"_s),
                       .lyrics = song.value("lyrics"_L1).toString(u"lrc"_s),
                       .verse = texts(song.value("verse"_L1)),
                       .qualities = qualities});
    }
    if (result.isEmpty())
        qFatal("there are no songs of the platform %s", qPrintable(platform));
    return result;
}

OnlineApiServer::Song OnlineApiServer::songWithAddress(const QString &platform, const QString &form)
{
    const QList<Song> all = songs(platform);
    const auto found = std::ranges::find(all, form, &Song::address);
    if (found == all.end())
        qFatal("no song of the platform is answered for by %s", qPrintable(form));
    return *found;
}

} // namespace cadorel
