// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/LyricsScene.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlExpression>
#include <QSignalSpy>
#include <QStyleHints>

#include <cmath>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// Half of a line and a little: what counts as the middle.
constexpr double inTheMiddle = 2;

QString phrases(int count)
{
    const QStringList words{u"夜空中最亮的星"_s, u"能否听清"_s, u"那仰望的人 心底的孤独和叹息"_s,
                            u"Oh my love, the night is long and the road is winding on"_s, u"风"_s};
    QString text;
    for (int i = 0; i < count; ++i)
        text += QString::asprintf("[%02d:%02d.00]", i / 60, i % 60) + words.at(i % words.size()) + u'\n';
    return text;
}

} // namespace

class TestLyricsView : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<LyricsScene> m_scene;

    LyricsScene &scene() { return *m_scene; }
    LyricsBench &bench() { return m_scene->bench; }
    void tick(double seconds) { bench().tick(seconds); }
    /// The view with a song of so many lines, at rest.
    [[nodiscard]] bool showLines(int count = 40)
    {
        if (!scene().show())
            return false;
        scene().play(phrases(count));
        return QTest::qWaitFor([this] { return scene().line(0) != nullptr; }) && scene().comesToRest();
    }
    QQuickItem *words(int line) { return scene().line(line)->findChild<QQuickItem *>(u"words"_s); }
    void doubleTap(int line)
    {
        const QPoint place = scene().centre(scene().line(line));
        scene().tap(place);
        scene().tap(place);
    }
    /// Longer than the time that makes two taps one.
    void waitOutDoubleTap()
    {
        const int interval = QGuiApplication::styleHints()->mouseDoubleClickInterval();
        QElapsedTimer timer;
        timer.start();
        QVERIFY(QTest::qWaitFor([&] { return timer.elapsed() > interval + 50; }));
    }

private Q_SLOTS:
    void init() { m_scene = std::make_unique<LyricsScene>("LyricsView"); }
    void cleanup()
    {
        const QStringList warnings = scene().warnings.take();
        m_scene.reset();
        QCOMPARE(warnings, QStringList());
    }

    void withoutLyricsItSaysSo()
    {
        QVERIFY(scene().show());
        const QQuickItem *none = scene().item(u"noLyrics"_s);
        QVERIFY(none->isVisible());
        QCOMPARE(none->property("title"), u"暂无歌词"_s);
        QCOMPARE(none->property("systemImage"), u"text.bubble"_s);
        QCOMPARE(none->property("description"), u"当前歌曲没有可用的歌词"_s);
        QVERIFY(!scene().list()->isVisible());
        scene().play(phrases(5));
        QVERIFY(!none->isVisible());
        QVERIFY(scene().list()->isVisible());
        bench().play(fileSong(u"b"_s));
        QVERIFY(none->isVisible());
    }

    void linesStandTwentyPointsApartBetweenTheSpacers()
    {
        QVERIFY(showLines(6));
        const QQuickItem *list = scene().list();
        QCOMPARE(list->property("spacing").toInt(), 20);
        QCOMPARE(list->property("topMargin").toInt(), 100);
        QCOMPARE(list->property("bottomMargin").toInt(), 200);
        for (int i = 0; i < 5; ++i)
            QVERIFY(std::abs(scene().line(i + 1)->y() - scene().line(i)->y() - scene().line(i)->height() -
                             20) < 0.01);
    }

    void linesLookAsFarAsTheyAreFromTheCurrentOne()
    {
        QVERIFY(showLines());
        tick(20);
        QTRY_COMPARE(bench().lyrics().currentLineIndex(), 20);
        QTRY_VERIFY(std::abs(scene().offCentre(20)) < inTheMiddle);
        QTRY_COMPARE(scene().line(20)->property("shownOpacity").toDouble(), 1.0);
        QTRY_COMPARE(scene().line(21)->property("shownOpacity").toDouble(), 0.5);
        // The sum that makes it is a hair off, and the waiting compares exactly.
        QTRY_VERIFY(qFuzzyCompare(scene().line(18)->property("shownOpacity").toDouble(), 0.4));
        QTRY_COMPARE(scene().line(20)->property("roomSize").toDouble(), 24.0);
        QCOMPARE(scene().line(21)->property("roomSize").toDouble(), 18.0);
        QTRY_COMPARE(scene().line(20)->property("shownScale").toDouble(), 1.0);
        QTRY_COMPARE(scene().line(21)->property("shownScale").toDouble(), 0.95);
        QCOMPARE(words(20)->property("font").value<QFont>().weight(), QFont::Bold);
        QCOMPARE(words(21)->property("font").value<QFont>().weight(), QFont::Normal);
        QTRY_VERIFY(words(20)->isVisible());
        // A line that is blurred is a picture.
        QTRY_VERIFY(!words(21)->isVisible());
    }

    void withoutBlurEveryLineIsText()
    {
        bench().appearance().setLyricsBlurEnabled(false);
        QVERIFY(showLines());
        QVERIFY(words(0)->isVisible());
        QVERIFY(words(2)->isVisible());
        bench().appearance().setLyricsBlurEnabled(true);
        QTRY_VERIFY(!words(2)->isVisible());
        bench().appearance().setLyricsBlurEnabled(false);
        QTRY_COMPARE(words(2)->opacity(), 1.0);
    }

    void theBlurIsSeen()
    {
        QVERIFY(showLines());
        QTRY_VERIFY(!words(2)->isVisible());
        const QRect place = scene()
                                .line(2)
                                ->mapRectToScene(scene().line(2)->boundingRect())
                                .toRect()
                                .intersected(QRect({}, scene().window()->size()));
        const QImage blurred = scene().grab().copy(place);
        bench().appearance().setLyricsBlurEnabled(false);
        QTRY_COMPARE(words(2)->opacity(), 1.0);
        const QImage sharp = scene().grab().copy(place);
        const auto brightest = [](const QImage &image) {
            int value = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x)
                    value = std::max(value, qGray(image.pixel(x, y)));
            }
            return value;
        };
        const int ground = qGray(QColor(0x30, 0x2a, 0x44).rgb());
        QVERIFY(brightest(blurred) > ground + 10);
        QVERIFY2(brightest(blurred) < brightest(sharp) - 5,
                 qPrintable(u"%1, %2"_s.arg(brightest(blurred)).arg(brightest(sharp))));
    }

    void textsStandAsTheListenerAlignsThem()
    {
        QVERIFY(showLines());
        const auto left = [this](int line) { return words(line)->mapToItem(scene().list(), QPointF()).x(); };
        QCOMPARE(words(0)->property("horizontalAlignment").toInt(), int(Qt::AlignHCenter));
        bench().appearance().setLyricsAlignment(LyricsAlignment::left);
        QCOMPARE(words(0)->property("horizontalAlignment").toInt(), int(Qt::AlignLeft));
        QVERIFY(std::abs(left(0) - 10) < 1);
        QVERIFY(std::abs(left(2) - 10) < 1);
    }

    // MARK: following

    void itScrollsToTheCurrentLineAMomentAfterItComesUp()
    {
        QVERIFY(scene().show());
        bench().play(LyricsBench::songWith(u"a"_s, phrases(60)));
        tick(30);
        bench().lyrics().load();
        QTRY_VERIFY(scene().line(30));
        QTRY_VERIFY(std::abs(scene().offCentre(30)) < inTheMiddle);
    }

    void theMomentAndTheWayTakeAsLongAsTheyShall()
    {
        QVERIFY(showLines());
        const auto value = [this](const QString &expression) {
            return QQmlExpression(qmlContext(scene().root()), scene().root(), expression).evaluate();
        };
        QCOMPARE(value(u"Metrics.lyricScrollDelay"_s), 100);
        QCOMPARE(value(u"Metrics.lyricScrollDuration"_s), 300);
        QCOMPARE(value(u"Metrics.lyricStyleDuration"_s), 250);
        QCOMPARE(value(u"Motion.easeInOut.join(' ')"_s), u"0.42 0 0.58 1 1 1"_s);

        scene().root()->setProperty("isShown", false);
        tick(20);
        QObject *list = scene().list();
        const double before = list->property("contentY").toDouble();
        QElapsedTimer passed;
        qint64 setOut = -1;
        qint64 arrived = -1;
        // Seen with each frame: who looks now and then sees it set out late, and the way then looks short.
        connect(scene().window(), &QQuickWindow::afterAnimating, this, [&] {
            if (setOut < 0 && list->property("contentY").toDouble() != before)
                setOut = passed.elapsed();
            if (arrived < 0 && scene().line(20) && std::abs(scene().offCentre(20)) < inTheMiddle)
                arrived = passed.elapsed();
        });
        passed.start();
        scene().root()->setProperty("isShown", true);
        QTRY_VERIFY(arrived >= 0);
        disconnect(scene().window(), nullptr, this, nullptr);
        // The clock of animations is not that of the wall: half of each is far from none.
        QVERIFY2(setOut >= 50, qPrintable(QString::number(setOut)));
        QVERIFY2(arrived - setOut > 150, qPrintable(QString::number(arrived - setOut)));
    }

    void eachChangeOfTheLineBringsItToTheMiddle()
    {
        QVERIFY(showLines());
        for (const int line : {10, 11, 12, 13, 30, 12, 35}) {
            tick(line);
            QTRY_VERIFY(scene().line(line));
            QTRY_VERIFY(std::abs(scene().offCentre(line)) < inTheMiddle);
            QVERIFY(scene().comesToRest());
            QVERIFY2(std::abs(scene().offCentre(line)) < inTheMiddle,
                     qPrintable(QString::number(scene().offCentre(line))));
        }
    }

    void theFirstLinesStandBelowTheSpacer()
    {
        QVERIFY(showLines());
        QVERIFY(std::abs(scene().line(0)->mapToItem(scene().root(), QPointF()).y() - 100) < 1);
        tick(39);
        QTRY_VERIFY(scene().line(39));
        QVERIFY(scene().comesToRest());
        // The last one has no more than the lower spacer beneath it.
        const double below = scene().root()->height() -
                             scene().line(39)->mapToItem(scene().root(), {0, scene().line(39)->height()}).y();
        QVERIFY2(std::abs(below - 200) < 1, qPrintable(QString::number(below)));
    }

    void whatAHandScrollsIsTakenBackWithTheNextLine()
    {
        QVERIFY(showLines());
        tick(10);
        QTRY_VERIFY(std::abs(scene().offCentre(10)) < inTheMiddle);
        QVERIFY(scene().comesToRest());
        const QPoint middle(195, 280);
        QTest::touchEvent(scene().window(), LyricsScene::finger()).press(0, middle);
        for (int y = 0; y <= 200; y += 10)
            QTest::touchEvent(scene().window(), LyricsScene::finger()).move(0, middle - QPoint(0, y));
        QTRY_VERIFY(std::abs(scene().offCentre(10)) > 50);
        // The finger is still down.
        tick(11);
        QTRY_VERIFY(scene().line(11));
        QTRY_VERIFY(std::abs(scene().offCentre(11)) < inTheMiddle);
        QTest::touchEvent(scene().window(), LyricsScene::finger()).release(0, middle - QPoint(0, 200));
        QVERIFY(scene().comesToRest());
        QVERIFY(std::abs(scene().offCentre(11)) < inTheMiddle);
        QCOMPARE(scene().seeks().size(), 0);
    }

    void aPageThatIsNotShownDoesNotMove()
    {
        QVERIFY(showLines());
        scene().root()->setProperty("isShown", false);
        const QVariant before = scene().list()->property("contentY");
        tick(20);
        QVERIFY(scene().comesToRest());
        QCOMPARE(scene().list()->property("contentY"), before);
        scene().root()->setProperty("isShown", true);
        QTRY_VERIFY(scene().line(20));
        QTRY_VERIFY(std::abs(scene().offCentre(20)) < inTheMiddle);
    }

    void aWindowThatIsHiddenMovesNothing()
    {
        QVERIFY(showLines());
        const QVariant before = scene().list()->property("contentY");
        scene().window()->hide();
        tick(20);
        QVERIFY(!scene().root()->property("isShown").toBool());
        QCOMPARE(scene().list()->property("contentY"), before);
        scene().window()->show();
        QTRY_VERIFY(scene().line(20));
        QTRY_VERIFY(std::abs(scene().offCentre(20)) < inTheMiddle);
    }

    void theCurrentLineStaysInTheMiddleOfAnotherRoom()
    {
        QVERIFY(showLines());
        tick(20);
        QTRY_VERIFY(scene().line(20));
        QTRY_VERIFY(std::abs(scene().offCentre(20)) < inTheMiddle);
        scene().window()->resize(800, 420);
        QTRY_COMPARE(scene().root()->height(), 420.0);
        QTRY_VERIFY(std::abs(scene().offCentre(20)) < inTheMiddle);
        bench().appearance().setLyricsFontSize(28);
        QTRY_COMPARE(scene().line(20)->property("roomSize").toDouble(), 34.0);
        QTRY_VERIFY(std::abs(scene().offCentre(20)) < inTheMiddle);
    }

    void aWindowThatIsResizedHasFewPicturesDrawn()
    {
        QVERIFY(showLines());
        tick(10);
        QTRY_VERIFY(!words(8)->isVisible());
        QSet<QString> pictures;
        for (int width = 0; width <= 40; ++width) {
            scene().window()->resize(390 - width, 560);
            QTRY_COMPARE(scene().root()->width(), 390 - width);
            pictures.insert(scene().line(8)->property("blurAddress").toString());
        }
        QVERIFY2(pictures.size() >= 2 && pictures.size() <= 4, qPrintable(QString::number(pictures.size())));
    }

    void aDesktopOfLessMotionGetsNone()
    {
        bench().desktop.setReducesMotion(true);
        QVERIFY(showLines());
        tick(20);
        QTRY_VERIFY(scene().line(20));
        QTRY_VERIFY(std::abs(scene().offCentre(20)) < inTheMiddle);
        tick(21);
        QCOMPARE(scene().line(21)->property("shownOpacity").toDouble(), 1.0);
        QCOMPARE(scene().line(21)->property("roomSize").toDouble(), 24.0);
    }

    void largeTextsOfTheDesktopMakeLinesLarger()
    {
        bench().desktop.setTextScale(1.5);
        QVERIFY(showLines());
        QCOMPARE(scene().line(0)->property("roomSize").toDouble(), 36.0);
        QCOMPARE(scene().line(2)->property("roomSize").toDouble(), 27.0);
    }

    void theCurrentLineComesInAsTheListenerLikes_data()
    {
        QTest::addColumn<LyricAnimationStyle>("style");
        for (const LyricAnimationStyle style : allLyricAnimationStyles())
            QTest::newRow(qPrintable(rawValue(style))) << style;
    }

    void theCurrentLineComesInAsTheListenerLikes()
    {
        QFETCH(LyricAnimationStyle, style);
        bench().appearance().setLyricAnimationStyle(style);
        QVERIFY(showLines());
        tick(10);
        QTRY_VERIFY(scene().line(11));
        QVERIFY(scene().comesToRest());
        QQuickItem *body = scene().line(11)->findChild<QQuickItem *>(u"body"_s);
        bool scales = false;
        bool moves = false;
        bool fades = false;
        const QPointF rest =
            body->mapToItem(scene().line(11), QPointF(body->width() / 2, body->height() / 2));
        const auto watch = [&] {
            const QPointF now =
                body->mapToItem(scene().line(11), QPointF(body->width() / 2, body->height() / 2));
            scales = scales || std::abs(body->scale() - 1) > 0.02;
            moves = moves || std::abs(now.x() - rest.x()) > 2 ||
                    (style == LyricAnimationStyle::typewriter && now.y() < rest.y() - 2);
            fades = fades || body->opacity() < 0.3;
        };
        // Each value is seen when it is set, the first of them too: frames may be few.
        connect(body, &QQuickItem::scaleChanged, this, watch);
        connect(body, &QQuickItem::opacityChanged, this, watch);
        connect(scene().window(), &QQuickWindow::afterAnimating, this, watch);
        tick(11);
        QTRY_COMPARE(body->property("opacity").toDouble(), 1.0);
        QTRY_COMPARE(body->scale(), 1.0);
        QVERIFY(scene().comesToRest());
        disconnect(scene().window(), nullptr, this, nullptr);
        disconnect(body, nullptr, this, nullptr);
        QCOMPARE(scales, style == LyricAnimationStyle::bounce || style == LyricAnimationStyle::scale);
        QCOMPARE(moves, style == LyricAnimationStyle::slide || style == LyricAnimationStyle::typewriter);
        QCOMPARE(fades, style == LyricAnimationStyle::fade || style == LyricAnimationStyle::slide ||
                            style == LyricAnimationStyle::typewriter);
    }

    // MARK: seeking

    void aDoubleTapPlaysOnFromTheLine()
    {
        bench().offsets().setOffset(500, u"a"_s);
        QVERIFY(showLines(30));
        tick(12);
        QTRY_VERIFY(scene().line(10));
        QVERIFY(scene().comesToRest());
        doubleTap(10);
        QCOMPARE(scene().seeks(), QStringList{u"9.5"_s});
        QCOMPARE(bench().lyrics().currentLineIndex(), 10);
    }

    void aSingleTapDoesNothing()
    {
        QVERIFY(showLines());
        scene().tap(scene().centre(scene().line(2)));
        waitOutDoubleTap();
        scene().tap(scene().centre(scene().line(2)));
        waitOutDoubleTap();
        QCOMPARE(scene().seeks().size(), 0);
    }

    void tapsOnTwoLinesAreNoDoubleTap()
    {
        QVERIFY(showLines());
        scene().tap(scene().centre(scene().line(2)));
        scene().tap(scene().centre(scene().line(4)));
        QCOMPARE(scene().seeks().size(), 0);
    }

    void theMouseDoubleClicks()
    {
        QVERIFY(showLines());
        QTest::mouseDClick(scene().window(), Qt::LeftButton, {}, scene().centre(scene().line(3)));
        QCOMPARE(scene().seeks(), QStringList{u"3"_s});
        QTest::mouseDClick(scene().window(), Qt::RightButton, {}, scene().centre(scene().line(2)));
        QCOMPARE(scene().seeks().size(), 1);
    }

    void theKeyboardWalksOverTheLinesAndSeeks()
    {
        QVERIFY(showLines());
        tick(5);
        QTest::keyClick(scene().window(), Qt::Key_Tab);
        QTRY_VERIFY(scene().list()->hasActiveFocus());
        // It starts at the current line.
        QCOMPARE(scene().list()->property("currentIndex").toInt(), 5);
        QTest::keyClick(scene().window(), Qt::Key_Down);
        QTest::keyClick(scene().window(), Qt::Key_Down);
        QVERIFY(scene().line(7)->property("showsFocus").toBool());
        QTest::keyClick(scene().window(), Qt::Key_Return);
        QCOMPARE(scene().seeks(), QStringList{u"7"_s});
        QTest::keyClick(scene().window(), Qt::Key_End);
        QTRY_VERIFY(scene().line(39));
        QTest::keyClick(scene().window(), Qt::Key_Enter);
        QCOMPARE(scene().seeks().constLast(), u"39"_s);
        QTest::keyClick(scene().window(), Qt::Key_Home);
        QTest::keyClick(scene().window(), Qt::Key_Up);
        QTRY_VERIFY(scene().line(0));
        QTest::keyClick(scene().window(), Qt::Key_Return);
        QCOMPARE(scene().seeks().constLast(), u"0"_s);
        QTest::keyClick(scene().window(), Qt::Key_PageDown);
        QVERIFY(scene().list()->property("currentIndex").toInt() > 1);
    }

    void theKeyboardStaysOnTheLinesOfTheNextSong()
    {
        QVERIFY(showLines());
        QTest::keyClick(scene().window(), Qt::Key_Tab);
        QTRY_VERIFY(scene().list()->hasActiveFocus());
        scene().play(phrases(20), u"b"_s);
        tick(8);
        QTRY_VERIFY(scene().list()->hasActiveFocus());
        QCOMPARE(scene().list()->property("currentIndex").toInt(), 0);
        QTest::keyClick(scene().window(), Qt::Key_Down);
        QTest::keyClick(scene().window(), Qt::Key_Return);
        QCOMPARE(scene().seeks().constLast(), u"1"_s);
    }

    void aScreenReaderKnowsTheLinesAndSeeks()
    {
        QVERIFY(showLines());
        QAccessibleInterface *list = QAccessible::queryAccessibleInterface(scene().list());
        QVERIFY(list);
        QCOMPARE(list->role(), QAccessible::List);
        QCOMPARE(list->text(QAccessible::Name), u"歌词"_s);
        QAccessibleInterface *line = QAccessible::queryAccessibleInterface(scene().line(1));
        QVERIFY(line);
        QCOMPARE(line->role(), QAccessible::ListItem);
        QCOMPARE(line->text(QAccessible::Name), u"能否听清"_s);
        QAccessibleActionInterface *actions = line->actionInterface();
        QVERIFY(actions);
        QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(scene().seeks(), QStringList{u"1"_s});
    }

    // MARK: size

    void ofFiveThousandLinesOnlyThoseInSightAreMade()
    {
        QVERIFY(showLines(5000));
        QVERIFY(scene().madeLines() < 40);
        for (const int line : {2500, 4990, 17, 4999}) {
            tick(line);
            QTRY_VERIFY(scene().line(line));
            QVERIFY(scene().comesToRest());
            QVERIFY2(scene().madeLines() < 40, qPrintable(QString::number(scene().madeLines())));
            if (line < 4995)
                QVERIFY(std::abs(scene().offCentre(line)) < inTheMiddle);
        }
    }

    void manyChangesOfTheSongLeaveOneViewOfTheLast()
    {
        QVERIFY(scene().show());
        bench().lyrics().load();
        for (int i = 0; i < 200; ++i) {
            bench().play(LyricsBench::songWith(QString::number(i), phrases(1 + i % 50)));
            tick(1 + i % 50);
            if (i % 10 == 0)
                QCoreApplication::processEvents();
        }
        QTRY_COMPARE(bench().lyrics().count(), 50);
        QTRY_VERIFY(scene().line(49));
        QVERIFY(scene().comesToRest());
        QVERIFY(scene().madeLines() < 40);
    }

    void aParagraphIsReadToItsEnd()
    {
        bench().appearance().setLyricsFontSize(28);
        bench().desktop.setTextScale(1.3);
        scene().window()->resize(320, 568);
        QVERIFY(scene().show());
        scene().play(u"词"_s.repeated(120));
        QTRY_VERIFY(scene().line(0));
        QTRY_VERIFY(words(0)->property("lineCount").toInt() > 8);
        QVERIFY(!words(0)->property("truncated").toBool());
    }

    void anEndlessLineIsCutAndNotLaidOutForEver()
    {
        QVERIFY(scene().show());
        scene().play(u"[00:00.00]"_s + u"词"_s.repeated(200'000) + u"\n[00:05.00]end"_s);
        QTRY_VERIFY(scene().line(0));
        QVERIFY(scene().line(0)->height() < 24 * 40);
        tick(5);
        QTRY_VERIFY(scene().line(1));
    }
};

QTEST_MAIN(TestLyricsView)
#include "tst_lyrics_view.moc"
