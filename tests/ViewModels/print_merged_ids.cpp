// SPDX-License-Identifier: GPL-3.0-or-later
// One run of the player's library: prints the ids of the album and the artist of one imported song.
#include "ViewModels/ViewModelBench.h"

#include <QCoreApplication>

#include <cstdio>

using namespace cadorel;
using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    ViewModelBench bench;
    bench.home.addImportedSong(u"a.mp3"_s, u"Title"_s, u"Artist"_s, u"Album"_s);
    const CadorelViewModel &viewModel = bench.startViewModel();
    std::printf("%s\n%s\n", qPrintable(viewModel.allAlbums().constFirst().id),
                qPrintable(viewModel.allArtists().constFirst().id));
    return 0;
}
