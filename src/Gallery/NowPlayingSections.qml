// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel
import CadorelGallery

/// The player's screen in small, as a preview of the look.
GallerySections {
    GallerySection {
        title: "播放界面预览"
        types: "ThemedNowPlayingView"
        cell: Metrics.minimumWidth - 2 * Metrics.sectionGap

        GallerySpecimen {
            caption: "正在播放，已喜欢"

            ThemedNowPlayingView {
                title: "潮汐与灯塔"
                artist: "林间合唱团"
                image: GallerySamples.covers[0]
                isPlaying: true
                isFavorite: true
                progress: 0.4
            }
        }
        GallerySpecimen {
            caption: "暂停，没有封面"

            ThemedNowPlayingView {
                title: "无题"
                artist: "佚名"
            }
        }
    }
}
