// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: the merged list, the search at each key stroke and the rows of the list, with 100,000 songs.
#include "Services/AudioPlayerService.h"
#include "Services/LocalMusicImportService.h"
#include "Services/Seams/MediaLibrarySource.h"
#include "Services/Seams/WebDAVSource.h"
#include "Support/MadeHome.h"
#include "Support/MadeLibrary.h"
#include "Support/Report.h"
#include "ViewModels/CadorelViewModel.h"
#include "ViewModels/SongListModel.h"

#include <QCoreApplication>
#include <QCoroTask>

#include <benchmark/benchmark.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int songCount = 100'000;
constexpr int otherSources = 2;
constexpr int perSource = songCount / (otherSources + 1);
constexpr double listBarMs = 2;
constexpr double searchBarMs = 16;

class MadeMediaLibrary : public MediaLibrarySource
{
public:
    explicit MadeMediaLibrary(const QList<Song> &songs)
        : m_songs(songs)
    {
    }
    QList<Song> songs() const override { return m_songs; }
    QList<Album> albums() const override { return {}; }
    QList<Artist> artists() const override { return {}; }
    QCoro::Task<void> loadLibrary() override { co_return; }

private:
    QList<Song> m_songs;
};

class MadeServer : public WebDAVSource
{
public:
    explicit MadeServer(const QList<Song> &songs)
        : m_songs(songs)
    {
    }
    QList<Song> webDAVSongs() const override { return m_songs; }
    QCoro::Task<void> scanAllConfigs() override { co_return; }

private:
    QList<Song> m_songs;
};

/// A library in a home of its own.
struct Library
{
    explicit Library(int imported, LibrarySources sources)
    {
        makeLibrary(home.directories(), imported);
        platform = home.platform();
        service = std::make_unique<LocalMusicImportService>(platform);
        player = std::make_unique<AudioPlayerService>(platform, *service);
        viewModel = std::make_unique<CadorelViewModel>(*player, *service, sources);
    }
    MadeHome home;
    Platform platform;
    std::unique_ptr<LocalMusicImportService> service;
    std::unique_ptr<AudioPlayerService> player;
    std::unique_ptr<CadorelViewModel> viewModel;
};

/// Tells each measurement against its bar, which stands in the counter of that name.
class Reporter : public benchmark::BenchmarkReporter
{
public:
    explicit Reporter(Report &report)
        : m_report(report)
    {
    }
    bool ReportContext(const Context &) override { return true; }
    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs) {
            m_report.add({.what = QString::fromStdString(run.run_name.function_name),
                          .value = run.GetAdjustedRealTime(),
                          .unit = u"ms"_s,
                          .reference = std::nullopt,
                          .bar = run.counters.at("bar").value});
        }
    }

private:
    Report &m_report;
};

template <typename Work>
void measure(const char *name, double bar, Work work)
{
    benchmark::RegisterBenchmark(name,
                                 [work, bar](benchmark::State &state) {
                                     for ([[maybe_unused]] auto iteration : state)
                                         benchmark::DoNotOptimize(work());
                                     state.counters["bar"] = bar;
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

void measureSearches(const CadorelViewModel &viewModel)
{
    const auto search = [&viewModel](const char *name, const QString &query) {
        measure(name, searchBarMs, [&viewModel, query] { return viewModel.searchLocal(query); });
    };
    search("searchLocal, Latin, several found", u"harbour gar"_s);
    search("searchLocal, Chinese", u"夜航星"_s);
    search("searchLocal, nothing found", u"zzzz"_s);
    search("searchLocal, one letter, most found", u"r"_s);
    search("searchLocal, one Chinese character", u"晨"_s);
    search("searchLocal, upper case", u"WINTER"_s);
}

void measureRows(const QList<Song> &songs, const QList<Song> &oneMore)
{
    measure("rows: the first 100,000", searchBarMs, [songs] {
        SongListModel model;
        model.setSongs(songs);
        return model.count();
    });
    measure("rows: one more at the end, and gone again", searchBarMs,
            [songs, oneMore, model = std::make_shared<SongListModel>()] {
                model->setSongs(oneMore);
                model->setSongs(songs);
                return model->count();
            });
    QList<Song> without = songs;
    without.removeAt(songCount / 2);
    measure("rows: one in the middle gone, and back again", searchBarMs,
            [songs, without, model = std::make_shared<SongListModel>()] {
                model->setSongs(without);
                model->setSongs(songs);
                return model->count();
            });
    measure("rows: nothing changed", searchBarMs, [songs, model = std::make_shared<SongListModel>()] {
        model->setSongs(songs);
        return model->count();
    });
}

} // namespace

int main(int argc, char *argv[])
{
    benchmark::Initialize(&argc, argv);
    const QCoreApplication application(argc, argv);
    Report report;

    const Library one(songCount, {});
    measure("allSongs, one source", listBarMs, [&one] { return one.viewModel->allSongs(); });
    measure("allSongs and a look at every song", searchBarMs, [&one] {
        double sum = 0;
        for (const Song &song : one.viewModel->allSongs())
            sum += song.duration();
        return sum;
    });
    MadeMediaLibrary mediaLibrary(madeSongs(one.home.directories(), songCount, perSource));
    MadeServer server(madeSongs(one.home.directories(), songCount + perSource, perSource));
    const Library three(songCount - otherSources * perSource,
                        {.mediaLibrary = &mediaLibrary, .webDAVService = &server});
    measure("allSongs, three sources", listBarMs, [&three] { return three.viewModel->allSongs(); });
    measureSearches(*one.viewModel);
    measureRows(one.viewModel->allSongs(),
                one.viewModel->allSongs() + madeSongs(one.home.directories(), songCount, 1));

    Reporter reporter(report);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
