// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/OnlineBench.h"

#include <QSignalSpy>

using namespace cadorel;
using namespace Qt::StringLiterals;

class APISettingsViewModelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { t = std::make_unique<OnlineBench>(); }
    void cleanup() { t.reset(); }
    void formComesUpWithTheAddressInUse();
    void savedAddressIsTrimmedAndUsedAtOnce();
    void savingClearsTheChartsSoThatTheNextScreenLoadsThemFromTheNewServer();
    void addressThatIsNoneBringsUpTheAlertAndKeepsTheOldOne_data();
    void addressThatIsNoneBringsUpTheAlertAndKeepsTheOldOne();
    void resetGoesBackToTheDefaultAndClearsTheCharts();
    void testAsksForTheChartsOfTheFirstPlatform();
    void testAsksNothingWhereTheChartsAreKnown();
    void testLeavesTheFormAsItIs();
    void typedAddressIsForgottenWhenTheFormComesUpAgain();
    void coversOfListedSongsFollowTheAddress();

private:
    std::unique_ptr<OnlineBench> t;
};

void APISettingsViewModelTest::formComesUpWithTheAddressInUse()
{
    QVERIFY(!t->settings().isOpen());
    t->settings().open();
    QVERIFY(t->settings().isOpen());
    QCOMPARE(t->settings().tempURL()->text(), u"https://api.example"_s);
    QVERIFY(!t->settings().showInvalidURLAlert());
    QVERIFY(!t->settings().showResetAlert());
}

void APISettingsViewModelTest::savedAddressIsTrimmedAndUsedAtOnce()
{
    t->settings().open();
    t->settings().tempURL()->edit(u" \n https://other.example/music/ \t"_s);
    t->settings().saveURL();
    QCOMPARE(t->apiConfig().baseURL(), u"https://other.example/music/"_s);
    QVERIFY(!t->settings().showInvalidURLAlert());
    QVERIFY(t->settings().tempURL()->hint().contains(u"已保存"_s));
    t->searchFor(u"a"_s);
    QVERIFY(t->lastAddress().startsWith(u"https://other.example/music/api/?"_s));
    // Typing on takes back that it is saved.
    t->settings().tempURL()->edit(u"https://other.example/musi"_s);
    QCOMPARE(t->settings().tempURL()->hint(), QString());
}

void APISettingsViewModelTest::savingClearsTheChartsSoThatTheNextScreenLoadsThemFromTheNewServer()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    t->charts().close();
    t->settings().open();
    t->settings().tempURL()->edit(u"http://new.example"_s);
    t->settings().saveURL();
    QVERIFY(t->service().topLists().isEmpty());
    QCOMPARE(t->sent(), 1); // nobody looks at the charts
    t->charts().open();
    QCOMPARE(t->lastAddress(), u"http://new.example/api/?source=netease&type=toplists"_s);
}

void APISettingsViewModelTest::addressThatIsNoneBringsUpTheAlertAndKeepsTheOldOne_data()
{
    QTest::addColumn<QString>("address");
    QTest::newRow("another scheme") << u"ftp://other.example"_s;
    QTest::newRow("scheme in capitals") << u"HTTPS-not://other.example"_s;
    QTest::newRow("no scheme") << u"other.example"_s;
    QTest::newRow("blanks") << u"   "_s;
    QTest::newRow("nothing") << QString();
}

void APISettingsViewModelTest::addressThatIsNoneBringsUpTheAlertAndKeepsTheOldOne()
{
    QFETCH(const QString, address);
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    QSignalSpy alert(&t->settings(), &APISettingsViewModel::showInvalidURLAlertChanged);
    t->settings().open();
    t->settings().tempURL()->edit(address);
    t->settings().saveURL();
    QVERIFY(t->settings().showInvalidURLAlert());
    QCOMPARE(alert.size(), 1);
    QCOMPARE(t->apiConfig().baseURL(), u"https://api.example"_s);
    QCOMPARE(t->settings().tempURL()->text(), address);
    QCOMPARE(t->service().topLists().size(), 1);
    t->settings().setShowInvalidURLAlert(false);
    QVERIFY(!t->settings().showInvalidURLAlert());
}

void APISettingsViewModelTest::resetGoesBackToTheDefaultAndClearsTheCharts()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({OnlineBench::chart(u"a"_s)}));
    t->charts().close();
    t->settings().open();
    t->settings().tempURL()->edit(u"https://half.typ"_s);
    t->settings().setShowResetAlert(true);
    QCOMPARE(t->apiConfig().baseURL(), u"https://api.example"_s); // asked first
    t->settings().reset();
    QCOMPARE(t->apiConfig().baseURL(), APIConfigService::defaultBaseURL);
    QCOMPARE(t->settings().tempURL()->text(), APIConfigService::defaultBaseURL);
    QVERIFY(t->service().topLists().isEmpty());
}

void APISettingsViewModelTest::testAsksForTheChartsOfTheFirstPlatform()
{
    t->settings().open();
    t->settings().testConnection();
    QCOMPARE(t->sent(), 1);
    QCOMPARE(t->lastAddress(), u"https://api.example/api/?source=netease&type=toplists"_s);
}

void APISettingsViewModelTest::testAsksNothingWhereTheChartsAreKnown()
{
    t->charts().open();
    t->answer(onlineAnswers::charts({}));
    t->settings().open();
    t->settings().testConnection();
    QCOMPARE(t->sent(), 1);
}

void APISettingsViewModelTest::testLeavesTheFormAsItIs()
{
    t->settings().open();
    t->settings().tempURL()->edit(u"https://half.typ"_s);
    t->settings().testConnection();
    t->answer(onlineAnswers::broken(u"no"_s));
    QCOMPARE(t->settings().tempURL()->text(), u"https://half.typ"_s);
    QCOMPARE(t->settings().tempURL()->error(), QString());
    QCOMPARE(t->settings().tempURL()->hint(), QString());
    QVERIFY(!t->settings().showInvalidURLAlert());
    QVERIFY(!t->service().searchError());
}

void APISettingsViewModelTest::typedAddressIsForgottenWhenTheFormComesUpAgain()
{
    t->settings().open();
    t->settings().tempURL()->edit(u"https://half.typ"_s);
    t->settings().close();
    QCOMPARE(t->apiConfig().baseURL(), u"https://api.example"_s);
    t->settings().open();
    QCOMPARE(t->settings().tempURL()->text(), u"https://api.example"_s);
}

void APISettingsViewModelTest::coversOfListedSongsFollowTheAddress()
{
    t->searchFor(u"a"_s);
    t->answer(onlineAnswers::found(onlineSongs({u"1"_s, u"2"_s})));
    const auto cover = [this] {
        return t->search().songs()->index(0).data(OnlineSongListModel::CoverSourceRole).toString();
    };
    const QString before = cover();
    QVERIFY(before.startsWith(u"image://"_s));
    QVERIFY(!before.contains(u"api.example"_s));
    QSignalSpy changes(t->search().songs(), &QAbstractItemModel::dataChanged);
    t->apiConfig().setBaseURL(u"https://other.example"_s);
    QCOMPARE(changes.size(), 1);
    QVERIFY(cover() != before);
}

QTEST_GUILESS_MAIN(APISettingsViewModelTest)
#include "tst_api_settings_view_model.moc"
