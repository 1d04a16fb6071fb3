// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemedScene.h"
#include "Theme/ThemedSurfaces.h"

#include <functional>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

using SurfaceOf = std::function<Surface(AppTheme *)>;

struct Modifier
{
    QByteArray qml;
    SurfaceOf surface;
};

QList<Modifier> modifiers()
{
    using S = ThemedSurfaces;
    return {
        {"NeumorphismRaisedModifier { ", [](AppTheme *t) { return S::neumorphismRaised(t, 12, 1); }},
        {"NeumorphismRaisedModifier { cornerRadius: 20; intensity: 0.5; ",
         [](AppTheme *t) { return S::neumorphismRaised(t, 20, 0.5); }},
        {"NeumorphismPressedModifier { ", [](AppTheme *t) { return S::neumorphismPressed(t, 12, 1); }},
        {"NeumorphismPressedModifier { cornerRadius: 20; intensity: 0.5; ",
         [](AppTheme *t) { return S::neumorphismPressed(t, 20, 0.5); }},
        {"KawaiiCardModifier { ", [](AppTheme *t) { return S::kawaiiCard(t, 16); }},
        {"KawaiiCardModifier { cornerRadius: 20; ", [](AppTheme *t) { return S::kawaiiCard(t, 20); }},
        {"ThemedCard { ", [](AppTheme *t) { return S::themedCard(t, 12); }},
        {"ThemedCard { cornerRadius: 20; ", [](AppTheme *t) { return S::themedCard(t, 20); }},
        {"ThemedButtonBackground { ", [](AppTheme *t) { return S::themedButton(t, false, 12); }},
        {"ThemedButtonBackground { isPressed: true; cornerRadius: 20; ",
         [](AppTheme *t) { return S::themedButton(t, true, 20); }},
        {"ThemedRowModifier { ", [](AppTheme *t) { return S::themedRow(t); }},
        {"AutoThemedRowModifier { ", [](AppTheme *t) { return S::themedRow(t); }},
        {"ThemedArtworkModifier { ", [](AppTheme *t) { return S::themedRowArtwork(t, 8); }},
        {"ThemedSegmentedPickerModifier { ", [](AppTheme *t) { return S::themedSegmentedPicker(t, 8); }},
    };
}

} // namespace

/// The grounds as items, in every look and colour scheme.
class ModifiersTest : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    void setLook()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        s->setTheme(type, scheme);
    }
    static QColor colorOf(const QQuickItem *item) { return item->property("color").value<QColor>(); }

private Q_SLOTS:
    void init() { s = std::make_unique<ThemedScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void groundsFollowTheLookAround_data() { addThemes(); }
    void groundsFollowTheLookAround()
    {
        for (const Modifier &modifier : modifiers()) {
            QVERIFY(s->show(modifier.qml + "width: 160; height: 100 }"));
            setLook();
            QCOMPARE(s->root()->property("surface").value<Surface>(), modifier.surface(&s->theme()));
            // Something of it is seen.
            QImage bare = s->grab();
            bare.fill(s->window()->color());
            QVERIFY2(s->grab() != bare, modifier.qml.constData());
        }
    }
    void groundsTakeTheLookTheyAreGiven()
    {
        AppTheme &given = ThemeFactory::create(ThemeType::neumorphism);
        for (const Modifier &modifier : modifiers()) {
            QVERIFY(s->show(modifier.qml + "width: 160; height: 100 }", ThemeType::kawaiiPink));
            s->root()->setProperty("theme", QVariant::fromValue(&given));
            QCOMPARE(s->root()->property("surface").value<Surface>(), modifier.surface(&given));
        }
    }
    void coverHasItsShadowAndItsStroke_data() { addThemes(); }
    void coverHasItsShadowAndItsStroke()
    {
        QVERIFY(s->show("AlbumCoverShadowModifier { width: 200; height: 200; cornerRadius: 20 }"));
        setLook();
        const QList<QQuickItem *> layers = s->root()->childItems();
        QCOMPARE(layers.size(), 2);
        QCOMPARE(layers.at(0)->property("surface").value<Surface>(),
                 ThemedSurfaces::albumCoverShadow(&s->theme(), 20));
        QCOMPARE(layers.at(1)->property("surface").value<Surface>(),
                 ThemedSurfaces::albumCoverStroke(&s->theme(), 20));
        // The cover itself stays as it is.
        const QImage seen = s->grab();
        QCOMPARE(seen.pixelColor(140, 140).rgb(), s->window()->color().rgb());
    }
    void screenLiesOnTheBackground_data() { addThemes(); }
    void screenLiesOnTheBackground()
    {
        for (const QByteArray &name : {"ThemedViewModifier"_ba, "ThemedListModifier"_ba}) {
            QVERIFY(s->show(name +
                            " { width: 200; height: 200; Rectangle { x: 50; y: 50; width: 100; height: 100; "
                            "color: \"#123456\" } }"));
            setLook();
            QTRY_COMPARE(s->grab().pixelColor(140, 140), QColor(0x12, 0x34, 0x56));
            const QColor corner = s->grab().pixelColor(45, 45);
            if (s->theme().backgroundGradient().isEmpty())
                QCOMPARE(corner.rgb(), s->theme().backgroundColor().rgb());
            else
                QVERIFY(corner != s->window()->color());
            QCOMPARE(s->root()->property("theme").value<AppTheme *>(), &s->theme());
        }
    }
    void textsHaveTheColorsOfTheLook_data() { addThemes(); }
    void textsHaveTheColorsOfTheLook()
    {
        QVERIFY(s->show("Row { ThemedPrimaryText { text: \"一\" } ThemedSecondaryText { text: \"二\" } "
                        "ThemedAccentText { text: \"三\" } }"));
        setLook();
        const QList<QQuickItem *> texts = s->root()->childItems();
        QCOMPARE(colorOf(texts.at(0)), s->theme().primaryTextColor());
        QCOMPARE(colorOf(texts.at(1)), s->theme().secondaryTextColor());
        QCOMPARE(colorOf(texts.at(2)), s->theme().primaryColor());
    }
};

QTEST_MAIN(ModifiersTest)
#include "tst_modifiers.moc"
