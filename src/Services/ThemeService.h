// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/AppearanceOptions.h"
#include "Services/AppearanceSettings.h"
#include "Services/Pictures/StoredPicture.h"
#include "Theme/ThemeType.h"

#include <QColor>
#include <QObject>
#include <QPointF>
#include <QVariant>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace cadorel {

class DesktopAppearance;
class ThemeManager;

/// The one store of what a listener chooses of the player's appearance, but for the look itself. It is kept
/// in the preferences, and taken as it stands; operations clamp, publish and store at once. What is no number
/// or no case changes nothing. The background of Now Playing (Models/NowPlayingBackgroundStyle.h) is each
/// look's own, and changes with it. cassetteConfigs() has a signal and no property. Main thread.
class ThemeService : public QObject
{
    Q_OBJECT
    /// Named colours are those of the desktop's scheme, light or dark, and change with it.
    Q_PROPERTY(QColor accentColor READ accentColor NOTIFY accentColorChanged)
    Q_PROPERTY(QString accentColorName READ accentColorName NOTIFY accentColorNameChanged)
    Q_PROPERTY(int currentColorIndex READ currentColorIndex NOTIFY accentColorNameChanged)
    Q_PROPERTY(bool showSoundWaveRing READ showSoundWaveRing NOTIFY showSoundWaveRingChanged)
    Q_PROPERTY(QString dancingEmoji READ dancingEmoji NOTIFY dancingEmojiChanged)
    /// Where screens get the picture that dances instead of the emoji; empty when there is none.
    Q_PROPERTY(
        QString customDancingImageSource READ customDancingImageSource NOTIFY customDancingImageChanged)
    Q_PROPERTY(bool useCustomImage READ useCustomImage NOTIFY useCustomImageChanged)
    Q_PROPERTY(cadorel::LyricAnimationStyles::Type lyricAnimationStyle READ lyricAnimationStyle NOTIFY
                   lyricAnimationStyleChanged)
    Q_PROPERTY(cadorel::NowPlayingBackgroundStyles::Type nowPlayingBackgroundStyle READ
                   nowPlayingBackgroundStyle NOTIFY nowPlayingBackgroundStyleChanged)
    Q_PROPERTY(double nowPlayingBackgroundOpacity READ nowPlayingBackgroundOpacity NOTIFY
                   nowPlayingBackgroundOpacityChanged)
    /// The same for the picture behind the Now Playing screen.
    Q_PROPERTY(QString customBackgroundImageSource READ customBackgroundImageSource NOTIFY
                   customBackgroundImageChanged)
    Q_PROPERTY(QColor customBackgroundColor READ customBackgroundColor NOTIFY customBackgroundColorChanged)
    Q_PROPERTY(float customBackgroundBlur READ customBackgroundBlur NOTIFY customBackgroundBlurChanged)
    Q_PROPERTY(float albumCoverCornerRadius READ albumCoverCornerRadius NOTIFY albumCoverCornerRadiusChanged)
    /// Undefined until the listener moves the player.
    Q_PROPERTY(QVariant miniPlayerPosition READ miniPlayerPoint NOTIFY miniPlayerPositionChanged)
    Q_PROPERTY(cadorel::CassetteStyles::Type selectedCassetteStyle READ selectedCassetteStyle NOTIFY
                   selectedCassetteStyleChanged)
    Q_PROPERTY(cadorel::CassetteConfig currentCassetteConfig READ getCurrentCassetteConfig NOTIFY
                   currentCassetteConfigChanged)
    Q_PROPERTY(float lyricsFontSize READ lyricsFontSize NOTIFY lyricsFontSizeChanged)
    Q_PROPERTY(
        cadorel::LyricsAlignments::Type lyricsAlignment READ lyricsAlignment NOTIFY lyricsAlignmentChanged)
    Q_PROPERTY(bool lyricsBlurEnabled READ lyricsBlurEnabled NOTIFY lyricsBlurEnabledChanged)
    Q_PROPERTY(QList<cadorel::PresetColor> presetColors READ presetColors NOTIFY presetColorsChanged)
    Q_PROPERTY(QStringList emojiOptions READ emojiOptions CONSTANT)
public:
    /// All outlive the service.
    ThemeService(Preferences &preferences, ThemeManager &themeManager, DesktopAppearance &appearance);

    /// The one instance of the process, on its platform.
    static ThemeService &shared();

    QColor accentColor() const;
    QString accentColorName() const { return m_settings.accentColorName; }
    /// Of the first of presetColors() with the accent's name; 0 when there is none.
    int currentColorIndex() const;
    const QList<PresetColor> &presetColors() const;
    static QStringList emojiOptions() { return AppearanceOptions::emojiOptions(); }
    bool showSoundWaveRing() const { return m_settings.showSoundWaveRing; }
    QString dancingEmoji() const { return m_settings.dancingEmoji; }
    /// A null image when there is none; so is that of the background.
    QImage customDancingImage() const { return m_dancingPicture.image(); }
    QString customDancingImageSource() const { return m_dancingPicture.address(); }
    bool useCustomImage() const { return m_settings.useCustomImage; }
    LyricAnimationStyle lyricAnimationStyle() const { return m_settings.lyricAnimationStyle; }
    NowPlayingBackgroundStyle nowPlayingBackgroundStyle() const { return m_settings.backgroundStyle; }
    double nowPlayingBackgroundOpacity() const { return m_settings.backgroundOpacity; }
    QImage customBackgroundImage() const { return m_backgroundPicture.image(); }
    QString customBackgroundImageSource() const { return m_backgroundPicture.address(); }
    QColor customBackgroundColor() const;
    float customBackgroundBlur() const { return m_settings.backgroundBlur; }
    float albumCoverCornerRadius() const { return m_settings.albumCoverCornerRadius; }
    std::optional<QPointF> miniPlayerPosition() const { return m_settings.miniPlayerPosition; }
    CassetteStyle selectedCassetteStyle() const { return m_settings.cassetteStyle; }
    const CassetteConfigs &cassetteConfigs() const { return m_settings.cassetteConfigs; }
    /// The listener's for the selected style, else the style's own.
    Q_INVOKABLE cadorel::CassetteConfig getCurrentCassetteConfig() const;
    float lyricsFontSize() const { return m_settings.lyricsFontSize; }
    LyricsAlignment lyricsAlignment() const { return m_settings.lyricsAlignment; }
    bool lyricsBlurEnabled() const { return m_settings.lyricsBlurEnabled; }
    /// The look that the settings of the background are those of.
    ThemeType currentThemeType() const { return m_currentThemeType; }
    static NowPlayingBackgroundStyle defaultBackgroundStyle(ThemeType theme);
    /// For the image provider "custom".
    std::shared_ptr<const CustomPictures> customPictures() const { return m_pictures; }

    /// Only the name is stored: a colour of another name, or none of presetColors(), ends with the process.
    Q_INVOKABLE void setAccentColor(const QColor &color, const QString &name);
    /// An index that is none of presetColors() changes nothing.
    Q_INVOKABLE void setPresetColor(int index);
    Q_INVOKABLE void toggleSoundWaveRing();
    Q_INVOKABLE void setSoundWaveRing(bool on);
    /// Ends the use of the listener's picture, which stays.
    Q_INVOKABLE void setDancingEmoji(const QString &emoji);
    /// Takes the middle of the picture, in a small square, and uses it. A null image changes nothing.
    Q_INVOKABLE void setCustomDancingImage(const QImage &image);
    Q_INVOKABLE void clearCustomDancingImage();
    Q_INVOKABLE void setLyricAnimationStyle(cadorel::LyricAnimationStyles::Type style);
    Q_INVOKABLE void setNowPlayingBackgroundStyle(cadorel::NowPlayingBackgroundStyles::Type style);
    Q_INVOKABLE void setNowPlayingBackgroundOpacity(double value);
    /// A null image changes nothing, and no picture the style. To make a large one smaller takes its time:
    /// who has a thread for it gives it through fittedImage() there.
    Q_INVOKABLE void setCustomBackgroundImage(const QImage &image);
    Q_INVOKABLE void clearCustomBackgroundImage();
    Q_INVOKABLE void setCustomBackgroundBlur(double value);
    /// A colour that is only a shade of grey, one in HSV or HSL without a hue, is not stored; a grey in red,
    /// green and blue is. An invalid colour changes nothing.
    Q_INVOKABLE void setCustomBackgroundColor(const QColor &color);
    Q_INVOKABLE void setAlbumCoverCornerRadius(double radius);
    /// The largest radius, which a large cover is no circle with.
    Q_INVOKABLE void setCircleAlbumCover();
    Q_INVOKABLE void setSquareAlbumCover();
    Q_INVOKABLE void setMiniPlayerPosition(const QPointF &point);
    Q_INVOKABLE void clearMiniPlayerPosition();
    Q_INVOKABLE void setCassetteStyle(cadorel::CassetteStyles::Type style);
    /// For the selected style, as it stands. The next three change a field of the present one.
    Q_INVOKABLE void setCassetteConfig(const cadorel::CassetteConfig &config);
    Q_INVOKABLE void setCassetteScale(double value);
    Q_INVOKABLE void setCassetteOffsetX(double value);
    Q_INVOKABLE void setCassetteOffsetY(double value);
    Q_INVOKABLE void resetCurrentCassetteConfig();
    Q_INVOKABLE void setLyricsFontSize(double size);
    Q_INVOKABLE void setLyricsAlignment(cadorel::LyricsAlignments::Type alignment);
    Q_INVOKABLE void setLyricsBlurEnabled(bool on);

Q_SIGNALS:
    void accentColorChanged();
    void accentColorNameChanged();
    void presetColorsChanged();
    void showSoundWaveRingChanged();
    void dancingEmojiChanged();
    void customDancingImageChanged();
    void useCustomImageChanged();
    void lyricAnimationStyleChanged();
    void nowPlayingBackgroundStyleChanged();
    void nowPlayingBackgroundOpacityChanged();
    void customBackgroundImageChanged();
    void customBackgroundColorChanged();
    void customBackgroundBlurChanged();
    void albumCoverCornerRadiusChanged();
    void miniPlayerPositionChanged();
    void selectedCassetteStyleChanged();
    void cassetteConfigsChanged();
    void currentCassetteConfigChanged();
    void lyricsFontSizeChanged();
    void lyricsAlignmentChanged();
    void lyricsBlurEnabledChanged();

private:
    QVariant miniPlayerPoint() const;
    void loadSavedColor();
    void loadThemeSpecificSettings(ThemeType theme);
    void onThemeChanged(ThemeType type);
    void onColorSchemeChanged();
    const PresetColor *presetNamed(const QString &name) const;
    QString themeKey(QLatin1StringView prefix) const;
    void saveCassetteConfigs(const CassetteConfigs &configs);
    void publishBackgroundColor(const std::optional<QColor> &color);
    template <typename T>
    void publish(T AppearanceSettings::*setting, const std::type_identity_t<T> &value,
                 void (ThemeService::*changed)())
    {
        if (std::exchange(m_settings.*setting, value) != value)
            Q_EMIT(this->*changed)();
    }

    Preferences &m_preferences;
    DesktopAppearance &m_appearance;
    AppearanceSettings m_settings;
    /// Of the named colours.
    ColorScheme m_scheme;
    const std::shared_ptr<CustomPictures> m_pictures = std::make_shared<CustomPictures>();
    StoredPicture m_dancingPicture;
    StoredPicture m_backgroundPicture;
    ThemeType m_currentThemeType;
    /// What the theme manager told last; it becomes the current one in the next turn of the loop.
    ThemeType m_announcedThemeType;
};

} // namespace cadorel
