// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: a folder and many single files are copied into the library.
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Support/MadeHome.h"
#include "Support/MadeLibrary.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/LibraryViewModel.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QElapsedTimer>
#include <QProcess>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int fileCount = 1000;
constexpr int largeLibrary = 50'000;
constexpr int runs = 5;
constexpr int largeRuns = 3;
constexpr double msPerSecond = 1000;

struct Cost
{
    double seconds = 0;
    double processorSeconds = 0;
    double residentBeforeMiB = 0;
    double peakMiB = 0;
    double writtenMiB = 0;
};

/// What some work costs this process.
template <typename Work>
Cost costOf(Work work)
{
    const ProcessUsage usage;
    usage.resetPeak();
    const double residentBefore = usage.residentMiB();
    const double processorBefore = usage.processorSeconds();
    const double writtenBefore = usage.writtenMiB();
    QElapsedTimer timer;
    timer.start();
    work();
    return {.seconds = static_cast<double>(timer.elapsed()) / msPerSecond,
            .processorSeconds = usage.processorSeconds() - processorBefore,
            .residentBeforeMiB = residentBefore,
            .peakMiB = usage.peakMiB(),
            .writtenMiB = usage.writtenMiB() - writtenBefore};
}

/// The copy stays: some file systems are slow to give deleted files' room out again.
double copySeconds(const QString &source, const QString &target)
{
    QElapsedTimer timer;
    timer.start();
    if (QProcess::execute(u"cp"_s, {u"-r"_s, source, target}) != 0)
        qFatal("cp failed");
    return static_cast<double>(timer.elapsed()) / msPerSecond;
}

/// The import service of a home of its own with the parts above it that follow its songs.
class Library
{
public:
    explicit Library(int songCount)
    {
        if (songCount > 0)
            makeLibrary(m_home.directories(), songCount);
        m_platform = m_home.platform();
        m_service = std::make_unique<LocalMusicImportService>(m_platform);
        m_player = std::make_unique<AudioPlayerService>(m_platform, *m_service);
        m_viewModel = std::make_unique<CadorelViewModel>(*m_player, *m_service);
        m_list = std::make_unique<LibraryViewModel>(*m_viewModel, m_platform);
        m_before = m_service->importedSongs().size();
    }
    LocalMusicImportService &service() { return *m_service; }
    void check() const
    {
        if (m_service->importedSongs().size() != m_before + fileCount)
            qFatal("not every file was imported");
    }

private:
    MadeHome m_home;
    Platform m_platform;
    std::unique_ptr<LocalMusicImportService> m_service;
    std::unique_ptr<AudioPlayerService> m_player;
    std::unique_ptr<CadorelViewModel> m_viewModel;
    std::unique_ptr<LibraryViewModel> m_list;
    qsizetype m_before = 0;
};

Cost folderImport(const QString &source)
{
    Library library(0);
    const Cost cost =
        costOf([&] { QCoro::waitFor(library.service().importFromFolder(QUrl::fromLocalFile(source))); });
    library.check();
    return cost;
}

Cost batchImport(const QList<QUrl> &files, int librarySize)
{
    Library library(librarySize);
    const Cost cost = costOf([&] { QCoro::waitFor(library.service().importFiles(files)); });
    library.check();
    return cost;
}

QCoro::Task<void> importEach(LocalMusicImportService *service, QList<QUrl> files)
{
    for (const QUrl &file : files)
        co_await service->importFile(file);
}

Cost singleImports(const QList<QUrl> &files, int librarySize)
{
    Library library(librarySize);
    const Cost cost = costOf([&] { QCoro::waitFor(importEach(&library.service(), files)); });
    library.check();
    return cost;
}

void addDetails(Report &report, const Cost &cost)
{
    report.add({.what = u"  processor time"_s, .value = cost.processorSeconds, .unit = u"s"_s});
    report.add(
        {.what = u"  peak of resident memory, %1 MiB of it before"_s.arg(cost.residentBeforeMiB, 0, 'f', 0),
         .value = cost.peakMiB,
         .unit = u"MiB"_s});
    report.add(
        {.what = u"  written through files, covers and index"_s, .value = cost.writtenMiB, .unit = u"MiB"_s});
}

/// Holds an import into a large library against the same into an empty one: a file costs as much in both.
template <typename Import>
void tell(Report &report, const QString &name, Import import)
{
    import(0); // the first run of a kind pays for what is made once
    QList<double> reference;
    QList<double> seconds;
    Cost cost;
    for (int run = 0; run < largeRuns; ++run) {
        reference.append(import(0).seconds);
        cost = import(largeLibrary);
        seconds.append(cost.seconds);
    }
    report.add({.what = name,
                .value = std::ranges::min(seconds),
                .unit = u"s"_s,
                .reference = Reference{u"into no songs"_s, std::ranges::min(reference)}});
    addDetails(report, cost);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    const MadeHome home;
    const QString source = home.path(u"source"_s);
    makeDemoSongs(fileCount, source);
    QList<QUrl> files;
    for (const QByteArray &file : findAudioFiles(QFile::encodeName(source)))
        files.append(QUrl::fromLocalFile(QFile::decodeName(file)));

    copySeconds(source, home.path(u"copy"_s)); // the files are in the page cache from here on
    QList<double> reference;
    QList<double> seconds;
    Cost folder;
    for (int run = 0; run < runs; ++run) {
        reference.append(copySeconds(source, home.path("copy-"_L1 + QString::number(run))));
        folder = folderImport(source);
        seconds.append(folder.seconds);
    }
    report.add({.what = u"import of a folder of 1,000 files"_s,
                .value = std::ranges::min(seconds),
                .unit = u"s"_s,
                .reference = Reference{u"cp -r"_s, std::ranges::min(reference)}});
    addDetails(report, folder);

    tell(report, u"import of 1,000 files at once into 50,000 songs"_s,
         [&](int librarySize) { return batchImport(files, librarySize); });
    tell(report, u"1,000 imports of one file, one by one, into 50,000 songs"_s,
         [&](int librarySize) { return singleImports(files, librarySize); });
    return 0;
}
