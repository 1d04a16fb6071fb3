// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/WindowMemory.h"
#include "Fakes/FakeClock.h"
#include "Fakes/FakePreferences.h"

#include <QGuiApplication>
#include <QScreen>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class TestWindowMemory : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void storedTexts_data();
    void storedTexts();
    void sizesFitTheScreen_data();
    void sizesFitTheScreen();
    void firstStartHasTheSizeOfTheWindow();
    void sizeOfTheLastRunComesBack();
    void sizeThatNoScreenHasIsRefused();
    void sizeBeyondTheScreenIsMadeSmaller();
    void aDragIsStoredOnceWhenItRests();
    void whatHasJustChangedIsStoredAtTheEnd();
    void nothingIsStoredWhileNothingChanges();
    void aWindowThatFillsTheScreenKeepsItsOtherSize();
    void aMinimisedWindowTellsNothing();

private:
    QString storedSize() const { return m_preferences->stringValue(u"windowSize"_s).value_or(QString()); }
    void resize(const QSize &size)
    {
        m_window->resize(size);
        QTRY_COMPARE(m_window->size(), size);
        // The window is told of it in its own turn.
        QCoreApplication::processEvents();
    }

    std::unique_ptr<FakePreferences> m_preferences;
    std::unique_ptr<FakeClock> m_clock;
    std::unique_ptr<QWindow> m_window;
};

void TestWindowMemory::init()
{
    m_preferences = std::make_unique<FakePreferences>();
    m_clock = std::make_unique<FakeClock>();
    m_window = std::make_unique<QWindow>();
    m_window->setMinimumSize({320, 480});
    m_window->resize(390, 500);
}

void TestWindowMemory::cleanup()
{
    m_window.reset();
    m_clock.reset();
    m_preferences.reset();
}

void TestWindowMemory::storedTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("size");
    QTest::newRow("a size") << u"1000x700"_s << QSize(1000, 700);
    QTest::newRow("the largest") << u"16384x16384"_s << QSize(16'384, 16'384);
    for (const auto &text : {u""_s, u"1000"_s, u"1000x"_s, u"x700"_s, u"0x700"_s, u"1000x0"_s, u"-1000x700"_s,
                             u"1000x-700"_s, u"16385x700"_s, u"1000x99999"_s, u"999999999999x700"_s,
                             u"1000 x 700"_s, u"1000x700\n"_s, u"1e3x700"_s, u"１０００x700"_s, u"nan"_s})
        QTest::newRow(qPrintable(u"refused: "_s + text.trimmed())) << text << QSize();
}

void TestWindowMemory::storedTexts()
{
    QFETCH(QString, text);
    QFETCH(QSize, size);
    QCOMPARE(WindowMemory::sizeOf(text).value_or(QSize()), size);
}

void TestWindowMemory::sizesFitTheScreen_data()
{
    QTest::addColumn<QSize>("wanted");
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<QSize>("given");
    QTest::newRow("has room") << QSize(1000, 700) << QSize(1920, 1040) << QSize(1000, 700);
    QTest::newRow("too wide") << QSize(2560, 700) << QSize(1920, 1040) << QSize(1920, 700);
    QTest::newRow("too high") << QSize(390, 844) << QSize(1366, 720) << QSize(390, 720);
    QTest::newRow("too small") << QSize(10, 10) << QSize(1920, 1040) << QSize(320, 480);
    QTest::newRow("a screen smaller than the least") << QSize(390, 844) << QSize(240, 320) << QSize(320, 480);
}

void TestWindowMemory::sizesFitTheScreen()
{
    QFETCH(QSize, wanted);
    QFETCH(QSize, screen);
    QFETCH(QSize, given);
    QCOMPARE(WindowMemory::fitted(wanted, {320, 480}, screen), given);
}

void TestWindowMemory::firstStartHasTheSizeOfTheWindow()
{
    const WindowMemory memory(*m_window, *m_preferences, *m_clock);
    QCOMPARE(m_window->size(), QSize(390, 500));
    QCOMPARE(m_preferences->writes(), 0);
}

void TestWindowMemory::sizeOfTheLastRunComesBack()
{
    {
        WindowMemory memory(*m_window, *m_preferences, *m_clock);
        memory.show();
        resize({640, 560});
    }
    m_window = std::make_unique<QWindow>();
    m_window->setMinimumSize({320, 480});
    m_window->resize(390, 500);
    WindowMemory memory(*m_window, *m_preferences, *m_clock);
    QCOMPARE(m_window->size(), QSize(640, 560));
    memory.show();
    QCOMPARE(m_window->visibility(), QWindow::Windowed);
}

void TestWindowMemory::sizeThatNoScreenHasIsRefused()
{
    m_preferences->setString(u"windowSize"_s, u"20000x20000"_s);
    const WindowMemory memory(*m_window, *m_preferences, *m_clock);
    QCOMPARE(m_window->size(), QSize(390, 500));
}

void TestWindowMemory::sizeBeyondTheScreenIsMadeSmaller()
{
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    m_preferences->setString(u"windowSize"_s, u"9000x490"_s);
    const WindowMemory memory(*m_window, *m_preferences, *m_clock);
    QCOMPARE(m_window->size(), QSize(screen.width(), 490));
}

void TestWindowMemory::aDragIsStoredOnceWhenItRests()
{
    WindowMemory memory(*m_window, *m_preferences, *m_clock);
    memory.show();
    m_clock->advance(1s);
    const int before = m_preferences->writes();
    for (int width = 400; width < 600; width += 20) {
        resize({width, 560});
        m_clock->advance(100ms);
    }
    QCOMPARE(m_preferences->writes(), before);
    m_clock->advance(500ms);
    QCOMPARE(storedSize(), u"580x560"_s);
    // The size, and whether it fills the screen.
    QCOMPARE(m_preferences->writes(), before + 2);
    QCOMPARE(m_clock->activeTimers(), 0);
}

void TestWindowMemory::whatHasJustChangedIsStoredAtTheEnd()
{
    {
        WindowMemory memory(*m_window, *m_preferences, *m_clock);
        memory.show();
        resize({600, 560});
    }
    QCOMPARE(storedSize(), u"600x560"_s);
    QCOMPARE(m_clock->activeTimers(), 0);
}

void TestWindowMemory::nothingIsStoredWhileNothingChanges()
{
    WindowMemory memory(*m_window, *m_preferences, *m_clock);
    memory.show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    m_clock->advance(1s);
    QCOMPARE(m_preferences->writes(), 0);
    QCOMPARE(m_clock->activeTimers(), 0);
}

void TestWindowMemory::aWindowThatFillsTheScreenKeepsItsOtherSize()
{
    {
        WindowMemory memory(*m_window, *m_preferences, *m_clock);
        memory.show();
        resize({600, 560});
        m_clock->advance(1s);
        m_window->showMaximized();
        QTRY_COMPARE(m_window->visibility(), QWindow::Maximized);
        m_clock->advance(1s);
        QCOMPARE(m_preferences->boolValue(u"windowMaximized"_s), std::optional(true));
        QCOMPARE(storedSize(), u"600x560"_s);
    }
    m_window = std::make_unique<QWindow>();
    m_window->setMinimumSize({320, 480});
    WindowMemory memory(*m_window, *m_preferences, *m_clock);
    QCOMPARE(m_window->size(), QSize(600, 560));
    memory.show();
    QCOMPARE(m_window->visibility(), QWindow::Maximized);
    m_window->showNormal();
    QTRY_COMPARE(m_window->visibility(), QWindow::Windowed);
    m_clock->advance(1s);
    QCOMPARE(m_preferences->boolValue(u"windowMaximized"_s), std::optional(false));
}

void TestWindowMemory::aMinimisedWindowTellsNothing()
{
    WindowMemory memory(*m_window, *m_preferences, *m_clock);
    memory.show();
    resize({600, 560});
    m_clock->advance(1s);
    const int before = m_preferences->writes();
    m_window->showMinimized();
    m_window->hide();
    m_clock->advance(1s);
    QCOMPARE(m_preferences->writes(), before);
    QCOMPARE(storedSize(), u"600x560"_s);
}

QTEST_MAIN(TestWindowMemory)
#include "tst_window_memory.moc"
