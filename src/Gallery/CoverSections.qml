// SPDX-License-Identifier: GPL-3.0-or-later
import QtQuick
import Cadorel
import CadorelGallery

/// Large covers, and symbols that a look replaces.
GallerySections {
    GallerySection {
        title: "大封面"
        types: "ThemedAlbumCover · AlbumCoverShadowModifier"
        cell: 208
        stageHeight: 232

        GallerySpecimen {
            caption: "有封面"

            ThemedAlbumCover {
                size: 184
                image: GallerySamples.covers[0]
            }
        }
        GallerySpecimen {
            caption: "圆角 28"

            ThemedAlbumCover {
                size: 184
                cornerRadius: 28
                image: GallerySamples.covers[1]
            }
        }
        GallerySpecimen {
            caption: "没有封面"

            ThemedAlbumCover {
                size: 184
            }
        }
        GallerySpecimen {
            caption: "小，96"

            ThemedAlbumCover {
                size: 96
                image: GallerySamples.covers[3]
            }
        }
        GallerySpecimen {
            caption: "只有边与影"

            AlbumCoverShadowModifier {
                width: 96
                height: 96
            }
        }
    }
    GallerySection {
        title: "随外观而换的图标"
        types: "ThemedIcon"

        GallerySpecimen {
            caption: "有插画代替"

            ThemedIcon {
                systemName: AppIcons.playback.play
                kawaiiName: KawaiiIcon.play
            }
        }
        GallerySpecimen {
            caption: "没有插画"

            ThemedIcon {
                systemName: AppIcons.audio.waveform
            }
        }
        GallerySpecimen {
            caption: "大，48"

            ThemedIcon {
                systemName: AppIcons.favorite.heartFill
                kawaiiName: KawaiiIcon.like
                size: 48
            }
        }
        GallerySpecimen {
            caption: "自己的颜色"

            ThemedIcon {
                systemName: AppIcons.status.warning
                color: SystemColors.orange
            }
        }
    }
}
