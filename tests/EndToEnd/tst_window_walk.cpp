// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/AccessibleWindow.h"
#include "EndToEnd/PressInWindow.h"
#include "EndToEnd/RunningPlayer.h"
#include "EndToEnd/VirtualDisplay.h"
#include "Fixtures/Keyring/PrivateBus.h"
#include "Fixtures/MadeSong.h"
#include "Fixtures/Sound/SoundServer.h"

#include <QDir>
#include <QTest>

#include <algorithm>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

using Item = AccessibleWindow::Item;

constexpr int limitMs = 20'000;

/// What a person can do something with, and so has to hear the name of.
bool isControl(const Item &item)
{
    static const QStringList roles{u"push button"_s, u"toggle button"_s, u"check box"_s, u"radio button"_s,
                                   u"page tab"_s,    u"slider"_s,        u"menu item"_s, u"list item"_s,
                                   u"combo box"_s,   u"spin button"_s,   u"entry"_s,     u"text"_s};
    return roles.contains(item.role);
}

} // namespace

/// The whole window as a screen reader is told of it: every place, page and sheet is reached and worked by
/// its name and by what it offers, without a mouse, and everything in them that can be pressed has both.
class WindowWalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everyPlaceIsReachedByItsName();
    void thePlayerIsWorkedByTheNamesOfItsControls();
    void theDiscOpensThePlayerAndItsFiveActionsWork();
    void theSheetsOfThePlayerAreWorked();
    void theEqualizerIsWorked();
    void thePagesOfTheSettingsAreWorked();
    void anotherLookLeavesTheReaderAWholeWindow();
    void aPlaylistIsMadeOpenedAndDeleted();
    void aServerIsSetUpAndOpened();

private:
    /// Does what a control offers by that name, as soon as it can; no mouse comes near.
    bool act(const AccessibleWindow::Matches &matches, const QString &action = u"Press"_s);
    bool act(const QString &name, const QString &action = u"Press"_s) { return act(isNamed(name), action); }
    bool shows(const AccessibleWindow::Matches &matches) { return m_window->find(matches).has_value(); }
    bool shows(const QString &name) { return shows(isNamed(name)); }
    /// Something is shown no more.
    bool hides(const QString &name);
    bool openTab(const QString &name) { return act(isNamed(name, u"page tab"_s)); }
    bool playFirstSong();
    bool openPlayer();
    /// Names of the controls that are shown, once that control of the place is among them. A control without
    /// a name fails the test, and so does one that neither Press nor anything else works.
    QStringList controls(const QString &place, const AccessibleWindow::Matches &ofPlace);
    QStringList controls(const QString &place, const QString &ofPlace)
    {
        return controls(place, isNamed(ofPlace));
    }
    /// What offers nothing may have gone since it was read.
    bool isStillThere(const Item &item);

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
    for (const auto &[title, hertz] : {std::pair{u"甲"_s, 440}, std::pair{u"乙"_s, 880}})
        QVERIFY(
            makeSong(folder + u'/' + title + u".mp3"_s, {.title = title,
                                                         .artist = u"歌手"_s,
                                                         .album = u"专辑"_s,
                                                         .lyrics = {u"[00:01.00]第一句\n[00:09.00]第二句"_s},
                                                         .seconds = 120,
                                                         .frequency = hertz}));
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

bool WindowWalkTest::act(const AccessibleWindow::Matches &matches, const QString &action)
{
    const std::optional<Item> item = m_window->find(matches);
    return item && m_window->act(*item, action);
}

bool WindowWalkTest::hides(const QString &name)
{
    const auto isGone = [&] {
        const std::optional<QList<Item>> items = m_window->items();
        return items && std::ranges::none_of(*items, [&name](const Item &item) { return item.name == name; });
    };
    return QTest::qWaitFor(isGone, limitMs);
}

bool WindowWalkTest::playFirstSong()
{
    return act(isRowOf(u"甲"_s)) && m_player->says(u"▶️ 播放: 甲"_s);
}

bool WindowWalkTest::openPlayer()
{
    return act(isDisc) && shows(u"收起"_s);
}

bool WindowWalkTest::isStillThere(const Item &item)
{
    std::optional<QList<Item>> items;
    const bool isRead = QTest::qWaitFor([&] { return (items = m_window->items()).has_value(); }, limitMs);
    return !isRead || std::ranges::any_of(*items, [&](const Item &now) { return now.path == item.path; });
}

QStringList WindowWalkTest::controls(const QString &place, const AccessibleWindow::Matches &ofPlace)
{
    // Each place has more than the five tabs, and so has the player.
    constexpr int least = 6;
    QList<Item> found;
    const auto isWhole = [&] {
        found = m_window->items().value_or(QList<Item>());
        found.removeIf([](const Item &item) { return !isControl(item); });
        return found.size() >= least && std::ranges::any_of(found, ofPlace);
    };
    if (!QTest::qWaitFor(isWhole, limitMs))
        QTest::qFail(qPrintable(place + u" has next to nothing"_s), __FILE__, __LINE__);
    QStringList names;
    for (const Item &item : std::as_const(found)) {
        const QString what = place + u": "_s + item.role + u' ' + item.name;
        const bool isField = item.role == "text"_L1;
        if (item.name.isEmpty() && !(isField && !item.parentName.isEmpty()))
            QTest::qFail(qPrintable(what + u" has no name"_s), __FILE__, __LINE__);
        if (!isField && m_window->actions(item).isEmpty() && isStillThere(item))
            QTest::qFail(qPrintable(what + u" offers nothing"_s), __FILE__, __LINE__);
        names.append(item.name);
    }
    return names;
}

void WindowWalkTest::everyPlaceIsReachedByItsName()
{
    using Place = std::pair<QString, AccessibleWindow::Matches>;
    const QList<Place> places{{u"歌单"_s, isNamed(u"新建歌单"_s)},
                              {u"网盘"_s, isNamed(u"添加服务器"_s)},
                              {u"搜索"_s, isField(u"搜索歌曲、艺术家、专辑"_s)},
                              {u"设置"_s, isNamed(u"外观与主题"_s)},
                              {u"资料库"_s, isRowOf(u"甲"_s)}};
    for (const auto &[tab, ofPlace] : places) {
        QVERIFY2(openTab(tab), qPrintable(tab));
        QVERIFY2(shows(isNamed(tab, u"heading"_s)), qPrintable(tab));
        const QStringList names = controls(tab, ofPlace);
        QVERIFY2(names.size() > 5, qPrintable(tab)); // the five tabs, and something of the place
        QVERIFY(names.contains(tab));
    }
    QVERIFY(m_player->stop());
}

void WindowWalkTest::thePlayerIsWorkedByTheNamesOfItsControls()
{
    QVERIFY(playFirstSong());
    QVERIFY(openPlayer());
    controls(u"正在播放"_s, u"更多选项"_s);
    QVERIFY(act(u"下一首"_s));
    QVERIFY(m_player->says(u"▶️ 播放: 乙"_s));
    QVERIFY(act(u"暂停"_s));
    QVERIFY(act(isNamed(u"播放"_s, u"push button"_s)));
    QVERIFY(shows(u"暂停"_s));
    QVERIFY(act(u"喜欢"_s));
    QVERIFY(shows(u"取消喜欢"_s));
    QVERIFY(act(u"顺序播放"_s));
    QVERIFY(hides(u"顺序播放"_s));
    QVERIFY(act(isNamed(u"歌词"_s, u"page tab"_s)));
    QVERIFY(shows(u"第一句"_s));
    controls(u"歌词"_s, u"第一句"_s);
    QVERIFY(act(isNamed(u"队列"_s, u"push button"_s)));
    QVERIFY(shows(isRowOf(u"乙"_s)));
    controls(u"队列"_s, isRowOf(u"乙"_s));
    QVERIFY(act(isRowOf(u"甲"_s)));
    QVERIFY(m_player->says(u"▶️ 播放: 甲"_s));
    QVERIFY(act(u"清空"_s));
    QVERIFY(shows(u"播放队列为空"_s));
    QVERIFY(act(u"收起"_s));
    QVERIFY(shows(isNamed(u"资料库"_s, u"page tab"_s)));
    QVERIFY(m_player->stop());
}

void WindowWalkTest::theDiscOpensThePlayerAndItsFiveActionsWork()
{
    QVERIFY(playFirstSong());
    QVERIFY(openPlayer());
    QVERIFY(act(u"关闭"_s));
    const auto openFan = [this] { return act(isDisc, u"Toggle"_s) && shows(u"播放/暂停"_s); };
    QVERIFY(openFan());
    const QStringList names = controls(u"播放操作"_s, u"定位"_s);
    for (const auto &name : {u"上一首"_s, u"喜欢"_s, u"播放/暂停"_s, u"定位"_s, u"下一首"_s})
        QVERIFY2(names.contains(name), qPrintable(name));
    QVERIFY(act(u"下一首"_s));
    QVERIFY(m_player->says(u"▶️ 播放: 乙"_s));
    QVERIFY(hides(u"播放/暂停"_s));

    QVERIFY(openFan());
    QVERIFY(act(u"上一首"_s));
    QVERIFY(m_player->says(u"▶️ 播放: 甲"_s));
    QVERIFY(openFan());
    QVERIFY(act(u"喜欢"_s));
    const auto isLiked = [](const Item &item) {
        return isRowOf(u"甲"_s)(item) && item.name.endsWith(u"，已喜欢"_s);
    };
    QVERIFY(shows(isLiked));
    QVERIFY(openFan());
    QVERIFY(shows(u"取消喜欢"_s));
    QVERIFY(act(u"播放/暂停"_s));
    QVERIFY(openTab(u"设置"_s));
    QVERIFY(openFan());
    QVERIFY(act(u"定位"_s));
    QVERIFY(shows(isRowOf(u"甲"_s)));
    // It was paused by the fan: what plays on is what the button of the player says.
    QVERIFY(openPlayer());
    QVERIFY(shows(isNamed(u"播放"_s, u"push button"_s)));
    QVERIFY(m_player->stop());
}

void WindowWalkTest::theSheetsOfThePlayerAreWorked()
{
    QVERIFY(playFirstSong());
    QVERIFY(openPlayer());
    QVERIFY(act(u"定时关闭"_s));
    QVERIFY(shows(u"30 分钟"_s));
    controls(u"定时关闭"_s, u"30 分钟"_s);
    QVERIFY(act(u"30 分钟"_s));
    QVERIFY(shows(u"将在 30 分钟 后停止播放"_s));
    QVERIFY(act(u"设置自定义时间"_s));
    QVERIFY(shows(u"小时"_s));
    controls(u"自定义时间"_s, u"确定"_s);
    QVERIFY(act(u"小时"_s, u"Increase"_s));
    QVERIFY(act(u"确定"_s));
    QVERIFY(hides(u"确定"_s));
    QVERIFY(act(u"完成"_s));
    QVERIFY(hides(u"30 分钟"_s));

    const auto openMore = [this](const QString &row) {
        return act(u"更多选项"_s) && act([&row](const Item &item) {
                   return item.name == row || item.name.startsWith(row + u'，');
               });
    };
    QVERIFY(openMore(u"歌词时间调整"_s));
    QVERIFY(shows(u"+0.5s"_s));
    controls(u"歌词时间调整"_s, u"+0.5s"_s);
    QVERIFY(act(u"+0.5s"_s));
    QVERIFY(shows(u"歌词提前 0.5 秒"_s));
    QVERIFY(act(u"重置为 0"_s));
    QVERIFY(hides(u"歌词提前 0.5 秒"_s));
    QVERIFY(act(u"完成"_s));
    QVERIFY(hides(u"+0.5s"_s));

    QVERIFY(openMore(u"播放界面设置"_s));
    QVERIFY(shows(u"当前主题: 经典"_s));
    controls(u"播放界面"_s, u"完成"_s);
    QVERIFY(act(u"完成"_s));
    QVERIFY(hides(u"当前主题: 经典"_s));

    QVERIFY(openMore(u"播放设备"_s));
    const auto isDevice = [](const Item &item) { return item.role == "radio button"_L1; };
    QVERIFY(shows(isDevice));
    controls(u"播放设备"_s, isDevice);
    QVERIFY(m_player->stop());
}

void WindowWalkTest::theEqualizerIsWorked()
{
    QVERIFY(playFirstSong());
    QVERIFY(openPlayer());
    QVERIFY(act(u"均衡器：去开启"_s));
    QVERIFY(shows(u"启用均衡器"_s));
    QVERIFY(act(isNamed(u"启用均衡器"_s, u"check box"_s), u"Toggle"_s));
    QVERIFY(m_player->says(u"✅ 已切换到均衡器引擎"_s));
    controls(u"均衡器"_s, u"摇滚"_s);
    QVERIFY(act(u"摇滚"_s));
    const std::optional<Item> band = m_window->find(isNamed(u"1000 赫兹"_s));
    QVERIFY(band);
    const double before = m_window->value(*band);
    QVERIFY(m_window->act(*band, u"Increase"_s));
    QTRY_VERIFY(m_window->value(*band) > before);
    QVERIFY(m_player->stop());
}

void WindowWalkTest::thePagesOfTheSettingsAreWorked()
{
    QVERIFY(openTab(u"设置"_s));
    QVERIFY(act(u"显示网盘功能"_s, u"Toggle"_s));
    QVERIFY(hides(u"网盘"_s));
    QVERIFY(act(u"显示网盘功能"_s, u"Toggle"_s));
    QVERIFY(shows(isNamed(u"网盘"_s, u"page tab"_s)));

    QVERIFY(act(u"外观与主题"_s));
    QVERIFY(shows(u"界面主题"_s));
    controls(u"外观与主题"_s, u"返回设置"_s);
    QVERIFY(act(u"应用图标"_s));
    QVERIFY(shows(u"图标 2"_s));
    controls(u"应用图标"_s, u"图标 2"_s);
    QVERIFY(act(u"返回"_s));
    QVERIFY(hides(u"图标 2"_s));
    QVERIFY(act(u"返回设置"_s));
    QVERIFY(hides(u"界面主题"_s));

    const auto begins = [](const QString &name) {
        return [beginning = name + u'，'](const Item &item) { return item.name.startsWith(beginning); };
    };
    QVERIFY(act(begins(u"关于"_s)));
    QVERIFY(shows(u"Tarnova Music Player"_s));
    controls(u"关于"_s, u"返回设置"_s);
    QVERIFY(act(u"返回设置"_s));
    QVERIFY(act(u"播放界面"_s));
    QVERIFY(shows(u"当前主题: 经典"_s));
    controls(u"播放界面"_s, u"完成"_s);
    QVERIFY(act(u"完成"_s));
    QVERIFY(hides(u"当前主题: 经典"_s));
    QVERIFY(act(begins(u"API 服务器"_s)));
    QVERIFY(shows(u"API 服务器地址"_s));
    controls(u"API 服务器"_s, isField(u"API 服务器地址"_s));
    QVERIFY(act(u"关闭"_s));
    QVERIFY(hides(u"API 服务器地址"_s));
    QVERIFY(act(begins(u"均衡器"_s)));
    QVERIFY(shows(u"启用均衡器"_s));
    QVERIFY(m_player->stop());
}

void WindowWalkTest::anotherLookLeavesTheReaderAWholeWindow()
{
    QVERIFY(playFirstSong());
    for (const auto &look : {u"拟态风格"_s, u"可爱粉粉"_s, u"经典"_s}) {
        QVERIFY(openTab(u"设置"_s));
        QVERIFY(act(u"外观与主题"_s));
        QVERIFY2(act(isNamed(look, u"radio button"_s)), qPrintable(look));
        QVERIFY2(shows(isNamed(u"资料库"_s, u"heading"_s)), qPrintable(look));
        controls(look, isNamed(u"资料库"_s, u"page tab"_s));
        QVERIFY(openPlayer());
        controls(look, u"收起"_s);
        QVERIFY(act(u"收起"_s));
    }
    QVERIFY(m_player->stop());
}

void WindowWalkTest::aPlaylistIsMadeOpenedAndDeleted()
{
    QVERIFY(openTab(u"歌单"_s));
    QVERIFY(act(u"新建歌单"_s));
    QVERIFY(shows(isField(u"歌单名称"_s)));
    controls(u"新建歌单"_s, isField(u"歌单名称"_s));
    m_player->type(u"road"_s);
    QVERIFY(act(u"创建"_s));
    const auto isRow = [](const Item &item) { return item.name.startsWith(u"road，"_s); };
    QVERIFY(act(isRow));
    QVERIFY(shows(isNamed(u"road"_s, u"heading"_s)));
    controls(u"歌单"_s, u"更多操作"_s);
    QVERIFY(act(u"更多操作"_s));
    QVERIFY(act(isNamed(u"重命名"_s, u"menu item"_s)));
    QVERIFY(shows(u"保存"_s));
    controls(u"重命名"_s, u"保存"_s);
    QVERIFY(act(u"取消"_s));
    QVERIFY(hides(u"保存"_s));
    QVERIFY(act(u"返回歌单列表"_s));
    QVERIFY(shows(isRow));
    QVERIFY(m_player->stop());
}

void WindowWalkTest::aServerIsSetUpAndOpened()
{
    QVERIFY(openTab(u"网盘"_s));
    QVERIFY(act(u"添加服务器"_s));
    QVERIFY(act(isNamed(u"添加 WebDAV"_s, u"menu item"_s)));
    QVERIFY(shows(isField(u"服务器地址"_s)));
    controls(u"服务器"_s, isField(u"服务器地址"_s));
    for (const auto &[label, text] :
         {std::pair{u"名称"_s, u"NAS"_s}, std::pair{u"服务器地址"_s, u"https://localhost:1"_s},
          std::pair{u"用户名"_s, u"somebody"_s}, std::pair{u"密码"_s, u"something"_s}}) {
        QVERIFY2(act(isField(label), u"SetFocus"_s), qPrintable(label));
        m_player->key(u"ctrl+a"_s);
        m_player->type(text);
    }
    QVERIFY(act(u"保存"_s));
    QVERIFY(act([](const Item &item) { return item.name.startsWith(u"NAS，"_s); }));
    QVERIFY(shows(isNamed(u"NAS"_s, u"heading"_s)));
    controls(u"NAS"_s, u"扫描"_s);
    QVERIFY(act(u"扫描"_s));
    QVERIFY(shows(u"重试"_s));
    controls(u"NAS"_s, u"重试"_s);
    QVERIFY(act(u"编辑服务器"_s));
    QVERIFY(shows(isField(u"服务器地址"_s)));
    QVERIFY(m_player->stop());
}

QTEST_GUILESS_MAIN(WindowWalkTest)
#include "tst_window_walk.moc"
