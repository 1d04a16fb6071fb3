// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakeFilePicker.h"
#include "Fakes/FakeOutputDevices.h"
#include "Fakes/FakePreferences.h"
#include "Fakes/TestPlatform.h"
#include "Services/LyricsOffsetService.h"
#include "Services/ThemeService.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/LyricsOffsetViewModel.h"
#include "ViewModels/NowPlayingSettingsViewModel.h"
#include "ViewModels/OutputDeviceModel.h"
#include "ViewModels/OutputDevicesViewModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "ViewModels/SleepTimerViewModel.h"
#include "ViewModels/ViewModelBench.h"
#include "Views/UserInterface.h"
#include "Views/WarningWatch.h"

#include <QAccessible>
#include <QPointingDevice>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QWheelEvent>

namespace cadorel {

/// A window with the sheets of the player's screen over a button that opened them.
class SheetScene
{
public:
    SheetScene()
    {
        installFonts();
        desktop.setReducesMotion(true);
        offset.setSong(QStringLiteral("song"), QStringLiteral("夜航"));
    }
    ~SheetScene() { engine.reset(); }
    Q_DISABLE_COPY_MOVE(SheetScene)

    FakeDesktopAppearance desktop;
    TestPlatform home;
    ThemeManager manager{*home.platform.preferences, desktop};
    ThemeService theme{*home.platform.preferences, manager, desktop};
    LyricsOffsetService offsets{home.platform};
    FakeOutputDevices machine;
    FakeFilePicker picker;
    SleepTimerViewModel sleep;
    LyricsOffsetViewModel offset{offsets};
    OutputDevicesViewModel devices{&machine};
    ViewModelBench player;
    PlaybackViewModel playback{player.startViewModel()};
    NowPlayingSettingsViewModel settings{theme, &picker};
    std::unique_ptr<QQmlApplicationEngine> engine;
    QQuickWindow *window = nullptr;

    /// Shows the window, the opener with the keyboard.
    bool show(QSize size = {390, 844})
    {
        engine = std::make_unique<QQmlApplicationEngine>();
        installUserInterface(
            *engine, {.desktopAppearance = &desktop, .themeManager = &manager, .themeService = &theme});
        engine->setInitialProperties({{QStringLiteral("sleep"), QVariant::fromValue(&sleep)},
                                      {QStringLiteral("offset"), QVariant::fromValue(&offset)},
                                      {QStringLiteral("devices"), QVariant::fromValue(&devices)},
                                      {QStringLiteral("playback"), QVariant::fromValue(&playback)},
                                      {QStringLiteral("settings"), QVariant::fromValue(&settings)}});
        engine->loadData(qml);
        if (engine->rootObjects().isEmpty())
            return false;
        window = qobject_cast<QQuickWindow *>(engine->rootObjects().constFirst());
        window->resize(size);
        window->requestActivate();
        return QTest::qWaitForWindowActive(window) &&
               QTest::qWaitFor([this] { return item(QStringLiteral("opener"))->hasActiveFocus(); });
    }
    bool switchTo(ThemeType type, ColorScheme scheme)
    {
        desktop.setColorScheme(scheme);
        manager.switchTo(type);
        return QTest::qWaitFor(
            [this, type] { return manager.currentThemeType() == type && theme.currentThemeType() == type; });
    }

    QObject *sheet(const QString &name) const { return window->findChild<QObject *>(name); }
    bool open(const QString &name) const
    {
        QMetaObject::invokeMethod(sheet(name), "open");
        return QTest::qWaitFor([this, &name] { return isOpen(name); });
    }
    bool isOpen(const QString &name) const { return sheet(name)->property("opened").toBool(); }
    bool isGone(const QString &name) const
    {
        return QTest::qWaitFor([this, &name] { return !sheet(name)->property("visible").toBool(); });
    }
    bool setWindow(const char *property, const QVariant &value) const
    {
        return window->setProperty(property, value);
    }

    /// The item of that name that is seen, popups included; else any.
    QQuickItem *item(const QString &name) const
    {
        QQuickItem *found = nullptr;
        const QList<QQuickItem *> items = allItems();
        for (QQuickItem *candidate : items) {
            if (candidate->objectName() == name && (!found || candidate->isVisible()))
                found = candidate;
        }
        return found;
    }
    QString text(const QString &name) const
    {
        const QQuickItem *found = item(name);
        return found && found->isVisible() ? found->property("text").toString() : QString();
    }
    bool shows(const QString &name) const
    {
        const QQuickItem *found = item(name);
        return found && found->isVisible();
    }
    QList<QQuickItem *> allItems() const
    {
        QList<QQuickItem *> items;
        collect(window->contentItem(), items);
        return items;
    }
    static QPoint centre(const QQuickItem *item)
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
    }
    void click(const QString &name) const
    {
        settle();
        QTest::mouseClick(window, Qt::LeftButton, {}, centre(item(name)));
    }
    /// Scrolls the sheet until the item of that name is in sight.
    void reveal(const QString &name) const
    {
        settle();
        QQuickItem *wanted = item(name);
        for (QQuickItem *over = wanted; over; over = over->parentItem()) {
            if (over->objectName() != QStringLiteral("sheetScroller"))
                continue;
            const qreal y = wanted->mapToItem(over, QPointF()).y() + over->property("contentY").toReal();
            const qreal last = over->property("contentHeight").toReal() - over->height();
            over->setProperty("contentY", std::clamp(y - over->height() / 2, 0.0, std::max(0.0, last)));
        }
        settle();
    }
    /// Everything stands where it is drawn.
    void settle() const { window->grabWindow(); }
    void key(Qt::Key key) const { QTest::keyClick(window, key); }
    /// Turns the mouse's wheel over the item, by eighths of a degree.
    void turnWheel(const QString &name, int delta, QPoint pixels = {},
                   Qt::ScrollPhase phase = Qt::NoScrollPhase) const
    {
        settle();
        const QPoint place = centre(item(name));
        QWheelEvent event(place, window->mapToGlobal(QPointF(place)), pixels, QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, phase, false);
        QCoreApplication::sendEvent(window, &event);
    }
    QQuickItem *focused() const { return window->activeFocusItem(); }

    static QAccessibleInterface *accessible(QQuickItem *item)
    {
        return QAccessible::queryAccessibleInterface(item);
    }
    QString accessibleName(const QString &name) const
    {
        return accessible(item(name))->text(QAccessible::Name);
    }

    /// What is wrong with what is seen: texts that are cut or leave the window, controls without a name.
    QStringList faults() const
    {
        QStringList found;
        const QList<QQuickItem *> items = allItems();
        for (QQuickItem *candidate : items) {
            if (!isSeen(candidate))
                continue;
            if (candidate->inherits("QQuickText") && !candidate->property("text").toString().isEmpty()) {
                const QRectF area = candidate->mapRectToScene(candidate->boundingRect());
                const bool isCut = candidate->property("truncated").toBool() ||
                                   candidate->property("contentWidth").toReal() > candidate->width() + 1;
                if (isCut || area.left() < 0 || area.right() > window->width())
                    found.append(QStringLiteral("cut: ") + candidate->property("text").toString());
            }
            const bool isControl = candidate->inherits("QQuickAbstractButton") ||
                                   candidate->inherits("QQuickSlider") ||
                                   candidate->inherits("QQuickTumbler");
            if (isControl && candidate->isEnabled() &&
                (!accessible(candidate) || accessible(candidate)->text(QAccessible::Name).isEmpty()))
                found.append(QStringLiteral("without a name: ") + candidate->objectName());
        }
        return found;
    }

    QStringList takeWarnings() { return warnings.take(); }

private:
    WarningWatch warnings;

    static bool isSeen(const QQuickItem *item)
    {
        for (const QQuickItem *over = item; over; over = over->parentItem())
            if (!over->isVisible() || over->opacity() == 0)
                return false;
        return true;
    }
    static void collect(QQuickItem *below, QList<QQuickItem *> &items)
    {
        const QList<QQuickItem *> children = below->childItems();
        for (QQuickItem *child : children) {
            items.append(child);
            collect(child, items);
        }
    }

    static constexpr auto qml = R"(
        import QtQuick
        import QtQuick.Controls.Basic
        import Cadorel

        ApplicationWindow {
            id: window

            required property SleepTimerViewModel sleep
            required property LyricsOffsetViewModel offset
            required property OutputDevicesViewModel devices
            required property PlaybackViewModel playback
            required property NowPlayingSettingsViewModel settings
            property bool hasLyrics: true
            property string requests
            /// What a row asks for opens.
            property bool leadsOn: false

            function ask(request: string, sheet: var): void {
                requests += request + " ";
                if (leadsOn)
                    sheet.open();
            }

            visible: true

            ThemedBackground { anchors.fill: parent }
            TextButton {
                objectName: "opener"
                onClicked: window.requests += "opener "
                anchors.horizontalCenter: parent.horizontalCenter
                focus: true
                text: "opener"
            }
            SleepTimerSheet { objectName: "sleepTimerSheet"; sleep: window.sleep }
            LyricsOffsetSheet { id: offsetSheet; objectName: "lyricsOffsetSheet"; offset: window.offset }
            MoreOptionsSheet {
                objectName: "moreOptionsSheet"
                devices: window.devices
                playback: window.playback
                hasLyrics: window.hasLyrics
                equalizerDetail: "已关闭"
                lyricsOffsetText: "+0.5s"
                onEqualizer: window.requests += "equalizer "
                onLyricsOffset: window.ask("offset", offsetSheet)
                onSettings: window.ask("settings", settingsSheet)
            }
            NowPlayingSettingsView { id: settingsSheet; objectName: "nowPlayingSettings"; settings: window.settings }
        })";
};

/// Rows of test data: each look in each scheme, on the smallest window with large texts and on a usual one.
inline void addSheetLooks()
{
    QTest::addColumn<ThemeType>("type");
    QTest::addColumn<ColorScheme>("scheme");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("textScale");
    for (const ThemeType type : allThemeTypes()) {
        for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
            const QString look = rawValue(type) + (scheme == ColorScheme::dark ? QStringLiteral("-dark")
                                                                               : QStringLiteral("-light"));
            QTest::addRow("%s-320-large", qPrintable(look)) << type << scheme << QSize(320, 568) << 1.3;
            QTest::addRow("%s-390", qPrintable(look)) << type << scheme << QSize(390, 844) << 1.0;
            QTest::addRow("%s-1000", qPrintable(look)) << type << scheme << QSize(1000, 700) << 1.0;
        }
    }
}

} // namespace cadorel
