// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/NowPlayingBackgroundStyle.h"
#include "Theme/AppTheme.h"
#include "Theme/BackdropTones.h"

#include <QColor>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace cadorel {

/// What lies over the background of the Now Playing screen, by the listener's style and the picture that is
/// shown, and the colours of texts that can be read on all of it. A style of pictures without one is the
/// look's own background, without a veil. Main thread.
class BackdropPaint : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(cadorel::AppTheme *theme READ theme WRITE setTheme NOTIFY changed)
    Q_PROPERTY(cadorel::NowPlayingBackgroundStyles::Type style READ style WRITE setStyle NOTIFY changed)
    /// How strong the veil is, 0 to 1.
    Q_PROPERTY(double opacity READ opacity WRITE setOpacity NOTIFY changed)
    Q_PROPERTY(QColor customColor READ customColor WRITE setCustomColor NOTIFY changed)
    /// The listener's accent.
    Q_PROPERTY(QColor accent READ accent WRITE setAccent NOTIFY changed)
    /// Address of the picture that is shown, of the provider "backdrop"; empty for none.
    Q_PROPERTY(QString picture READ picture WRITE setPicture NOTIFY changed)
    /// Whether a picture is to be seen.
    /// Laid over everything; with what texts need beyond the listener's wish. Transparent for none.
    Q_PROPERTY(QColor veil READ veil NOTIFY changed)
    Q_PROPERTY(QColor textColor READ textColor NOTIFY changed)
    Q_PROPERTY(QColor secondaryTextColor READ secondaryTextColor NOTIFY changed)
    /// The accent, made darker or lighter until it can be told from the background.
    Q_PROPERTY(QColor accentColor READ accentColor NOTIFY changed)
    /// Whether texts are light.
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
public:
    using QObject::QObject;

    AppTheme *theme() const { return m_theme; }
    void setTheme(AppTheme *theme);
    NowPlayingBackgroundStyle style() const { return m_style; }
    void setStyle(NowPlayingBackgroundStyle style);
    double opacity() const { return m_opacity; }
    void setOpacity(double opacity);
    QColor customColor() const { return m_customColor; }
    void setCustomColor(const QColor &color);
    QColor accent() const { return m_accent; }
    void setAccent(const QColor &accent);
    QString picture() const { return m_picture; }
    void setPicture(const QString &address);

    bool hasPicture() const { return !m_pictureColors.isEmpty(); }
    QColor veil() const { return m_veil; }
    QColor textColor() const { return m_tones.textColor; }
    QColor secondaryTextColor() const { return m_tones.secondaryTextColor; }
    QColor accentColor() const { return m_accentColor; }
    bool isDark() const { return m_tones.isDark; }

    /// Whether the background is a picture, where there is one.
    static bool isOfPictures(cadorel::NowPlayingBackgroundStyles::Type style);
    /// Where the provider "backdrop" has that picture of the provider "cover" or "custom"; empty for every
    /// other one, and for the cover of a song that has none. @param blur see BackdropDrawing
    Q_INVOKABLE static QString pictureAddress(const QString &source, double blur);

Q_SIGNALS:
    void changed();

private:
    QList<QColor> grounds() const;
    QColor listenersVeil() const;
    void update();

    AppTheme *m_theme = nullptr; // themes live as long as the process
    NowPlayingBackgroundStyle m_style = NowPlayingBackgroundStyle::blur;
    double m_opacity = 0;
    QColor m_customColor;
    QColor m_accent;
    QString m_picture;
    QList<QColor> m_pictureColors;
    QColor m_veil = Qt::transparent;
    QColor m_accentColor;
    BackdropTones m_tones;
};

} // namespace cadorel
