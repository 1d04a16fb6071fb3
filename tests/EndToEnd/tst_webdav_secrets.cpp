// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/AccessibleWindow.h"
#include "EndToEnd/PressInWindow.h"
#include "EndToEnd/RunningPlayer.h"
#include "EndToEnd/SecretWatch.h"
#include "EndToEnd/VirtualDisplay.h"
#include "Fixtures/Keyring/KeyringSession.h"
#include "Fixtures/Sound/Recorder.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/Linux/LibsecretStore.h"
#include "Servers/DavTree.h"
#include "Servers/WebDAVServer.h"

#include <QDBusMessage>
#include <QDir>
#include <QTest>
#include <QTimer>

using namespace cadorel;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr float audible = 0.01F;

const QString user = u"lauscher@heim"_s;
const QString password = u"Kp7Zxw9@Qd4Tvmc/Hb2Rsnf%41密钥"_s;
const QString wrongPassword = u"Gm3Wlk8@Xc6Pyjd/Vf5Nztq%2F错误"_s;
const QString newPassword = u"Rt9Bhs4@Ju7Eaxw/Ld3Mqvp%钥匙"_s;
const QString otherCharacters = u"密钥错误匙"_s;

} // namespace

/// That a server's password is where it belongs and nowhere else, over a whole session of the real program.
class WebDAVSecretsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyFormIsFound_data();
    void everyFormIsFound();
    void whatIsPlantedIsFound();
    void thePasswordIsInTheKeyringAlone();
    void withoutAKeyringThePasswordIsInItsFileAlone();

    void init();
    void cleanup();

private:
    QByteArray song(const QString &name, double hertz);
    /// Everything that a listener does with a server, from adding it to a new password. @param session the
    /// bus that the player is on
    void useServer(PrivateBus &session);
    void addAndScan();
    void play();
    void changePassword(const QString &changed);
    bool press(const AccessibleWindow::Matches &matches)
    {
        return pressInWindow(*m_window, *m_player, matches);
    }
    bool press(const QString &name) { return press(isNamed(name)); }
    /// Writes over what a field holds.
    bool fill(const QString &label, const QString &text);
    /// Looks wherever the player may have left something.
    void look(const QStringList &except = {});
    QString passwordFile() const { return m_home->filePath(u".local/share/cadorel/secrets.json"_s); }

    SoundFiles m_files;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<VirtualDisplay> m_display;
    std::unique_ptr<SoundServer> m_sound;
    std::unique_ptr<Recorder> m_recorder;
    std::unique_ptr<DavTree> m_tree;
    std::unique_ptr<WebDAVServer> m_server;
    std::unique_ptr<RunningPlayer> m_player;
    std::unique_ptr<AccessibleWindow> m_window;
    std::unique_ptr<SecretWatch> m_watch;
    std::unique_ptr<SecretWatch> m_readerWatch;
    QTimer m_sampling;
};

void WebDAVSecretsTest::init()
{
    if (QTest::currentTestFunction() == "everyFormIsFound"_ba)
        return;
    m_home = std::make_unique<QTemporaryDir>();
    m_display = std::make_unique<VirtualDisplay>();
    QVERIFY(m_display->start());
    QVERIFY(m_display->addKeys(otherCharacters));
    m_sound = std::make_unique<SoundServer>();
    QVERIFY(m_sound->start());
    m_recorder = std::make_unique<Recorder>(*m_sound);
    m_tree = std::make_unique<DavTree>();
    m_server = WebDAVServer::make(u"apache"_s);
    m_watch = std::make_unique<SecretWatch>(QStringList{password, wrongPassword, newPassword});
    // Who reads the window aloud hears no password.
    m_readerWatch = std::make_unique<SecretWatch>(QStringList{password, wrongPassword, newPassword});
    m_window = std::make_unique<AccessibleWindow>();
    m_player = std::make_unique<RunningPlayer>(m_display->name(), m_home->path());
    QVERIFY(QDir(m_home->path()).mkdir(u"temporary"_s));
    m_player->setVariable(u"TMPDIR"_s, m_home->filePath(u"temporary"_s));
    m_sampling.callOnTimeout(this, [this] {
        if (!m_player || !m_player->isRunning())
            return;
        m_watch->lookAtProcess(m_player->processId());
        m_watch->lookAtWindows(m_player->environment());
    });
}

void WebDAVSecretsTest::cleanup()
{
    m_sampling.stop();
    m_sampling.disconnect();
    m_player.reset();
    m_readerWatch.reset();
    m_window.reset();
    m_watch.reset();
    m_server.reset();
    m_tree.reset();
    m_recorder.reset();
    m_sound.reset();
    m_display.reset();
    m_home.reset();
}

void WebDAVSecretsTest::everyFormIsFound_data()
{
    QTest::addColumn<QByteArray>("leak");
    const QByteArray utf8 = password.toUtf8();
    for (const SecretForms::Form &form : SecretForms(password).forms())
        QTest::addRow("%s", qPrintable(form.name)) << form.bytes;
    QTest::newRow("percent-encoded") << utf8.toPercentEncoding();
    QByteArray lowerCase;
    for (const char c : utf8)
        lowerCase += '%' + QByteArray(1, c).toHex();
    QTest::newRow("percent-encoded, lower case") << lowerCase;
    QTest::newRow("percent-encoded in part") << utf8.toPercentEncoding("@/");
    QTest::newRow("percent-encoded twice") << utf8.toPercentEncoding().toPercentEncoding();
    for (const QByteArray &name : {"a"_ba, "ab"_ba, "abc"_ba})
        QTest::addRow("header of %s", name.constData()) << "Basic " + (name + ':' + utf8).toBase64();
}

void WebDAVSecretsTest::everyFormIsFound()
{
    QFETCH(QByteArray, leak);
    const SecretForms forms(password);
    QVERIFY(!forms.in("before " + leak + " behind").isEmpty());
    QVERIFY(forms.in("before " + leak.first(4) + " behind").isEmpty());
}

void WebDAVSecretsTest::whatIsPlantedIsFound()
{
    PrivateBus bus;
    QVERIFY(bus.start());
    QVERIFY(m_watch->watchBus(bus));
    m_player->setVariable(u"PLANTED"_s, password);
    QVERIFY(m_player->start());
    m_watch->lookAtProcess(m_player->processId());
    QVERIFY2(m_watch->findings().contains(u"environment: UTF-8"_s),
             qPrintable(m_watch->findings().join(u'\n')));

    QProcess tool;
    tool.setProcessEnvironment(m_player->environment());
    tool.start(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"Tarnova"_s, u"set_window"_s,
                              u"--name"_s, password});
    QVERIFY(tool.waitForFinished() && tool.exitCode() == 0);
    m_watch->lookAtWindows(m_player->environment());
    QVERIFY(m_watch->findings().contains(u"title of a window: UTF-8"_s));

    QDBusMessage message = QDBusMessage::createSignal(u"/planted"_s, u"com.cadorel.Test"_s, u"Planted"_s);
    message << password << password.toUtf8();
    QVERIFY(bus.connection(u"planting"_s).send(message));
    QVERIFY(m_watch->lookAtBus());
    QVERIFY(m_watch->findings().contains(u"bus: UTF-8"_s));

    QFile file(m_home->filePath(u".planted"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("xy" + password.toUtf8());
    file.close();
    m_watch->lookAtFiles(m_home->path());
    QVERIFY(m_watch->findings().contains(u".planted: UTF-8"_s));
    QVERIFY(m_player->stop());
}

QByteArray WebDAVSecretsTest::song(const QString &name, double hertz)
{
    QFile file(m_files.make(name, {{hertz, 20}}));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool WebDAVSecretsTest::fill(const QString &label, const QString &text)
{
    if (!press(isField(label)))
        return false;
    m_player->key(u"ctrl+a"_s);
    m_player->type(text);
    return true;
}

void WebDAVSecretsTest::look(const QStringList &except)
{
    m_watch->lookAt(u"output"_s, m_player->output().toUtf8());
    m_watch->lookAtFiles(m_home->path(), except);
}

void WebDAVSecretsTest::addAndScan()
{
    QVERIFY(press(isNamed(u"网盘"_s, u"page tab"_s)));
    QVERIFY(press(u"添加服务器"_s));
    QVERIFY(press(isNamed(u"添加 WebDAV"_s, u"menu item"_s)));
    QVERIFY(fill(u"名称"_s, u"NAS"_s));
    QVERIFY(fill(u"服务器地址"_s, m_server->address().toString()));
    QVERIFY(fill(u"用户名"_s, user));
    QVERIFY(fill(u"密码"_s, password));
    QVERIFY(press(u"测试连接"_s));
    // It was typed as it is.
    QVERIFY(m_player->says(u"📡 HTTP Status: 207"_s));
    QVERIFY(press(u"保存"_s));
    QVERIFY(m_player->says(u"✓ WebDAV: 保存配置 - NAS"_s));
    QVERIFY(press([](const AccessibleWindow::Item &item) { return item.name.startsWith(u"NAS，"_s); }));
    QVERIFY(press(u"扫描"_s));
    QVERIFY(m_player->says(u"✅ WebDAV: 扫描完成，共 3 首歌曲"_s));
}

void WebDAVSecretsTest::play()
{
    m_recorder->clear();
    QVERIFY(press(isRowOf(u"甲"_s)));
    QVERIFY(m_player->says(u"✅ WebDAV Streaming: 下载完成"_s));
    QVERIFY(m_player->says(u"💾 WebDAV: 后台缓存完成 - 甲.flac"_s));
    QVERIFY(m_recorder->hearSound(audible, 10s));
}

void WebDAVSecretsTest::changePassword(const QString &changed)
{
    QVERIFY(press(u"更多操作"_s));
    QVERIFY(press(isNamed(u"编辑"_s, u"menu item"_s)));
    QVERIFY(fill(u"密码"_s, changed));
    QVERIFY(press(u"保存"_s));
    QVERIFY(m_player->says(u"✓ WebDAV: 保存配置 - NAS"_s));
}

void WebDAVSecretsTest::useServer(PrivateBus &session)
{
    QVERIFY(m_window->start(session));
    QVERIFY(m_readerWatch->watchBus(m_window->bus()));
    for (const auto &[name, hertz] :
         {std::pair{u"甲.flac"_s, 500.0}, std::pair{u"乙.flac"_s, 900.0}, std::pair{u"丙.flac"_s, 1300.0}})
        m_tree->addFile(name, song(name, hertz));
    QVERIFY(m_server->start(m_tree->root(), user, password));
    QVERIFY(m_player->start());
    m_sampling.start(500ms);
    addAndScan();
    play();
    changePassword(wrongPassword);
    QVERIFY(press(u"扫描"_s));
    QVERIFY(m_player->says(u"📡 HTTP Status: 401"_s));
    QVERIFY(m_player->says(u"❌ WebDAV: 扫描失败"_s));
    m_server->stop();
    m_player->key(u"ctrl+Right"_s);
    QVERIFY(m_player->says(u"❌ WebDAV Streaming: 下载失败"_s));
    changePassword(newPassword);
}

void WebDAVSecretsTest::thePasswordIsInTheKeyringAlone()
{
    KeyringSession keyring;
    QVERIFY(keyring.start());
    QVERIFY(m_watch->watchBus(keyring.bus()));
    m_player->setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, QString::fromUtf8(keyring.busAddress()));
    useServer(keyring.bus());
    if (QTest::currentTestFailed())
        return;
    look(); // with what the preferences keep beside their file while the program runs
    QVERIFY(m_player->stop());
    look();
    QVERIFY(m_watch->lookAtBus());
    QCOMPARE(m_watch->findings(), QStringList());
    QVERIFY(m_readerWatch->lookAtBus());
    QCOMPARE(m_readerWatch->findings(), QStringList());
    QVERIFY(!QFile::exists(passwordFile()));

    const QString &output = m_player->output();
    const QString prefix = u"webdav_password_"_s;
    constexpr int uuidLength = 36;
    const QString account = output.mid(output.indexOf(prefix), prefix.size() + uuidLength);
    LibsecretStore store(LibsecretStore::answerLimit, keyring.busAddress());
    const auto kept = store.copy(u"com.cadorel"_s, account);
    QVERIFY(kept.has_value());
    QVERIFY(*kept == newPassword.toUtf8());
    QCOMPARE(keyring.itemCount(u"com.cadorel"_s, account), 1);
}

void WebDAVSecretsTest::withoutAKeyringThePasswordIsInItsFileAlone()
{
    PrivateBus bus;
    QVERIFY(bus.start());
    QVERIFY(m_watch->watchBus(bus));
    m_player->setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    useServer(bus);
    if (QTest::currentTestFailed())
        return;
    look({passwordFile()});
    QVERIFY(m_player->stop());
    look({passwordFile()});
    QVERIFY(m_watch->lookAtBus());
    QCOMPARE(m_watch->findings(), QStringList());
    QVERIFY(m_readerWatch->lookAtBus());
    QCOMPARE(m_readerWatch->findings(), QStringList());

    QFile file(passwordFile());
    QVERIFY(file.open(QIODevice::ReadOnly));
    constexpr auto owner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QCOMPARE(file.permissions(), owner);
    const QByteArray secrets = file.readAll();
    QVERIFY(!SecretForms(newPassword).in(secrets).isEmpty());
    QVERIFY(SecretForms(password).in(secrets).isEmpty());
    QVERIFY(SecretForms(wrongPassword).in(secrets).isEmpty());
}

QTEST_GUILESS_MAIN(WebDAVSecretsTest)
#include "tst_webdav_secrets.moc"
