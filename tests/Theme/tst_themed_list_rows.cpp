// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/LookGrounds.h"
#include "Theme/ThemedScene.h"

#include <QSignalSpy>
#include <QStyleHints>

namespace cadorel {

using namespace Qt::StringLiterals;

/// Rows of songs and servers.
class TestThemedListRows : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    void showServer(const QByteArray &more = "isConnected: true; songCount: 1234",
                    ThemeType type = ThemeType::classic, ColorScheme scheme = ColorScheme::light)
    {
        QVERIFY(s->show(
            "ThemedServerRow { width: 343; config: ({ name: \"家里的 NAS\", host: \"nas.local:5005\" }); " +
                more + " }",
            type, scheme));
    }
    void showSong(const QByteArray &more = "", ThemeType type = ThemeType::classic,
                  ColorScheme scheme = ColorScheme::light)
    {
        QVERIFY(
            s->show("ThemedOnlineSongRow { width: 343; song: ({ title: \"晴天\", subtitle: \"阿箬 · 远方\", "
                    "platformText: \"网易云\", coverSource: \"\", isCurrent: false, isFavorite: true }); " +
                        more + " }",
                    type, scheme));
    }
    QString text(const QString &name) const { return s->item(name)->property("text").toString(); }
    QColor color(const QString &name) const { return s->item(name)->property("color").value<QColor>(); }
    bool isLegible(const QString &name) const
    {
        return leastRatio(s->theme(), ThemedSurfaces::themedRow(&s->theme()).fill, color(name)) >=
               Contrast::legible;
    }
    QObject *menu() const { return s->root()->findChild<QObject *>(u"serverRowMenu"_s); }
    bool isMenuOpen() const { return menu()->property("opened").toBool(); }
    void closeMenu()
    {
        QMetaObject::invokeMethod(menu(), "close");
        QTRY_VERIFY(!menu()->property("visible").toBool());
    }

private Q_SLOTS:
    void init()
    {
        constexpr int holdMilliseconds = 80;
        QGuiApplication::styleHints()->setMousePressAndHoldInterval(holdMilliseconds);
        s = std::make_unique<ThemedScene>();
    }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void aServerTellsHowItStands()
    {
        showServer();
        QCOMPARE(text(u"serverName"_s), u"家里的 NAS"_s);
        QCOMPARE(text(u"serverHost"_s), u"nas.local:5005"_s);
        QCOMPARE(text(u"serverStatus"_s), u"已连接 · 1234 首歌曲"_s);
        QCOMPARE(ThemedScene::accessibleName(s->root()),
                 u"家里的 NAS，nas.local:5005，已连接 · 1234 首歌曲"_s);
        const QColor connected = color(u"statusDot"_s);
        s->root()->setProperty("isConnected", false);
        QCOMPARE(text(u"serverStatus"_s), u"未连接 · 1234 首歌曲"_s);
        QVERIFY(color(u"statusDot"_s) != connected);
        s->root()->setProperty("songCount", 0);
        QCOMPARE(text(u"serverStatus"_s), u"未连接"_s);
        s->root()->setProperty("isConnected", true);
        QCOMPARE(text(u"serverStatus"_s), u"已连接 · 0 首歌曲"_s);
    }
    void aTapOnAServerIsTold()
    {
        showServer();
        QSignalSpy taps(s->root(), SIGNAL(tap()));
        s->click(s->item(u"serverName"_s));
        QCOMPARE(taps.size(), 1);
        s->tap(s->item(u"serverName"_s));
        QTRY_COMPARE(taps.size(), 2);
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Return);
        s->key(Qt::Key_Space);
        QCOMPARE(taps.size(), 4);
        s->holdKey(Qt::Key_Return);
        QCOMPARE(taps.size(), 5);
        QVERIFY(!isMenuOpen());
    }
    void theMenuOpensByAllWays()
    {
        showServer();
        QSignalSpy taps(s->root(), SIGNAL(tap()));
        s->click(s->item(u"moreButton"_s));
        QTRY_VERIFY(isMenuOpen());
        closeMenu();
        QCOMPARE(taps.size(), 0);
        s->click(s->item(u"serverName"_s), Qt::RightButton);
        QTRY_VERIFY(isMenuOpen());
        closeMenu();
        QCOMPARE(taps.size(), 0);
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Menu);
        QTRY_VERIFY(isMenuOpen());
        closeMenu();
        QCOMPARE(taps.size(), 0);
        const QPoint name = ThemedScene::centre(s->item(u"serverName"_s));
        QTest::mousePress(s->window(), Qt::LeftButton, {}, name);
        QTRY_VERIFY(isMenuOpen());
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, name);
        QCOMPARE(taps.size(), 0);
        closeMenu();
        QCOMPARE(taps.size(), 0);
        QPointingDevice *finger = QTest::createTouchDevice();
        QTest::touchEvent(s->window(), finger).press(0, name);
        QTRY_VERIFY(isMenuOpen());
        QTest::touchEvent(s->window(), finger).release(0, name);
        QCOMPARE(taps.size(), 0);
    }
    void theMenuOpensWithoutAMenuKey()
    {
        showServer();
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Tab);
        QVERIFY(s->item(u"moreButton"_s)->hasActiveFocus());
        QSignalSpy taps(s->root(), SIGNAL(tap()));
        s->key(Qt::Key_Return);
        QTRY_VERIFY(isMenuOpen());
        QCOMPARE(taps.size(), 0);
    }
    void aReturnHeldOnTheDotsPressesThemOnce()
    {
        showServer();
        QQuickItem *const dots = s->item(u"moreButton"_s);
        QSignalSpy clicks(dots, SIGNAL(clicked()));
        dots->forceActiveFocus(Qt::TabFocusReason);
        // The menu that opens takes the keyboard.
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(s->window(), &repeated);
        QCOMPARE(clicks.size(), 0);
        s->key(Qt::Key_Return);
        QCOMPARE(clicks.size(), 1);
    }
    void theMenuAsksForWhatCanBeDone_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QByteArray>("signal");
        QTest::newRow("scan") << u"scanItem"_s << QByteArray(SIGNAL(scan()));
        QTest::newRow("edit") << u"editItem"_s << QByteArray(SIGNAL(edit()));
        QTest::newRow("delete") << u"deleteItem"_s << QByteArray(SIGNAL(deleteRequested()));
    }
    void theMenuAsksForWhatCanBeDone()
    {
        QFETCH(QString, item);
        QFETCH(QByteArray, signal);
        showServer();
        QSignalSpy asked(s->root(), signal.constData());
        s->click(s->item(u"moreButton"_s));
        QTRY_VERIFY(isMenuOpen());
        auto *entry = menu()->findChild<QQuickItem *>(item);
        QVERIFY(entry);
        s->click(entry);
        QCOMPARE(asked.size(), 1);
        QTRY_VERIFY(!isMenuOpen());
    }
    void theMenuCanBeReadInEveryLook_data() { addThemes(); }
    void theMenuCanBeReadInEveryLook()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showServer("isConnected: true", type, scheme);
        for (const QString &name : {u"scanItem"_s, u"editItem"_s, u"deleteItem"_s}) {
            const auto ink = menu()->findChild<QObject *>(name)->property("ink").value<QColor>();
            QVERIFY2(leastRatio(s->theme(), s->theme().surfaceColor(), ink) >= Contrast::legible,
                     qPrintable(name + u' ' + ink.name()));
        }
    }
    void aNarrowRowKeepsItsCount()
    {
        showServer("isConnected: true; songCount: 123456");
        const double oneLine = s->root()->height();
        s->root()->setWidth(200);
        QQuickItem *status = s->item(u"serverStatus"_s);
        QTRY_VERIFY(status->property("lineCount").toInt() > 1);
        QVERIFY(!status->property("truncated").toBool());
        QTRY_VERIFY(s->root()->implicitHeight() > oneLine);
        QVERIFY(s->item(u"serverHost"_s)->property("truncated").toBool());
    }

    void anOnlineSongTellsWhereItIsFrom()
    {
        showSong();
        QCOMPARE(text(u"title"_s), u"晴天"_s);
        QCOMPARE(text(u"subtitle"_s), u"阿箬 · 远方"_s);
        QCOMPARE(text(u"trailing"_s), u"网易云"_s);
        QVERIFY(s->item(u"favoriteMark"_s)->isVisible());
        QVERIFY(!s->item(u"currentMark"_s)->isVisible());
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"晴天，阿箬 · 远方，网易云，已喜欢"_s);
    }
    void whatIsNotKnownOfASongIsNotShown()
    {
        QVERIFY(s->show("ThemedOnlineSongRow { width: 343; song: ({ title: \"晴天\" }) }"));
        QCOMPARE(text(u"trailing"_s), QString());
        QVERIFY(!s->item(u"subtitle"_s)->isVisible());
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"晴天"_s);
    }
    void theCurrentSongIsMarked_data() { addThemes(); }
    void theCurrentSongIsMarked()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(
            s->show("ThemedSongRow { width: 343; title: \"晴天\"; trailingText: \"3:20\" }", type, scheme));
        const auto weight = [this] { return s->item(u"title"_s)->property("font").value<QFont>().weight(); };
        QVERIFY(isLegible(u"title"_s));
        QCOMPARE(weight(), QFont::Normal);
        s->root()->setProperty("isCurrent", true);
        QVERIFY(s->item(u"currentMark"_s)->isVisible());
        QVERIFY(isLegible(u"title"_s));
        // Where all texts are of the accent, the colour alone does not tell.
        QCOMPARE(weight(), QFont::DemiBold);
    }
    void textsCanBeReadInEveryLook_data() { addThemes(); }
    void textsCanBeReadInEveryLook()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showSong("", type, scheme);
        for (const QString &name : {u"title"_s, u"subtitle"_s, u"trailing"_s})
            QVERIFY2(isLegible(name), qPrintable(name));
        showServer("isConnected: true; songCount: 3", type, scheme);
        // The dot is a mark and no text, but as green as on a desktop of the other scheme it would be lost.
        for (const QString &name : {u"serverName"_s, u"serverHost"_s, u"serverStatus"_s, u"statusDot"_s})
            QVERIFY2(isLegible(name), qPrintable(name));
        s->root()->setProperty("isConnected", false);
        QCOMPARE(color(u"statusDot"_s), s->theme().secondaryTextColor());
    }
    void aSongsTimeIsNeverCut()
    {
        showSong();
        s->root()->setWidth(288);
        s->root()->setProperty("song",
                               QVariantMap{{u"title"_s, u"一首名字很长很长很长很长很长很长很长很长的歌 😀"_s},
                                           {u"platformText"_s, u"QQ音乐"_s}});
        QVERIFY(s->item(u"title"_s)->property("truncated").toBool());
        QQuickItem *trailing = s->item(u"trailing"_s);
        QCOMPARE(trailing->width(), trailing->implicitWidth());
        QVERIFY(trailing->mapToItem(s->root(), {trailing->width(), 0}).x() <= s->root()->width() - 8);
        const QQuickItem *title = s->item(u"title"_s);
        QVERIFY(title->mapToItem(s->root(), {title->width(), 0}).x() <
                trailing->mapToItem(s->root(), {}).x());
    }
    void aSongIsPlayedByATapAndAskedAboutByTheRightButton()
    {
        showSong();
        QSignalSpy clicks(s->root(), SIGNAL(clicked()));
        QSignalSpy menus(s->root(), SIGNAL(menuRequested(QPointF)));
        s->click(s->root());
        QCOMPARE(clicks.size(), 1);
        s->click(s->root(), Qt::RightButton);
        QTRY_COMPARE(menus.size(), 1);
        QCOMPARE(clicks.size(), 1);
        const QPoint middle = ThemedScene::centre(s->root());
        QTest::mousePress(s->window(), Qt::LeftButton, {}, middle);
        QTRY_COMPARE(menus.size(), 2);
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, middle);
        QCOMPARE(clicks.size(), 1);
    }
    void hoverIsSeenInEveryLook_data() { addThemes(); }
    void hoverIsSeenInEveryLook()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showSong("", type, scheme);
        // Between the cover and the edge, away from any text.
        const QPoint free = s->root()->mapToScene({4, s->root()->height() / 2}).toPoint();
        QTest::mouseMove(s->window(), {5, 5});
        QTRY_VERIFY(!s->root()->property("hovered").toBool());
        const QColor calm = s->grab().pixelColor(free);
        QTest::mouseMove(s->window(), ThemedScene::centre(s->root()));
        QTRY_VERIFY(s->root()->property("hovered").toBool());
        const QColor hovered = s->grab().pixelColor(free);
        QTest::mousePress(s->window(), Qt::LeftButton, {}, ThemedScene::centre(s->root()));
        const QColor pressed = s->grab().pixelColor(free);
        QTest::mouseRelease(s->window(), Qt::LeftButton, {}, ThemedScene::centre(s->root()));
        QVERIFY(Contrast::ratio(hovered, calm) > 1.03);
        QVERIFY(Contrast::ratio(pressed, calm) > Contrast::ratio(hovered, calm));
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemedListRows)
#include "tst_themed_list_rows.moc"
