// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/UserInterface.h"

#include <QFontDatabase>
#include <QGlyphRun>
#include <QGuiApplication>
#include <QRawFont>
#include <QTest>
#include <QTextLayout>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

/// Lines of Chinese, Latin and emoji as they are laid out with the fonts of the screens.
class TestFonts : public QObject
{
    Q_OBJECT

    /// Keeps what its runs point to.
    QTextLayout m_layout;

    QList<QGlyphRun> runsOf(const QString &text)
    {
        m_layout.setText(text);
        m_layout.setFont(QGuiApplication::font());
        m_layout.beginLayout();
        m_layout.createLine().setLineWidth(10'000);
        m_layout.endLayout();
        return m_layout.glyphRuns();
    }
    /// The fonts that have something to draw: what only chooses a form has no outline.
    static QStringList familiesOf(const QList<QGlyphRun> &runs)
    {
        QStringList families;
        for (const QGlyphRun &run : runs) {
            const QRawFont font = run.rawFont();
            const QList<quint32> glyphs = run.glyphIndexes();
            if (std::ranges::any_of(glyphs,
                                    [&font](quint32 glyph) { return !font.boundingRect(glyph).isEmpty(); }))
                families.append(font.familyName());
        }
        families.sort();
        return families;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QStringList families = QFontDatabase::families();
        QVERIFY2(families.contains(u"Noto Sans CJK SC"_s), "no Chinese font: scripts/setup installs it");
        QVERIFY2(families.contains(u"Noto Color Emoji"_s), "no emoji font: scripts/setup installs it");
        installFonts();
    }

    void linesMixScriptsOnOneBaseline_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("families");
        const QString chinese = u"Noto Sans CJK SC"_s;
        const QString emoji = u"Noto Color Emoji"_s;
        QTest::newRow("Chinese and Latin") << u"夜曲 Nocturne 12:34 é"_s << QStringList{chinese};
        QTest::newRow("with emoji") << u"夜曲 Nocturne 🎵"_s << QStringList{emoji, chinese};
        QTest::newRow("with a heart") << u"爱 ❤️ love"_s << QStringList{emoji, chinese};
        QTest::newRow("forms that differ from Japanese ones") << u"直骨角令"_s << QStringList{chinese};
        QTest::newRow("emoji alone") << u"⭐️✨🕺"_s << QStringList{emoji};
    }
    void linesMixScriptsOnOneBaseline()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, families);
        const QList<QGlyphRun> runs = runsOf(text);
        QCOMPARE(familiesOf(runs), families);
        const double baseline = m_layout.lineAt(0).ascent();
        for (const QGlyphRun &run : runs) {
            QVERIFY2(!run.glyphIndexes().contains(0), "a glyph is missing");
            const QList<QPointF> positions = run.positions();
            for (const QPointF &position : positions)
                QCOMPARE(position.y(), baseline);
        }
    }

    void emojiAddNothingToTheHeightOfALine()
    {
        runsOf(u"夜曲 Nocturne"_s);
        const double height = m_layout.lineAt(0).height();
        runsOf(u"夜曲 Nocturne 🎵❤️"_s);
        QCOMPARE(m_layout.lineAt(0).height(), height);
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestFonts)
#include "tst_fonts.moc"
