// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/ConsoleLines.h"
#include "Fakes/FakeSystem.h"
#include "Services/AppIconService.h"

#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The choice of the application's icon.
class AppIconServiceTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void startsWithTheIconOfTheSystem();
    void aChosenIconIsTheCurrentOneWithTheNextTurnOfTheLoop();
    void theDefaultIconIsChosenByNoName();
    void aDesktopWithoutAlternateIconsIsToldOf();
    void aFailureIsPrintedAndTheIconStays();
    void theIconStaysUntilTheSystemAnswers();
    void ofTwoChoicesTheLastStays();
    void choosingTheSameAgainPublishesNothing();
    void anAnswerAfterTheEndOfTheServiceIsIgnored();
    void screensChooseByPlainText();
};

void AppIconServiceTest::startsWithTheIconOfTheSystem()
{
    FakeSystem system;
    QCOMPARE(AppIconService(system).currentIconName(), std::nullopt);
    QCOMPARE(AppIconService(system).property("currentIconName").toString(), QString());
    system.iconName = u"AppIcon33"_s;
    QCOMPARE(AppIconService(system).currentIconName(), u"AppIcon33"_s);
    QVERIFY(system.iconsAsked.isEmpty());
}

void AppIconServiceTest::aChosenIconIsTheCurrentOneWithTheNextTurnOfTheLoop()
{
    ConsoleLines lines;
    FakeSystem system;
    AppIconService service(system);
    const QSignalSpy spy(&service, &AppIconService::currentIconNameChanged);
    service.setAppIcon(u"AppIcon22"_s);
    QCOMPARE(system.iconsAsked, QList<std::optional<QString>>{u"AppIcon22"_s});
    QCOMPARE(service.currentIconName(), std::nullopt);
    QTRY_COMPARE(service.currentIconName(), u"AppIcon22"_s);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(lines.take(), QStringList());
}

void AppIconServiceTest::theDefaultIconIsChosenByNoName()
{
    FakeSystem system;
    system.iconName = u"AppIcon44"_s;
    AppIconService service(system);
    service.setAppIcon(std::nullopt);
    QCOMPARE(system.iconsAsked, QList<std::optional<QString>>{std::nullopt});
    QTRY_COMPARE(service.currentIconName(), std::nullopt);
}

void AppIconServiceTest::aDesktopWithoutAlternateIconsIsToldOf()
{
    ConsoleLines lines;
    FakeSystem system;
    system.hasAlternateIcons = false;
    AppIconService service(system);
    service.setAppIcon(u"AppIcon22"_s);
    QCOMPARE(lines.take(), QStringList{u"Alternate icons not supported"_s});
    QVERIFY(system.iconsAsked.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(service.currentIconName(), std::nullopt);
}

void AppIconServiceTest::aFailureIsPrintedAndTheIconStays()
{
    ConsoleLines lines;
    FakeSystem system;
    system.iconName = u"AppIcon33"_s;
    system.iconError = u"No space left on device"_s;
    AppIconService service(system);
    const QSignalSpy spy(&service, &AppIconService::currentIconNameChanged);
    service.setAppIcon(u"AppIcon22"_s);
    QCOMPARE(lines.take(), QStringList{u"Error setting alternate icon: No space left on device"_s});
    QCoreApplication::processEvents();
    QCOMPARE(service.currentIconName(), u"AppIcon33"_s);
    QCOMPARE(spy.count(), 0);
}

void AppIconServiceTest::theIconStaysUntilTheSystemAnswers()
{
    FakeSystem system;
    system.isSlowWithIcons = true;
    AppIconService service(system);
    service.setAppIcon(u"AppIcon22"_s);
    QCoreApplication::processEvents();
    QCOMPARE(service.currentIconName(), std::nullopt);
    system.answerIcons();
    QTRY_COMPARE(service.currentIconName(), u"AppIcon22"_s);
}

void AppIconServiceTest::ofTwoChoicesTheLastStays()
{
    FakeSystem system;
    AppIconService service(system);
    service.setAppIcon(u"AppIcon22"_s);
    service.setAppIcon(u"AppIcon44"_s);
    QTRY_COMPARE(service.currentIconName(), u"AppIcon44"_s);
    QCoreApplication::processEvents();
    QCOMPARE(service.currentIconName(), u"AppIcon44"_s);
}

void AppIconServiceTest::choosingTheSameAgainPublishesNothing()
{
    FakeSystem system;
    system.iconName = u"AppIcon22"_s;
    AppIconService service(system);
    const QSignalSpy spy(&service, &AppIconService::currentIconNameChanged);
    service.setAppIcon(u"AppIcon22"_s);
    QCoreApplication::processEvents();
    QCOMPARE(spy.count(), 0);
    QCOMPARE(system.iconsAsked.size(), 1);
}

void AppIconServiceTest::anAnswerAfterTheEndOfTheServiceIsIgnored()
{
    FakeSystem system;
    system.isSlowWithIcons = true;
    {
        AppIconService service(system);
        service.setAppIcon(u"AppIcon22"_s);
    }
    system.answerIcons();
    QCoreApplication::processEvents();
    QCOMPARE(system.iconName, u"AppIcon22"_s);
}

void AppIconServiceTest::screensChooseByPlainText()
{
    FakeSystem system;
    AppIconService service(system);
    service.choose(u"AppIcon33"_s);
    service.choose(QString());
    const QList<std::optional<QString>> expected{u"AppIcon33"_s, std::nullopt};
    QCOMPARE(system.iconsAsked, expected);
    QCOMPARE(AppIconService::count(), 4);
    QCOMPARE(AppIconService::iconAt(3).imageName, u"AppIcon44"_s);
    QCOMPARE(AppIconService::iconAt(4), AppIcon());
    QCOMPARE(AppIconService::iconAt(-1), AppIcon());
}

QTEST_GUILESS_MAIN(AppIconServiceTest)
#include "tst_app_icon_service.moc"
