// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/OnlineAnswers.h"
#include "Services/AudioPlayerService.h"
#include "Services/EqualizerService.h"
#include "ViewModels/EqualizerViewModel.h"
#include "ViewModels/LibraryViewModel.h"
#include "Views/Gallery.h"

namespace cadorel::gallery {

void equalizerStates(const Gallery &gallery)
{
    using namespace std::chrono_literals;
    TestWindow test;
    addSongs(test);
    if (!test.scan())
        qFatal("the songs are not taken up");
    gallery.show(test);
    test.equalizer->open();
    gallery.save(test, u"equalizer-off"_s);

    test.equalizerService->setEnabled(true);
    test.library->playSongAt(3);
    test.equalizerService->setCurrentPreset(EqualizerPreset::rock);
    test.clock->advance(4s);
    gallery.save(test, u"equalizer-rock"_s);

    test.equalizerService->setCurrentPreset(EqualizerPreset::custom);
    for (int band = 0; band < equalizerBandCount; ++band)
        test.equalizerService->setBand(band, band % 2 == 0 ? -10.5F : 11.5F);
    test.equalizerService->setPreampGain(-3.5F);
    test.item(u"band4"_s)->forceActiveFocus(Qt::TabFocusReason);
    test.clock->advance(1s);
    gallery.save(test, u"equalizer-custom"_s);

    test.equalizerService->setEnabled(false);
    test.item(u"preset13"_s)->forceActiveFocus(Qt::TabFocusReason);
    gallery.save(test, u"equalizer-custom-off"_s);
    test.equalizerService->setEnabled(true);
    test.audioPlayer->playOnlineSong(
        {u"1"_s, u"晚风渡口"_s, u"折纸半岛"_s, u"纸船与灯塔"_s, MusicPlatform::netease, {}, {}}, {});
    gallery.save(test, u"equalizer-stream"_s);
    test.equalizer->close();
    test.library->playSongAt(3);
    gallery.save(test, u"equalizer-ways"_s);
    test.window->resize(320, 480);
    gallery.save(test, u"equalizer-ways-small"_s);
    test.equalizer->open();
    gallery.save(test, u"equalizer-small"_s);
}

} // namespace cadorel::gallery
