// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportFixture.h"

#include "Utils/Console.h"
#include "Utils/JsonWriter.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <filesystem>
#include <unistd.h>

namespace cadorel {

using namespace Qt::StringLiterals;

ConsoleCapture::ConsoleCapture()
{
    setConsoleSink([this](const QString &line) {
        const std::scoped_lock lock(m_mutex);
        m_lines.append(line);
        if (m_listener)
            m_listener(line);
    });
}

ConsoleCapture::~ConsoleCapture()
{
    setConsoleSink({});
}

QStringList ConsoleCapture::take()
{
    const std::scoped_lock lock(m_mutex);
    return std::exchange(m_lines, {});
}

ImportFixture::ImportFixture()
{
    m_home.setAutoRemove(false);
    if (!m_home.isValid())
        qFatal("no temporary directory");
    m_platform.directories = {.documents = m_home.filePath(u"Music/Cadorel"_s),
                              .applicationSupport = m_home.filePath(u"share/cadorel"_s),
                              .caches = m_home.filePath(u"cache/cadorel"_s)};
    for (const QString &path : {documents(), metadata(), outside()})
        QDir().mkpath(path);
    auto reader = std::make_unique<FakeAssetReader>();
    auto clock = std::make_unique<FakeClock>();
    m_reader = reader.get();
    m_clock = clock.get();
    m_platform.assetReader = std::move(reader);
    m_platform.clock = std::move(clock);
}

ImportFixture::~ImportFixture()
{
    m_service.reset();
    // Native names: the temporary directory's own removal cannot spell those that are not UTF-8.
    std::error_code error;
    std::filesystem::remove_all(QFile::encodeName(m_home.path()).toStdString(), error);
    if (error)
        qWarning("cannot remove %s", qPrintable(m_home.path()));
}

namespace {

QString joined(const QString &folder, const QString &name)
{
    return name.isEmpty() ? folder : folder + u'/' + name;
}

} // namespace

QString ImportFixture::documents(const QString &name) const
{
    return joined(m_platform.directories.documents, name);
}

QString ImportFixture::metadata(const QString &name) const
{
    return joined(m_platform.directories.applicationSupport + "/LocalMusic"_L1, name);
}

QString ImportFixture::outside(const QString &name) const
{
    return joined(m_home.filePath(u"elsewhere"_s), name);
}

QString ImportFixture::storedPath(const ImportFixture &fixture, const QString &originalName)
{
    return fixture.documents(LocalMusicImportService::storedName(originalName));
}

LocalMusicImportService &ImportFixture::start(bool keepLog)
{
    m_service.reset();
    m_service = std::make_unique<LocalMusicImportService>(m_platform);
    if (!keepLog)
        m_console.take();
    return *m_service;
}

void ImportFixture::describe(const QString &originalName, const FakeAsset &asset)
{
    m_reader->assets.insert(LocalMusicImportService::storedName(originalName), asset);
}

std::optional<QByteArray> ImportFixture::bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

QString ImportFixture::write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

QByteArray ImportFixture::indexBytes() const
{
    return bytesOf(metadata(u"index.json"_s)).value_or(QByteArray());
}

QStringList ImportFixture::titles() const
{
    QStringList titles;
    for (const Song &song : m_service->importedSongs())
        titles.append(song.title());
    return titles;
}

QStringList ImportFixture::indexedTitles() const
{
    QStringList titles;
    const QJsonArray records = QJsonDocument::fromJson(indexBytes()).array();
    for (const auto &value : records)
        titles.append(value.toObject().value("title"_L1).toString());
    return titles;
}

QByteArray ImportFixture::record(const QString &path, const QString &title, const QString &id)
{
    JsonWriter writer;
    writer.beginObject();
    if (!id.isNull())
        writer.member("id", id);
    writer.member("title", title);
    writer.member("artist", u"歌手"_s);
    writer.member("album", u"专辑"_s);
    writer.member("duration", 12.5);
    writer.member("assetURL", path);
    writer.endObject();
    return writer.take();
}

void ImportFixture::giveTo(uint user) const
{
    const auto give = [user](const QString &path) {
        if (::lchown(QFile::encodeName(path).constData(), user, user) != 0)
            qFatal("cannot give %s away", qPrintable(path));
    };
    give(m_home.path());
    QDirIterator walk(m_home.path(), QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        give(walk.next());
}

QStringList recorded(ImportFixture &fixture, const std::function<void()> &operation)
{
    using Service = LocalMusicImportService;
    const Service &service = fixture.service();
    QStringList events;
    QObject context;
    const auto flag = [](bool value) { return value ? u"true"_s : u"false"_s; };
    const auto record = [&](void (Service::*signal)(), const std::function<QString()> &text) {
        QObject::connect(&service, signal, &context, [&events, text] { events.append(text()); });
    };
    record(&Service::importedSongsChanged,
           [&] { return u"songs "_s + QString::number(service.importedSongs().size()); });
    record(&Service::isImportingChanged, [&] { return u"importing "_s + flag(service.isImporting()); });
    record(&Service::isScanningChanged, [&] { return u"scanning "_s + flag(service.isScanning()); });
    record(&Service::importErrorChanged, [&] { return u"error "_s + service.importErrorText(); });
    record(&Service::lastScanDateChanged, [] { return u"date"_s; });
    record(&Service::newSongsFoundChanged,
           [&] { return u"found "_s + QString::number(service.newSongsFound()); });
    record(&Service::importProgressChanged,
           [&] { return u"progress "_s + QString::number(service.importProgress()); });
    record(&Service::importProgressTextChanged, [&] { return u"text "_s + service.importProgressText(); });
    fixture.console().setListener([&events](const QString &line) { events.append(line); });
    operation();
    fixture.console().setListener({});
    return events;
}

FakeTag textTag(const QString &identifier, const QString &text, std::optional<CommonKey> key)
{
    return {.identifier = identifier, .commonKey = key, .string = text, .data = std::nullopt};
}

FakeTag dataTag(const QString &identifier, const QByteArray &data, std::optional<CommonKey> key)
{
    return {.identifier = identifier, .commonKey = key, .string = std::nullopt, .data = data};
}

FakeAsset tagged(const QString &title, double seconds)
{
    return {.duration = seconds,
            .common = QList<FakeTag>{textTag(u"id3/TIT2"_s, title, CommonKey::title),
                                     textTag(u"id3/TPE1"_s, u"歌手"_s, CommonKey::artist),
                                     textTag(u"id3/TALB"_s, u"专辑"_s, CommonKey::albumName)},
            .all = QList<FakeTag>{},
            .lyrics = std::nullopt};
}

QStringList unreadableLines(const QString &title)
{
    return {u"Failed to get duration: cannot read"_s,
            u"Failed to load common metadata: cannot read"_s,
            u"Failed to load metadata: cannot read"_s,
            u"=== Final Extracted Metadata ==="_s,
            "Title: "_L1 + title,
            u"Artist: 未知艺术家"_s,
            u"Album: 未知专辑"_s,
            u"Artwork: none"_s,
            u"Lyrics: none"_s};
}

} // namespace cadorel
