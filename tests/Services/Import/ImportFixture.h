// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/Await.h"
#include "Fakes/FakeAssetReader.h"
#include "Fakes/FakeClock.h"
#include "Fixtures/UnprivilegedScope.h"
#include "Services/LocalMusicImportService.h"

#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace cadorel {

/// Everything that is printed while it lives.
class ConsoleCapture
{
public:
    ConsoleCapture();
    ~ConsoleCapture();
    Q_DISABLE_COPY_MOVE(ConsoleCapture)

    /// The lines since the last call.
    QStringList take();
    /// Called with each line, on the printing thread.
    void setListener(std::function<void(const QString &)> listener) { m_listener = std::move(listener); }

private:
    std::mutex m_mutex;
    QStringList m_lines;
    std::function<void(const QString &)> m_listener;
};

/// A home of its own for the import service, with made tags and a clock that stands still.
class ImportFixture
{
public:
    ImportFixture();
    ~ImportFixture();
    Q_DISABLE_COPY_MOVE(ImportFixture)

    /// Where the store and the side files are; both exist before the service starts.
    QString documents(const QString &name = {}) const;
    QString metadata(const QString &name = {}) const;
    /// A folder of the listener, outside of the store.
    QString outside(const QString &name = {}) const;
    static QString storedPath(const ImportFixture &fixture, const QString &originalName);

    /// Builds the service, in place of an earlier one, and forgets what the start has printed unless asked.
    LocalMusicImportService &start(bool keepLog = false);
    void stop() { m_service.reset(); }
    LocalMusicImportService &service() { return *m_service; }

    FakeAssetReader &reader() { return *m_reader; }
    FakeClock &clock() { return *m_clock; }
    ConsoleCapture &console() { return m_console; }
    Platform &platform() { return m_platform; }

    /// Gives an original file tags that the reader finds once it is stored.
    void describe(const QString &originalName, const FakeAsset &asset);

    /// The file's bytes; nothing when it is not there.
    static std::optional<QByteArray> bytesOf(const QString &path);
    /// Makes a file, and the folders above it. @return its path
    static QString write(const QString &path, const QByteArray &bytes = "sound");
    QByteArray indexBytes() const;
    /// Titles in list order.
    QStringList titles() const;
    /// Titles that the index holds.
    QStringList indexedTitles() const;

    /// The index entry of a song as the service writes it, without its braces' neighbours.
    static QByteArray record(const QString &path, const QString &title, const QString &id = {});

    /// Gives every folder of this home to the unprivileged user, who then stands in for one without rights.
    void giveTo(uint user) const;

private:
    QTemporaryDir m_home;
    ConsoleCapture m_console;
    Platform m_platform;
    FakeAssetReader *m_reader = nullptr;
    FakeClock *m_clock = nullptr;
    std::unique_ptr<LocalMusicImportService> m_service;
};

/// What a service publishes and prints, in one order: "importing true", "progress 0.5", "text …", "songs 2",
/// "found 1", "date", "error …", "scanning true", and the printed lines as they are.
QStringList recorded(ImportFixture &fixture, const std::function<void()> &operation);

/// A tag with a text.
FakeTag textTag(const QString &identifier, const QString &text, std::optional<CommonKey> key = std::nullopt);
/// A tag with bytes.
FakeTag dataTag(const QString &identifier, const QByteArray &data,
                std::optional<CommonKey> key = std::nullopt);
/// A readable file with a title, an artist and an album among the common tags.
FakeAsset tagged(const QString &title, double seconds = 60);

/// The lines that the reading of a file without any readable tag prints.
QStringList unreadableLines(const QString &title);

} // namespace cadorel
