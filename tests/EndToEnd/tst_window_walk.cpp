// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/AccessibleWindow.h"
#include "EndToEnd/PressInWindow.h"
#include "EndToEnd/RunningPlayer.h"
#include "EndToEnd/VirtualDisplay.h"
#include "Fixtures/Keyring/PrivateBus.h"
#include "Fixtures/Sound/SoundFiles.h"
#include "Fixtures/Sound/SoundServer.h"

#include <QDir>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

using Item = AccessibleWindow::Item;

AccessibleWindow::Matches isNamed(const QString &name, const QString &role = {})
{
    return
        [name, role](const Item &item) { return item.name == name && (role.isEmpty() || item.role == role); };
}

/// What a person can do something with, and so has to hear the name of.
bool isControl(const Item &item)
{
    static const QStringList roles{u"push button"_s, u"toggle button"_s, u"check box"_s, u"radio button"_s,
                                   u"page tab"_s,    u"slider"_s,        u"menu item"_s, u"list item"_s,
                                   u"combo box"_s,   u"spin button"_s,   u"entry"_s};
    return roles.contains(item.role);
}

} // namespace

/// The whole window as a screen reader is told of it: every place and the player's screens are reached by
/// their names alone, and everything in them that can be pressed has one.
class WindowWalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyPlaceIsReachedByItsName();
    void thePlayerIsWorkedByTheNamesOfItsControls();

private:
    bool press(const AccessibleWindow::Matches &matches);
    /// Names of the controls that are shown; a control without one fails the test.
    QStringList controls(const QString &place);

    SoundFiles m_files;
    std::unique_ptr<QTemporaryDir> m_home;
    std::unique_ptr<VirtualDisplay> m_display;
    std::unique_ptr<SoundServer> m_server;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<AccessibleWindow> m_window;
    std::unique_ptr<RunningPlayer> m_player;
};

void WindowWalkTest::init()
{
    m_home = std::make_unique<QTemporaryDir>();
    m_display = std::make_unique<VirtualDisplay>();
    QVERIFY(m_display->start());
    m_server = std::make_unique<SoundServer>();
    QVERIFY(m_server->start());
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->start());
    m_window = std::make_unique<AccessibleWindow>();
    QVERIFY(m_window->start(*m_bus));
    const QString folder = RunningPlayer::musicFolder(m_home->path());
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::copy(m_files.make(u"a.flac"_s, {{440, 120}}), folder + u"/甲.flac"_s));
    QVERIFY(QFile::copy(m_files.make(u"b.flac"_s, {{880, 120}}), folder + u"/乙.flac"_s));
    m_player = std::make_unique<RunningPlayer>(m_display->name(), m_home->path());
    m_player->setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
    m_player->setVariable(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    QVERIFY(m_player->start());
}

void WindowWalkTest::cleanup()
{
    m_player.reset();
    m_window.reset();
    m_bus.reset();
    m_server.reset();
    m_display.reset();
    m_home.reset();
}

bool WindowWalkTest::press(const AccessibleWindow::Matches &matches)
{
    const std::optional<Item> item = m_window->find(matches);
    if (item)
        m_player->click(item->place.center().x(), item->place.center().y());
    return item.has_value();
}

QStringList WindowWalkTest::controls(const QString &place)
{
    QStringList names;
    for (const Item &item : m_window->items()) {
        if (!isControl(item))
            continue;
        if (item.name.isEmpty())
            QTest::qFail(qPrintable(place + u": "_s + item.role + u" without a name"_s), __FILE__, __LINE__);
        names.append(item.name);
    }
    return names;
}

void WindowWalkTest::everyPlaceIsReachedByItsName()
{
    for (const auto &tab : {u"歌单"_s, u"网盘"_s, u"搜索"_s, u"设置"_s, u"资料库"_s}) {
        QVERIFY2(press(isNamed(tab, u"page tab"_s)), qPrintable(tab));
        // Nothing moves any more once something of the place is found at rest.
        QVERIFY(m_player->standsStill());
        const QStringList names = controls(tab);
        QVERIFY2(names.size() > 5, qPrintable(tab)); // the five tabs, and something of the place
        QVERIFY(names.contains(tab));
    }
    QVERIFY(m_player->stop());
}

void WindowWalkTest::thePlayerIsWorkedByTheNamesOfItsControls()
{
    QVERIFY(press(isRowOf(u"甲"_s)));
    QVERIFY(m_player->says(u"▶️ 播放: 甲"_s));
    m_player->key(u"ctrl+p"_s);
    QVERIFY(m_window->find(isNamed(u"收起"_s)));
    controls(u"正在播放"_s);
    QVERIFY(press(isNamed(u"下一首"_s)));
    QVERIFY(m_player->says(u"▶️ 播放: 乙"_s));
    QVERIFY(press(isNamed(u"暂停"_s)));
    QVERIFY(m_window->find(isNamed(u"播放"_s, u"push button"_s)));
    QVERIFY(press(isNamed(u"歌词"_s)));
    QVERIFY(m_player->standsStill());
    controls(u"歌词"_s);
    QVERIFY(press(isNamed(u"队列"_s)));
    QVERIFY(m_window->find(isNamed(u"清空"_s)));
    controls(u"队列"_s);
    QVERIFY(press(isNamed(u"收起"_s)));
    QVERIFY(m_window->find(isNamed(u"资料库"_s, u"page tab"_s)));
    QVERIFY(m_player->stop());
}

QTEST_GUILESS_MAIN(WindowWalkTest)
#include "tst_window_walk.moc"
