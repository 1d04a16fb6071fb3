// SPDX-License-Identifier: GPL-3.0-or-later
// Figure: new files that lie in the music folder are taken up.
#include "Services/LocalMusicImportService.h"
#include "Support/MadeHome.h"
#include "Support/ProcessUsage.h"
#include "Support/Report.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QElapsedTimer>
#include <QThread>

#include <fileref.h>
#include <tag.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int fileCount = 3000;
constexpr int runs = 9;
constexpr double msPerSecond = 1000;

/// What any player must at least do: open each file and read its tags and length.
double tagLibSeconds(const QList<QByteArray> &files)
{
    QElapsedTimer timer;
    timer.start();
    qsizetype sum = 0;
    for (const QByteArray &file : files) {
        const TagLib::FileRef reference(file.constData());
        if (reference.isNull())
            continue;
        sum += reference.tag()->title().size() + reference.tag()->artist().size() +
               reference.tag()->album().size() +
               static_cast<unsigned>(reference.audioProperties()->lengthInMilliseconds());
    }
    if (sum == 0)
        qFatal("TagLib reads nothing of the files to measure with");
    return static_cast<double>(timer.elapsed()) / msPerSecond;
}

struct Scan
{
    double seconds = 0;
    double processorSeconds = 0;
};

Scan scanOnce(const MadeHome &home, int run)
{
    Platform platform = home.platform();
    // Nothing is removed between the runs: some file systems are slow to give deleted files' room out again.
    platform.directories.applicationSupport = home.path("support-"_L1 + QString::number(run));
    LocalMusicImportService service(platform);
    const ProcessUsage usage;
    const double before = usage.processorSeconds();
    QElapsedTimer timer;
    timer.start();
    QCoro::waitFor(service.scanSandbox());
    const Scan scan{.seconds = static_cast<double>(timer.elapsed()) / msPerSecond,
                    .processorSeconds = usage.processorSeconds() - before};
    if (service.importedSongs().size() != fileCount)
        qFatal("the scan found %lld songs", static_cast<long long>(service.importedSongs().size()));
    return scan;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    Report report;
    const MadeHome home;
    makeDemoSongs(fileCount, home.directories().documents);
    const QList<QByteArray> files = findAudioFiles(QFile::encodeName(home.directories().documents));

    tagLibSeconds(files); // the files are in the page cache from here on
    const ProcessUsage usage;
    usage.resetPeak();
    const double residentBefore = usage.residentMiB();
    QList<double> reference;
    QList<double> seconds;
    QList<double> processors;
    for (int run = 0; run < runs; ++run) {
        reference.append(tagLibSeconds(files));
        const Scan scan = scanOnce(home, run);
        seconds.append(scan.seconds);
        processors.append(scan.processorSeconds / scan.seconds);
    }
    report.add({.what = u"scan of 3,000 new files, covers and index written"_s,
                .value = std::ranges::min(seconds),
                .unit = u"s"_s,
                .reference = Reference{u"TagLib loop, one thread"_s, std::ranges::min(reference)},
                .bar = 2});
    report.add({.what = u"  files a second"_s,
                .value = fileCount / std::ranges::min(seconds),
                .unit = u"files/s"_s});
    report.add({.what = u"  processors in use, of "_s + QString::number(QThread::idealThreadCount()),
                .value = std::ranges::max(processors),
                .unit = u"CPU"_s});
    report.add({.what = u"  peak of resident memory, %1 MiB of it before"_s.arg(residentBefore, 0, 'f', 0),
                .value = usage.peakMiB(),
                .unit = u"MiB"_s});
    return 0;
}
