// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeDesktopAppearance.h"
#include "Fakes/FakePreferences.h"
#include "Fakes/TestPlatform.h"
#include "Platform/SharedServices.h"
#include "Theme/ThemeFactory.h"
#include "Theme/ThemeManager.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

using namespace cadorel;
using namespace Qt::StringLiterals;

class ThemeManagerTest : public QObject
{
    Q_OBJECT

private:
    static constexpr QLatin1StringView key{"selectedTheme"};

    std::unique_ptr<FakePreferences> m_preferences;
    std::unique_ptr<FakeDesktopAppearance> m_appearance;
    std::unique_ptr<ThemeManager> m_manager;

    ThemeManager &make(const char *stored = nullptr)
    {
        if (stored)
            m_preferences->setString(key, QLatin1StringView(stored));
        m_manager = std::make_unique<ThemeManager>(*m_preferences, *m_appearance);
        return *m_manager;
    }
    std::optional<QString> stored() const { return m_preferences->stringValue(key); }

private Q_SLOTS:
    void init()
    {
        m_preferences = std::make_unique<FakePreferences>();
        m_appearance = std::make_unique<FakeDesktopAppearance>();
    }
    void cleanup() { m_manager.reset(); }

    void aFreshInstallStartsOnThePlainLook()
    {
        const ThemeManager &manager = make();
        QCOMPARE(manager.currentThemeType(), ThemeType::classic);
        QCOMPARE(manager.currentTheme(), &ThemeFactory::create(ThemeType::classic));
        QCOMPARE(stored(), std::nullopt);
    }

    void theStoredLookComesBack_data()
    {
        QTest::addColumn<QByteArray>("raw");
        QTest::addColumn<int>("index");
        QTest::newRow("classic") << QByteArray("classic") << 0;
        QTest::newRow("neumorphism") << QByteArray("neumorphism") << 1;
        QTest::newRow("kawaiiPink") << QByteArray("kawaiiPink") << 2;
        QTest::newRow("unknown") << QByteArray("midnight") << 0;
        QTest::newRow("empty") << QByteArray("") << 0;
        QTest::newRow("another case") << QByteArray("KawaiiPink") << 0;
    }
    void theStoredLookComesBack()
    {
        QFETCH(const QByteArray, raw);
        QFETCH(const int, index);
        const ThemeManager &manager = make(raw.constData());
        QCOMPARE(manager.currentThemeIndex(), index);
        QCOMPARE(manager.currentThemeType(), allThemeTypes().at(index));
        QCOMPARE(manager.currentTheme(), &ThemeFactory::create(allThemeTypes().at(index)));
        // Nothing is written back, an unknown text neither.
        QCOMPARE(stored(), QString::fromLatin1(raw));
    }

    void aStoredValueThatIsNoTextIsNone()
    {
        m_preferences->setInt(key, 2);
        QCOMPARE(make().currentThemeType(), ThemeType::classic);
    }

    void aSwitchComesWithTheNextTurn()
    {
        ThemeManager &manager = make();
        manager.switchTo(ThemeType::kawaiiPink);
        QCOMPARE(manager.currentThemeType(), ThemeType::classic);
        QCOMPARE(manager.currentTheme(), &ThemeFactory::create(ThemeType::classic));
        QCOMPARE(stored(), std::nullopt);
        QCoreApplication::processEvents();
        QCOMPARE(manager.currentThemeType(), ThemeType::kawaiiPink);
        QCOMPARE(manager.currentTheme(), &ThemeFactory::create(ThemeType::kawaiiPink));
        QCOMPARE(stored(), u"kawaiiPink"_s);
    }

    void theChoiceOutlivesTheManager()
    {
        make().switchTo(ThemeType::neumorphism);
        QCoreApplication::processEvents();
        QCOMPARE(make().currentThemeType(), ThemeType::neumorphism);
    }

    void whoHearsOfANewTypeFindsItStoredAndItsThemeInPlace()
    {
        ThemeManager &manager = make();
        QStringList told;
        const auto state = [&] {
            return u"%1 %2 %3"_s.arg(stored().value_or(u"nothing"_s), rawValue(manager.currentThemeType()),
                                     rawValue(manager.currentTheme()->themeType()));
        };
        connect(&manager, &ThemeManager::currentThemeTypeChanged, this,
                [&](ThemeType type) { told.append(u"type %1: "_s.arg(rawValue(type)) + state()); });
        connect(&manager, &ThemeManager::currentThemeChanged, this,
                [&] { told.append(u"theme: "_s + state()); });
        manager.switchTo(ThemeType::neumorphism);
        QCoreApplication::processEvents();
        const QString now = u"neumorphism neumorphism neumorphism"_s;
        QCOMPARE(told, QStringList({u"type neumorphism: "_s + now, u"theme: "_s + now}));
    }

    void theCurrentThemeAgainWritesAndTellsNothing()
    {
        ThemeManager &manager = make();
        const QSignalSpy types(&manager, &ThemeManager::currentThemeTypeChanged);
        const QSignalSpy themes(&manager, &ThemeManager::currentThemeChanged);
        manager.switchTo(ThemeType::classic);
        manager.setCurrentThemeIndex(0);
        QCoreApplication::processEvents();
        QCOMPARE(stored(), std::nullopt);
        QCOMPARE(types.size(), 0);
        QCOMPARE(themes.size(), 0);
    }

    void twoSwitchesInOneTurnComeInTheirOrder()
    {
        ThemeManager &manager = make();
        const QSignalSpy types(&manager, &ThemeManager::currentThemeTypeChanged);
        manager.switchTo(ThemeType::kawaiiPink);
        manager.switchTo(ThemeType::neumorphism);
        QCoreApplication::processEvents();
        QCOMPARE(manager.currentThemeType(), ThemeType::neumorphism);
        QCOMPARE(types.size(), 2);
        QCOMPARE(stored(), u"neumorphism"_s);
    }

    void twoSwitchesToTheSameLookAreOne()
    {
        ThemeManager &manager = make();
        const QSignalSpy types(&manager, &ThemeManager::currentThemeTypeChanged);
        const QSignalSpy themes(&manager, &ThemeManager::currentThemeChanged);
        manager.switchTo(ThemeType::kawaiiPink);
        manager.switchTo(ThemeType::kawaiiPink);
        QCoreApplication::processEvents();
        QCOMPARE(types.size(), 1);
        QCOMPARE(themes.size(), 1);
    }

    /// What is compared is what is current when it is asked for.
    void theCurrentLookDoesNotTakeBackAQueuedSwitch()
    {
        ThemeManager &manager = make();
        manager.switchTo(ThemeType::kawaiiPink);
        manager.switchTo(ThemeType::classic);
        QCoreApplication::processEvents();
        QCOMPARE(manager.currentThemeType(), ThemeType::kawaiiPink);
    }

    void aManagerThatIsGoneSwitchesNothing()
    {
        make().switchTo(ThemeType::kawaiiPink);
        m_manager.reset();
        QCoreApplication::processEvents();
        QCOMPARE(stored(), std::nullopt);
    }

    void aSwitchOfAnotherThreadComesToTheMainThread()
    {
        ThemeManager &manager = make();
        const QThread *heardOn = nullptr;
        connect(
            &manager, &ThemeManager::currentThemeTypeChanged, &manager,
            [&heardOn] { heardOn = QThread::currentThread(); }, Qt::DirectConnection);
        const std::unique_ptr<QThread> worker(
            QThread::create([&manager] { manager.switchTo(ThemeType::neumorphism); }));
        worker->start();
        QVERIFY(worker->wait());
        QCOMPARE(manager.currentThemeType(), ThemeType::classic);
        QTRY_COMPARE(manager.currentThemeType(), ThemeType::neumorphism);
        QCOMPARE(heardOn, thread());
    }

    void togglingGoesRound()
    {
        ThemeManager &manager = make();
        QStringList seen;
        for (int i = 0; i < 4; ++i) {
            manager.toggleTheme();
            QCoreApplication::processEvents();
            seen.append(rawValue(manager.currentThemeType()));
        }
        QCOMPARE(seen, QStringList({u"neumorphism"_s, u"kawaiiPink"_s, u"classic"_s, u"neumorphism"_s}));
    }

    void togglingFromTheLastGivesTheFirst()
    {
        ThemeManager &manager = make("kawaiiPink");
        manager.toggleTheme();
        QCOMPARE(manager.currentThemeType(), ThemeType::kawaiiPink);
        QCoreApplication::processEvents();
        QCOMPARE(manager.currentThemeType(), ThemeType::classic);
    }

    void aChoiceByIndexComesWithTheNextTurn()
    {
        ThemeManager &manager = make();
        QCOMPARE(manager.currentThemeIndex(), 0);
        manager.setCurrentThemeIndex(2);
        QCOMPARE(manager.currentThemeIndex(), 0);
        QCoreApplication::processEvents();
        QCOMPARE(manager.currentThemeIndex(), 2);
        QCOMPARE(stored(), u"kawaiiPink"_s);
    }

    void anIndexOfNoLookChangesNothing_data()
    {
        QTest::addColumn<int>("index");
        for (const int index :
             {3, -1, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()})
            QTest::addRow("%d", index) << index;
    }
    void anIndexOfNoLookChangesNothing()
    {
        QFETCH(const int, index);
        ThemeManager &manager = make("neumorphism");
        const QSignalSpy types(&manager, &ThemeManager::currentThemeTypeChanged);
        QVERIFY(manager.setProperty("currentThemeIndex", index));
        QCoreApplication::processEvents();
        QCOMPARE(manager.currentThemeIndex(), 1);
        QCOMPARE(types.size(), 0);
        QCOMPARE(stored(), u"neumorphism"_s);
    }

    void aLookThatIsNoneChangesNothing_data()
    {
        QTest::addColumn<int>("number");
        for (const int number : {17, -1, 3})
            QTest::addRow("%d", number) << number;
    }
    void aLookThatIsNoneChangesNothing()
    {
        QFETCH(const int, number);
        ThemeManager &manager = make("neumorphism");
        const QSignalSpy types(&manager, &ThemeManager::currentThemeTypeChanged);
        const QSignalSpy themes(&manager, &ThemeManager::currentThemeChanged);
        manager.switchTo(static_cast<ThemeType>(number));
        QCoreApplication::processEvents();
        QCOMPARE(manager.currentThemeType(), ThemeType::neumorphism);
        QCOMPARE(types.size(), 0);
        QCOMPARE(themes.size(), 0);
        QCOMPARE(stored(), u"neumorphism"_s);
    }

    void colourReadsAreThoseOfTheCurrentLook()
    {
        for (const char *raw : {"classic", "neumorphism", "kawaiiPink"}) {
            const ThemeManager &manager = make(raw);
            const AppTheme &theme = *manager.currentTheme();
            for (const char *name : {"backgroundColor", "surfaceColor", "primaryColor", "primaryTextColor",
                                     "secondaryTextColor", "lightShadow", "darkShadow"}) {
                QVERIFY2(manager.property(name).isValid(), name);
                QCOMPARE(manager.property(name), theme.property(name));
            }
            QCOMPARE(manager.isNeumorphism(), theme.useNeumorphism());
            QCOMPARE(manager.property("isNeumorphism").toBool(), QByteArray(raw) == "neumorphism");
        }
    }

    void anotherSchemeIsAnotherThemeOfTheSameType()
    {
        ThemeManager &manager = make("kawaiiPink");
        const QSignalSpy types(&manager, &ThemeManager::currentThemeTypeChanged);
        const QSignalSpy themes(&manager, &ThemeManager::currentThemeChanged);
        m_appearance->setColorScheme(ColorScheme::dark);
        QCOMPARE(manager.currentTheme(), &ThemeFactory::create(ThemeType::kawaiiPink, ColorScheme::dark));
        QCOMPARE(types.size(), 0);
        QCOMPARE(themes.size(), 1);
        QCOMPARE(stored(), u"kawaiiPink"_s);
        QCOMPARE(manager.themes().constFirst(), &ThemeFactory::create(ThemeType::classic, ColorScheme::dark));
        manager.switchTo(ThemeType::classic);
        QCoreApplication::processEvents();
        QCOMPARE(manager.currentTheme(), &ThemeFactory::create(ThemeType::classic, ColorScheme::dark));
    }

    void aDarkDesktopStartsDark()
    {
        m_appearance->setColorScheme(ColorScheme::dark);
        QCOMPARE(make().currentTheme(), &ThemeFactory::create(ThemeType::classic, ColorScheme::dark));
    }

    void whereItIsDarkNobodyElseIsAsked()
    {
        m_preferences->setString(u"themeMode"_s, u"dark"_s);
        QVERIFY(!make().currentTheme()->isDark());
    }

    void theProcessHasOneOnItsPlatform()
    {
        TestPlatform platform;
        platform.platform.desktopAppearance = std::make_unique<FakeDesktopAppearance>(ColorScheme::dark);
        platform.preferences().setString(key, u"neumorphism"_s);
        setProcessPlatform(&platform.platform);
        QCOMPARE(&ThemeManager::shared(), &ThemeManager::shared());
        QCOMPARE(ThemeManager::shared().currentTheme(),
                 &ThemeFactory::create(ThemeType::neumorphism, ColorScheme::dark));
        releaseSharedServices();
        setProcessPlatform(nullptr);
    }
};

QTEST_MAIN(ThemeManagerTest)
#include "tst_theme_manager.moc"
