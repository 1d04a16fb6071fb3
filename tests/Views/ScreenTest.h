// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/AudioPlayerService.h"
#include "Utils/Console.h"
#include "ViewModels/LibraryViewModel.h"
#include "ViewModels/PlaybackViewModel.h"
#include "Views/TestWindow.h"
#include "Views/UserInterface.h"
#include "Views/WarningWatch.h"

#include <QGuiApplication>
#include <QStyleHints>
#include <QTest>

namespace cadorel {

/// What the tests of screens have in common: a fresh window for each function, and no warning may come up.
class ScreenTest : public QObject
{
    Q_OBJECT
protected:
    std::unique_ptr<TestWindow> t;

    /// Eight songs in the library, and the window on the screen.
    void showLibrary(int songs = 8)
    {
        for (int i = 0; i < songs; ++i) {
            const QByteArray cover = i % 2 == 0 ? TestWindow::picture(Qt::red, Qt::blue) : QByteArray();
            t->addFile(QString::asprintf("%02d.mp3", i),
                       {QStringLiteral("歌 %1").arg(i), QStringLiteral("歌手"), QStringLiteral("专辑"),
                        200.0 + i, cover});
        }
        QVERIFY(t->scan());
        QVERIFY(t->show());
    }

    /// Starts the song of a row by the view model, ready and 200 seconds long.
    void playRow(int row, double seconds = 200)
    {
        t->library->playSongAt(row);
        const auto item = t->player->lastItem();
        item->answerDuration(seconds);
        item->becomeReady();
        QTRY_VERIFY(t->playback->canSeek());
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
        setConsoleSink([](const QString &) {});
        installFonts();
        constexpr int holdMilliseconds = 80;
        QGuiApplication::styleHints()->setMousePressAndHoldInterval(holdMilliseconds);
    }
    void init()
    {
        m_watch.take();
        t = std::make_unique<TestWindow>();
    }
    void cleanup()
    {
        t.reset();
        QCOMPARE(m_watch.take(), QStringList());
    }
    void cleanupTestCase() { setConsoleSink({}); }

private:
    WarningWatch m_watch;
};

} // namespace cadorel
