// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/LyricsScene.h"

using namespace cadorel;
using namespace Qt::StringLiterals;

class TestMiniLyricView : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<LyricsScene> m_scene;

    LyricsScene &scene() { return *m_scene; }
    QString shown() { return scene().item(u"miniLyric"_s)->property("text").toString(); }
    double opacity() { return scene().item(u"miniLyric"_s)->opacity(); }

private Q_SLOTS:
    void init()
    {
        m_scene = std::make_unique<LyricsScene>("MiniLyricView", QSize(358, 50));
        QVERIFY(scene().show());
    }
    void cleanup()
    {
        const QStringList warnings = scene().warnings.take();
        m_scene.reset();
        QCOMPARE(warnings, QStringList());
    }

    void showsNothingBeforeTheFirstLine()
    {
        // What fades would come up after the test has looked.
        scene().bench.desktop.setReducesMotion(true);
        scene().play(u"[00:10.00]one\n[00:20.00]two"_s);
        scene().bench.tick(9);
        QCOMPARE(shown(), QString());
        QCOMPARE(QAccessible::queryAccessibleInterface(scene().root())->text(QAccessible::Name), QString());
        QCOMPARE(scene().root()->implicitHeight(), 50.0);
    }

    void showsTheCurrentLine()
    {
        scene().play(u"[00:10.00]one\n[00:20.00]two"_s);
        scene().bench.tick(10);
        QTRY_COMPARE(shown(), u"one"_s);
        QTRY_COMPARE(opacity(), 1.0);
        scene().bench.tick(20);
        QTRY_COMPARE(shown(), u"two"_s);
        QTRY_COMPARE(opacity(), 1.0);
        // A screen reader is told at once.
        scene().bench.tick(10);
        QCOMPARE(QAccessible::queryAccessibleInterface(scene().root())->text(QAccessible::Name), u"one"_s);
    }

    void linesThatFollowQuicklyEndWithTheLast()
    {
        scene().play(timedText(30));
        for (int i = 0; i < 30; ++i) {
            scene().bench.tick(i + 0.001);
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(shown(), u"line 29"_s);
        QTRY_COMPARE(opacity(), 1.0);
    }

    void aLineThatFollowsQuicklyIsShownWithoutWaitingForTheOneBefore()
    {
        scene().play(timedText(30));
        // In the middle of the change to a line, which may be over before anybody looks again: the next line.
        const QQuickItem *words = scene().item(u"miniLyric"_s);
        QString afterwards;
        connect(words, &QQuickItem::opacityChanged, this, [&] {
            if (!afterwards.isEmpty() || shown() != u"line 1"_s || opacity() == 1)
                return;
            scene().bench.tick(2);
            afterwards = shown();
        });
        scene().bench.tick(1);
        QTRY_COMPARE(afterwards, u"line 2"_s);
        disconnect(words, nullptr, this, nullptr);
        QTRY_COMPARE(opacity(), 1.0);
        QCOMPARE(shown(), u"line 2"_s);
    }

    void anotherSongTakesTheLineAway()
    {
        scene().play(u"[00:10.00]one"_s);
        scene().bench.tick(10);
        QTRY_COMPARE(shown(), u"one"_s);
        scene().bench.play(fileSong(u"b"_s));
        QTRY_COMPARE(shown(), QString());
    }

    void withLessMotionOrOutOfSightItChangesAtOnce()
    {
        scene().play(u"[00:10.00]one\n[00:20.00]two"_s);
        scene().bench.desktop.setReducesMotion(true);
        scene().bench.tick(10);
        QCOMPARE(shown(), u"one"_s);
        scene().bench.desktop.setReducesMotion(false);
        scene().root()->setProperty("isShown", false);
        scene().bench.tick(20);
        QCOMPARE(shown(), u"two"_s);
        QCOMPARE(opacity(), 1.0);
    }

    void longLinesStayInTheirRoom_data()
    {
        QTest::addColumn<double>("scale");
        QTest::newRow("usual texts") << 1.0;
        QTest::newRow("large texts") << 1.3;
    }

    void longLinesStayInTheirRoom()
    {
        QFETCH(double, scale);
        scene().bench.desktop.setTextScale(scale);
        scene().play(u"[00:01.00]"_s + u"很长的一句歌词 "_s.repeated(30));
        scene().bench.tick(1);
        QTRY_VERIFY(!shown().isEmpty());
        const QQuickItem *words = scene().item(u"miniLyric"_s);
        QVERIFY(words->property("contentHeight").toDouble() <= 50);
        QVERIFY(words->property("truncated").toBool());
    }
};

QTEST_MAIN(TestMiniLyricView)
#include "tst_mini_lyric_view.moc"
