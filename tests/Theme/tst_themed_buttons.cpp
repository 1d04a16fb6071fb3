// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/Contrast.h"
#include "Theme/ThemedScene.h"
#include "Theme/ThemedSurfaces.h"

#include <QEasingCurve>
#include <QElapsedTimer>
#include <QSignalSpy>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The round buttons of the player.
class TestThemedButtons : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    QString glyph() const { return s->item(u"glyph"_s)->property("name").toString(); }
    QColor glyphColor() const { return s->item(u"glyph"_s)->property("color").value<QColor>(); }
    Surface circle() const { return s->item(u"circle"_s)->property("surface").value<Surface>(); }
    /// From the middle of the button to that of its glyph.
    double glyphOffset() const
    {
        const QQuickItem *item = s->item(u"glyph"_s);
        return item->mapToItem(s->root(), QPointF(item->width() / 2, 0)).x() - s->root()->width() / 2;
    }

    QQuickItem *visibleRing() const
    {
        const QList<QQuickItem *> rings = s->items(u"focusRing"_s);
        const auto shown =
            std::find_if(rings.begin(), rings.end(), [](auto *ring) { return ring->isVisible(); });
        return shown == rings.end() ? nullptr : *shown;
    }

public Q_SLOTS:
    void hearClick() { m_wasAnimating = s->root()->property("isAnimating").toBool(); }

private:
    bool m_wasAnimating = false;

private Q_SLOTS:
    void init()
    {
        m_wasAnimating = false;
        s = std::make_unique<ThemedScene>();
    }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void playShowsWhatItWillDo()
    {
        QVERIFY(s->show("ThemedPlayButton {}"));
        QCOMPARE(glyph(), u"play.fill"_s);
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"播放"_s);
        s->root()->setProperty("isPlaying", true);
        QCOMPARE(glyph(), u"pause.fill"_s);
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"暂停"_s);
        QCOMPARE(ThemedScene::accessible(s->root())->role(), QAccessible::Button);
    }
    void glyphsAreTwoFifthsOfTheButton_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const QByteArray name : {"ThemedPlayButton {", "ThemedControlButton { systemName: \"xmark\";"})
            QTest::newRow(name) << name;
    }
    void glyphsAreTwoFifthsOfTheButton()
    {
        QFETCH(QByteArray, name);
        for (const int size : {24, 32, 36, 44, 56, 64, 80}) {
            QVERIFY(s->show(name + " size: " + QByteArray::number(size) + " }"));
            QCOMPARE(s->root()->size(), QSizeF(size, size));
            QVERIFY(qAbs(s->item(u"glyph"_s)->width() - 0.4 * size) <= 1);
            QCOMPARE(s->item(u"glyph"_s)->y(), (size - s->item(u"glyph"_s)->height()) / 2);
        }
    }
    void onlyTheTriangleIsMovedToLookCentred()
    {
        QVERIFY(s->show("ThemedPlayButton { size: 64 }"));
        QCOMPARE(glyphOffset(), 2.0);
        s->root()->setProperty("isPlaying", true);
        QCOMPARE(glyphOffset(), 0.0);
    }
    void playIsDrawnAsTheLookSays_data() { addThemes(); }
    void playIsDrawnAsTheLookSays()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(s->show("ThemedPlayButton { size: 64 }", type, scheme));
        QCOMPARE(glyphColor(),
                 type == ThemeType::neumorphism ? s->theme().primaryColor() : QColor(Qt::white));
        QCOMPARE(circle(), ThemedSurfaces::playButton(&s->theme(), 64));
        QTRY_COMPARE(s->grab().pixelColor(s->item(u"circle"_s)->mapToScene({10, 32}).toPoint()) !=
                         s->theme().backgroundColor(),
                     type != ThemeType::neumorphism);
    }
    void controlIsDrawnAsTheLookSays_data() { addThemes(); }
    void controlIsDrawnAsTheLookSays()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(s->show("ThemedControlButton { systemName: \"shuffle\"; text: \"随机\" }", type, scheme));
        QCOMPARE(glyph(), u"shuffle"_s);
        QCOMPARE(glyphColor(),
                 type == ThemeType::neumorphism ? s->theme().primaryTextColor() : s->theme().primaryColor());
        QCOMPARE(circle(), ThemedSurfaces::controlButton(&s->theme(), 44));
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"随机"_s);
    }

    void buttonsArePressedByAll_data()
    {
        QTest::addColumn<QByteArray>("qml");
        QTest::newRow("play") << QByteArray("ThemedPlayButton {}");
        QTest::newRow("control") << QByteArray(
            "ThemedControlButton { systemName: \"xmark\"; text: \"关闭\" }");
        QTest::newRow("heart") << QByteArray("ThemedHeartButton {}");
    }
    void buttonsArePressedByAll()
    {
        QFETCH(QByteArray, qml);
        QVERIFY(s->show(qml));
        QSignalSpy clicks(s->root(), SIGNAL(clicked()));
        s->click(s->root());
        QCOMPARE(clicks.size(), 1);
        s->tap(s->root());
        QTRY_COMPARE(clicks.size(), 2);
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Space);
        s->key(Qt::Key_Return);
        s->key(Qt::Key_Enter);
        QCOMPARE(clicks.size(), 5);
        ThemedScene::accessible(s->root())->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
        QCOMPARE(clicks.size(), 6);
        s->root()->setEnabled(false);
        s->click(s->root());
        ThemedScene::accessible(s->root())->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
        QCOMPARE(clicks.size(), 6);
    }
    void aHeartIsPressedOnceByAHeldKeyAndNeverWhileItIsOff()
    {
        QVERIFY(s->show("ThemedHeartButton {}"));
        QSignalSpy clicks(s->root(), SIGNAL(clicked()));
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        s->holdKey(Qt::Key_Return);
        QCOMPARE(clicks.size(), 1);
        s->root()->setEnabled(false);
        ThemedScene::accessible(s->root())->actionInterface()->doAction(
            QAccessibleActionInterface::pressAction());
        QCOMPARE(clicks.size(), 1);
    }
    void hoverIsSeenOnTheRoundButtons_data() { addThemes(); }
    void hoverIsSeenOnTheRoundButtons()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        for (const QByteArray qml :
             {"ThemedPlayButton {}", "ThemedControlButton { systemName: \"xmark\" }"}) {
            QVERIFY(s->show(qml, type, scheme));
            QTest::mouseMove(s->window(), {5, 5});
            QTRY_VERIFY(!s->root()->property("hovered").toBool());
            // On the circle and beside the glyph.
            const QPoint free = s->root()->mapToScene({s->root()->width() / 2, 6}).toPoint();
            QTRY_VERIFY(s->grab().pixelColor(free) != s->theme().backgroundColor() ||
                        type == ThemeType::neumorphism);
            const QColor calm = s->grab().pixelColor(free);
            QTest::mouseMove(s->window(), ThemedScene::centre(s->root()));
            QTRY_VERIFY(s->root()->property("hovered").toBool());
            QVERIFY(Contrast::ratio(s->grab().pixelColor(free), calm) > 1.03);
        }
    }
    void smallButtonsAreLargeForAFinger()
    {
        QVERIFY(s->show("ThemedControlButton { systemName: \"xmark\"; size: 24; text: \"关闭\" }"));
        QSignalSpy clicks(s->root(), SIGNAL(clicked()));
        // 20 pixels from the middle of a circle of 24.
        const QPoint beside = ThemedScene::centre(s->root()) + QPoint(20, 0);
        QTest::mouseClick(s->window(), Qt::LeftButton, {}, beside);
        QCOMPARE(clicks.size(), 1);
        QTest::mouseClick(s->window(), Qt::LeftButton, {}, beside + QPoint(6, 0));
        QCOMPARE(clicks.size(), 1);
    }
    void theKeyboardIsSeenInEveryLook_data() { addThemes(); }
    void theKeyboardIsSeenInEveryLook()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        for (const QByteArray qml : {"ThemedPlayButton {}", "ThemedControlButton { systemName: \"xmark\" }",
                                     "ThemedHeartButton {}"}) {
            QVERIFY(s->show(qml, type, scheme));
            QVERIFY(!visibleRing());
            const QImage before = s->grab();
            s->key(Qt::Key_Tab);
            QVERIFY(s->root()->hasActiveFocus());
            QVERIFY(visibleRing());
            const QImage after = s->grab();
            const QRectF ring = visibleRing()->mapRectToScene({QPointF(), visibleRing()->size()});
            const QPoint edge(qRound(ring.center().x()), qRound(ring.top()) + 1);
            QVERIFY(after.pixelColor(edge) != before.pixelColor(edge));
            // What WCAG asks of an indicator.
            QVERIFY(Contrast::ratio(after.pixelColor(edge), s->theme().backgroundColor()) >= 3);
        }
    }

    void theHeartIsFullWhenItIsAFavourite_data() { addThemes(); }
    void theHeartIsFullWhenItIsAFavourite()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(s->show("ThemedHeartButton {}", type, scheme));
        QCOMPARE(glyph(), u"heart"_s);
        QCOMPARE(glyphColor(), s->theme().secondaryTextColor());
        QCOMPARE(s->item(u"glyph"_s)->size(), QSizeF(28, 28));
        QVERIFY(s->root()->width() >= 44 && s->root()->height() >= 44);
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"喜欢"_s);
        s->root()->setProperty("isFavorite", true);
        QCOMPARE(glyph(), u"heart.fill"_s);
        QCOMPARE(glyphColor(), s->theme().primaryColor());
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"取消喜欢"_s);
    }
    void theHeartJumpsFor300Milliseconds()
    {
        QVERIFY(s->show("ThemedHeartButton {}"));
        QObject::connect(s->root(), SIGNAL(clicked()), this, SLOT(hearClick()));
        QQuickItem *heart = s->item(u"glyph"_s);
        QCOMPARE(heart->scale(), 1.0);
        QCOMPARE(s->root()->property("isAnimating").toBool(), false);
        QElapsedTimer since;
        since.start();
        s->click(s->root());
        QVERIFY2(m_wasAnimating, "the action runs when the heart jumps already");
        QVERIFY(s->root()->property("isAnimating").toBool());
        QTRY_VERIFY(heart->scale() > 1.2);
        QTRY_VERIFY(!s->root()->property("isAnimating").toBool());
        // A coarse timer of 300 ms may be 5 % early.
        QVERIFY2(since.elapsed() >= 285, qPrintable(QString::number(since.elapsed())));
        QTRY_COMPARE(heart->scale(), 1.0);
    }
    void anotherTapMakesTheJumpNoLonger()
    {
        QVERIFY(s->show("ThemedHeartButton {}"));
        constexpr int withinTheJump = 250;
        QElapsedTimer since;
        // A machine that was too busy to tap twice within the jump tries again.
        do {
            QTRY_VERIFY(!s->root()->property("isAnimating").toBool());
            QSignalSpy changes(s->root(), SIGNAL(isAnimatingChanged()));
            since.start();
            s->click(s->root());
            QCOMPARE(changes.size(), 1);
            s->click(s->root());
            if (since.elapsed() < withinTheJump)
                QCOMPARE(changes.size(), 1);
        } while (since.elapsed() >= withinTheJump);
        QTRY_VERIFY(!s->root()->property("isAnimating").toBool());
    }
    void theHeartSpringsUpMoreLivelyThanBack()
    {
        QVERIFY(s->show("ThemedHeartButton {}"));
        s->click(s->root());
        QTRY_VERIFY(!s->root()->property("isAnimating").toBool());
        QTRY_COMPARE(s->item(u"glyph"_s)->scale(), 1.0);
        // By how much a spring of that damping goes beyond.
        const auto overshoot = [this](const QString &name) {
            const auto *spring = s->root()->findChild<QObject *>(name);
            const auto curve = spring ? spring->property("easing").value<QEasingCurve>() : QEasingCurve();
            double most = 0;
            for (int i = 0; i <= 1000; ++i)
                most = qMax(most, curve.valueForProgress(i / 1000.0) - 1);
            return most;
        };
        QVERIFY2(qAbs(overshoot(u"upwards"_s) - 0.163) < 0.01,
                 qPrintable(QString::number(overshoot(u"upwards"_s))));
        QVERIFY2(qAbs(overshoot(u"back"_s) - 0.095) < 0.01,
                 qPrintable(QString::number(overshoot(u"back"_s))));
    }
    void theHeartJumpsWithoutAFavourite()
    {
        // What the action makes of it is not the heart's matter.
        QVERIFY(s->show("ThemedHeartButton {}"));
        s->click(s->root());
        QVERIFY(s->root()->property("isAnimating").toBool());
        QCOMPARE(s->root()->property("isFavorite").toBool(), false);
        QTRY_VERIFY(!s->root()->property("isAnimating").toBool());
    }
    void aHeartThatGoesWhileItJumpsIsNoHarm()
    {
        QVERIFY(s->show("ThemedHeartButton {}"));
        s->click(s->root());
        QVERIFY(s->show("ThemedPlayButton {}"));
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemedButtons)
#include "tst_themed_buttons.moc"
