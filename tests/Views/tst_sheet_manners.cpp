// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SheetScene.h"

namespace cadorel {

using namespace Qt::StringLiterals;

/// How sheets open and close, what lies over what, and who has the keyboard and the mouse's wheel.
class TestSheetManners : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<SheetScene> s;

    void drag(const QString &from, int by) const
    {
        s->settle();
        const QPoint start = SheetScene::centre(s->item(from));
        QTest::mousePress(s->window, Qt::LeftButton, {}, start);
        for (int step = 1; step <= 8; ++step)
            QTest::mouseMove(s->window, start + QPoint(0, by * step / 8));
        QTest::mouseRelease(s->window, Qt::LeftButton, {}, start + QPoint(0, by));
    }
    qreal scrolled(const QString &sheet) const
    {
        const auto *scroller = s->sheet(sheet)->findChild<QQuickItem *>(u"sheetScroller"_s);
        return scroller->property("contentY").toReal();
    }

private Q_SLOTS:
    void init() { s = std::make_unique<SheetScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->takeWarnings();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void escapeClosesAndTheKeyboardIsWhereItWas()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        QVERIFY(!s->item(u"opener"_s)->hasActiveFocus());
        s->key(Qt::Key_Escape);
        QVERIFY(s->isGone(u"sleepTimerSheet"_s));
        QTRY_VERIFY(s->item(u"opener"_s)->hasActiveFocus());
    }
    void theKeyboardStaysWithin()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        for (int i = 0; i < 8; ++i) {
            s->key(Qt::Key_Tab);
            QVERIFY(s->focused());
            QVERIFY(s->focused() != s->item(u"opener"_s));
        }
    }
    void theButtonCloses()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"lyricsOffsetSheet"_s));
        QCOMPARE(s->text(u"lyricsOffsetDone"_s), u"完成"_s);
        s->click(u"lyricsOffsetDone"_s);
        QVERIFY(s->isGone(u"lyricsOffsetSheet"_s));
    }
    void aPressBesideItCloses()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        QTest::mouseClick(s->window, Qt::LeftButton, {}, QPoint(20, 20));
        QVERIFY(s->isGone(u"moreOptionsSheet"_s));
    }
    void drawnDownFarItClosesAndALittleItComesBack()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        drag(u"sheetTitle"_s, 40);
        QTRY_COMPARE(s->sheet(u"sleepTimerSheet"_s)->property("sunk").toReal(), 0.0);
        QVERIFY(s->isOpen(u"sleepTimerSheet"_s));
        drag(u"sheetTitle"_s, 200);
        QVERIFY(s->isGone(u"sleepTimerSheet"_s));
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        QTRY_COMPARE(s->sheet(u"sleepTimerSheet"_s)->property("sunk").toReal(), 0.0);
    }
    void itRisesAndGoesInTimeWhereTheDesktopWantsMotion()
    {
        s->desktop.setReducesMotion(false);
        QVERIFY(s->show());
        QMetaObject::invokeMethod(s->sheet(u"moreOptionsSheet"_s), "open");
        QVERIFY(s->sheet(u"moreOptionsSheet"_s)->property("sunk").toReal() > 0);
        QTRY_VERIFY(s->isOpen(u"moreOptionsSheet"_s));
        QCOMPARE(s->sheet(u"moreOptionsSheet"_s)->property("sunk").toReal(), 0.0);
        s->key(Qt::Key_Escape);
        QVERIFY(s->sheet(u"moreOptionsSheet"_s)->property("visible").toBool());
        QVERIFY(s->isGone(u"moreOptionsSheet"_s));
    }
    void itHugsWhatItHolds()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        const qreal all = s->sheet(u"moreOptionsSheet"_s)->property("height").toReal();
        QVERIFY(all < s->window->height() * 0.6);
        s->setWindow("hasLyrics", false);
        QTRY_VERIFY(s->sheet(u"moreOptionsSheet"_s)->property("height").toReal() < all);
    }
    void aScreenReaderHearsADialogWithItsTitle()
    {
        QVERIFY(s->show());
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        const QList<QQuickItem *> items = s->allItems();
        const bool isThere = std::ranges::any_of(items, [](QQuickItem *item) {
            QAccessibleInterface *interface = SheetScene::accessible(item);
            return item->isVisible() && interface && interface->role() == QAccessible::Dialog &&
                   interface->text(QAccessible::Name) == u"定时关闭"_s;
        });
        QVERIFY(isThere);
    }

    // --- One over the other

    void whatARowLeadsToHasTheKeyboardAndGivesItBack_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("sheet");
        QTest::newRow("lyrics") << u"moreLyricsOffset"_s << u"lyricsOffsetSheet"_s;
        QTest::newRow("settings") << u"moreSettings"_s << u"nowPlayingSettings"_s;
    }
    void whatARowLeadsToHasTheKeyboardAndGivesItBack()
    {
        QFETCH(QString, row);
        QFETCH(QString, sheet);
        s->desktop.setReducesMotion(false);
        QVERIFY(s->show());
        s->setWindow("leadsOn", true);
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        s->click(row);
        QTRY_VERIFY(s->isOpen(sheet));
        QVERIFY(s->isGone(u"moreOptionsSheet"_s));
        s->key(Qt::Key_Tab);
        QVERIFY(s->focused() != s->item(u"opener"_s));
        s->key(Qt::Key_Escape);
        QVERIFY(s->isGone(sheet));
        QTRY_VERIFY(s->item(u"opener"_s)->hasActiveFocus());
    }
    void whatASheetLedToIsForgottenWhenItIsOpenedAgain()
    {
        s->desktop.setReducesMotion(false);
        QVERIFY(s->show());
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        s->click(u"moreSettings"_s);
        QVERIFY(s->open(u"moreOptionsSheet"_s));
        s->key(Qt::Key_Escape);
        QVERIFY(s->isGone(u"moreOptionsSheet"_s));
        QVERIFY(s->window->property("requests").toString().size() <= u"settings "_s.size());
    }
    void theWheelScrollsASheetOverASheet()
    {
        QVERIFY(s->show({390, 480}));
        QVERIFY(s->open(u"nowPlayingSettings"_s));
        QVERIFY(s->open(u"emojiPicker"_s));
        s->turnWheel(u"emojiPreview"_s, -240);
        QTRY_VERIFY(scrolled(u"emojiPicker"_s) > 0);
        QCOMPARE(scrolled(u"nowPlayingSettings"_s), 0.0);
        s->key(Qt::Key_Escape);
        QVERIFY(s->isGone(u"emojiPicker"_s));
        s->turnWheel(u"currentTheme"_s, -240);
        QTRY_VERIFY(scrolled(u"nowPlayingSettings"_s) > 0);
    }
    void nothingBeneathAnyOfThemIsReached()
    {
        QVERIFY(s->show());
        s->setWindow("leadsOn", true);
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        const auto isModal = [this](const QString &name) {
            return s->sheet(name)->property("modal").toBool();
        };
        QVERIFY(isModal(u"sleepTimerSheet"_s));
        s->sleep.beginCustom();
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        QVERIFY(isModal(u"customTimePicker"_s));
        // A press on the sheet beneath closes the picker alone, as one beside it would.
        s->click(u"sleepPreset30"_s);
        QVERIFY(s->isGone(u"customTimePicker"_s));
        QCOMPARE(s->sleep.sleepTimerMinutes(), 0);
        QVERIFY(s->isOpen(u"sleepTimerSheet"_s));
        QVERIFY(isModal(u"sleepTimerSheet"_s));
        QTest::mouseClick(s->window, Qt::LeftButton, {}, SheetScene::centre(s->item(u"opener"_s)));
        QVERIFY(s->isGone(u"sleepTimerSheet"_s));
        QCOMPARE(s->window->property("requests").toString(), QString());
    }
    void oneVeilIsEnough()
    {
        QVERIFY(s->show());
        const QColor bare = s->window->grabWindow().pixelColor(2, 60);
        QVERIFY(s->open(u"sleepTimerSheet"_s));
        const QColor veiled = s->window->grabWindow().pixelColor(2, 60);
        QVERIFY(veiled != bare);
        s->sleep.beginCustom();
        QTRY_VERIFY(s->isOpen(u"customTimePicker"_s));
        QCOMPARE(s->window->grabWindow().pixelColor(2, 60), veiled);
        s->sleep.cancelCustom();
        QVERIFY(s->isGone(u"customTimePicker"_s));
        QCOMPARE(s->window->grabWindow().pixelColor(2, 60), veiled);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestSheetManners)
#include "tst_sheet_manners.moc"
