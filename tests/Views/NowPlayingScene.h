// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeOutputDevices.h"
#include "Theme/KawaiiDecorations.h"
#include "ViewModels/EqualizerViewModel.h"
#include "ViewModels/NowPlayingBench.h"
#include "ViewModels/NowPlayingSettingsViewModel.h"
#include "ViewModels/OutputDevicesViewModel.h"
#include "ViewModels/QueueViewModel.h"
#include "Views/UserInterface.h"
#include "Views/WarningWatch.h"

#include <QPointingDevice>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <memory>

namespace cadorel {

/// The full-screen player alone in a window, over the real services on a machine of fakes.
class NowPlayingScene
{
public:
    NowPlayingScene()
    {
        installFonts();
        installUserInterface(m_engine, {.desktopAppearance = &bench.desktop,
                                        .themeManager = &bench.themeManager,
                                        .kawaiiDecorations = &decorations,
                                        .themeService = &bench.themeService});
    }
    ~NowPlayingScene() { delete m_root; }
    Q_DISABLE_COPY_MOVE(NowPlayingScene)

    /// Brings the screen up in a window of that size.
    bool show(QSize size = {390, 844})
    {
        QQmlComponent component(&m_engine, QUrl(QStringLiteral("qrc:/qt/qml/Cadorel/NowPlayingView.qml")));
        if (!component.isReady()) {
            qWarning().noquote() << component.errorString();
            return false;
        }
        m_root = qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("viewModel"), QVariant::fromValue(&bench.viewModel)},
             {QStringLiteral("nowPlaying"), QVariant::fromValue(&bench.nowPlaying)},
             {QStringLiteral("queue"), QVariant::fromValue(&queue)},
             {QStringLiteral("equalizer"), QVariant::fromValue(&equalizer)},
             {QStringLiteral("devices"), QVariant::fromValue(&devices)},
             {QStringLiteral("appearance"), QVariant::fromValue(&appearance)}}));
        if (!m_root) {
            qWarning().noquote() << component.errorString();
            return false;
        }
        m_root->setParentItem(m_window.contentItem());
        m_root->setFocus(true);
        resize(size);
        m_window.show();
        m_window.requestActivate();
        return QTest::qWaitForWindowActive(&m_window);
    }
    void resize(QSize size)
    {
        m_window.resize(size);
        m_root->setSize(size);
    }
    /// Another look; waits until it is there.
    bool switchTo(ThemeType type, ColorScheme scheme)
    {
        bench.desktop.setColorScheme(scheme);
        bench.themeManager.switchTo(type);
        return QTest::qWaitFor([this, type] {
            return bench.themeManager.currentThemeType() == type &&
                   bench.themeService.currentThemeType() == type;
        });
    }
    /// The screen goes, as when the window closes it.
    void close()
    {
        delete m_root;
        m_root = nullptr;
    }

    QQuickItem *root() const { return m_root; }
    QQuickWindow *window() { return &m_window; }
    /// The item of that name, rather one that is seen; null when there is none.
    QQuickItem *item(const QString &name) const
    {
        QQuickItem *found = nullptr;
        visit(m_window.contentItem(), [&](QQuickItem *candidate) {
            if (candidate->objectName() == name &&
                (!found || (!found->isVisible() && candidate->isVisible())))
                found = candidate;
        });
        return found;
    }
    bool shows(const QString &name) const
    {
        const QQuickItem *found = item(name);
        return found && found->isVisible();
    }
    QString text(const QString &name) const { return item(name)->property("text").toString(); }
    QList<QQuickItem *> visibleItems() const
    {
        QList<QQuickItem *> items;
        visit(m_window.contentItem(), [&items](QQuickItem *candidate) {
            if (candidate->isVisible())
                items.append(candidate);
        });
        return items;
    }
    QRectF area(const QQuickItem *item) const
    {
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    }

    /// The slider of the song of the moment.
    QQuickItem *slider() const
    {
        return item(QStringLiteral("progress_slider_") + bench.nowPlaying.currentSongId());
    }
    /// A place in the window, that many pixels from the slider's left end.
    QPoint onSlider(double x) const
    {
        return slider()->mapToScene(QPointF(x, slider()->height() / 2)).toPoint();
    }
    void press(QPoint place) { QTest::mousePress(&m_window, Qt::LeftButton, {}, place); }
    void move(QPoint place) { QTest::mouseMove(&m_window, place); }
    void release(QPoint place) { QTest::mouseRelease(&m_window, Qt::LeftButton, {}, place); }
    void click(const QString &name)
    {
        QTest::mouseClick(&m_window, Qt::LeftButton, {}, area(item(name)).center().toPoint());
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&m_window, key, modifiers);
    }
    /// A finger goes from one place to the other in small steps and lets go.
    void swipe(QPoint from, QPoint to)
    {
        static QPointingDevice *const finger = QTest::createTouchDevice();
        constexpr int steps = 12;
        QTest::touchEvent(&m_window, finger).press(0, from);
        for (int i = 1; i <= steps; ++i)
            QTest::touchEvent(&m_window, finger).move(0, from + (to - from) * i / steps);
        QTest::touchEvent(&m_window, finger).release(0, to);
    }

    static Song song(const QString &id, const QString &title, const QByteArray &cover = {},
                     const QString &lyrics = {})
    {
        SongFields fields;
        fields.id = id;
        fields.title = title;
        fields.artist = QStringLiteral("林间合唱团");
        fields.assetURL = QUrl::fromLocalFile(QStringLiteral("/music/a.mp3"));
        fields.embeddedLyrics = lyrics;
        Song made(fields);
        if (!cover.isEmpty())
            made.setArtworkData(ArtworkData(cover));
        return made;
    }

    NowPlayingBench bench;
    KawaiiDecorations decorations{bench.home.clock(), bench.home.random()};
    QueueViewModel queue{bench.viewModel, [](const OnlineSong &) { return std::optional<QUrl>(); }};
    EqualizerViewModel equalizer{bench.equalizer, bench.player};
    FakeOutputDevices outputDevices;
    OutputDevicesViewModel devices{&outputDevices};
    NowPlayingSettingsViewModel appearance{bench.themeService, nullptr};
    WarningWatch warnings;

private:
    template <typename Visitor>
    static void visit(QQuickItem *item, const Visitor &visitor)
    {
        visitor(item);
        const QList<QQuickItem *> children = item->childItems();
        for (QQuickItem *child : children)
            visit(child, visitor);
    }

    QQmlEngine m_engine;
    QQuickWindow m_window;
    QQuickItem *m_root = nullptr;
};

} // namespace cadorel
