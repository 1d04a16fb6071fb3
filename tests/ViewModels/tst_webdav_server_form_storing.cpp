// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ServersBench.h"

#include <QSignalSpy>
#include <QTimer>

using namespace cadorel;
using namespace Qt::StringLiterals;

class WebDAVServerFormStoringTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void savedServerIsListed();
    void emptyPathIsTheRoot();
    void editKeepsIdAndLastSync();
    void storedPasswordIsLoadedBesideTheMainThread();
    void editWithoutTouchingKeepsThePassword();
    void typedPasswordWinsOverALateOne();
    void unreadablePasswordIsSaid_data();
    void unreadablePasswordIsSaid();
    void passwordOfAnotherServerIsNeverMixedIn();
    void savingWaitsForTheStoreAndCanBeLeft();
    void passwordIsGoneAfterClosing();
};

void WebDAVServerFormStoringTest::savedServerIsListed()
{
    ServersBench bench;
    WebDAVServerFormViewModel &form = bench.openFilledForm();
    form.setEnabled(false);
    QSignalSpy saved(&form, &WebDAVServerFormViewModel::saved);
    bench.home.secrets().hold();
    form.save();
    QVERIFY(form.isSaving());
    QVERIFY(!form.canSubmit());
    bench.home.secrets().release();
    QTRY_VERIFY(!form.isOpen());
    QVERIFY(!form.isSaving());
    QCOMPARE(saved.size(), 1);
    QCOMPARE(bench.service().configs().size(), 1);
    const WebDAVConfig config = bench.service().configs().constFirst();
    QCOMPARE(config.name, u"家里的 NAS"_s);
    QCOMPARE(config.basePath, u"/music"_s);
    QVERIFY(!config.isEnabled);
    QVERIFY(!config.lastSyncDate);
    QCOMPARE(bench.home.secrets().secret(config.passwordKeychainKey()), "secret"_ba);
    QCOMPARE(bench.list().count(), 1);
}

void WebDAVServerFormStoringTest::emptyPathIsTheRoot()
{
    ServersBench bench;
    WebDAVServerFormViewModel &form = bench.openFilledForm();
    form.basePath()->edit(u"  "_s);
    form.save();
    QTRY_COMPARE(bench.service().configs().size(), 1);
    QCOMPARE(bench.service().configs().constFirst().basePath, u"/"_s);
}

void WebDAVServerFormStoringTest::editKeepsIdAndLastSync()
{
    ServersBench bench;
    bench.startServers();
    const QString first = bench.addScanned(ServersBench::config(u"甲"_s), {u"a.mp3"_s});
    bench.add(u"乙"_s);
    bench.servers().editServer(first);
    WebDAVServerFormViewModel &form = bench.form();
    QVERIFY(form.isEditing());
    QCOMPARE(form.name()->text(), u"甲"_s);
    QTRY_VERIFY(form.canSubmit());
    form.name()->edit(u"丙"_s);
    const auto lastSync = bench.service().configs().constFirst().lastSyncDate;
    QVERIFY(lastSync);
    form.save();
    QTRY_VERIFY(!form.isOpen());
    QCOMPARE(bench.service().configs().size(), 2);
    QCOMPARE(bench.service().configs().constFirst().uuidText(), first);
    QCOMPARE(bench.service().configs().constFirst().name, u"丙"_s);
    QCOMPARE(bench.service().configs().constFirst().lastSyncDate, lastSync);
}

void WebDAVServerFormStoringTest::storedPasswordIsLoadedBesideTheMainThread()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.add(u"甲"_s);
    bench.home.secrets().hold();
    bench.servers().editServer(id);
    WebDAVServerFormViewModel &form = bench.form();
    QVERIFY(form.isLoadingPassword());
    QVERIFY(!form.canSubmit());
    QTRY_COMPARE(bench.home.secrets().heldCalls(), 1);
    form.save();
    form.test();
    QVERIFY(!form.isSaving());
    QVERIFY(!form.isTesting());
    QVERIFY(form.password()->error().isEmpty());

    // The loop goes round while the store waits.
    int turns = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&turns] { ++turns; });
    timer.start(0);
    QTRY_VERIFY(turns > 10);
    QVERIFY(form.isLoadingPassword());

    bench.home.secrets().release();
    QTRY_VERIFY(!form.isLoadingPassword());
    QCOMPARE(form.password()->text(), u"secret"_s);
    QVERIFY(form.canSubmit());
}

void WebDAVServerFormStoringTest::editWithoutTouchingKeepsThePassword()
{
    ServersBench bench;
    bench.startServers();
    const WebDAVConfig config = ServersBench::config(u"甲"_s);
    bench.add(config, u" 空格 与 @:/ "_s);
    bench.servers().editServer(config.uuidText());
    QTRY_VERIFY(bench.form().canSubmit());
    bench.form().name()->edit(u"乙"_s);
    bench.form().save();
    QTRY_VERIFY(!bench.form().isOpen());
    QCOMPARE(bench.home.secrets().secret(config.passwordKeychainKey()), u" 空格 与 @:/ "_s.toUtf8());
}

void WebDAVServerFormStoringTest::typedPasswordWinsOverALateOne()
{
    ServersBench bench;
    bench.startServers();
    const QString id = bench.add(u"甲"_s);
    bench.home.secrets().hold();
    bench.servers().editServer(id);
    WebDAVServerFormViewModel &form = bench.form();
    form.password()->edit(u"new"_s);
    QVERIFY(form.canSubmit());
    bench.home.secrets().release();
    QTRY_VERIFY(!form.isLoadingPassword());
    QCOMPARE(form.password()->text(), u"new"_s);
}

void WebDAVServerFormStoringTest::unreadablePasswordIsSaid_data()
{
    QTest::addColumn<SecretStatus>("status");
    QTest::addColumn<QString>("hint");
    QTest::newRow("none stored") << SecretStatus::itemNotFound << u"没有保存过密码，请重新填写"_s;
    QTest::newRow("prompt dismissed") << SecretStatus::userCancelled << u"无法读取已保存的密码，请重新填写"_s;
    QTest::newRow("no store") << SecretStatus::notAvailable << u"无法读取已保存的密码，请重新填写"_s;
}

void WebDAVServerFormStoringTest::unreadablePasswordIsSaid()
{
    QFETCH(const SecretStatus, status);
    ServersBench bench;
    bench.startServers();
    const QString id = bench.add(u"甲"_s);
    bench.home.secrets().answer(FakeSecretStore::Operation::copy, status);
    bench.servers().editServer(id);
    WebDAVServerFormViewModel &form = bench.form();
    QTRY_VERIFY(!form.isLoadingPassword());
    QTEST(form.password()->hint(), "hint");
    QVERIFY(form.canSubmit());
    form.save();
    QCOMPARE(form.password()->error(), u"请填写密码"_s);
    QVERIFY(form.isOpen());
}

void WebDAVServerFormStoringTest::passwordOfAnotherServerIsNeverMixedIn()
{
    ServersBench bench;
    bench.startServers();
    const WebDAVConfig first = ServersBench::config(u"甲"_s);
    const WebDAVConfig second = ServersBench::config(u"乙"_s);
    bench.add(first, u"first"_s);
    bench.add(second, u"second"_s);
    bench.home.secrets().hold();
    WebDAVServerFormViewModel &form = bench.form();
    bench.servers().editServer(first.uuidText());
    QTRY_COMPARE(bench.home.secrets().heldCalls(), 1);
    form.cancel();
    QVERIFY(!form.isLoadingPassword());
    bench.servers().editServer(second.uuidText());
    QStringList seen;
    connect(form.password(), &FormTextInput::textChanged, &form,
            [&seen, &form] { seen.append(form.password()->text()); });
    bench.home.secrets().release();
    QTRY_COMPARE(form.password()->text(), u"second"_s);
    QVERIFY(!seen.contains(u"first"_s));
}

void WebDAVServerFormStoringTest::savingWaitsForTheStoreAndCanBeLeft()
{
    ServersBench bench;
    WebDAVServerFormViewModel &form = bench.openFilledForm();
    bench.home.secrets().hold();
    form.save();
    QTRY_COMPARE(bench.home.secrets().heldCalls(), 1);
    QVERIFY(form.isSaving());
    form.save();
    form.cancel();
    QVERIFY(!form.isOpen());
    QVERIFY(!form.isSaving());
    bench.servers().addServer();
    bench.home.secrets().release();
    QTRY_COMPARE(bench.service().configs().size(), 1);
    // The form that is open now is another one.
    settle();
    QVERIFY(form.isOpen());
}

void WebDAVServerFormStoringTest::passwordIsGoneAfterClosing()
{
    ServersBench bench;
    WebDAVServerFormViewModel &form = bench.openFilledForm();
    form.cancel();
    QCOMPARE(form.password()->text(), QString());
    bench.servers().addServer();
    QCOMPARE(form.password()->text(), QString());
    QCOMPARE(form.username()->text(), QString());
}

QTEST_GUILESS_MAIN(WebDAVServerFormStoringTest)
#include "tst_webdav_server_form_storing.moc"
