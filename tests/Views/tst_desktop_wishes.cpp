// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/EqualizerService.h"
#include "Theme/ThemeManager.h"
#include "ViewModels/EqualizerViewModel.h"
#include "Views/ScreenTest.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

/// The window on a desktop that wants texts of another size, or less motion, or another look.
class DesktopWishesTest : public ScreenTest
{
    Q_OBJECT

private:
    struct SeenText
    {
        QString text;
        QRectF area;
    };

    /// What is seen of the texts that are not scrolled away or covered by a sheet.
    QList<SeenText> seenTexts() const
    {
        QList<SeenText> seen;
        const QList<QQuickItem *> items = t->visibleItems();
        for (QQuickItem *item : items) {
            if (!item->inherits("QQuickText") || item->property("text").toString().isEmpty() ||
                item->opacity() == 0)
                continue;
            // Of a text that is centred in a higher item, the lines.
            const double height = item->property("contentHeight").toReal();
            const QRectF lines(0, (item->height() - height) / 2, item->property("contentWidth").toReal(),
                               height);
            seen.append({item->property("text").toString(), item->mapRectToScene(lines)});
        }
        return seen;
    }

    /// No text is cut off and none lies on another.
    void checkTexts(const QString &state) const
    {
        const QList<QQuickItem *> items = t->visibleItems();
        for (QQuickItem *item : items) {
            if (!item->inherits("QQuickText") || !item->clip())
                continue;
            QVERIFY2(item->property("contentHeight").toReal() <= item->height() + 1,
                     qPrintable(state + u": cut off: "_s + item->property("text").toString()));
        }
        const QList<SeenText> seen = seenTexts();
        QVERIFY2(seen.size() > 3, qPrintable(state));
        for (qsizetype i = 0; i < seen.size(); ++i) {
            for (qsizetype j = i + 1; j < seen.size(); ++j) {
                const QRectF both = seen.at(i).area & seen.at(j).area;
                QVERIFY2(both.width() <= 1 || both.height() <= 1,
                         qPrintable(u"%1: %2 lies on %3"_s.arg(state, seen.at(i).text, seen.at(j).text)));
            }
        }
    }

private Q_SLOTS:
    void textsGrowWithoutTouching_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<QSize>("size");
        for (const double scale : {0.8, 1.0, 1.3, 1.5}) {
            for (const QSize size : {QSize(320, 480), QSize(390, 844), QSize(900, 640)})
                QTest::addRow("%g %d", scale, size.width()) << scale << size;
        }
    }
    void textsGrowWithoutTouching()
    {
        QFETCH(const double, scale);
        QFETCH(const QSize, size);
        t->appearance->setTextScale(scale);
        QVERIFY(showLibrary(3)); // few enough to fit, so that nothing lies beneath the bar
        t->window->resize(size);
        QTRY_COMPARE(t->window->contentItem()->size().toSize(), size);
        QTRY_VERIFY(t->row(1));
        check(u"library"_s);
        QVERIFY(playRow(0));
        QTRY_VERIFY(t->shows(u"miniPlayerDisc"_s));
        check(u"playing"_s);
        if (size.height() > 500)
            checkTexts(u"playing"_s);
    }

    void textsFollowWhileTheWindowIsOpen()
    {
        QVERIFY(showLibrary());
        QTRY_VERIFY(t->row(1));
        const auto titleSize = [this] {
            const QList<QQuickItem *> items = t->visibleItems();
            for (const QQuickItem *item : items) {
                if (item->inherits("QQuickText") && item->property("text").toString() == u"歌 1")
                    return item->property("font").value<QFont>().pixelSize();
            }
            return 0;
        };
        QCOMPARE(titleSize(), 17);
        t->appearance->setTextScale(1.3);
        QCOMPARE(titleSize(), 22);
        t->appearance->setTextScale(1);
        QCOMPARE(titleSize(), 17);
    }

    void lessMotionMeansNone()
    {
        t->appearance->setReducesMotion(true);
        QVERIFY(showLibrary());
        t->equalizer->open();
        QTRY_VERIFY(t->object(u"equalizerView"_s));
        // A sheet is at its place with the next frame.
        QObject *sheet = t->object(u"equalizerView"_s);
        QTRY_VERIFY(sheet->property("opened").toBool());
        QQmlComponent component(t->engine.get());
        component.setData(
            "import Cadorel\nimport QtQml\nQtObject { property int sheet: Metrics.sheetDuration;"
            " property int any: Motion.scaled(1000) }",
            QUrl());
        const std::unique_ptr<QObject> times(component.create());
        QVERIFY2(times, qPrintable(component.errorString()));
        QCOMPARE(times->property("sheet").toInt(), 0);
        QCOMPARE(times->property("any").toInt(), 0);
        t->appearance->setReducesMotion(false);
        QCOMPARE(times->property("sheet").toInt(), 300);
        QCOMPARE(times->property("any").toInt(), 1000);
    }

    /// An unknown look is the plain one, and the scheme counts in each.
    void anotherStoredLookBreaksNothing_data()
    {
        QTest::addColumn<QString>("look");
        QTest::addColumn<bool>("dark");
        for (const char *look : {"neumorphism", "kawaiiPink", "midnight"}) {
            for (const bool dark : {false, true})
                QTest::addRow("%s %s", look, dark ? "dark" : "light") << QString::fromLatin1(look) << dark;
        }
    }
    void anotherStoredLookBreaksNothing()
    {
        QFETCH(const QString, look);
        QFETCH(const bool, dark);
        QGuiApplication::setPalette(QPalette(dark ? QColor(0x22, 0x22, 0x22) : QColor(0xee, 0xee, 0xee)));
        t->themeManager->switchTo(themeTypeOf(look).value_or(ThemeType::classic));
        QCoreApplication::processEvents();
        QVERIFY(showLibrary());
        QTRY_VERIFY(t->row(1));
        const auto ground = [this] { return t->themeManager->currentTheme()->backgroundColor(); };
        // One of the looks is light on every desktop.
        const bool follows = t->themeManager->currentThemeType() != ThemeType::neumorphism;
        const QColor before = ground();
        QCOMPARE(t->window->color(), before);
        QCOMPARE(before.lightnessF() < 0.5, dark && follows);
        QVERIFY(playRow(0));
        check(u"playing"_s);
        // The desktop changes while the player runs.
        QGuiApplication::setPalette(QPalette(dark ? QColor(0xee, 0xee, 0xee) : QColor(0x22, 0x22, 0x22)));
        QCOMPARE(t->window->color(), ground());
        QCOMPARE(ground() != before, follows);
        QCOMPARE(t->themeManager->currentTheme()->isDark(), !dark);
        check(u"after the change"_s);
    }
};

QTEST_MAIN(DesktopWishesTest)
#include "tst_desktop_wishes.moc"
