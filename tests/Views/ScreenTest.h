// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/AudioPlayerService.h"
#include "Theme/ThemeManager.h"
#include "Theme/ThemeType.h"
#include "Utils/Console.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "Views/TestWindow.h"
#include "Views/UserInterface.h"
#include "Views/WarningWatch.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPalette>
#include <QStyleHints>
#include <QTest>

namespace cadorel {

/// What the tests of screens have in common: a fresh window for each function, and no warning may come up.
class ScreenTest : public QObject
{
    Q_OBJECT
protected:
    std::unique_ptr<TestWindow> t;

    /// Eight songs in the library, and the window on the screen. @return whether they are there: what goes on
    /// without would look for what is not
    [[nodiscard]] bool showLibrary(int songs = 8)
    {
        for (int i = 0; i < songs; ++i) {
            const QByteArray cover = i % 2 == 0 ? TestWindow::picture(Qt::red, Qt::blue) : QByteArray();
            t->addFile(QString::asprintf("%02d.mp3", i),
                       {QStringLiteral("歌 %1").arg(i), QStringLiteral("歌手"), QStringLiteral("专辑"),
                        200.0 + i, cover});
        }
        return t->scan() && t->show();
    }

    /// Starts the song of a row by the view model, ready and 200 seconds long. @return whether it plays
    [[nodiscard]] bool playRow(int row, double seconds = 200)
    {
        t->library->playSongAt(row);
        const auto item = t->player ? t->player->lastItem() : nullptr;
        if (!item)
            return false;
        item->answerDuration(seconds);
        item->becomeReady();
        return QTest::qWaitFor([this] { return t->playback->canSeek(); });
    }

    /// Rows of test data: the plain look in each scheme and size, on the smallest window also with large
    /// texts, and the other looks in some of these; in all of them if @p inEachTheme.
    static void addLooks(bool inEachTheme = false)
    {
        QTest::addColumn<bool>("dark");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<ThemeType>("type");
        QTest::addColumn<double>("textScale");
        constexpr QSize smallest(320, 480);
        constexpr QSize phone(390, 844);
        constexpr double largeTexts = 1.3;
        for (const ThemeType type : allThemeTypes()) {
            const auto add = [type](bool dark, const QSize &size, double textScale = 1) {
                QTest::addRow("%s %s %d %.1f", qPrintable(rawValue(type)), dark ? "dark" : "light",
                              size.width(), textScale)
                    << dark << size << type << textScale;
            };
            add(false, smallest, largeTexts);
            add(true, {1400, 900});
            if (!inEachTheme && type != ThemeType::classic) {
                add(false, phone);
                continue;
            }
            for (const bool dark : {false, true}) {
                for (const QSize &size : {smallest, phone, QSize(900, 640)})
                    add(dark, size);
            }
        }
    }
    /// The window in the look and the size of the row of test data. @return whether it is there
    [[nodiscard]] bool showInLook()
    {
        QFETCH(bool, dark);
        QFETCH(QSize, size);
        QFETCH(ThemeType, type);
        QFETCH(double, textScale);
        QGuiApplication::setPalette(QPalette(dark ? QColor(0x22, 0x22, 0x22) : QColor(0xee, 0xee, 0xee)));
        t->appearance->setTextScale(textScale);
        t->themeManager->switchTo(type);
        const auto isInLook = [&] { return t->themeManager->currentThemeType() == type; };
        if (!QTest::qWaitFor(isInLook) || !t->show())
            return false;
        t->window->resize(size);
        return QTest::qWaitFor([&] { return t->window->contentItem()->size().toSize() == size; });
    }

    /// Whether the item lies in a line that is scrolled sideways.
    static bool isScrolledAside(const QQuickItem *item)
    {
        for (const QQuickItem *over = item; over; over = over->parentItem()) {
            if (over->inherits("QQuickFlickable") && over->property("contentWidth").toReal() > over->width())
                return true;
        }
        return false;
    }

    /// Every control that is seen has a name, and no text leaves the window.
    void check(const QString &state) const
    {
        const QList<QQuickItem *> items = t->visibleItems();
        for (QQuickItem *item : items) {
            const bool isControl = item->inherits("QQuickAbstractButton") || item->inherits("QQuickSlider");
            QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(item);
            if (isControl && item->isEnabled()) {
                QVERIFY2(accessible && !accessible->text(QAccessible::Name).isEmpty(),
                         qPrintable(state + QStringLiteral(": a control without a name: ") +
                                    QLatin1StringView(item->metaObject()->className()) + item->objectName()));
            }
            if (!item->inherits("QQuickText") || item->property("text").toString().isEmpty() ||
                isScrolledAside(item))
                continue;
            const QRectF area = item->mapRectToScene(item->boundingRect());
            QVERIFY2(area.left() >= 0 && area.right() <= t->window->width(),
                     qPrintable(state + QStringLiteral(": outside of the window: ") +
                                item->property("text").toString()));
        }
        QVERIFY(!t->window->grabWindow().isNull());
    }

    /// Title of the player's song; empty when there is none.
    QString currentTitle() const
    {
        const auto &song = t->audioPlayer->currentSong();
        return song ? song->title() : QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        // Qt Test has put its own handler in place by now; one from before would hear nothing.
        m_watch.emplace();
        setConsoleSink([](const QString &) {});
        installFonts();
        constexpr int holdMilliseconds = 80;
        QGuiApplication::styleHints()->setMousePressAndHoldInterval(holdMilliseconds);
    }
    void init()
    {
        m_watch->take();
        // A function before may have shown its window in the dark.
        QGuiApplication::setPalette(QPalette());
        t = std::make_unique<TestWindow>();
    }
    void cleanup()
    {
        t.reset();
        QCOMPARE(m_watch->take(), QStringList());
    }
    void cleanupTestCase()
    {
        m_watch.reset();
        setConsoleSink({});
    }

private:
    std::optional<WarningWatch> m_watch;
};

} // namespace cadorel
