// SPDX-License-Identifier: GPL-3.0-or-later
// What every DesktopAppearance keeps to, run against the fake and the real ones; then what is the portal's
// own.
#include "FakePortal.h"
#include "Fakes/FakeDesktopAppearance.h"
#include "Platform/Linux/PortalAppearance.h"
#include "Platform/PaletteAppearance.h"

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

class DesktopAppearanceTest : public QObject
{
    Q_OBJECT

private:
    const QString appearanceSpace = u"org.freedesktop.appearance"_s;
    const QString gnomeSpace = u"org.gnome.desktop.interface"_s;

    std::unique_ptr<FakePortal> m_portal;
    std::unique_ptr<DesktopAppearance> m_appearance;
    FakeDesktopAppearance *m_fake = nullptr;

    static void setPalette(bool dark)
    {
        QGuiApplication::setPalette(dark ? QColor(0x22, 0x22, 0x22) : QColor(0xee, 0xee, 0xee));
    }
    void change(const QString &space, const char *key, const QVariant &value) const
    {
        m_portal->change(space, QLatin1StringView(key), value);
    }
    std::unique_ptr<PortalAppearance> portalAppearance() const
    {
        return std::make_unique<PortalAppearance>([client = m_portal->client()] { return client; });
    }
    /// The portal is there and has been asked.
    void startPortal(const QMap<QString, QVariantMap> &settings = {})
    {
        m_portal->settings = settings;
        QVERIFY(m_portal->appear());
        m_appearance = portalAppearance();
        QTRY_VERIFY(m_portal->settingsRead > 0);
    }

    /// How each tells of each wish.
    void wishScheme(ColorScheme scheme) const
    {
        const bool isDark = scheme == ColorScheme::dark;
        if (m_fake)
            m_fake->setColorScheme(scheme);
        else if (m_portal->settings)
            change(appearanceSpace, "color-scheme", isDark ? 1U : 2U);
        else
            setPalette(isDark);
    }
    static void implementations()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::newRow("fake") << QByteArray("fake");
        QTest::newRow("palette") << QByteArray("palette");
        QTest::newRow("portal") << QByteArray("portal");
        QTest::newRow("portal that is not there") << QByteArray("no portal");
    }
    void makeOne()
    {
        QFETCH(const QByteArray, kind);
        if (kind == "fake") {
            auto fake = std::make_unique<FakeDesktopAppearance>();
            m_fake = fake.get();
            m_appearance = std::move(fake);
        } else if (kind == "palette") {
            m_appearance = std::make_unique<PaletteAppearance>();
        } else if (kind == "portal") {
            startPortal();
        } else {
            m_appearance = portalAppearance();
        }
    }

private Q_SLOTS:
    void init()
    {
        setPalette(false);
        m_portal = std::make_unique<FakePortal>();
        QVERIFY(m_portal->isBusRunning());
    }
    void cleanup()
    {
        m_appearance.reset();
        m_fake = nullptr;
        m_portal.reset();
    }

    void beginsLightWithMotionAndUsualTexts_data() { implementations(); }
    void beginsLightWithMotionAndUsualTexts()
    {
        makeOne();
        QCOMPARE(m_appearance->colorScheme(), ColorScheme::light);
        QVERIFY(!m_appearance->isDark());
        QVERIFY(!m_appearance->reducesMotion());
        QCOMPARE(m_appearance->textScale(), 1.0);
    }

    void tellsOfAnotherSchemeOnce_data() { implementations(); }
    void tellsOfAnotherSchemeOnce()
    {
        makeOne();
        QList<bool> told;
        connect(m_appearance.get(), &DesktopAppearance::colorSchemeChanged, this,
                [this, &told] { told.append(m_appearance->isDark()); });
        wishScheme(ColorScheme::dark);
        QTRY_COMPARE(told, QList<bool>{true});
        wishScheme(ColorScheme::dark);
        wishScheme(ColorScheme::light);
        QTRY_COMPARE(told, QList<bool>({true, false}));
    }

    void tellsOfMotionAndTexts_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::newRow("fake") << QByteArray("fake");
        QTest::newRow("portal") << QByteArray("portal");
    }
    void tellsOfMotionAndTexts()
    {
        makeOne();
        const QSignalSpy motion(m_appearance.get(), &DesktopAppearance::reducesMotionChanged);
        const QSignalSpy texts(m_appearance.get(), &DesktopAppearance::textScaleChanged);
        const auto reduce = [this](bool reduces) {
            if (m_fake)
                m_fake->setReducesMotion(reduces);
            else
                change(gnomeSpace, "enable-animations", !reduces);
        };
        const auto scale = [this](double factor) {
            if (m_fake)
                m_fake->setTextScale(factor);
            else
                change(gnomeSpace, "text-scaling-factor", factor);
        };
        reduce(true);
        QTRY_VERIFY(m_appearance->reducesMotion());
        scale(1.25);
        QTRY_COMPARE(m_appearance->textScale(), 1.25);
        reduce(true);
        scale(1.25);
        reduce(false);
        scale(1);
        QTRY_COMPARE(m_appearance->textScale(), 1.0);
        QVERIFY(!m_appearance->reducesMotion());
        QCOMPARE(motion.size(), 2);
        QCOMPARE(texts.size(), 2);
    }

    void asksThePortalForWhatItUses()
    {
        startPortal({{appearanceSpace, {{u"color-scheme"_s, 1U}}},
                     {gnomeSpace, {{u"enable-animations"_s, false}, {u"text-scaling-factor"_s, 1.3}}}});
        QTRY_VERIFY(m_appearance->isDark());
        QVERIFY(m_appearance->reducesMotion());
        QCOMPARE(m_appearance->textScale(), 1.3);
        QCOMPARE(m_portal->askedSpaces, QStringList({appearanceSpace, gnomeSpace}));
    }

    void schemes_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<bool>("darkOnLight");
        QTest::addColumn<bool>("darkOnDark");
        QTest::newRow("no preference") << QVariant(0U) << false << true;
        QTest::newRow("dark") << QVariant(1U) << true << true;
        QTest::newRow("light") << QVariant(2U) << false << false;
        QTest::newRow("unknown") << QVariant(3U) << false << true;
        QTest::newRow("a text") << QVariant(u"prefer-dark"_s) << false << true;
        QTest::newRow("negative") << QVariant(-1) << false << true;
    }
    /// Where the portal has no preference, the palette tells.
    void schemes()
    {
        QFETCH(const QVariant, value);
        QFETCH(const bool, darkOnLight);
        QFETCH(const bool, darkOnDark);
        startPortal({{appearanceSpace, {{u"color-scheme"_s, value}}},
                     {gnomeSpace, {{u"text-scaling-factor"_s, 1.1}}}});
        QTRY_COMPARE(m_appearance->textScale(), 1.1);
        QCOMPARE(m_appearance->isDark(), darkOnLight);
        setPalette(true);
        QCOMPARE(m_appearance->isDark(), darkOnDark);
    }

    void textScales_data()
    {
        QTest::addColumn<QVariant>("said");
        QTest::addColumn<double>("expected");
        QTest::newRow("usual") << QVariant(1.0) << 1.0;
        QTest::newRow("130 %") << QVariant(1.3) << 1.3;
        QTest::newRow("least") << QVariant(0.8) << 0.8;
        QTest::newRow("less") << QVariant(0.5) << 0.8;
        QTest::newRow("most") << QVariant(1.5) << 1.5;
        QTest::newRow("more") << QVariant(5.0) << 1.5;
        QTest::newRow("zero") << QVariant(0.0) << 1.0;
        QTest::newRow("negative") << QVariant(-2.0) << 1.0;
        QTest::newRow("no number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << 1.0;
        QTest::newRow("infinite") << QVariant(std::numeric_limits<double>::infinity()) << 1.0;
        QTest::newRow("a text") << QVariant(u"large"_s) << 1.0;
    }
    void textScales()
    {
        QFETCH(const QVariant, said);
        QFETCH(const double, expected);
        startPortal(
            {{appearanceSpace, {{u"color-scheme"_s, 1U}}}, {gnomeSpace, {{u"text-scaling-factor"_s, said}}}});
        QTRY_VERIFY(m_appearance->isDark());
        QCOMPARE(m_appearance->textScale(), expected);
    }

    /// Desktops of another make ask for less motion under a key of every desktop.
    void everyDesktopsOwnKeyReducesMotion()
    {
        startPortal();
        change(appearanceSpace, "reduced-motion", 1U);
        QTRY_VERIFY(m_appearance->reducesMotion());
        change(gnomeSpace, "enable-animations", true);
        change(appearanceSpace, "reduced-motion", 0U);
        QTRY_VERIFY(!m_appearance->reducesMotion());
    }

    void otherSettingsAreNone()
    {
        startPortal();
        const QSignalSpy scheme(m_appearance.get(), &DesktopAppearance::colorSchemeChanged);
        change(u"org.example"_s, "color-scheme", 1U);
        change(appearanceSpace, "accent-color", 1U);
        change(gnomeSpace, "color-scheme", u"prefer-dark"_s);
        change(gnomeSpace, "text-scaling-factor", 1.2);
        QTRY_COMPARE(m_appearance->textScale(), 1.2);
        QCOMPARE(scheme.size(), 0);
    }

    void aPortalThatComesLaterIsHeard()
    {
        m_appearance = portalAppearance();
        QTest::qWait(0);
        m_portal->settings = {{appearanceSpace, {{u"color-scheme"_s, 1U}}}};
        QVERIFY(!m_appearance->isDark());
        // Its bus has been joined by a worker at some time; before or after, the portal is found.
        QVERIFY(m_portal->appear());
        QTRY_VERIFY(m_appearance->isDark());
    }

    void whatAPortalHasSaidHoldsWhenItGoes()
    {
        startPortal({{appearanceSpace, {{u"color-scheme"_s, 1U}}}});
        QTRY_VERIFY(m_appearance->isDark());
        const QSignalSpy scheme(m_appearance.get(), &DesktopAppearance::colorSchemeChanged);
        auto watch = m_portal->client();
        m_portal->vanish();
        QTRY_VERIFY(!watch.interface()->isServiceRegistered(u"org.freedesktop.portal.Desktop"_s));
        QTest::qWait(0);
        setPalette(true);
        setPalette(false);
        QVERIFY(m_appearance->isDark());
        QCOMPARE(scheme.size(), 0);
    }

    void aPortalWithoutSettingsLeavesThePalette()
    {
        QVERIFY(m_portal->appear());
        m_appearance = portalAppearance();
        QTRY_VERIFY(m_portal->settingsRead > 0);
        setPalette(true);
        QVERIFY(m_appearance->isDark());
    }

    /// The first frame comes before the answer.
    void aPortalThatSaysNothingHoldsUpNothing()
    {
        m_portal->settings.emplace();
        m_portal->keepsSettings = true;
        QVERIFY(m_portal->appear());
        QElapsedTimer elapsed;
        elapsed.start();
        m_appearance = portalAppearance();
        QVERIFY(elapsed.elapsed() < 1000);
        QTRY_COMPARE(m_portal->settingsRead, 2); // it listens
        setPalette(true);
        QVERIFY(m_appearance->isDark());
        // A change is heard though the question was not answered.
        change(appearanceSpace, "color-scheme", 2U);
        QTRY_VERIFY(!m_appearance->isDark());
    }

    void withoutABusThePaletteTells()
    {
        m_appearance = std::make_unique<PortalAppearance>(
            [] { return QDBusConnection(u"a bus that nobody has joined"_s); });
        setPalette(true);
        QVERIFY(m_appearance->isDark());
    }

    void mayGoBeforeTheAnswer()
    {
        m_portal->settings.emplace();
        m_portal->keepsSettings = true;
        QVERIFY(m_portal->appear());
        m_appearance = portalAppearance();
        m_appearance.reset(); // before the bus is joined
        m_appearance = portalAppearance();
        QTRY_VERIFY(m_portal->settingsRead > 0);
        m_appearance.reset(); // while it is asked
        m_portal->vanish();
        QTest::qWait(0);
    }

    void mayGoWhileItTells()
    {
        startPortal();
        connect(m_appearance.get(), &DesktopAppearance::colorSchemeChanged, this,
                [this] { m_appearance.reset(); });
        change(appearanceSpace, "color-scheme", 1U);
        QTRY_VERIFY(!m_appearance);
    }
};

QTEST_MAIN(DesktopAppearanceTest)
#include "DesktopAppearanceTest.moc"
