// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemedScene.h"
#include "Theme/ThemedSurfaces.h"
#include "Utils/KawaiiIcon.h"

#include <QSignalSpy>

namespace cadorel {

using namespace Qt::StringLiterals;

/// Sections of settings, their rows, headings and icons.
class TestThemedSettingsRows : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    void showItem(const QByteArray &more = "subtitle: \"浅色\"", ThemeType type = ThemeType::classic,
                  ColorScheme scheme = ColorScheme::light)
    {
        QVERIFY(s->show("ThemedSettingsItem { width: 343; icon: \"paintbrush.fill\"; iconColor: \"#AF52DE\"; "
                        "title: \"界面主题\"; " +
                            more + " }",
                        type, scheme));
    }
    QRectF area(const QString &name) const
    {
        const QQuickItem *item = s->item(name);
        return item->mapRectToItem(s->root(), QRectF(0, 0, item->width(), item->height()));
    }
    QFont font(const QString &name) const { return s->item(name)->property("font").value<QFont>(); }
    QColor color(const QString &name) const { return s->item(name)->property("color").value<QColor>(); }

private Q_SLOTS:
    void init() { s = std::make_unique<ThemedScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void anItemShowsIconTitleSubtitleAndChevron_data() { addThemes(); }
    void anItemShowsIconTitleSubtitleAndChevron()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        showItem("subtitle: \"浅色\"", type, scheme);
        const AppTheme &theme = s->theme();
        QCOMPARE(s->item(u"square"_s)->property("surface").value<Surface>(),
                 ThemedSurfaces::settingsIcon(&s->theme(), QColor(0xAF, 0x52, 0xDE)));
        QCOMPARE(s->item(u"glyph"_s)->property("name").toString(), u"paintbrush.fill"_s);
        QCOMPARE(color(u"glyph"_s), QColor(Qt::white));
        QCOMPARE(color(u"itemTitle"_s), theme.primaryTextColor());
        QCOMPARE(font(u"itemTitle"_s).pixelSize(), 17);
        QCOMPARE(color(u"itemSubtitle"_s), theme.secondaryTextColor());
        QCOMPARE(font(u"itemSubtitle"_s).pixelSize(), 15);
        QCOMPARE(s->item(u"chevron"_s)->property("name").toString(), u"chevron.right"_s);
        const QColor chevron = color(u"chevron"_s);
        QCOMPARE(chevron.rgb() & 0xFFFFFF, theme.secondaryTextColor().rgb() & 0xFFFFFF);
        // Boxes of symbols of the sizes 15 and 12.
        QCOMPARE(s->item(u"glyph"_s)->width(), 18.0);
        QCOMPARE(s->item(u"chevron"_s)->width(), 14.0);
        QVERIFY(qAbs(chevron.alphaF() - 0.6F * theme.secondaryTextColor().alphaF()) < 0.01F);

        QVERIFY(area(u"square"_s).right() < area(u"itemTitle"_s).left());
        QVERIFY(area(u"itemTitle"_s).right() < area(u"itemSubtitle"_s).left());
        QVERIFY(area(u"itemSubtitle"_s).right() < area(u"chevron"_s).left());
        // The subtitle stands at the right end, whatever its length.
        QCOMPARE(area(u"square"_s).left(), 12.0);
        QCOMPARE(s->root()->width() - area(u"chevron"_s).right(), 8.0);
    }
    void theSubtitleIsOptional()
    {
        showItem("");
        QCOMPARE(area(u"itemSubtitle"_s).width(), 0.0);
        QCOMPARE(ThemedScene::accessibleName(s->item(u"Button"_s)), u"界面主题"_s);
        showItem();
        QCOMPARE(ThemedScene::accessibleName(s->item(u"Button"_s)), u"界面主题，浅色"_s);
        QCOMPARE(ThemedScene::accessible(s->item(u"Button"_s))->role(), QAccessible::Button);
    }
    void longTextsShareTheRow()
    {
        showItem("subtitle: \"一个非常非常非常非常非常非常非常长的副标题\"");
        s->root()->setWidth(288);
        s->root()->setProperty("title", u"一个也非常非常非常非常长的标题"_s);
        QVERIFY(area(u"itemTitle"_s).width() >= 60);
        QVERIFY(area(u"itemTitle"_s).right() < area(u"itemSubtitle"_s).left());
        QVERIFY(s->item(u"itemTitle"_s)->property("truncated").toBool());
        QVERIFY(s->item(u"itemSubtitle"_s)->property("truncated").toBool());
    }
    void anItemIsPressedByAll()
    {
        showItem();
        QSignalSpy clicks(s->root(), SIGNAL(clicked()));
        s->click(s->root());
        s->tap(s->root());
        QTRY_COMPARE(clicks.size(), 2);
        s->root()->forceActiveFocus(Qt::TabFocusReason);
        s->key(Qt::Key_Space);
        s->key(Qt::Key_Return);
        QCOMPARE(clicks.size(), 4);
        QVERIFY(s->root()->height() >= 44);
    }

    void aHeaderIsItsTitle_data() { addThemes(); }
    void aHeaderIsItsTitle()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(s->show("ThemedSectionHeader { width: 300; title: \"外观\" }", type, scheme));
        QCOMPARE(font(u"sectionTitle"_s).pixelSize(), 15);
        QCOMPARE(font(u"sectionTitle"_s).weight(), QFont::DemiBold);
        QCOMPARE(color(u"sectionTitle"_s), s->theme().secondaryTextColor());
        QCOMPARE(area(u"sectionTitle"_s).left(), 0.0);
        QCOMPARE(s->item(u"sectionTitle"_s)->property("horizontalAlignment").toInt(), int(Qt::AlignLeft));
        QAccessibleInterface *heading = ThemedScene::accessible(s->root());
        QCOMPARE(heading->role(), QAccessible::Heading);
        QCOMPARE(heading->text(QAccessible::Name), u"外观"_s);
    }

    void aSectionHoldsItsRows()
    {
        QVERIFY(s->show("ThemedSettingsSection { width: 343; title: \"外观\"\n"
                        "ThemedSettingsItem { objectName: \"first\"; width: parent.width; icon: \"gear\"; "
                        "iconColor: \"red\"; title: \"一\" }\n"
                        "ThemedSettingsItem { objectName: \"second\"; width: parent.width; icon: \"gear\"; "
                        "iconColor: \"red\"; title: \"二\" } }"));
        const QRectF card = area(u"card"_s);
        QVERIFY(area(u"sectionTitle"_s).bottom() < card.top());
        QVERIFY(card.contains(area(u"first"_s)));
        QVERIFY(card.contains(area(u"second"_s)));
        QVERIFY(area(u"first"_s).bottom() <= area(u"second"_s).top());
        QCOMPARE(s->root()->implicitHeight(), card.bottom());
        QCOMPARE(s->items(u"seam"_s).size(), 1);
        const double seam = area(u"seam"_s).top();
        QVERIFY(seam >= area(u"first"_s).bottom() && seam < area(u"second"_s).top());
        QCOMPARE(area(u"seam"_s).left(), area(u"itemTitle"_s).left());
        s->item(u"second"_s)->setVisible(false);
        QTRY_COMPARE(s->items(u"seam"_s).size(), 0);
        QCOMPARE(ThemedScene::accessibleName(s->root()), u"外观"_s);
    }
    void aSectionWithoutTitleIsItsCard()
    {
        QVERIFY(
            s->show("ThemedSettingsSection { width: 343\n"
                    "ThemedSettingsItem { width: parent.width; icon: \"gear\"; iconColor: \"red\"; title: "
                    "\"一\" } }"));
        QCOMPARE(area(u"card"_s).top(), 0.0);
        QVERIFY(!s->item(u"sectionTitle"_s)->isVisible());
    }
    void aSectionGivesItsLookToItsRows_data() { addThemes(); }
    void aSectionGivesItsLookToItsRows()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(
            s->show("ThemedSettingsSection { width: 343; title: \"外观\"\n"
                    "ThemedSettingsItem { width: parent.width; icon: \"gear\"; iconColor: \"red\"; title: "
                    "\"一\" } }",
                    type, scheme));
        QTRY_COMPARE(color(u"itemTitle"_s), s->theme().primaryTextColor());
    }

    void onlyThePinkLookDrawsPictures_data() { addThemes(); }
    void onlyThePinkLookDrawsPictures()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QVERIFY(
            s->show("ThemedIcon { systemName: \"shuffle\"; kawaiiName: KawaiiIcon.shuffle; color: \"red\" }",
                    type, scheme));
        QCOMPARE(s->root()->size(), QSizeF(24, 24));
        const bool isPink = type == ThemeType::kawaiiPink;
        QCOMPARE(s->item(u"symbol"_s)->property("name").toString(), isPink ? QString() : u"shuffle"_s);
        QCOMPARE(color(u"symbol"_s), QColor(Qt::red));
        QCOMPARE(s->item(u"picture"_s)->property("source").toUrl(),
                 isPink ? KawaiiIcon::artworkFile(u"shuffle"_s) : QUrl());
        const auto hasInk = [this] {
            const QImage picture = s->grab().copy(40, 40, 24, 24);
            for (int y = 0; y < 24; ++y) {
                for (int x = 0; x < 24; ++x) {
                    if (picture.pixelColor(x, y) != s->theme().backgroundColor())
                        return true;
                }
            }
            return false;
        };
        QTRY_VERIFY(hasInk());
    }
    void anIconWithoutAPictureIsASymbolInEveryLook_data()
    {
        QTest::addColumn<QByteArray>("picture");
        QTest::newRow("none") << QByteArray();
        QTest::newRow("unknown") << QByteArray("kawaiiName: \"nothing\"");
    }
    void anIconWithoutAPictureIsASymbolInEveryLook()
    {
        QFETCH(QByteArray, picture);
        QVERIFY(s->show("ThemedIcon { systemName: \"shuffle\"; size: 40; " + picture + " }",
                        ThemeType::kawaiiPink));
        QCOMPARE(s->item(u"symbol"_s)->property("name").toString(), u"shuffle"_s);
        QCOMPARE(s->item(u"symbol"_s)->size(), QSizeF(40, 40));
        QCOMPARE(color(u"symbol"_s), s->theme().primaryTextColor());
        QCOMPARE(s->item(u"picture"_s)->property("source").toUrl(), QUrl());
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemedSettingsRows)
#include "tst_themed_settings_rows.moc"
