// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemedScene.h"

namespace cadorel {

using namespace Qt::StringLiterals;

/// The pictures of one line of lyrics.
class TestBlurredLyric : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    static QString address(const QString &text)
    {
        return u"image://lyric/line?width=200&lines=12&size=18&bold=false&align=center&radius=2&ratio=1&color=%23ffffff&text="_s +
               text;
    }
    void want(const QString &source) { s->root()->setProperty("source", source); }
    bool isThere() const { return s->root()->property("isThere").toBool(); }
    /// Addresses of the pictures that are kept or on their way.
    QStringList kept() const
    {
        QStringList kept;
        for (const QQuickItem *picture : s->root()->childItems()) {
            const QString wanted = picture->property("wanted").toString();
            if (!wanted.isEmpty())
                kept.append(wanted);
        }
        return kept;
    }
    QString shown() const
    {
        const auto *front = s->root()->property("front").value<QQuickItem *>();
        return front ? front->property("wanted").toString() : QString();
    }

private Q_SLOTS:
    void init()
    {
        s = std::make_unique<ThemedScene>();
        QVERIFY(s->show(
            "BlurredLyric { width: 200; height: 40; source: \"\"; pixelSize: 18; columnWidth: 200 }"));
    }
    void cleanup()
    {
        QCOMPARE(s->warnings.take(), QStringList());
        s.reset();
    }

    void thePictureBeforeStaysUntilTheNextIsThere()
    {
        want(address(u"a"_s));
        QTRY_VERIFY(isThere());
        want(address(u"b"_s));
        QVERIFY(isThere());
        QTRY_COMPARE(shown(), address(u"b"_s));
        // It fades, and goes.
        QTRY_COMPARE(kept(), QStringList{address(u"b"_s)});
    }
    void oneThatIsWantedNoMoreBeforeItCameIsNotKept()
    {
        want(address(u"a"_s));
        QTRY_VERIFY(isThere());
        want(address(u"b"_s));
        want(address(u"a"_s));
        QCOMPARE(shown(), address(u"a"_s));
        QCOMPARE(kept(), QStringList{address(u"a"_s)});
    }
    void aLineThatComesIntoFocusKeepsNone()
    {
        want(address(u"a"_s));
        QTRY_VERIFY(isThere());
        want(address(u"b"_s));
        want({});
        QVERIFY(!isThere());
        QTRY_COMPARE(kept(), QStringList());
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestBlurredLyric)
#include "tst_blurred_lyric.moc"
