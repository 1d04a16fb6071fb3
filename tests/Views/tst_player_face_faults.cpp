// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/DiscRim.h"
#include "Views/PlayerFaceTest.h"

#include <limits>

using namespace cadorel;
using namespace Qt::StringLiterals;

/// What goes wrong with songs, in the real window.
class PlayerFaceFaultsTest : public PlayerFaceTest
{
    Q_OBJECT
private Q_SLOTS:
    void withoutASongThereIsNoDiscAndNothingOpens_data() { addThemes(); }
    void withoutASongThereIsNoDiscAndNothingOpens();
    void aCoverThatIsMissingOrDamagedLeavesAPlaceholder_data();
    void aCoverThatIsMissingOrDamagedLeavesAPlaceholder();
    void aTitleOf300CharactersStaysInTheWindow_data() { addThemes(); }
    void aTitleOf300CharactersStaysInTheWindow();
    void fiveThousandLinesOfLyricsAreFollowedAndSought();
    void aSongOfUnknownLengthIsNeitherSoughtNorEnded_data();
    void aSongOfUnknownLengthIsNeitherSoughtNorEnded();
    void aSongChangeInMidDragOfTheSliderSeeksNothing();
    void aSongChangeInMidDragOfTheDiscLeavesItInTheHand();

private:
    /// Of the disc, where no note stands.
    QList<QColor> rim() const
    {
        return besideTheNote(disc()->findChild<QQuickItem *>(u"cover"_s), t->window->grabWindow());
    }
};

void PlayerFaceFaultsTest::withoutASongThereIsNoDiscAndNothingOpens()
{
    QFETCH(const ThemeType, type);
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    QVERIFY(!t->item(u"miniPlayerView"_s));
    QTest::keyClick(t->window, Qt::Key_P, Qt::ControlModifier);
    QTest::keyClick(t->window, Qt::Key_Left, Qt::ControlModifier);
    QTest::keyClick(t->window, Qt::Key_Right, Qt::ControlModifier);
    QVERIFY(!showsNowPlaying());
    for (const ControlAction action : {ControlAction::playPause, ControlAction::next, ControlAction::previous,
                                       ControlAction::locate, ControlAction::favorite})
        mini().perform(action);
    QVERIFY(!t->viewModel->hasCurrentSong());
    QVERIFY(!t->item(u"miniPlayerView"_s));
    check(u"no song"_s);
}

void PlayerFaceFaultsTest::aCoverThatIsMissingOrDamagedLeavesAPlaceholder_data()
{
    QTest::addColumn<QByteArray>("cover");
    QTest::addColumn<ThemeType>("type");
    // Its readers fail without a word.
    const QByteArray head("GIF89a\x40\x00\x40\x00", 10);
    for (const ThemeType type : allThemeTypes()) {
        const QByteArray look = rawValue(type).toUtf8();
        QTest::newRow(look + ", none") << QByteArray() << type;
        QTest::newRow(look + ", no picture") << QByteArray("this is no picture") << type;
        QTest::newRow(look + ", the head of a picture") << head << type;
    }
}

void PlayerFaceFaultsTest::aCoverThatIsMissingOrDamagedLeavesAPlaceholder()
{
    QFETCH(const QByteArray, cover);
    QFETCH(const ThemeType, type);
    t->addFile(u"00.mp3"_s, {u"潮汐"_s, u"歌手"_s, u"专辑"_s, 100, cover});
    t->addFile(u"01.mp3"_s,
               {u"晴天"_s, u"歌手"_s, u"专辑"_s, 100, TestWindow::picture(Qt::green, Qt::green)});
    t->addFile(u"02.mp3"_s, {u"无题"_s, u"歌手"_s, u"专辑"_s, 100, {}});
    QVERIFY(t->scan());
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    QVERIFY(playRow(0));
    const QString title = currentTitle();
    QCOMPARE(title, u"潮汐"_s);
    QTRY_VERIFY(discRests());
    // Without a cover there is a note, in the place of a damaged one a picture of that kind.
    const auto isDecoded = [this, &cover] {
        constexpr int ready = 1;
        // What the disc is drawn with has pictures of its own.
        const auto *picture =
            disc()->findChild<QQuickItem *>(u"cover"_s)->findChild<QQuickItem *>(u"picture"_s);
        const bool hasNote = disc()->findChild<QQuickItem *>(u"placeholderNote"_s)->isVisible();
        return cover.isEmpty() ? hasNote && !picture
                               : picture && picture->property("status").toInt() == ready;
    };
    QTRY_VERIFY(isDecoded());
    check(u"disc"_s);
    QVERIFY(openFromDisc());
    QCOMPARE(shownTitle(), title);
    check(u"screen"_s);
    QTest::keyClick(t->window, Qt::Key_Escape);
    QTRY_VERIFY(!t->shows(u"nowPlayingView"_s));
    const auto isGreen = [this] {
        return isLike(t->window->grabWindow().pixelColor(TestWindow::centre(disc())), Qt::green);
    };
    QVERIFY(!isGreen());
    // The next song has its cover all the same, and leaves nothing of it to this one.
    t->viewModel->next();
    QCOMPARE(currentTitle(), u"晴天"_s);
    QTRY_VERIFY(isGreen());
    t->viewModel->previous();
    QCOMPARE(currentTitle(), title);
    QTRY_VERIFY(!isGreen() && isDecoded());
    const QList<QColor> damaged = rim();
    QVERIFY(playRow(2));
    QCOMPARE(currentTitle(), u"无题"_s);
    QTRY_VERIFY(disc()->findChild<QQuickItem *>(u"placeholderNote"_s)->isVisible());
    const QList<QColor> none = rim();
    for (qsizetype i = 0; i < none.size(); ++i)
        QVERIFY2(isLike(damaged.at(i), none.at(i)),
                 qPrintable(damaged.at(i).name() + u", "_s + none.at(i).name()));
}

void PlayerFaceFaultsTest::aTitleOf300CharactersStaysInTheWindow()
{
    QFETCH(const ThemeType, type);
    const QString vast = u"很长的歌名"_s.repeated(60);
    QCOMPARE(vast.size(), 300);
    for (const auto &name : {u"00.mp3"_s, u"01.mp3"_s, u"02.mp3"_s})
        t->addFile(name, {vast, vast, vast, 100, {}});
    QVERIFY(t->scan());
    QVERIFY(t->show());
    QVERIFY(switchTo(type));
    QVERIFY(playRow(0));
    for (const QSize size : {QSize(320, 480), QSize(1000, 700)}) {
        const QString width = QString::number(size.width());
        t->window->resize(size);
        QTRY_COMPARE(t->window->contentItem()->size().toSize(), size);
        QTRY_VERIFY(discRests());
        check(u"library "_s + width);
        t->screens->queue()->open();
        QTRY_VERIFY(t->object(u"queueSheet"_s) && t->object(u"queueSheet"_s)->property("opened").toBool());
        check(u"queue "_s + width);
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->object(u"queueSheet"_s)->property("visible").toBool());
        mini().toggleFan();
        QTRY_COMPARE(t->item(u"miniPlayerView"_s)->property("openness").toReal(), 1.0);
        check(u"fan "_s + width);
        mini().toggleFan();
        QTRY_VERIFY(!fanButton(0) && discRests());
        QVERIFY(openFromDisc());
        QCOMPARE(shownTitle(), vast);
        check(u"cover page "_s + width);
        t->click(u"queueButton"_s);
        QTRY_VERIFY(t->item(u"queuePageList"_s) && t->item(u"queuePageList"_s)->isVisible());
        const QQuickItem *pages = t->item(u"pageList"_s);
        QTRY_COMPARE(pages->property("contentX").toReal(), 2 * pages->width());
        check(u"queue page "_s + width);
        QTest::keyClick(t->window, Qt::Key_Escape);
        QTRY_VERIFY(!t->item(u"nowPlayingView"_s));
    }
}

void PlayerFaceFaultsTest::fiveThousandLinesOfLyricsAreFollowedAndSought()
{
    constexpr int lines = 5000;
    QString text;
    for (int i = 0; i < lines; ++i)
        text += QString::asprintf("[%02d:%02d.00]line %d\n", i / 60, i % 60, i);
    t->addFile(u"00.mp3"_s, {u"长诗"_s, u"歌手"_s, u"专辑"_s, lines, {}});
    t->reader->assets[u"00.mp3"_s].all->append(lyricsTag(text));
    QVERIFY(t->scan());
    QVERIFY(t->show());
    QVERIFY(playRow(0, lines));
    QVERIFY(openFromDisc());
    QTRY_COMPARE(lyrics().count(), lines);
    QVERIFY(openLyrics());
    for (const int line : {20, 2500, 4970, 30}) {
        t->player->tick(line);
        QTRY_VERIFY(lyricLine(line) && lyricLine(line)->property("isActive").toBool());
        QTRY_VERIFY(isCentred(line));
        // However many there are, only those that are seen are there.
        constexpr qsizetype mostSeen = 60;
        QVERIFY(t->item(u"lyricList"_s)->property("contentItem").value<QQuickItem *>()->childItems().size() <
                mostSeen);
    }
    const QPoint place = TestWindow::centre(lyricLine(32));
    QTest::mouseClick(t->window, Qt::LeftButton, {}, place);
    QTest::mouseDClick(t->window, Qt::LeftButton, {}, place);
    QTRY_COMPARE(t->player->seeks.size(), 1);
    QCOMPARE(t->player->seeks.constFirst().time, 32.0);
    t->player->finishSeek();
    QTRY_VERIFY(lyricLine(32) && lyricLine(32)->property("isActive").toBool());
    QTRY_VERIFY(isCentred(32));
}

void PlayerFaceFaultsTest::aSongOfUnknownLengthIsNeitherSoughtNorEnded_data()
{
    QTest::addColumn<double>("seconds");
    QTest::newRow("none") << 0.0;
    QTest::newRow("endless") << std::numeric_limits<double>::infinity();
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
}

void PlayerFaceFaultsTest::aSongOfUnknownLengthIsNeitherSoughtNorEnded()
{
    QFETCH(const double, seconds);
    for (const auto &name : {u"00.mp3"_s, u"01.mp3"_s})
        t->addFile(name, {name, u"歌手"_s, u"专辑"_s, 0, {}});
    QVERIFY(t->scan());
    QVERIFY(t->show());
    t->library->playSongAt(0);
    t->player->lastItem()->answerDuration(seconds);
    t->player->lastItem()->becomeReady();
    t->player->tick(30);
    const QString title = currentTitle();
    QVERIFY(openFromDisc());
    QVERIFY(!slider()->isEnabled());
    QCOMPARE(t->item(u"duration"_s)->property("text").toString(), u"0:00"_s);
    dragSlider(slider()->width() - 1);
    QTest::keyClick(t->window, Qt::Key_End);
    QTest::keyClick(t->window, Qt::Key_Right);
    QVERIFY(t->player->seeks.isEmpty());
    QCOMPARE(currentTitle(), title);
    QVERIFY(t->audioPlayer->isPlaying());
    check(u"unknown length"_s);
    // Once the song has ended by itself, the next one follows.
    t->player->reachEnd();
    QTRY_VERIFY(currentTitle() != title);
}

void PlayerFaceFaultsTest::aSongChangeInMidDragOfTheSliderSeeksNothing()
{
    QVERIFY(playFrom(Source::embedded));
    QVERIFY(openFromDisc());
    const QPointer<QQuickItem> before = slider();
    const QPoint middle = TestWindow::centre(before);
    QTest::mousePress(t->window, Qt::LeftButton, {}, middle);
    QTest::mouseMove(t->window, middle + QPoint(60, 0));
    QVERIFY(t->screens->nowPlaying()->isDragging());
    t->player->reachEnd();
    QTRY_VERIFY(slider() != before);
    QVERIFY(answerSong(80));
    QVERIFY(!t->screens->nowPlaying()->isDragging());
    QTest::mouseMove(t->window, middle + QPoint(90, 0));
    QTest::mouseRelease(t->window, Qt::LeftButton, {}, middle + QPoint(90, 0));
    QVERIFY(t->player->seeks.isEmpty());
    QTRY_COMPARE(slider()->property("shown").toReal(), 0.0);
    QTRY_COMPARE(lyrics().count(), lineCount);
}

void PlayerFaceFaultsTest::aSongChangeInMidDragOfTheDiscLeavesItInTheHand()
{
    QVERIFY(playFrom(Source::embedded));
    QTRY_VERIFY(discRests());
    const QString title = currentTitle();
    const QPoint from = TestWindow::centre(disc());
    QTest::mousePress(t->window, Qt::LeftButton, {}, from);
    for (int i = 1; i <= 4; ++i)
        QTest::mouseMove(t->window, from + QPoint(-40, -60) * i / 4);
    QVERIFY(mini().isDragging());
    t->player->reachEnd();
    QVERIFY(currentTitle() != title);
    QVERIFY(answerSong(80));
    QVERIFY(mini().isDragging());
    QTest::mouseMove(t->window, QPoint(180, 300));
    QVERIFY((TestWindow::centre(disc()) - QPoint(180, 300)).manhattanLength() <= 2);
    QTest::mouseRelease(t->window, Qt::LeftButton, {}, QPoint(180, 300));
    QCOMPARE(mini().effectivePosition(), QPointF(180, 300));
    QVERIFY(QAccessible::queryAccessibleInterface(disc())->text(QAccessible::Name).contains(currentTitle()));
    QVERIFY(!showsNowPlaying());
}

QTEST_MAIN(PlayerFaceFaultsTest)
#include "tst_player_face_faults.moc"
