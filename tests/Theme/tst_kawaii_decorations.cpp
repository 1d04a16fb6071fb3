// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/KawaiiScene.h"

#include <QElapsedTimer>

namespace cadorel {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr double near = 0.5;

/// Everything that decorates, filling a box.
const QByteArray everyDecoration = R"(Item {
    width: 300; height: 400
    KawaiiFloatingDecorations { anchors.fill: parent; count: 12 }
    KawaiiCornerDecoration { imageName: "cartoon3"; corner: KawaiiCorners.TopLeading }
    KawaiiTitleDecoration { objectName: "title" }
    KawaiiEmptyStateDecoration { objectName: "empty"; anchors.centerIn: parent }
    KawaiiSticker { objectName: "single"; imageName: "cartoon1" }
    FloatingHeartsView { objectName: "hearts"; anchors.fill: parent }
})";

} // namespace

/// Stickers and hearts, on the screen.
class TestKawaiiDecorations : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<KawaiiScene> k;
    ThemedScene *s = nullptr;

    bool show(const QByteArray &qml, ThemeType type = ThemeType::kawaiiPink,
              ColorScheme scheme = ColorScheme::light)
    {
        return s->show(qml, type, scheme);
    }
    QPointF centreOf(const QQuickItem *item) const
    {
        return item->mapToItem(s->root(), QPointF(item->width() / 2, item->height() / 2));
    }
    static bool isNear(QPointF a, QPointF b) { return (a - b).manhattanLength() < near; }
    QObject *hearts() const { return s->item(u"hearts"_s)->property("hearts").value<QObject *>(); }

private Q_SLOTS:
    void init()
    {
        k = std::make_unique<KawaiiScene>();
        s = &k->scene;
    }
    void cleanup()
    {
        QCOMPARE(s->warnings.take(), QStringList());
        k.reset();
    }

    void decorationsDrawNothingOutsideThePinkLook_data() { addThemes(); }
    void decorationsDrawNothingOutsideThePinkLook()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(show("Item { width: 300; height: 400 }", type, scheme));
        const QImage nothing = s->grab();
        QVERIFY(show(everyDecoration, type, scheme));
        k->clock.advance(2s);
        if (type == ThemeType::kawaiiPink) {
            QTRY_VERIFY(k->arePicturesReady());
            QTRY_VERIFY(!KawaiiScene::isSame(s->grab(), nothing));
            QCOMPARE(s->items(u"picture"_s).size(), 12 + 4);
            return;
        }
        QVERIFY(KawaiiScene::isSame(s->grab(), nothing));
        const QList<QQuickItem *> pictures = s->items(u"picture"_s);
        for (const QQuickItem *picture : pictures)
            QCOMPARE(picture->property("source").toUrl(), QUrl());
        QCOMPARE(k->clock.activeTimers(), 0);
    }

    void decorationsComeAndGoWithTheLook()
    {
        QVERIFY(show(everyDecoration, ThemeType::neumorphism));
        const QImage nothing = s->grab();
        s->setTheme(ThemeType::kawaiiPink, ColorScheme::light);
        QTRY_VERIFY(k->arePicturesReady());
        k->clock.advance(4s);
        QCOMPARE(s->items(u"heart"_s).size(), 2);
        s->setTheme(ThemeType::neumorphism, ColorScheme::light);
        QCOMPARE(s->items(u"heart"_s).size(), 0);
        QCOMPARE(k->clock.activeTimers(), 0);
        QTRY_VERIFY(KawaiiScene::isSame(s->grab(), nothing));
    }

    void everyStickerHasAPicture()
    {
        QVERIFY(show(
            "Row { Repeater { model: 15; delegate: KawaiiSticker { required property int index; size: 30\n"
            "imageName: KawaiiDecorations.cartoonAt(index) } } }"));
        QCOMPARE(s->items(u"picture"_s).size(), 15);
        QTRY_VERIFY(k->arePicturesReady());
    }

    void aStickerIsAsLargeTurnedAndPaleAsItIsTold()
    {
        QVERIFY(show("Item { KawaiiSticker { objectName: \"sticker\"; imageName: \"cartoon1\"; size: 50; "
                     "rotation: 12\n"
                     "opacity: 0.5 } }"));
        const QQuickItem *sticker = s->item(u"sticker"_s);
        QCOMPARE(QSizeF(sticker->width(), sticker->height()), QSizeF(50, 50));
        QCOMPARE(sticker->rotation(), 12.0);
        QCOMPARE(sticker->opacity(), 0.5);
    }

    void stickersOfOtherNamesAndSizesDrawNothing()
    {
        QVERIFY(show(
            "Column { KawaiiSticker { imageName: \"cartoon2\" } KawaiiSticker { imageName: \"../etc\" }\n"
            "KawaiiSticker { imageName: \"cartoon1\"; size: 0 } KawaiiSticker {} }"));
        const QList<QQuickItem *> pictures = s->items(u"picture"_s);
        QCOMPARE(pictures.size(), 4);
        for (const QQuickItem *picture : pictures)
            QCOMPARE(picture->property("source").toUrl(), QUrl());
    }

    void floatingStickersLieWhereTheFormulasSay()
    {
        QVERIFY(show("KawaiiFloatingDecorations { width: 300; height: 400; count: 10 }"));
        for (int i = 0; i < 10; ++i) {
            const StickerPlace place = scatteredSticker(i, QSizeF(300, 400));
            const QQuickItem *sticker = s->item(u"sticker%1"_s.arg(i));
            QVERIFY(sticker);
            QVERIFY(isNear(centreOf(sticker), QPointF(place.x, place.y)));
            QCOMPARE(sticker->width(), place.size);
            QCOMPARE(sticker->rotation(), place.rotation);
            QCOMPARE(sticker->opacity(), 0.3);
            QCOMPARE(sticker->property("imageName").toString(), place.imageName);
        }
        QVERIFY(!s->item(u"sticker10"_s));
    }

    void floatingStickersFollowTheirBox()
    {
        QVERIFY(show("KawaiiFloatingDecorations { width: 300; height: 400; count: 3 }"));
        s->root()->setSize({200, 100});
        const StickerPlace place = scatteredSticker(2, QSizeF(200, 100));
        QVERIFY(isNear(centreOf(s->item(u"sticker2"_s)), QPointF(place.x, place.y)));
    }

    void cornerStickerLiesInItsCorner_data()
    {
        QTest::addColumn<QByteArray>("corner");
        QTest::addColumn<QPointF>("centre");
        QTest::addRow("top leading") << QByteArray("TopLeading") << QPointF(20, 20);
        QTest::addRow("top trailing") << QByteArray("TopTrailing") << QPointF(280, 20);
        QTest::addRow("bottom leading") << QByteArray("BottomLeading") << QPointF(20, 380);
        QTest::addRow("bottom trailing") << QByteArray("BottomTrailing") << QPointF(280, 380);
    }
    void cornerStickerLiesInItsCorner()
    {
        QFETCH(QByteArray, corner);
        QFETCH(QPointF, centre);
        QVERIFY(show(
            "Item { width: 300; height: 400\nKawaiiCornerDecoration { imageName: \"cartoon4\"; size: 60\n"
            "corner: KawaiiCorners." +
            corner + " } }"));
        const QQuickItem *sticker = s->item(u"sticker"_s);
        QVERIFY(isNear(centreOf(sticker), centre));
        QCOMPARE(sticker->width(), 60.0);
        QCOMPARE(sticker->opacity(), 0.8);
        QTRY_VERIFY(k->arePicturesReady());
    }

    void titleStickerIsChosenAndTurnedByChance()
    {
        k->random.reals = {7.5};
        k->random.indexes = {6};
        QVERIFY(show("Row { KawaiiTitleDecoration { objectName: \"title\"; size: 40 } }"));
        const QQuickItem *sticker = s->item(u"sticker"_s);
        QCOMPARE(sticker->property("imageName").toString(), u"cartoon8"_s);
        QCOMPARE(sticker->rotation(), 7.5);
        QCOMPARE(sticker->width(), 40.0);
    }

    void stickersOfChanceStayWhenTheDesktopTurnsDark()
    {
        k->random.reals = {7.5, -3};
        k->random.indexes = {6, 9, 1, 2};
        QVERIFY(show("Row { KawaiiTitleDecoration {}\nKawaiiEmptyStateDecoration {} }"));
        const auto stickers = [this] {
            QStringList shown;
            for (const QQuickItem *sticker : s->items(u"sticker"_s))
                shown << u"%1 %2"_s.arg(sticker->property("imageName").toString()).arg(sticker->rotation());
            return shown;
        };
        const QStringList before = stickers();
        QCOMPARE(before.size(), 2);
        s->setTheme(ThemeType::kawaiiPink, ColorScheme::dark);
        QCOMPARE(stickers(), before);
        s->setTheme(ThemeType::classic, ColorScheme::dark);
        s->setTheme(ThemeType::kawaiiPink, ColorScheme::dark);
        QVERIFY(stickers() != before);
    }
    void titleAndEmptyStateStickersTakeNoRoomInOtherLooks()
    {
        const QByteArray both =
            "Column { spacing: 10\nKawaiiTitleDecoration {}\nKawaiiEmptyStateDecoration {}\n"
            "Item { width: 7; height: 7 } }";
        QVERIFY(show(both, ThemeType::classic));
        QTRY_COMPARE(s->root()->height(), 7.0);
        QVERIFY(show(both, ThemeType::kawaiiPink));
        QTRY_VERIFY(s->root()->height() > 100);
        QCOMPARE(s->items(u"sticker"_s).size(), 2);
    }

    void decorationsAreNothingToAScreenReader()
    {
        QVERIFY(show("Item { width: 300; height: 400 }"));
        const int before = k->accessibleItems();
        QVERIFY(show(everyDecoration));
        k->clock.advance(2s);
        QCOMPARE(s->items(u"heart"_s).size(), 1);
        QCOMPARE(k->accessibleItems(), before);
    }

    void pressesGoThroughDecorations()
    {
        QVERIFY(show("Item { width: 300; height: 400; property int clicks: 0; property int taps: 0\n"
                     "MouseArea { anchors.fill: parent; onClicked: parent.clicks += 1 }\n"
                     "KawaiiSticker { objectName: \"single\"; imageName: \"cartoon1\"; size: 200 }\n"
                     "KawaiiFloatingDecorations { anchors.fill: parent; count: 30 }\n"
                     "FloatingHeartsView { objectName: \"hearts\"; anchors.fill: parent } }"));
        k->clock.advance(2s);
        s->click(s->item(u"single"_s));
        QCOMPARE(s->root()->property("clicks").toInt(), 1);
        s->tap(s->item(u"single"_s));
        QTRY_COMPARE(s->root()->property("clicks").toInt(), 2);
    }

    void aHeartRisesAndFades()
    {
        k->random.reals = {150, 1, 0.5, 15, 4};
        QVERIFY(show("FloatingHeartsView { objectName: \"hearts\"; width: 300; height: 400 }"));
        QVERIFY(s->items(u"heart"_s).isEmpty());
        QElapsedTimer clock;
        clock.start();
        k->clock.advance(2s);
        QCOMPARE(s->items(u"heart"_s).size(), 1);
        const QQuickItem *heart = s->item(u"heart"_s);
        QCOMPARE(heart->width(), 20.0);
        QCOMPARE(heart->rotation(), 15.0);
        QVERIFY(isNear(centreOf(heart), QPointF(150, 430)));
        QVERIFY(heart->opacity() > 0.45);
        QTRY_VERIFY(centreOf(heart).y() < 430 - 460 * 0.4);
        // Its curve is at 0.4 after a quarter of its four seconds.
        QVERIFY2(clock.elapsed() > 900, qPrintable(QString::number(clock.elapsed())));
        QVERIFY(heart->opacity() < 0.31);
        k->clock.advance(6s);
        QVERIFY(!s->items(u"heart"_s).contains(heart));
    }

    void aHeartIsDrawnWhereItIs_data() { addThemes(); }
    void aHeartIsDrawnWhereItIs()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        if (type != ThemeType::kawaiiPink)
            return;
        k->random.reals = {150, 1.2, 0.5, 0, 6};
        QVERIFY(show("FloatingHeartsView { objectName: \"hearts\"; width: 300; height: 300 }", type, scheme));
        const QImage nothing = s->grab();
        k->clock.advance(2s);
        const QQuickItem *heart = s->item(u"heart"_s);
        QTRY_VERIFY(centreOf(heart).y() < 280);
        const QImage now = s->grab();
        // Somewhere on its way, in its column.
        const auto differs = [&](int x) {
            for (int y = 0; y < now.height(); ++y) {
                if (now.pixel(x, y) != nothing.pixel(x, y))
                    return true;
            }
            return false;
        };
        QVERIFY(differs(40 + 150));
        QVERIFY(!differs(40 + 50));
    }

    void heartsKnowTheSizeOfTheirView()
    {
        QVERIFY(show("FloatingHeartsView { objectName: \"hearts\"; width: 39; height: 400 }"));
        k->clock.advance(20s);
        QCOMPARE(s->items(u"heart"_s).size(), 0);
        s->root()->setWidth(300);
        k->clock.advance(2s);
        QCOMPARE(s->items(u"heart"_s).size(), 1);
    }

    void noHeartRisesOnADesktopThatWantsNoMotion()
    {
        k->desktop.setReducesMotion(true);
        QVERIFY(show("FloatingHeartsView { objectName: \"hearts\"; width: 300; height: 400 }"));
        k->clock.advance(20s);
        QCOMPARE(s->items(u"heart"_s).size(), 0);
        QCOMPARE(k->clock.activeTimers(), 0);
        k->desktop.setReducesMotion(false);
        k->clock.advance(2s);
        QCOMPARE(s->items(u"heart"_s).size(), 1);
        k->desktop.setReducesMotion(true);
        QCOMPARE(s->items(u"heart"_s).size(), 0);
        QCOMPARE(k->clock.activeTimers(), 0);
    }

    void noTimerRunsWhileNobodySeesTheHearts()
    {
        QVERIFY(show("Item { width: 300; height: 400\n"
                     "FloatingHeartsView { objectName: \"hearts\"; anchors.fill: parent } }"));
        k->clock.advance(2s);
        QVERIFY(hearts()->property("isRunning").toBool());
        s->root()->setVisible(false);
        QCOMPARE(k->clock.activeTimers(), 0);
        s->root()->setVisible(true);
        k->clock.advance(2s);
        QCOMPARE(s->items(u"heart"_s).size(), 1);
        s->window()->hide();
        QTRY_COMPARE(k->clock.activeTimers(), 0);
        QCOMPARE(s->items(u"heart"_s).size(), 0);
        s->window()->show();
        QTRY_VERIFY(hearts()->property("isRunning").toBool());
    }

    void heartsEndWithTheirView()
    {
        QVERIFY(show("FloatingHeartsView { objectName: \"hearts\"; width: 300; height: 400 }"));
        k->clock.advance(4s);
        QVERIFY(k->clock.activeTimers() > 0);
        QVERIFY(show("Item {}"));
        QCOMPARE(k->clock.activeTimers(), 0);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestKawaiiDecorations)
#include "tst_kawaii_decorations.moc"
