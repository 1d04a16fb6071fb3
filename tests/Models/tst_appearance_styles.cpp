// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/CassetteStyle.h"
#include "Models/LyricAnimationStyle.h"
#include "Models/LyricsAlignment.h"
#include "Models/NowPlayingBackgroundStyle.h"

#include <QMetaEnum>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// Raw value, name and symbol or picture of every case, in their order.
using Rows = QList<QStringList>;

template <typename Case>
Rows rowsOf(const QList<Case> &cases)
{
    Rows rows;
    for (const Case value : cases) {
        QStringList row{rawValue(value), displayName(value)};
        if constexpr (requires { icon(value); })
            row.append(icon(value));
        if constexpr (requires { imageName(value); })
            row.append(imageName(value));
        rows.append(row);
    }
    return rows;
}

/// Whether every case, and nothing else, is found by its raw value.
template <typename Case>
bool leadBack(const QList<Case> &cases, std::optional<Case> (*caseOf)(const QString &))
{
    for (const QString &unknown : {u""_s, u"none "_s, u"Blur"_s, u"bounce\0x"_s})
        if (caseOf(unknown))
            return false;
    return std::ranges::all_of(cases, [caseOf](Case value) { return caseOf(rawValue(value)) == value; });
}

/// Whether the list holds as many cases as are declared.
template <typename Case>
bool isComplete(const QList<Case> &cases)
{
    return cases.size() == QMetaEnum::fromType<Case>().keyCount();
}

} // namespace

class TestAppearanceStyles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lyricsAlignments();
    void lyricAnimationStyles();
    void nowPlayingBackgroundStyles();
    void cassetteStyles();
    void cassettesHaveTheirPlaceForTheCover_data();
    void cassettesHaveTheirPlaceForTheCover();
};

void TestAppearanceStyles::lyricsAlignments()
{
    QCOMPARE(rowsOf(allLyricsAlignments()), (Rows{{u"left"_s, u"左对齐"_s}, {u"center"_s, u"居中"_s}}));
    QVERIFY(leadBack(allLyricsAlignments(), lyricsAlignmentOf));
    QVERIFY(isComplete(allLyricsAlignments()));
    QCOMPARE(textAlignment(LyricsAlignment::left), Qt::AlignLeft);
    QCOMPARE(textAlignment(LyricsAlignment::center), Qt::AlignHCenter);
    QCOMPARE(frameAlignment(LyricsAlignment::left), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(frameAlignment(LyricsAlignment::center), Qt::AlignCenter);
}

void TestAppearanceStyles::lyricAnimationStyles()
{
    QCOMPARE(rowsOf(allLyricAnimationStyles()),
             (Rows{{u"bounce"_s, u"弹跳"_s, u"arrow.up.arrow.down"_s},
                   {u"fade"_s, u"淡入淡出"_s, u"circle.lefthalf.filled"_s},
                   {u"slide"_s, u"滑动"_s, u"arrow.left.arrow.right"_s},
                   {u"scale"_s, u"缩放"_s, u"arrow.up.left.and.arrow.down.right"_s},
                   {u"typewriter"_s, u"下落"_s, u"arrow.down"_s}}));
    QVERIFY(leadBack(allLyricAnimationStyles(), lyricAnimationStyleOf));
    QVERIFY(isComplete(allLyricAnimationStyles()));
}

void TestAppearanceStyles::nowPlayingBackgroundStyles()
{
    QCOMPARE(rowsOf(allNowPlayingBackgroundStyles()),
             (Rows{{u"blur"_s, u"封面模糊"_s, u"drop.fill"_s},
                   {u"solid"_s, u"纯色"_s, u"rectangle.fill"_s},
                   {u"gradient"_s, u"渐变"_s, u"square.stack.3d.up.fill"_s},
                   {u"customColor"_s, u"自定义颜色"_s, u"paintpalette.fill"_s},
                   {u"customImage"_s, u"自定义图片"_s, u"photo.fill"_s},
                   {u"clear"_s, u"透明"_s, u"square.dashed"_s}}));
    QVERIFY(leadBack(allNowPlayingBackgroundStyles(), nowPlayingBackgroundStyleOf));
    QVERIFY(isComplete(allNowPlayingBackgroundStyles()));
}

void TestAppearanceStyles::cassetteStyles()
{
    QCOMPARE(rowsOf(allCassetteStyles()), (Rows{{u"default"_s, u"经典磁带"_s, u"Cassette"_s},
                                                {u"style1"_s, u"粉色磁带"_s, u"Cassette1"_s},
                                                {u"style2"_s, u"蓝色磁带"_s, u"Cassette2"_s},
                                                {u"style3"_s, u"紫色磁带"_s, u"Cassette3"_s},
                                                {u"style4"_s, u"橙色磁带"_s, u"Cassette4"_s},
                                                {u"none"_s, u"仅封面"_s, u""_s}}));
    QVERIFY(leadBack(allCassetteStyles(), cassetteStyleOf));
    QVERIFY(isComplete(allCassetteStyles()));
}

void TestAppearanceStyles::cassettesHaveTheirPlaceForTheCover_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<float>("scale");
    QTest::addColumn<float>("offsetX");
    QTest::addColumn<float>("offsetY");
    QTest::newRow("default") << u"default"_s << 0.18F << 0.0F << -0.2F;
    QTest::newRow("style1") << u"style1"_s << 0.25F << 0.0F << -0.15F;
    QTest::newRow("style2") << u"style2"_s << 0.22F << 0.0F << -0.1F;
    QTest::newRow("style3") << u"style3"_s << 0.24F << 0.0F << -0.12F;
    QTest::newRow("style4") << u"style4"_s << 0.23F << 0.0F << -0.14F;
    QTest::newRow("none") << u"none"_s << 1.0F << 0.0F << 0.0F;
}

void TestAppearanceStyles::cassettesHaveTheirPlaceForTheCover()
{
    QFETCH(const QString, style);
    QFETCH(const float, scale);
    QFETCH(const float, offsetX);
    QFETCH(const float, offsetY);
    const std::optional<CassetteStyle> known = cassetteStyleOf(style);
    QVERIFY(known);
    QVERIFY((defaultConfig(*known) == CassetteConfig{scale, offsetX, offsetY}));
    if (*known == CassetteStyle::defaultStyle)
        QVERIFY(defaultConfig(*known) == CassetteConfig());
}

QTEST_APPLESS_MAIN(TestAppearanceStyles)
#include "tst_appearance_styles.moc"
