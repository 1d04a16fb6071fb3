// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ViewModels/LyricsBench.h"
#include "Views/UserInterface.h"
#include "Views/WarningWatch.h"

#include <QAccessible>
#include <QPointingDevice>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <memory>

namespace cadorel {

/// A view of lyrics in a window of its own, over real services on fakes. Any warning is kept in `warnings`.
class LyricsScene
{
public:
    /// @param type of the view
    explicit LyricsScene(const QByteArray &type, QSize size = {390, 560})
        : m_type(type)
    {
        installFonts();
        m_engine = std::make_unique<QQmlEngine>();
        installUserInterface(*m_engine, {.desktopAppearance = &bench.desktop,
                                         .themeManager = &bench.themeManager(),
                                         .themeService = &bench.appearance()});
        m_window.resize(size);
        m_window.setColor(QColor(0x30, 0x2a, 0x44));
    }
    ~LyricsScene() { delete m_root; }
    Q_DISABLE_COPY_MOVE(LyricsScene)

    bool show()
    {
        QQmlComponent component(m_engine.get());
        // Where a line leads to is for the screen that the page is a part of.
        const QByteArray seek = m_type == "LyricsView" ? "onSeek: line => lyrics.seekToLine(line)" : "";
        component.setData(
            "import QtQuick\nimport Cadorel\n" + m_type + " { textColor: \"white\"; " + seek + " }", QUrl());
        m_root = qobject_cast<QQuickItem *>(component.createWithInitialProperties(
            {{QStringLiteral("lyrics"), QVariant::fromValue(&bench.lyrics())}}));
        if (!m_root) {
            qWarning().noquote() << component.errorString();
            return false;
        }
        m_root->setParentItem(m_window.contentItem());
        m_root->setSize(m_window.size());
        QObject::connect(&m_window, &QQuickWindow::widthChanged, m_root, [this] { fit(); });
        QObject::connect(&m_window, &QQuickWindow::heightChanged, m_root, [this] { fit(); });
        m_window.show();
        m_window.requestActivate();
        return QTest::qWaitForWindowActive(&m_window);
    }
    /// Plays a song of these lyrics and shows them.
    void play(const QString &text, const QString &id = QStringLiteral("a"))
    {
        bench.play(LyricsBench::songWith(id, text));
        bench.answerDuration(10'000);
        bench.lyrics().load();
        if (!QTest::qWaitFor([this] { return bench.lyrics().hasLyrics(); }))
            qFatal("there are no lyrics");
    }

    QQuickItem *root() const { return m_root; }
    QQuickWindow *window() { return &m_window; }
    QQuickItem *item(const QString &name) const { return find(m_root, name); }
    QQuickItem *list() const { return item(QStringLiteral("lyricList")); }
    /// Null for one that is not drawn.
    QQuickItem *line(int index) const { return item(QStringLiteral("lyricLine%1").arg(index)); }
    /// Lines that are made, in sight or close to it.
    int madeLines() const
    {
        int count = 0;
        for (const QQuickItem *item : list()->property("contentItem").value<QQuickItem *>()->childItems())
            count += item->objectName().startsWith(QStringLiteral("lyricLine")) ? 1 : 0;
        return count;
    }
    /// How far the middle of a line is from that of the view.
    double offCentre(int index) const
    {
        const QQuickItem *shown = line(index);
        return shown ? shown->mapToItem(m_root, {0, shown->height() / 2}).y() - m_root->height() / 2 : qInf();
    }
    /// Nothing moves any more.
    bool comesToRest()
    {
        double before = qQNaN();
        int still = 0;
        return QTest::qWaitFor([&] {
            const double now = list()->property("contentY").toDouble();
            still = now == before ? still + 1 : 0;
            before = now;
            return still > 30;
        });
    }

    QPoint centre(const QQuickItem *item) const
    {
        return item->mapToScene({item->width() / 2, item->height() / 2}).toPoint();
    }
    void tap(const QPoint &place)
    {
        QTest::touchEvent(&m_window, finger()).press(0, place);
        QTest::touchEvent(&m_window, finger()).release(0, place);
    }
    static QPointingDevice *finger()
    {
        static QPointingDevice *const device = QTest::createTouchDevice();
        return device;
    }
    /// Seeks that the player was asked for, in order.
    QStringList seeks()
    {
        QStringList seeks;
        for (const QString &call : bench.stream().calls) {
            if (call.startsWith(QStringLiteral("seek ")))
                seeks.append(call.mid(5));
        }
        return seeks;
    }
    QImage grab() { return m_window.grabWindow(); }

    LyricsBench bench;
    WarningWatch warnings;

private:
    void fit() { m_root->setSize(m_window.size()); }
    static QQuickItem *find(QQuickItem *below, const QString &name)
    {
        if (below->objectName() == name)
            return below;
        const QList<QQuickItem *> children = below->childItems();
        for (QQuickItem *child : children) {
            if (QQuickItem *found = find(child, name))
                return found;
        }
        return nullptr;
    }

    const QByteArray m_type;
    std::unique_ptr<QQmlEngine> m_engine;
    QQuickWindow m_window;
    QQuickItem *m_root = nullptr;
};

} // namespace cadorel
