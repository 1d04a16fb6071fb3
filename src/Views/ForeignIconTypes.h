// SPDX-License-Identifier: GPL-3.0-or-later
// Names that the screens know the vocabularies of symbols and drawn pictures by.
#pragma once

#include "Utils/AppIcons.h"
#include "Utils/KawaiiIcon.h"

#include <QtQml/qqml.h>

namespace cadorel {

/// `AppIcons` in QML, the families in lower case: `AppIcons.playback.play`.
class AppIconsSingleton : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(AppIcons)
    QML_SINGLETON
    Q_PROPERTY(cadorel::AppIcons::Playback playback MEMBER m_playback CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Audio audio MEMBER m_audio CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Music music MEMBER m_music CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Navigation navigation MEMBER m_navigation CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Action action MEMBER m_action CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Favorite favorite MEMBER m_favorite CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::File file MEMBER m_file CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::User user MEMBER m_user CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Settings settings MEMBER m_settings CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Timer timer MEMBER m_timer CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Status status MEMBER m_status CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Appearance appearance MEMBER m_appearance CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Animation animation MEMBER m_animation CONSTANT)
    Q_PROPERTY(cadorel::AppIcons::Misc misc MEMBER m_misc CONSTANT)

private:
    AppIcons::Playback m_playback;
    AppIcons::Audio m_audio;
    AppIcons::Music m_music;
    AppIcons::Navigation m_navigation;
    AppIcons::Action m_action;
    AppIcons::Favorite m_favorite;
    AppIcons::File m_file;
    AppIcons::User m_user;
    AppIcons::Settings m_settings;
    AppIcons::Timer m_timer;
    AppIcons::Status m_status;
    AppIcons::Appearance m_appearance;
    AppIcons::Animation m_animation;
    AppIcons::Misc m_misc;
};

struct ForeignKawaiiIcon
{
    Q_GADGET
    QML_FOREIGN(cadorel::KawaiiIcon)
    QML_NAMED_ELEMENT(KawaiiIcon)
    QML_SINGLETON
};

struct ForeignPlaybackIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Playback)
    QML_VALUE_TYPE(playbackIcons)
};

struct ForeignAudioIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Audio)
    QML_VALUE_TYPE(audioIcons)
};

struct ForeignMusicIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Music)
    QML_VALUE_TYPE(musicIcons)
};

struct ForeignNavigationIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Navigation)
    QML_VALUE_TYPE(navigationIcons)
};

struct ForeignActionIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Action)
    QML_VALUE_TYPE(actionIcons)
};

struct ForeignFavoriteIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Favorite)
    QML_VALUE_TYPE(favoriteIcons)
};

struct ForeignFileIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::File)
    QML_VALUE_TYPE(fileIcons)
};

struct ForeignUserIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::User)
    QML_VALUE_TYPE(userIcons)
};

struct ForeignSettingsIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Settings)
    QML_VALUE_TYPE(settingsIcons)
};

struct ForeignTimerIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Timer)
    QML_VALUE_TYPE(timerIcons)
};

struct ForeignStatusIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Status)
    QML_VALUE_TYPE(statusIcons)
};

struct ForeignAppearanceIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Appearance)
    QML_VALUE_TYPE(appearanceIcons)
};

struct ForeignAnimationIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Animation)
    QML_VALUE_TYPE(animationIcons)
};

struct ForeignMiscIcons
{
    Q_GADGET
    QML_FOREIGN(cadorel::AppIcons::Misc)
    QML_VALUE_TYPE(miscIcons)
};

} // namespace cadorel
