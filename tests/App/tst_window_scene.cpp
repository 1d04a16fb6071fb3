// SPDX-License-Identifier: GPL-3.0-or-later
#include "App/TestApp.h"
#include "App/WindowScene.h"
#include "Platform/Preferences.h"

#include <QTest>
#include <QWindow>

using namespace cadorel;
using namespace Qt::StringLiterals;

using Phase = CadorelApp::ScenePhase;

/// What becomes of the application when its window is hidden, minimised or left, and how the window comes
/// back.
class TestWindowScene : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void aWindowThatIsOnItsWayHasLeftNothing();
    void aWindowThatNeverHadTheKeyboardHasNotLostIt();
    void hiddenIsBackground();
    void minimisedIsBackground();
    void withoutTheKeyboardItIsInactive();
    void comingBackIsActive();
    void aHiddenWindowIsRaised();
    void aWindowIsRaisedAsLargeAsItWas_data();
    void aWindowIsRaisedAsLargeAsItWas();
    void theTokenOfWhoeverAskedReachesTheDesktop();
    void theWindowHearsOfAForcedUpdate();

private:
    /// The window is there and has the keyboard.
    [[nodiscard]] bool showActive();
    bool hasSnapshot() const { return t->platform.preferences->contains(u"lastPlaybackState"_s); }

    std::unique_ptr<TestApp> t;
    std::unique_ptr<QWindow> m_other;
    std::unique_ptr<QWindow> m_window;
    std::unique_ptr<WindowScene> m_scene;
};

void TestWindowScene::init()
{
    t = std::make_unique<TestApp>();
    m_other = std::make_unique<QWindow>();
    m_window = std::make_unique<QWindow>();
    m_window->resize(390, 500);
    m_scene = std::make_unique<WindowScene>(*m_window, *t->app);
}

void TestWindowScene::cleanup()
{
    m_scene.reset();
    m_window.reset();
    m_other.reset();
    t.reset();
    // Also when a function has ended early.
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

bool TestWindowScene::showActive()
{
    m_window->show();
    m_window->requestActivate();
    return QTest::qWaitForWindowActive(m_window.get()) && t->playASong() &&
           t->app->scenePhase() == Phase::active;
}

void TestWindowScene::aWindowThatIsOnItsWayHasLeftNothing()
{
    QCOMPARE(t->app->scenePhase(), Phase::active);
    QCOMPARE(t->channels.calls, QStringList());
}

void TestWindowScene::aWindowThatNeverHadTheKeyboardHasNotLostIt()
{
    m_other->show();
    m_other->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_other.get()));
    m_window->setFlag(Qt::WindowDoesNotAcceptFocus);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QCOMPARE(t->app->scenePhase(), Phase::active);
    QCOMPARE(t->channels.calls, QStringList());
}

void TestWindowScene::hiddenIsBackground()
{
    QVERIFY(showActive());
    m_window->hide();
    QTRY_COMPARE(t->app->scenePhase(), Phase::background);
    QVERIFY(hasSnapshot());
    QVERIFY(t->channels.calls.contains(u"background"_s));
}

void TestWindowScene::minimisedIsBackground()
{
    QVERIFY(showActive());
    m_window->showMinimized();
    QTRY_COMPARE(t->app->scenePhase(), Phase::background);
    QVERIFY(hasSnapshot());
}

void TestWindowScene::withoutTheKeyboardItIsInactive()
{
    QVERIFY(showActive());
    m_other->show();
    m_other->requestActivate();
    QTRY_COMPARE(t->app->scenePhase(), Phase::inactive);
    QVERIFY(hasSnapshot());
    QCOMPARE(t->channels.calls, QStringList{u"background"_s});
}

void TestWindowScene::comingBackIsActive()
{
    QVERIFY(showActive());
    m_window->hide();
    QTRY_COMPARE(t->app->scenePhase(), Phase::background);
    t->channels.calls.clear();
    m_window->show();
    m_window->requestActivate();
    QTRY_COMPARE(t->app->scenePhase(), Phase::active);
    // Not by way of anything that would be logged.
    QCOMPARE(t->channels.calls, QStringList());
}

void TestWindowScene::aHiddenWindowIsRaised()
{
    QVERIFY(showActive());
    m_other->show();
    m_other->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_other.get()));
    m_window->hide();
    m_scene->raise({});
    QTRY_VERIFY(m_window->isVisible() && m_window->isActive());
    QCOMPARE(m_window->visibility(), QWindow::Windowed);
    QTRY_COMPARE(t->app->scenePhase(), Phase::active);
}

void TestWindowScene::aWindowIsRaisedAsLargeAsItWas_data()
{
    QTest::addColumn<bool>("isMaximised");
    QTest::addColumn<bool>("isMinimised");
    QTest::addColumn<bool>("isHidden");
    QTest::newRow("as it is") << false << false << false;
    QTest::newRow("minimised") << false << true << false;
    QTest::newRow("maximised") << true << false << false;
    QTest::newRow("maximised, then minimised") << true << true << false;
    QTest::newRow("maximised, then hidden") << true << false << true;
}

void TestWindowScene::aWindowIsRaisedAsLargeAsItWas()
{
    QFETCH(bool, isMaximised);
    QFETCH(bool, isMinimised);
    QFETCH(bool, isHidden);
    QVERIFY(showActive());
    if (isMaximised)
        m_window->showMaximized();
    if (isMinimised)
        m_window->setWindowStates(m_window->windowStates() | Qt::WindowMinimized);
    if (isHidden)
        m_window->hide();
    m_scene->raise({});
    QTRY_COMPARE(m_window->visibility(), isMaximised ? QWindow::Maximized : QWindow::Windowed);
    QTRY_COMPARE(t->app->scenePhase(), Phase::active);
}

void TestWindowScene::theTokenOfWhoeverAskedReachesTheDesktop()
{
    QVERIFY(showActive());
    m_scene->raise("permission");
    QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), "permission"_ba);
    // Without one, what there was is left.
    m_scene->raise({});
    QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), "permission"_ba);
}

void TestWindowScene::theWindowHearsOfAForcedUpdate()
{
    QCOMPARE(m_window->property("isForceUpdateRequired"), QVariant(false));
    t->channels.forced = true;
    t->app->rootAppeared();
    t->channels.updateAnswer.finish();
    QTRY_COMPARE(m_window->property("isForceUpdateRequired"), QVariant(true));
}

QTEST_MAIN(TestWindowScene)
#include "tst_window_scene.moc"
