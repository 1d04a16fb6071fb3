// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/SheetScene.h"

#include <QDir>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

/// The settings of the player's screen.
class TestNowPlayingSettings : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<SheetScene> s;

    [[nodiscard]] bool showSettings(ThemeType type, QSize size = {390, 844})
    {
        return s->switchTo(type, s->desktop.colorScheme()) && s->show(size) &&
               s->open(u"nowPlayingSettings"_s);
    }
    /// In the look that this row of the test's data names.
    [[nodiscard]] bool showSettingsInLook()
    {
        QFETCH(ThemeType, type);
        QFETCH(ColorScheme, scheme);
        QFETCH(QSize, size);
        QFETCH(double, textScale);
        s->desktop.setTextScale(textScale);
        s->desktop.setColorScheme(scheme);
        return showSettings(type, size);
    }
    void clickInSheet(const QString &name) const
    {
        s->reveal(name);
        s->click(name);
    }
    /// Opens the menu of a row and takes the entry of that raw value.
    void choose(const QString &row, const QString &rawValue) const
    {
        clickInSheet(row);
        QTRY_VERIFY(s->sheet(row + u"Menu"_s)->property("opened").toBool());
        s->click(row + rawValue);
        QTRY_VERIFY(!s->sheet(row + u"Menu"_s)->property("visible").toBool());
    }
    void set(const QString &slider, double value) const
    {
        SheetScene::accessible(s->item(slider))->valueInterface()->setCurrentValue(value);
    }
    /// Titles of the groups, in their order.
    QStringList groups() const
    {
        QStringList titles;
        const QList<QQuickItem *> items = s->allItems();
        for (const QQuickItem *item : items)
            if (item->isVisible() && item->objectName() == u"sectionTitle"_s)
                titles.append(item->property("text").toString());
        return titles;
    }
    void save(const QString &name) const
    {
        const QString folder = qEnvironmentVariable("CADOREL_PICTURES");
        if (!folder.isEmpty())
            QVERIFY(s->window->grabWindow().save(
                QDir(folder).filePath(name + u'-' + QLatin1StringView(QTest::currentDataTag()) + u".png"_s)));
    }
    /// Every picture of a cassette has come.
    bool areCassettesDrawn() const
    {
        constexpr int ready = 1;
        const QList<QQuickItem *> items = s->allItems();
        return std::ranges::all_of(items, [](const QQuickItem *item) {
            return item->objectName() != u"cassette"_s || !item->parentItem()->parentItem()->isVisible() ||
                   item->property("status").toInt() == ready;
        });
    }
    void checkAndSave(const QString &name) const
    {
        QTRY_COMPARE(s->faults(), QStringList());
        save(name);
    }

private Q_SLOTS:
    void init() { s = std::make_unique<SheetScene>(); }
    void cleanup()
    {
        const QStringList warnings = s->takeWarnings();
        s.reset();
        QCOMPARE(warnings, QStringList());
    }

    void inEachLookNothingIsCut_data() { addSheetLooks(); }
    void inEachLookNothingIsCut()
    {
        QFETCH(ThemeType, type);
        QVERIFY(showSettingsInLook());
        checkAndSave(u"settings-top"_s);
        s->theme.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::customImage);
        s->reveal(u"backgroundBlur"_s);
        checkAndSave(u"settings-picture"_s);
        s->theme.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::customColor);
        const QString last = type == ThemeType::kawaiiPink ? u"cassetteReset"_s : u"circleCover"_s;
        s->reveal(last);
        checkAndSave(u"settings-end"_s);
        if (type == ThemeType::kawaiiPink) {
            s->reveal(u"cassettestyle2"_s);
            QTRY_VERIFY(areCassettesDrawn());
            checkAndSave(u"settings-cassettes"_s);
        }
        QVERIFY(s->open(u"backgroundColorPicker"_s));
        checkAndSave(u"background-color"_s);
        s->key(Qt::Key_Escape);
        QVERIFY(s->isGone(u"backgroundColorPicker"_s));
        QVERIFY(s->open(u"emojiPicker"_s));
        checkAndSave(u"emoji"_s);
    }

    void theTitleNamesTheLook_data()
    {
        QTest::addColumn<ThemeType>("type");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("groups");
        QTest::newRow("classic") << ThemeType::classic << u"经典"_s
                                 << QStringList{u"歌词"_s, u"背景"_s, u"动效"_s, u"封面"_s, u"主题特点"_s};
        QTest::newRow("neumorphism") << ThemeType::neumorphism << u"拟态风格"_s
                                     << QStringList{u"歌词"_s, u"背景"_s, u"动效"_s, u"封面"_s};
        QTest::newRow("kawaiiPink") << ThemeType::kawaiiPink << u"可爱粉粉"_s
                                    << QStringList{u"歌词"_s, u"背景"_s, u"磁带样式"_s, u"主题特点"_s};
    }
    void theTitleNamesTheLook()
    {
        QFETCH(ThemeType, type);
        QFETCH(QString, name);
        QVERIFY(showSettings(type));
        QCOMPARE(s->text(u"sheetTitle"_s), u"播放界面 - "_s + name);
        QCOMPARE(s->text(u"currentTheme"_s), u"当前主题: "_s + name);
        QTEST(groups(), "groups");
        QCOMPARE(s->shows(u"cassettePreview"_s), type == ThemeType::kawaiiPink);
    }
    void lyricsAreSet()
    {
        QVERIFY(showSettings(ThemeType::classic));
        choose(u"lyricAnimation"_s, u"typewriter"_s);
        QCOMPARE(s->theme.lyricAnimationStyle(), LyricAnimationStyle::typewriter);
        QCOMPARE(s->accessibleName(u"lyricAnimation"_s), u"歌词动画，下落"_s);
        choose(u"lyricsAlignment"_s, u"left"_s);
        QCOMPARE(s->theme.lyricsAlignment(), LyricsAlignment::left);
        clickInSheet(u"lyricsBlur"_s);
        QCOMPARE(s->theme.lyricsBlurEnabled(), false);
        set(u"lyricsFontSizeSlider"_s, 22);
        QCOMPARE(s->theme.lyricsFontSize(), 22.0F);
        QCOMPARE(s->item(u"lyricsFontSize"_s)->property("valueText").toString(), u"22pt"_s);
    }
    void theBackgroundIsSet()
    {
        QVERIFY(showSettings(ThemeType::classic));
        QVERIFY(!s->shows(u"backgroundFromAlbum"_s));
        QVERIFY(!s->shows(u"backgroundBlur"_s));
        QVERIFY(!s->shows(u"backgroundColor"_s));
        choose(u"backgroundStyle"_s, u"customImage"_s);
        QCOMPARE(s->theme.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::customImage);
        QTRY_VERIFY(s->shows(u"backgroundFromAlbum"_s) && s->shows(u"backgroundFromFile"_s) &&
                    s->shows(u"backgroundClear"_s) && s->shows(u"backgroundBlur"_s));
        QCOMPARE(s->item(u"backgroundClear"_s)->isEnabled(), false);
        set(u"backgroundBlurSlider"_s, 12);
        QCOMPARE(s->theme.customBackgroundBlur(), 12.0F);
        set(u"backgroundOpacitySlider"_s, 0.5);
        QCOMPARE(s->theme.nowPlayingBackgroundOpacity(), 0.5);
        QCOMPARE(s->item(u"backgroundOpacity"_s)->property("valueText").toString(), u"50%"_s);
        choose(u"backgroundStyle"_s, u"customColor"_s);
        QTRY_VERIFY(s->shows(u"backgroundColor"_s) && !s->shows(u"backgroundFromAlbum"_s));
    }
    void aPictureIsChosenAndCleared()
    {
        QTemporaryDir directory;
        QImage image(60, 40, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(directory.filePath(u"a.png"_s)));
        s->picker.answer = QList<QUrl>{QUrl::fromLocalFile(directory.filePath(u"a.png"_s))};
        s->theme.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::customImage);
        QVERIFY(showSettings(ThemeType::classic));
        clickInSheet(u"backgroundFromFile"_s);
        QTRY_VERIFY(!s->theme.customBackgroundImage().isNull());
        QTRY_VERIFY(s->item(u"backgroundClear"_s)->isEnabled());
        clickInSheet(u"backgroundClear"_s);
        QVERIFY(s->theme.customBackgroundImage().isNull());
        QCOMPARE(s->theme.nowPlayingBackgroundStyle(), NowPlayingBackgroundStyle::customImage);
    }
    void withoutADesktopDialogThePlayersOwnIsShown()
    {
        s->theme.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::customImage);
        QVERIFY(showSettings(ThemeType::classic));
        clickInSheet(u"backgroundFromAlbum"_s);
        QTRY_VERIFY(s->isOpen(u"pictureSheet"_s));
    }
    void aColourIsChosenByItsName()
    {
        s->theme.setNowPlayingBackgroundStyle(NowPlayingBackgroundStyle::customColor);
        QVERIFY(showSettings(ThemeType::classic));
        clickInSheet(u"backgroundColor"_s);
        QTRY_VERIFY(s->isOpen(u"backgroundColorPicker"_s));
        QStringList names;
        for (int i = 0; i < 12; ++i)
            names.append(s->text(u"swatch%1"_s.arg(i)));
        QCOMPARE(names, (QStringList{u"紫色"_s, u"蓝色"_s, u"青色"_s, u"绿色"_s, u"黄色"_s, u"橙色"_s,
                                     u"红色"_s, u"粉色"_s, u"靛蓝"_s, u"薄荷"_s, u"棕色"_s, u"灰色"_s}));
        clickInSheet(u"swatch9"_s);
        QCOMPARE(s->theme.customBackgroundColor(), systemColors(ColorScheme::light).mint);
        QTRY_COMPARE(s->item(u"swatch9"_s)->property("isSelected").toBool(), true);
    }
    void whatMovesAboutTheCoverIsSet()
    {
        QVERIFY(showSettings(ThemeType::neumorphism));
        clickInSheet(u"soundWaveRing"_s);
        QCOMPARE(s->theme.showSoundWaveRing(), false);
        clickInSheet(u"circleCover"_s);
        QCOMPARE(s->theme.albumCoverCornerRadius(), 50.0F);
        clickInSheet(u"squareCover"_s);
        QCOMPARE(s->theme.albumCoverCornerRadius(), 0.0F);
        set(u"coverRadiusSlider"_s, 20);
        QCOMPARE(s->theme.albumCoverCornerRadius(), 20.0F);
        clickInSheet(u"dancingEmoji"_s);
        QTRY_VERIFY(s->isOpen(u"emojiPicker"_s));
        clickInSheet(u"emoji4"_s);
        QCOMPARE(s->theme.dancingEmoji(), u"🎧"_s);
        QTRY_COMPARE(s->text(u"emojiPreview"_s), u"🎧"_s);
    }
    void aPictureDancesInsteadOfTheEmoji()
    {
        QVERIFY(showSettings(ThemeType::classic));
        QVERIFY(s->open(u"emojiPicker"_s));
        QVERIFY(!s->shows(u"removePicture"_s));
        QImage image(60, 60, QImage::Format_RGB32);
        image.fill(Qt::green);
        s->theme.setCustomDancingImage(image);
        QTRY_VERIFY(s->shows(u"removePicture"_s) && s->shows(u"dancingPicture"_s));
        QVERIFY(!s->shows(u"emojiPreview"_s));
        clickInSheet(u"removePicture"_s);
        QCOMPARE(s->theme.useCustomImage(), false);
        QTRY_VERIFY(s->shows(u"emojiPreview"_s));
    }
    void whatTheKeyboardComesToIsInSight_data() { addSheetLooks(); }
    void whatTheKeyboardComesToIsInSight()
    {
        QVERIFY(showSettingsInLook());
        QQuickItem *scroller = s->item(u"sheetScroller"_s);
        const auto isScrolled = [scroller](const QQuickItem *item) {
            return scroller->property("contentItem").value<QQuickItem *>()->isAncestorOf(item);
        };
        int stops = 0;
        double farthest = 0;
        for (int i = 0; i < 60; ++i) {
            s->key(Qt::Key_Tab);
            s->settle();
            const QQuickItem *item = s->focused();
            QVERIFY(item);
            if (!isScrolled(item))
                continue;
            ++stops;
            const QRectF area = item->mapRectToItem(scroller, QRectF({}, item->size()));
            QVERIFY2(area.top() >= 0 && area.bottom() <= scroller->height(), qPrintable(item->objectName()));
            farthest = std::max(farthest, scroller->property("contentY").toReal());
        }
        QVERIFY(stops > 10);
        QVERIFY(farthest > 0);
    }
    void whatTheListenerScrolledToStaysWhenTheKeyboardComesBack()
    {
        QVERIFY(showSettings(ThemeType::classic, {320, 568}));
        const QQuickItem *scroller = s->item(u"sheetScroller"_s);
        for (int i = 0; i < 4; ++i)
            s->key(Qt::Key_Tab);
        QQuickItem *row = s->focused();
        QVERIFY(row && scroller->property("contentItem").value<QQuickItem *>()->isAncestorOf(row));
        const double end = scroller->property("contentHeight").toReal() - scroller->height();
        s->item(u"sheetScroller"_s)->setProperty("contentY", end);
        QVERIFY(row->mapToItem(scroller, QPointF(0, row->height())).y() < 0);
        // A menu over it takes the keyboard and gives it back.
        s->item(u"opener"_s)->forceActiveFocus();
        QVERIFY(!row->hasActiveFocus());
        row->forceActiveFocus();
        QVERIFY(row->hasActiveFocus());
        QCOMPARE(scroller->property("contentY").toReal(), end);
        s->key(Qt::Key_Tab);
        QTRY_VERIFY(scroller->property("contentY").toReal() < end);
    }
    void whatTheKeyboardIsLedBackToIsInSight()
    {
        QVERIFY(showSettings(ThemeType::classic, {320, 568}));
        QQuickItem *scroller = s->item(u"sheetScroller"_s);
        const auto isInside = [scroller](const QQuickItem *item) {
            return scroller->property("contentItem").value<QQuickItem *>()->isAncestorOf(item);
        };
        constexpr int most = 20;
        for (int i = 0; i < most && !isInside(s->focused()); ++i)
            s->key(Qt::Key_Tab);
        QQuickItem *first = s->focused();
        QVERIFY(isInside(first));
        QTest::keyClick(s->window, Qt::Key_Backtab, Qt::ShiftModifier);
        QVERIFY(s->focused() && !isInside(s->focused()));
        scroller->setProperty("contentY", scroller->property("contentHeight").toReal() - scroller->height());
        QVERIFY(first->mapToItem(scroller, QPointF(0, first->height())).y() < 0);
        s->key(Qt::Key_Tab);
        QCOMPARE(s->focused(), first);
        QTRY_VERIFY(first->mapToItem(scroller, QPointF()).y() >= 0);
    }
    void aSheetThatIsClosedAsksForNoPicture()
    {
        QVERIFY(showSettings(ThemeType::classic));
        QVERIFY(QMetaObject::invokeMethod(s->sheet(u"nowPlayingSettings"_s), "close"));
        QTRY_VERIFY(s->isGone(u"nowPlayingSettings"_s));
        // Another sheet over the same settings has been asked.
        QSignalSpy asked(&s->settings, &NowPlayingSettingsViewModel::ownPictureDialogRequested);
        s->settings.chooseBackgroundImage();
        QTRY_COMPARE(asked.count(), 1);
        QVERIFY(!s->isOpen(u"pictureSheet"_s));
        QVERIFY(s->open(u"nowPlayingSettings"_s));
        s->settings.chooseBackgroundImage();
        QTRY_VERIFY(s->isOpen(u"pictureSheet"_s));
    }
    void whatIsNoPictureIsToldWhereItWasChosen()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"no.png"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no picture") > 0);
        file.close();
        s->picker.answer = QList<QUrl>{QUrl::fromLocalFile(path)};
        QVERIFY(showSettings(ThemeType::classic));
        QVERIFY(s->open(u"emojiPicker"_s));
        QVERIFY(!s->shows(u"dancingNotice"_s));
        clickInSheet(u"importPicture"_s);
        QTRY_VERIFY(s->shows(u"dancingNotice"_s));
        QCOMPARE(s->text(u"dancingNotice"_s), u"“no.png”不是能读取的图片"_s);
        s->reveal(u"dancingNotice"_s);
        checkAndSave(u"emoji-notice"_s);
        s->click(u"emojiDone"_s);
        QTRY_VERIFY(s->isGone(u"emojiPicker"_s));
        QVERIFY(!s->shows(u"pictureNotice"_s));
    }
    void aCassetteIsChosenAndAdjusted()
    {
        QVERIFY(showSettings(ThemeType::kawaiiPink));
        clickInSheet(u"cassettestyle2"_s);
        QCOMPARE(s->theme.selectedCassetteStyle(), CassetteStyle::style2);
        QTRY_COMPARE(s->item(u"cassetteScale"_s)->property("displayValue").toString(), u"0.220"_s);
        clickInSheet(u"cassetteScaleMore"_s);
        QTRY_COMPARE(s->item(u"cassetteScale"_s)->property("displayValue").toString(), u"0.225"_s);
        clickInSheet(u"cassetteOffsetYLess"_s);
        QTRY_COMPARE(s->item(u"cassetteOffsetY"_s)->property("displayValue").toString(), u"-0.105"_s);
        set(u"cassetteOffsetXSlider"_s, 0.2);
        QTRY_COMPARE(s->item(u"cassetteOffsetX"_s)->property("displayValue").toString(), u"0.200"_s);
        clickInSheet(u"cassetteReset"_s);
        QCOMPARE(s->theme.getCurrentCassetteConfig(), (CassetteConfig{0.22F, 0, -0.1F}));
    }
    void aCassetteGoesNoFartherThanItsRange()
    {
        QVERIFY(showSettings(ThemeType::kawaiiPink));
        s->theme.setCassetteScale(0.5);
        QTRY_COMPARE(s->item(u"cassetteScaleMore"_s)->isEnabled(), false);
        s->theme.setCassetteScale(0.1);
        QTRY_COMPARE(s->item(u"cassetteScaleLess"_s)->isEnabled(), false);
        QCOMPARE(s->item(u"cassetteScaleMore"_s)->isEnabled(), true);
    }
    void showingASettingStoresNothing()
    {
        // A float that lies between two places of its slider.
        s->theme.setCassetteConfig({.scale = 0.1234F, .offsetX = 0.111F, .offsetY = 0.2F});
        s->theme.setLyricsFontSize(17.4);
        QVERIFY(showSettings(ThemeType::kawaiiPink));
        QCOMPARE(s->theme.getCurrentCassetteConfig().scale, 0.1234F);
        QCOMPARE(s->theme.getCurrentCassetteConfig().offsetX, 0.111F);
        QCOMPARE(s->theme.lyricsFontSize(), 17.4F);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestNowPlayingSettings)
#include "tst_now_playing_settings.moc"
