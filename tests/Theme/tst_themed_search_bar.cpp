// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/LookGrounds.h"
#include "Theme/ThemedScene.h"
#include "Theme/ThemedSurfaces.h"

#include <QSignalSpy>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The field for what to look for.
class TestThemedSearchBar : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    void showBar(ThemeType type = ThemeType::classic, ColorScheme scheme = ColorScheme::light)
    {
        QVERIFY(s->show("ThemedSearchBar { objectName: \"search\"; width: 300; placeholder: \"搜索歌曲\" }",
                        type, scheme));
    }
    QQuickItem *field() const { return s->item(u"searchText"_s); }
    QQuickItem *clearButton() const { return s->item(u"searchClear"_s); }
    QString text() const { return s->root()->property("text").toString(); }

private Q_SLOTS:
    void init() { s = std::make_unique<ThemedScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void theClearButtonIsThereWithTextAlone()
    {
        showBar();
        QVERIFY(!clearButton()->isVisible());
        s->root()->setProperty("text", u"雨"_s);
        QVERIFY(clearButton()->isVisible());
        QCOMPARE(clearButton()->property("symbol").toString(), u"xmark.circle.fill"_s);
        s->root()->setProperty("text", QString());
        QVERIFY(!clearButton()->isVisible());
    }
    void theClearButtonEmptiesTheText()
    {
        showBar();
        s->root()->setProperty("text", u"雨"_s);
        QSignalSpy edited(s->root(), SIGNAL(edited(QString)));
        s->click(clearButton());
        QCOMPARE(text(), QString());
        QCOMPARE(edited.size(), 1);
        QCOMPARE(edited.first().first().toString(), QString());
        QVERIFY2(field()->hasActiveFocus(), "the next word is typed at once");
    }
    void escapeEmptiesTheText()
    {
        showBar();
        s->click(field());
        s->type("rain");
        s->key(Qt::Key_Escape);
        QCOMPARE(text(), QString());
    }
    void escapeInAnEmptyFieldIsOthers()
    {
        QVERIFY(s->show("Item { width: 300; height: 60; property bool escaped: false\n"
                        "Keys.onEscapePressed: escaped = true\n"
                        "ThemedSearchBar { objectName: \"search\"; width: 300 } }"));
        s->click(field());
        s->type("a");
        s->key(Qt::Key_Escape);
        QCOMPARE(s->root()->property("escaped").toBool(), false);
        s->key(Qt::Key_Escape);
        QCOMPARE(s->root()->property("escaped").toBool(), true);
    }
    void keysAreToldToTheScreen()
    {
        showBar();
        QSignalSpy edited(s->root(), SIGNAL(edited(QString)));
        QSignalSpy submitted(s->root(), SIGNAL(submitted()));
        QSignalSpy down(s->root(), SIGNAL(leftDownwards()));
        s->root()->forceActiveFocus();
        QVERIFY(field()->hasActiveFocus());
        s->type("ab");
        QCOMPARE(edited.size(), 2);
        QCOMPARE(edited.last().first().toString(), u"ab"_s);
        s->key(Qt::Key_Return);
        QCOMPARE(submitted.size(), 1);
        s->key(Qt::Key_Down);
        QCOMPARE(down.size(), 1);
    }
    void aHeldReturnSubmitsOnce_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("Return") << Qt::Key_Return;
        QTest::newRow("Enter") << Qt::Key_Enter;
    }
    void aHeldReturnSubmitsOnce()
    {
        QFETCH(Qt::Key, key);
        showBar();
        QSignalSpy submitted(s->root(), SIGNAL(submitted()));
        s->root()->forceActiveFocus();
        s->holdKey(key);
        QCOMPARE(submitted.size(), 1);
    }
    void aReturnHeldOnTheClearButtonEmptiesAlone_data() { aHeldReturnSubmitsOnce_data(); }
    void aReturnHeldOnTheClearButtonEmptiesAlone()
    {
        QFETCH(Qt::Key, key);
        showBar();
        s->root()->setProperty("text", u"雨"_s);
        QSignalSpy edited(s->root(), SIGNAL(edited(QString)));
        QSignalSpy submitted(s->root(), SIGNAL(submitted()));
        clearButton()->forceActiveFocus(Qt::TabFocusReason);
        s->holdKey(key);
        QCOMPARE(text(), QString());
        QCOMPARE(edited.size(), 1);
        QCOMPARE(submitted.size(), 0);
    }
    void thePlaceholderGoesWithTheFirstLetter()
    {
        showBar();
        QVERIFY(s->item(u"placeholder"_s)->isVisible());
        s->root()->setProperty("text", u"a"_s);
        QVERIFY(!s->item(u"placeholder"_s)->isVisible());
    }
    void longTextStaysInTheField()
    {
        showBar();
        s->root()->setProperty("text", u"一首名字很长很长很长很长很长很长很长很长很长的歌"_s);
        const double end = field()->x() + field()->width();
        QVERIFY(end <= clearButton()->x());
        QVERIFY(field()->clip());
    }
    void aLongTextShowsItsBeginningWhileNobodyTypes()
    {
        showBar();
        const auto beginning = [this] {
            QRectF cursor;
            QMetaObject::invokeMethod(field(), "positionToRectangle", Q_RETURN_ARG(QRectF, cursor),
                                      Q_ARG(int, 0));
            return cursor.x();
        };
        s->root()->setProperty("text", u"一首名字特别特别特别特别特别特别特别特别长的歌"_s);
        QVERIFY(beginning() >= 0);
        field()->forceActiveFocus();
        s->key(Qt::Key_End);
        QVERIFY(beginning() < 0);
        field()->setFocus(false);
        QTRY_VERIFY(beginning() >= 0);
    }
    void thereIsRoomAroundTheText()
    {
        showBar();
        QCOMPARE(s->item(u"lens"_s)->x(), 12.0);
        // A line of 22 with 12 above and below.
        QCOMPARE(s->root()->height(), 46.0);
    }
    void aScreenReaderMeetsASearchField()
    {
        showBar();
        QAccessibleInterface *accessible = ThemedScene::accessible(field());
        QCOMPARE(accessible->role(), QAccessible::EditableText);
        QCOMPARE(accessible->text(QAccessible::Name), u"搜索歌曲"_s);
        QVERIFY(accessible->state().searchEdit);
        s->root()->setProperty("text", u"a"_s);
        QCOMPARE(ThemedScene::accessibleName(clearButton()), u"清空输入"_s);
    }
    void theLookGivesItsColours_data() { addThemes(); }
    void theLookGivesItsColours()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showBar(type, scheme);
        QCOMPARE(s->item(u"lens"_s)->property("name").toString(), u"magnifyingglass"_s);
        QCOMPARE(s->item(u"lens"_s)->property("color").value<QColor>(), s->theme().secondaryTextColor());
        const auto placeholder = s->item(u"placeholder"_s)->property("color").value<QColor>();
        QVERIFY(leastRatio(s->theme(), ThemedSurfaces::searchBar(&s->theme()).fill, placeholder) >=
                Contrast::legible);
        QCOMPARE(field()->property("color").value<QColor>(), s->theme().primaryTextColor());
        QCOMPARE(s->item(u"ground"_s)->property("surface").value<Surface>(),
                 ThemedSurfaces::searchBar(&s->theme()));
        QVERIFY(!s->item(u"focusRing"_s)->isVisible());
        s->click(field());
        QVERIFY(s->item(u"focusRing"_s)->isVisible());
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemedSearchBar)
#include "tst_themed_search_bar.moc"
