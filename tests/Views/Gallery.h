// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Theme/ThemeManager.h"
#include "Views/TestWindow.h"

#include <QCursor>
#include <QTest>

#include <cstdio>

namespace cadorel::gallery {

using namespace Qt::StringLiterals;

/// Waits for a state without which there is no picture to take.
template <typename Condition>
void await(Condition condition)
{
    if (!QTest::qWaitFor(condition))
        qFatal("a state to show does not come");
}

/// Waits until the covers have been decoded and the sheets have risen.
inline void settle()
{
    QTest::qWait(500);
}

/// Where the pictures of one look, scheme and size, with texts of that size, go.
class Gallery
{
public:
    Gallery(const QString &folder, ThemeType look, const QString &scheme, QSize size, double textScale)
        : m_folder(folder)
        , m_look(look)
        , m_scheme(scheme)
        , m_size(size)
        , m_textScale(textScale)
    {
    }

    /// Shows the window in the size of these pictures.
    void show(TestWindow &test) const
    {
        test.appearance->setTextScale(m_textScale);
        test.themeManager->switchTo(m_look);
        await([&] { return test.themeManager->currentThemeType() == m_look; });
        if (!test.show())
            qFatal("the window does not show");
        test.window->resize(m_size);
        settle();
    }

    /// Keeps a picture of the window, in which the mouse is nowhere.
    void save(const TestWindow &test, const QString &state) const
    {
        const QPoint nowhere(test.window->width() / 2, 0);
        // A window that is drawn anew asks the platform where its cursor is.
        QCursor::setPos(test.window->mapToGlobal(nowhere));
        QTest::mouseMove(test.window, nowhere);
        saveHovered(test, state);
    }
    /// The same where the mouse is.
    void saveHovered(const TestWindow &test, const QString &state) const
    {
        settle();
        const QString path =
            u"%1/%2-%3-%4-%5.png"_s.arg(m_folder, state, rawValue(m_look), m_scheme).arg(m_size.width());
        if (!test.window->grabWindow().save(path))
            qFatal("cannot write %s", qPrintable(path));
        std::puts(qPrintable(path));
    }

private:
    QString m_folder;
    ThemeType m_look;
    QString m_scheme;
    QSize m_size;
    double m_textScale;
};

/// The states of the search, in the library and on the online platforms.
void searchStates(const Gallery &gallery);
void chartStates(const Gallery &gallery);
/// The states of the playlists and of what other lists offer with them.
void playlistStates(const Gallery &gallery);

/// The states of the equalizer's sheet and of what leads to it.
void equalizerStates(const Gallery &gallery);
/// Puts made songs into the music folder, for the next scan.
void addSongs(TestWindow &test);
/// The full-screen player: its pages, and what they are drawn on.
void playerStates(const Gallery &gallery);
/// The sheets of the full-screen player.
void sheetStates(const Gallery &gallery);
/// The disc and its fan over the tabs, and what the tabs say while there is nothing.
void discStates(const Gallery &gallery);
/// The settings and their pages.
void settingsStates(const Gallery &gallery);
/// The states of Subsonic servers in the servers' place.
void navidromeStates(const Gallery &gallery);

} // namespace cadorel::gallery
