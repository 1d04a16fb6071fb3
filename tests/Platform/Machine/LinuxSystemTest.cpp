// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LinuxSystem.h"

#include <QDesktopServices>
#include <QTemporaryDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class LinuxSystemTest : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void remember(const QUrl &url) { m_opened.append(url); }

private Q_SLOTS:
    void opensAddressesWithTheDesktop();
    void doesNotOpenWhatIsNotThere();
    void describesTheMachine();
    void aDesktopWhoseWindowsBringNoIconHasNoAlternateOnes();

private:
    QTemporaryDir m_home;
    QList<QUrl> m_opened;
};

void LinuxSystemTest::opensAddressesWithTheDesktop()
{
    QDesktopServices::setUrlHandler(u"cadorel-test"_s, this, "remember");
    const QUrl url(u"cadorel-test://host/a%20b?q=1"_s);
    const bool isOpened = LinuxSystem(m_home.path()).open(url);
    QDesktopServices::unsetUrlHandler(u"cadorel-test"_s);
    QVERIFY(isOpened);
    QCOMPARE(m_opened, QList<QUrl>{url});
}

void LinuxSystemTest::doesNotOpenWhatIsNotThere()
{
    const QTemporaryDir directory;
    m_opened.clear();
    QDesktopServices::setUrlHandler(u"file"_s, this, "remember");
    LinuxSystem system(m_home.path());
    const bool isMissingOpened = system.open(QUrl::fromLocalFile(directory.filePath(u"missing"_s)));
    const bool isFolderOpened = system.open(QUrl::fromLocalFile(directory.path()));
    QDesktopServices::unsetUrlHandler(u"file"_s);
    QVERIFY(!isMissingOpened);
    QVERIFY(isFolderOpened);
    QCOMPARE(m_opened, QList<QUrl>{QUrl::fromLocalFile(directory.path())});
    QVERIFY(!system.open(QUrl()));
    QVERIFY(!system.open(QUrl(u"http://:bad port/"_s)));
}

void LinuxSystemTest::describesTheMachine()
{
    const LinuxSystem system(m_home.path());
    QVERIFY(!system.deviceModel().isEmpty());
    QVERIFY(!system.systemVersion().isEmpty());
    QVERIFY(system.systemVersion() != u"unknown"_s);
    QCOMPARE(system.applicationVersion(), QString::fromLatin1(CADOREL_VERSION));
}

void LinuxSystemTest::aDesktopWhoseWindowsBringNoIconHasNoAlternateOnes()
{
    QFile chosen(m_home.filePath(u"alternate-icon"_s));
    QVERIFY(chosen.open(QIODevice::WriteOnly) && chosen.write("AppIcon22") > 0);
    chosen.close();
    LinuxSystem system(m_home.path());
    QVERIFY(!system.supportsAlternateIcons());
    QCOMPARE(system.alternateIconName(), std::nullopt);
    std::optional<QString> failure;
    system.setAlternateIconName(std::nullopt,
                                [&failure](const std::optional<QString> &error) { failure = error; });
    QVERIFY(failure && !failure->isEmpty());
    // Another session of the same listener may have windows with icons.
    QVERIFY(chosen.exists());
}

QTEST_MAIN(LinuxSystemTest)
#include "LinuxSystemTest.moc"
