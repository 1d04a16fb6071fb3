// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemedScene.h"

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Every control, as it stands on a screen.
QByteArray controlNamed(const QByteArray &name)
{
    static const QMap<QByteArray, QByteArray> controls{
        {"ThemedAlbumCover", "size: 200"},
        {"ThemedControlButton", "systemName: \"shuffle\"; text: \"随机播放\""},
        {"ThemedHeartButton", "isFavorite: true"},
        {"ThemedIcon", "systemName: \"heart.fill\"; kawaiiName: KawaiiIcon.like"},
        {"ThemedOnlineSongRow", "width: 320; song: ({ title: \"晴天 Sunny 🌞\", subtitle: \"阿箬 · 远方\", "
                                "platformText: \"网易云\", isCurrent: "
                                "true })"},
        {"ThemedPlayButton", ""},
        {"ThemedProgressBar", "width: 320; progress: 0.4"},
        {"ThemedSearchBar", "width: 320; text: \"晴天\"; placeholder: \"搜索歌曲\""},
        {"ThemedSectionHeader", "width: 320; title: \"外观 Appearance\""},
        {"ThemedSegmentedPicker",
         "width: 320; options: [\"跟随系统\", \"浅色\", \"深色\"]; selection: \"浅色\"; "
         "name: \"外观\""},
        {"ThemedServerRow", "width: 320; config: ({ name: \"家里的 NAS\", host: \"nas.local\" }); "
                            "isConnected: true; songCount: 12"},
        {"ThemedSettingsItem",
         "width: 320; icon: \"gearshape.fill\"; iconColor: \"#8E8E93\"; title: \"设置\"; "
         "subtitle: \"开\""},
        {"ThemedSettingsSection", "width: 320; title: \"外观\"; ThemedSettingsItem { width: parent.width; "
                                  "icon: \"gearshape.fill\"; iconColor: "
                                  "\"#8E8E93\"; title: \"设置\" }"},
        {"ThemedSongRow",
         "width: 320; title: \"晴天\"; subtitle: \"阿箬\"; trailingText: \"3:20\"; isFavorite: true; "
         "isCurrent: true"},
    };
    return name.isEmpty() ? controls.keys().join(' ') : name + " { " + controls.value(name) + " }";
}

} // namespace

/// What all controls have in common.
class TestThemedControls : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    static void addControls()
    {
        QTest::addColumn<QByteArray>("name");
        for (const QByteArray &name : controlNamed({}).split(' '))
            QTest::newRow(name.constData()) << name;
    }
    /// All texts that are seen.
    static void collectTexts(QQuickItem *below, QList<QQuickItem *> &texts)
    {
        if (below->isVisible() && below->inherits("QQuickText") &&
            !below->property("text").toString().isEmpty())
            texts.append(below);
        const QList<QQuickItem *> children = below->childItems();
        for (QQuickItem *child : children)
            collectTexts(child, texts);
    }
    QList<QQuickItem *> texts() const
    {
        QList<QQuickItem *> all;
        collectTexts(s->root(), all);
        return all;
    }

private Q_SLOTS:
    void init() { s = std::make_unique<ThemedScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void controlsAreDrawnInEveryLook_data() { addControls(); }
    void controlsAreDrawnInEveryLook()
    {
        QFETCH(QByteArray, name);
        QVERIFY(s->show(controlNamed(name)));
        QImage before;
        for (const ThemeType type : allThemeTypes()) {
            for (const ColorScheme scheme : {ColorScheme::light, ColorScheme::dark}) {
                s->setTheme(type, scheme);
                QCOMPARE(s->root()->property("theme").value<AppTheme *>(), &s->theme());
                const auto differs = [&] { return s->grab() != before; };
                // The embossed look is the same in both schemes.
                if (type != ThemeType::neumorphism || scheme == ColorScheme::light)
                    QTRY_VERIFY(differs());
                before = s->grab();
            }
        }
    }
    void disabledControlsLookSo_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const QByteArray name :
             {"ThemedControlButton", "ThemedHeartButton", "ThemedPlayButton", "ThemedProgressBar",
              "ThemedSearchBar", "ThemedSegmentedPicker", "ThemedSettingsItem"})
            QTest::newRow(name.constData()) << name;
    }
    void disabledControlsLookSo()
    {
        QFETCH(QByteArray, name);
        QVERIFY(s->show(controlNamed(name)));
        const QImage before = s->grab();
        s->root()->setEnabled(false);
        QTRY_VERIFY(s->grab() != before);
    }
    void largeTextsAreNotCut_data() { addControls(); }
    void largeTextsAreNotCut()
    {
        QFETCH(QByteArray, name);
        QVERIFY(s->show(controlNamed(name)));
        const double usual = s->root()->implicitHeight();
        s->desktop.setTextScale(1.3);
        const double large = s->root()->implicitHeight();
        QVERIFY(large >= usual);
        s->root()->setHeight(large);
        for (QQuickItem *text : texts()) {
            const QRectF area = text->mapRectToItem(s->root(), QRectF({}, text->size()));
            QVERIFY2(area.top() >= 0 && area.bottom() <= large,
                     qPrintable(text->property("text").toString()));
            QVERIFY2(text->height() >= text->implicitHeight(), qPrintable(text->property("text").toString()));
        }
    }
    void controlsThatArePressedHaveANameAndRoom_data() { addControls(); }
    void controlsThatArePressedHaveANameAndRoom()
    {
        QFETCH(QByteArray, name);
        QVERIFY(s->show(controlNamed(name)));
        QList<QQuickItem *> pressed;
        if (s->root()->inherits("QQuickAbstractButton"))
            pressed.append(s->root());
        const QList<QQuickItem *> all = s->root()->findChildren<QQuickItem *>();
        for (QQuickItem *item : all) {
            if (item->isVisible() && item->inherits("QQuickAbstractButton") &&
                !item->inherits("QQuickMenuItem"))
                pressed.append(item);
        }
        for (QQuickItem *item : pressed) {
            QVERIFY(!ThemedScene::accessibleName(item).isEmpty());
            QVERIFY2(item->height() >= 44, item->metaObject()->className());
        }
    }
    void withoutMotionNothingMoves()
    {
        s->desktop.setReducesMotion(true);
        QVERIFY(s->show(
            "ThemedSegmentedPicker { objectName: \"segment\"; width: 308; options: [1, 2, 3]; selection: "
            "1; onSelected: option => selection = option }"));
        s->click(s->item(u"segment2"_s));
        QCOMPARE(s->item(u"pill"_s)->x(), 204.0);
        QVERIFY(s->show("ThemedHeartButton {}"));
        s->click(s->root());
        QVERIFY(s->root()->property("isAnimating").toBool());
        QCOMPARE(s->item(u"glyph"_s)->scale(), 1.0);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestThemedControls)
#include "tst_themed_controls.moc"
