// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeTheme.h"
#include "Theme/ThemeScene.h"

#include <QSignalSpy>

#include <malloc.h>

using namespace cadorel;
using namespace Qt::StringLiterals;

class ThemeEnvironmentTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<ThemeScene> t;

    AppTheme *classic = &ThemeFactory::create(ThemeType::classic);
    AppTheme *neumorphism = &ThemeFactory::create(ThemeType::neumorphism);
    AppTheme *kawaii = &ThemeFactory::create(ThemeType::kawaiiPink);

    const QByteArray ground = "Rectangle { color: ThemeEnvironment.theme.backgroundColor }";

    AppTheme *themeOf(const char *name) const { return ThemeScene::themeOf(t->named<QObject>(name)); }

private Q_SLOTS:
    void init() { t = std::make_unique<ThemeScene>(); }
    void cleanup() { t.reset(); }

    void anEngineWithoutAManagerIsPlain()
    {
        QQmlEngine engine;
        installUserInterface(engine);
        const std::unique_ptr<QObject> item = ThemeScene::makeIn(engine, ground);
        QVERIFY(item);
        QCOMPARE(ThemeScene::themeOf(item.get()), classic);
    }

    void withoutAManagerThePlainLookFollowsTheDesktop()
    {
        FakeDesktopAppearance desktop(ColorScheme::dark);
        QQmlEngine engine;
        installUserInterface(engine, {.desktopAppearance = &desktop});
        const std::unique_ptr<QObject> item = ThemeScene::makeIn(engine, ground);
        QVERIFY(item);
        QCOMPARE(item->property("color").value<QColor>(), QColor(Qt::black));
        const QSignalSpy changes(ThemeScene::environmentOf(item.get()), &ThemeEnvironment::themeChanged);
        desktop.setColorScheme(ColorScheme::light);
        QCOMPARE(item->property("color").value<QColor>(), QColor(Qt::white));
        QCOMPARE(changes.count(), 1);
    }

    void everythingHasTheManagersTheme()
    {
        QVERIFY(t->show(
            "Item { Item { Text { objectName: 'text'; color: ThemeEnvironment.theme.primaryTextColor } } }"));
        QCOMPARE(themeOf("text"), classic);
        QVERIFY(t->switchTo(ThemeType::neumorphism));
        QCOMPARE(themeOf("text"), neumorphism);
        QCOMPARE(t->named("text")->property("color").value<QColor>(), neumorphism->primaryTextColor());
        QCOMPARE(ThemeScene::themeOf(t->window), neumorphism);
    }

    void anotherSchemeIsAnotherThemeOfTheSameType()
    {
        QVERIFY(t->show("Text { objectName: 'text'; color: ThemeEnvironment.theme.primaryTextColor }"));
        t->appearance.setColorScheme(ColorScheme::dark);
        QCOMPARE(themeOf("text"), &ThemeFactory::create(ThemeType::classic, ColorScheme::dark));
        QCOMPARE(t->named("text")->property("color").value<QColor>(), QColor(Qt::white));
    }

    void aThemeSetOnAnItemCountsForWhatLiesInIt()
    {
        QVERIFY(t->show("Item { objectName: 'outer'; Item { objectName: 'card';"
                        " Item { objectName: 'inner' } } Item { objectName: 'beside' } }"));
        QCOMPARE(themeOf("inner"), classic);
        const QSignalSpy innerSpy(ThemeScene::environmentOf(t->named("inner")),
                                  &ThemeEnvironment::themeChanged);
        const QSignalSpy besideSpy(ThemeScene::environmentOf(t->named("beside")),
                                   &ThemeEnvironment::themeChanged);

        ThemeEnvironment *card = ThemeScene::environmentOf(t->named("card"));
        card->setTheme(kawaii);
        QCOMPARE(themeOf("inner"), kawaii);
        QCOMPARE(themeOf("outer"), classic);
        QCOMPARE(themeOf("beside"), classic);
        QCOMPARE(innerSpy.size(), 1);
        QCOMPARE(besideSpy.size(), 0);

        // The world around may change: the card keeps its own.
        QVERIFY(t->switchTo(ThemeType::neumorphism));
        QCOMPARE(themeOf("inner"), kawaii);
        QCOMPARE(innerSpy.size(), 1);
        QCOMPARE(themeOf("beside"), neumorphism);

        card->resetTheme();
        QCOMPARE(themeOf("inner"), neumorphism);
        QCOMPARE(innerSpy.size(), 2);
    }

    void aBindingMaySetAndTakeBackATheme()
    {
        QVERIFY(
            t->show("Item { id: card; objectName: 'card'; property bool pink: true;"
                    " ThemeEnvironment.theme: pink ? ThemeManager.themes[2] : null;"
                    " Rectangle { objectName: 'inner'; color: ThemeEnvironment.theme.backgroundColor } }"));
        QCOMPARE(themeOf("inner"), kawaii);
        t->named("card")->setProperty("pink", false);
        QCOMPARE(themeOf("inner"), classic);
        QCOMPARE(t->named("inner")->property("color").value<QColor>(), classic->backgroundColor());
        t->named("card")->setProperty("pink", true);
        QCOMPARE(themeOf("inner"), kawaii);
    }

    void undefinedTakesItBackToo()
    {
        QVERIFY(t->show("Item { objectName: 'card'; property bool pink: true;"
                        " ThemeEnvironment.theme: pink ? ThemeManager.themes[2] : undefined }"));
        QCOMPARE(themeOf("card"), kawaii);
        t->named("card")->setProperty("pink", false);
        QCOMPARE(themeOf("card"), classic);
    }

    void theNearestThemeCounts()
    {
        QVERIFY(
            t->show("Item { objectName: 'far'; Item { objectName: 'near'; Item { objectName: 'inner' } } }"));
        ThemeScene::environmentOf(t->named("far"))->setTheme(kawaii);
        ThemeScene::environmentOf(t->named("near"))->setTheme(neumorphism);
        QCOMPARE(themeOf("inner"), neumorphism);
        ThemeScene::environmentOf(t->named("far"))->resetTheme();
        QCOMPARE(themeOf("inner"), neumorphism);
        ThemeScene::environmentOf(t->named("far"))->setTheme(kawaii);
        ThemeScene::environmentOf(t->named("near"))->resetTheme();
        QCOMPARE(themeOf("inner"), kawaii);
    }

    void theSameThemeAsAroundTellsNothingButStays()
    {
        QVERIFY(t->show("Item { objectName: 'card' }"));
        ThemeEnvironment *card = ThemeScene::environmentOf(t->named("card"));
        const QSignalSpy spy(card, &ThemeEnvironment::themeChanged);
        card->setTheme(classic);
        QCOMPARE(spy.size(), 0);
        QVERIFY(t->switchTo(ThemeType::kawaiiPink));
        QCOMPARE(card->theme(), classic);
    }

    void anItemThatMovesFollowsItsNewPlace()
    {
        QVERIFY(t->show("Item { Item { objectName: 'pink'; Item { objectName: 'moved';"
                        " Item { Item { objectName: 'inner' } } } } Item { objectName: 'soft' } }"));
        ThemeScene::environmentOf(t->named("pink"))->setTheme(kawaii);
        ThemeScene::environmentOf(t->named("soft"))->setTheme(neumorphism);
        QCOMPARE(themeOf("inner"), kawaii);
        const QSignalSpy spy(ThemeScene::environmentOf(t->named("inner")), &ThemeEnvironment::themeChanged);
        // Nobody has asked the moved item itself.
        t->named("moved")->setParentItem(t->named("soft"));
        QCOMPARE(themeOf("inner"), neumorphism);
        QCOMPARE(spy.size(), 1);
        ThemeScene::environmentOf(t->named("pink"))->resetTheme();
        QCOMPARE(themeOf("inner"), neumorphism);
        ThemeScene::environmentOf(t->named("soft"))->setTheme(classic);
        QCOMPARE(themeOf("inner"), classic);
    }

    void anItemTakenOutKeepsItsLookUntilItIsPutSomewhere()
    {
        QVERIFY(
            t->show("Item { objectName: 'first'; Item { objectName: 'page'; Item { objectName: 'inner' } } }"
                    "Item { objectName: 'second' }"));
        QCOMPARE(themeOf("inner"), classic);
        QQuickItem *page = t->named("page");
        const QSignalSpy spy(ThemeScene::environmentOf(t->named("inner")), &ThemeEnvironment::themeChanged);
        page->setParentItem(nullptr);
        QVERIFY(t->switchTo(ThemeType::kawaiiPink));
        QCOMPARE(themeOf("inner"), classic);
        QCOMPARE(spy.size(), 0);
        page->setParentItem(t->named("second"));
        QCOMPARE(themeOf("inner"), kawaii);
        QCOMPARE(spy.size(), 1);
        QVERIFY(t->switchTo(ThemeType::neumorphism));
        QCOMPARE(themeOf("inner"), neumorphism);
    }

    void anItemOutlivesWhatItLayIn()
    {
        QVERIFY(t->show("Item { objectName: 'place' }"));
        auto outer = std::make_unique<QQuickItem>(t->window->contentItem());
        auto middle = std::make_unique<QQuickItem>(outer.get());
        middle->setParent(nullptr);
        const std::unique_ptr<QObject> made = t->make("Item { property var look: ThemeEnvironment.theme }");
        auto *inner = qobject_cast<QQuickItem *>(made.get());
        inner->setParentItem(middle.get());
        ThemeScene::environmentOf(outer.get())->setTheme(kawaii);
        QCOMPARE(inner->property("look").value<AppTheme *>(), kawaii);
        outer.reset();
        QCOMPARE(ThemeScene::themeOf(inner), kawaii);
        middle.reset();
        QCOMPARE(ThemeScene::themeOf(inner), kawaii);
        inner->setParentItem(t->named("place"));
        QCOMPARE(inner->property("look").value<AppTheme *>(), classic);
        QVERIFY(t->switchTo(ThemeType::neumorphism));
        QCOMPARE(inner->property("look").value<AppTheme *>(), neumorphism);
    }

    void aThemeThatIsGoneIsAsGoodAsNone()
    {
        QVERIFY(t->show("Item { objectName: 'card'; Item { objectName: 'inner';"
                        " property color ground: ThemeEnvironment.theme.backgroundColor } }"));
        auto theme = std::make_unique<FakeTheme>(QColor(1, 2, 3));
        ThemeScene::environmentOf(t->named("card"))->setTheme(theme.get());
        QCOMPARE(t->named("inner")->property("ground").value<QColor>(), QColor(1, 2, 3));
        theme.reset();
        QCOMPARE(themeOf("inner"), classic);
        QCOMPARE(t->named("inner")->property("ground").value<QColor>(), classic->backgroundColor());
    }

    void aThemeThatEndsWhileItsItemIsOutsideLeavesThePlainLook()
    {
        QVERIFY(t->show("Item { objectName: 'card'; Item { objectName: 'inner' } }"));
        auto theme = std::make_unique<FakeTheme>(QColor(1, 2, 3));
        ThemeScene::environmentOf(t->named("card"))->setTheme(theme.get());
        QCOMPARE(themeOf("inner"), theme.get());
        t->named("inner")->setParentItem(nullptr);
        theme.reset();
        QCOMPARE(themeOf("inner"), classic);
    }

    void aManagerThatIsGoneLeavesThePlainLook()
    {
        QVERIFY(t->show("Item { objectName: 'item'; property var look: ThemeEnvironment.theme }"));
        QVERIFY(t->switchTo(ThemeType::kawaiiPink));
        QCOMPARE(t->named("item")->property("look").value<AppTheme *>(), kawaii);
        t->manager.reset();
        QCOMPARE(t->named("item")->property("look").value<AppTheme *>(), classic);
    }

    void anotherManagerTakesOver()
    {
        QVERIFY(t->show("Item { objectName: 'item'; property var look: ThemeEnvironment.theme }"));
        FakePreferences preferences;
        preferences.setString(u"selectedTheme"_s, u"neumorphism"_s);
        ThemeManager other(preferences, t->appearance);
        withThemeManager(*t->engine, other);
        QCOMPARE(t->named("item")->property("look").value<AppTheme *>(), neumorphism);
        QVERIFY(t->switchTo(ThemeType::kawaiiPink)); // of the former one
        QCOMPARE(t->named("item")->property("look").value<AppTheme *>(), neumorphism);
        withThemeManager(*t->engine, *t->manager);
        QCOMPARE(t->named("item")->property("look").value<AppTheme *>(), kawaii);
    }

    void aPopupHasTheLookOfItsParent_data()
    {
        QTest::addColumn<QByteArray>("popup");
        QTest::addRow("declared within") << QByteArray("Popup { objectName: 'popup'; %1 }");
        QTest::addRow("in the layer of popups")
            << QByteArray("Popup { objectName: 'popup'; parent: T.Overlay.overlay; %1 }");
        QTest::addRow("of another item")
            << QByteArray("Item { } } Popup { objectName: 'popup'; parent: card; %1 } Item {");
        QTest::addRow("within an object") << QByteArray(
            "property QtObject holder: QtObject { property Popup popup: Popup { objectName: 'popup'; parent: "
            "card.T.Overlay.overlay; %1 } }");
        QTest::addRow("menu") << QByteArray("Menu { objectName: 'popup'; MenuItem { %1 } }");
    }
    void aPopupHasTheLookOfItsParent()
    {
        QFETCH(const QByteArray, popup);
        QByteArray declared = popup;
        declared.replace("%1", "Item { objectName: 'inner'; property var look: ThemeEnvironment.theme }");
        QVERIFY(t->show("Item { id: card; objectName: 'card'; " + declared + " }"));
        auto *object = t->named<QObject>("popup");
        QVERIFY(object);
        ThemeScene::environmentOf(t->named("card"))->setTheme(kawaii);
        const auto look = [this] { return t->named("inner")->property("look").value<AppTheme *>(); };
        QCOMPARE(look(), kawaii);
        QCOMPARE(ThemeScene::themeOf(object), kawaii);
        QVERIFY(QMetaObject::invokeMethod(object, "open"));
        QTRY_VERIFY(object->property("opened").toBool());
        QCOMPARE(look(), kawaii);
        ThemeScene::environmentOf(t->named("card"))->setTheme(neumorphism);
        QCOMPARE(look(), neumorphism);
        QVERIFY(QMetaObject::invokeMethod(object, "close"));
        QTRY_VERIFY(!object->property("visible").toBool());
        // It follows while it is closed too, so that it opens in the right look.
        ThemeScene::environmentOf(t->named("card"))->resetTheme();
        QCOMPARE(look(), classic);
        QVERIFY(t->switchTo(ThemeType::kawaiiPink));
        QCOMPARE(look(), kawaii);
    }

    void aPopupOfTheWindowHasTheLookOfTheWindow()
    {
        QVERIFY(t->show("Popup { objectName: 'popup'; Item { objectName: 'inner' } }"));
        QCOMPARE(themeOf("inner"), classic);
        QVERIFY(t->switchTo(ThemeType::kawaiiPink));
        QCOMPARE(themeOf("inner"), kawaii);
        ThemeScene::environmentOf(t->window)->setTheme(neumorphism);
        QCOMPARE(themeOf("inner"), neumorphism);
    }

    /// An item on its way out tells its popups that they are nowhere.
    void aPopupGoesWithTheItemThatItWasDeclaredIn()
    {
        QVERIFY(t->show(
            "Loader { objectName: 'loader'; sourceComponent: Item { Item {"
            " Menu { objectName: 'menu'; readonly property color tint: ThemeEnvironment.theme.primaryColor;"
            "  MenuItem { } }"
            " Popup { objectName: 'popup'; readonly property color tint: ThemeEnvironment.theme.primaryColor "
            "} } } }"));
        const QPointer<QObject> popup = t->named<QObject>("popup");
        const QPointer<QObject> menu = t->named<QObject>("menu");
        QVERIFY(popup && menu);
        t->named("loader")->setProperty("active", false);
        QTRY_VERIFY(!popup && !menu);
        QVERIFY(t->switchTo(ThemeType::kawaiiPink));
    }

    void aPopupThatMovesFollows()
    {
        QVERIFY(t->show(
            "Item { objectName: 'card' } Popup { objectName: 'popup'; Item { objectName: 'inner' } }"));
        ThemeScene::environmentOf(t->named("card"))->setTheme(kawaii);
        QCOMPARE(themeOf("inner"), classic);
        t->named<QObject>("popup")->setProperty("parent", QVariant::fromValue(t->named("card")));
        QCOMPARE(themeOf("inner"), kawaii);
    }

    void aWindowOfAnItemHasItsLook()
    {
        QVERIFY(t->show("Item { objectName: 'card'; Window { objectName: 'second';"
                        " Item { objectName: 'inner' } } }"));
        ThemeScene::environmentOf(t->named("card"))->setTheme(kawaii);
        QCOMPARE(themeOf("inner"), kawaii);
        QCOMPARE(themeOf("second"), kawaii);
    }

    void aWindowMadeByTheProgramTakesTheEngineOfItsFirstScreen()
    {
        QQuickWindow window;
        const std::unique_ptr<QObject> made = t->make("Item { property var look: ThemeEnvironment.theme }");
        auto *item = qobject_cast<QQuickItem *>(made.get());
        QVERIFY(t->switchTo(ThemeType::kawaiiPink));
        QCOMPARE(item->property("look").value<AppTheme *>(), kawaii);
        item->setParentItem(window.contentItem());
        QCOMPARE(item->property("look").value<AppTheme *>(), kawaii);
        QVERIFY(t->switchTo(ThemeType::neumorphism));
        QCOMPARE(item->property("look").value<AppTheme *>(), neumorphism);
        item->setParentItem(nullptr);
    }

    void whatIsNoItemHasTheLookOfWhereItIsDeclared()
    {
        QVERIFY(t->show("Item { objectName: 'card'; property QtObject holder: QtObject { objectName: 'plain';"
                        " property var look: ThemeEnvironment.theme } }"));
        auto *plain = t->named<QObject>("plain");
        QVERIFY(plain);
        ThemeScene::environmentOf(t->named("card"))->setTheme(kawaii);
        QCOMPARE(plain->property("look").value<AppTheme *>(), kawaii);
    }

    void rowsThatComeLaterKnowTheLook()
    {
        QVERIFY(t->show(
            "Item { objectName: 'list'; anchors.fill: parent; ListView { id: view; anchors.fill: parent;"
            " objectName: 'view'; model: 0; delegate: Rectangle { height: 20; width: 20;"
            " objectName: 'row' + index; required property int index;"
            " color: ThemeEnvironment.theme.backgroundColor } } }"));
        ThemeScene::environmentOf(t->named("list"))->setTheme(neumorphism);
        t->named("view")->setProperty("model", 5);
        const auto row = [this](int index) {
            QQuickItem *found = nullptr;
            QMetaObject::invokeMethod(t->named("view"), "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found),
                                      Q_ARG(int, index));
            return found;
        };
        QTRY_VERIFY(row(4));
        QCOMPARE(row(4)->property("color").value<QColor>(), neumorphism->backgroundColor());
        ThemeScene::environmentOf(t->named("list"))->setTheme(kawaii);
        QCOMPARE(row(4)->property("color").value<QColor>(), kawaii->backgroundColor());
        t->named("view")->setProperty("model", 0);
        QTRY_VERIFY(!row(4));
        ThemeScene::environmentOf(t->named("list"))->resetTheme();
    }

    /// What screens are thrown away for must not be reached by what comes after.
    void aScreenMayReplaceItselfWhenTheLookChanges()
    {
        QVERIFY(t->show("Item { id: holder; objectName: 'holder'; property int made: 0;"
                        " Component { id: screen; Item { id: me; objectName: 'screen';"
                        "  property color ground: ThemeEnvironment.theme.backgroundColor;"
                        "  property bool ready; Component.onCompleted: ready = true; onGroundChanged: if "
                        "(ready) { loader.active = false; loader.active = true }"
                        "  Item { property color ink: ThemeEnvironment.theme.primaryTextColor } } }"
                        " Loader { id: loader; sourceComponent: screen; onLoaded: ++holder.made } }"));
        QCOMPARE(t->named("holder")->property("made").toInt(), 1);
        ThemeScene::environmentOf(t->named("holder"))->setTheme(kawaii);
        QTRY_COMPARE(t->named("holder")->property("made").toInt(), 2);
        QTRY_VERIFY(t->named("screen"));
        QCOMPARE(themeOf("screen"), kawaii);
    }

    /// The root of the screens is built anew for another type and stays for another scheme.
    void aTreeThatIsThrownAwayIsNotDrawnAnew()
    {
        QVERIFY(t->show(
            "Loader { id: loader; objectName: 'loader'; property int type: ThemeManager.currentThemeType;"
            " property int builds: 0; property int looks: 0;"
            " onTypeChanged: { active = false; active = true }"
            " sourceComponent: Rectangle { color: ThemeEnvironment.theme.backgroundColor;"
            "  property var look: ThemeEnvironment.theme; onLookChanged: ++loader.looks;"
            "  Component.onCompleted: ++loader.builds } }"));
        QQuickItem *loader = t->named("loader");
        QCOMPARE(loader->property("builds").toInt(), 1);
        loader->setProperty("looks", 0);
        QVERIFY(t->switchTo(ThemeType::neumorphism));
        QCOMPARE(loader->property("builds").toInt(), 2);
        const auto *root = loader->property("item").value<QQuickItem *>();
        QCOMPARE(root->property("color").value<QColor>(), neumorphism->backgroundColor());
        // That of the new tree; the old one kept its own until it went.
        QCOMPARE(loader->property("looks").toInt(), 1);
        QVERIFY(t->switchTo(ThemeType::classic));
        const int builds = loader->property("builds").toInt();
        t->appearance.setColorScheme(ColorScheme::dark);
        QCOMPARE(loader->property("builds").toInt(), builds);
        root = loader->property("item").value<QQuickItem *>();
        QCOMPARE(root->property("color").value<QColor>(), QColor(Qt::black));
    }

    void aSwitchInTheMiddleOfAnAnimationEndsInTheNewLook()
    {
        QVERIFY(t->show("Rectangle { objectName: 'card'; width: 50; height: 50;"
                        " color: ThemeEnvironment.theme.primaryColor;"
                        " Behavior on color { ColorAnimation { duration: 150 } }"
                        " NumberAnimation on x { objectName: 'move'; from: 0; to: 100; duration: 300 } }"));
        QQuickItem *card = t->named("card");
        const auto colour = [card] { return card->property("color").value<QColor>(); };
        QTRY_VERIFY(card->x() > 0);
        QVERIFY(t->switchTo(ThemeType::kawaiiPink));
        QTRY_VERIFY(colour() != classic->primaryColor());
        QVERIFY(t->switchTo(ThemeType::neumorphism)); // before the first one has ended
        t->appearance.setColorScheme(ColorScheme::dark);
        QTRY_COMPARE(colour(), neumorphism->primaryColor());
        QTRY_COMPARE(card->x(), 100.0);
    }

    void aTreeIsThrownAwayInTheMiddleOfItsAnimations()
    {
        QVERIFY(t->show(
            "Loader { objectName: 'loader'; property int type: ThemeManager.currentThemeType;"
            " onTypeChanged: { active = false; active = true }"
            " sourceComponent: Rectangle { width: 50; height: 50; color: ThemeEnvironment.theme.primaryColor;"
            " Behavior on color { ColorAnimation { duration: 500 } }"
            " NumberAnimation on x { loops: Animation.Infinite; from: 0; to: 100; duration: 500 } } }"));
        const auto item = [this] { return t->named("loader")->property("item").value<QQuickItem *>(); };
        for (const ThemeType type :
             {ThemeType::kawaiiPink, ThemeType::neumorphism, ThemeType::classic, ThemeType::kawaiiPink}) {
            QTRY_VERIFY(item()->x() > 0);
            QVERIFY(t->switchTo(type));
            QCOMPARE(item()->property("color").value<QColor>(), ThemeFactory::create(type).primaryColor());
        }
    }

    /// Bytes in use as the allocator counts them; a sanitizer's allocator tells none, and finds leaks itself.
    static size_t bytesInUse() { return mallinfo2().uordblks; }

    void twoHundredSwitchesLeaveNothingBehind()
    {
        QVERIFY(t->show(
            "Loader { objectName: 'loader'; anchors.fill: parent;"
            " property int type: ThemeManager.currentThemeType;"
            " onTypeChanged: { active = false; active = true }"
            " sourceComponent: Column { Repeater { model: 50; delegate: Rectangle { width: 9; height: 3;"
            "  color: ThemeEnvironment.theme.surfaceColor;"
            "  Text { color: ThemeEnvironment.theme.primaryTextColor; text: 'row' }"
            "  Rectangle { ThemeEnvironment.theme: ThemeManager.themes[0];"
            "   color: ThemeEnvironment.theme.primaryColor } } } } }"));
        const auto objects = [this] { return t->root->findChildren<QObject *>().size(); };
        const auto settled = [this] {
            t->window->grabWindow();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
            t->engine->collectGarbage();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        const auto switchTimes = [this](int times) {
            for (int i = 0; i < times; ++i) {
                t->manager->toggleTheme();
                QCoreApplication::processEvents();
                t->appearance.setColorScheme(i % 2 ? ColorScheme::dark : ColorScheme::light);
            }
        };
        switchTimes(300); // caches of the engine fill, which takes so many
        settled();
        const ThemeType before = t->manager->currentThemeType();
        const qsizetype objectsBefore = objects();
        // A tree of this size takes some 100 KB: one that stays would show, as would 100 bytes a switch. What
        // is left behind is left in each round; a cache that fills late grows in one.
        constexpr qint64 smallGrowth = 20'000;
        qint64 growth = smallGrowth;
        for (int round = 0; round < 3 && growth >= smallGrowth; ++round) {
            const auto bytesBefore = static_cast<qint64>(bytesInUse());
            switchTimes(201);
            settled();
            QCOMPARE(t->manager->currentThemeType(), before); // they were switches indeed
            QCOMPARE(objects(), objectsBefore);
            growth = static_cast<qint64>(bytesInUse()) - bytesBefore;
        }
        QVERIFY2(growth < smallGrowth, qPrintable(u"%1 bytes more"_s.arg(growth)));
    }
};

QTEST_MAIN(ThemeEnvironmentTest)
#include "tst_theme_environment.moc"
