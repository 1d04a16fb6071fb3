// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/LookGrounds.h"
#include "Theme/ThemedScene.h"
#include "ViewModels/MiniPlayerBench.h"
#include "Views/HeldKey.h"

#include <QAccessible>

#include <algorithm>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr auto page = R"(FocusScope {
    id: stage
    required property QueueViewModel queue
    width: 390; height: 600
    focus: true
    ThemedBackground { anchors.fill: parent }
    EmbeddedQueuePage { objectName: "page"; anchors.fill: parent; focus: true; queue: stage.queue }
})";

constexpr auto screen = R"(FocusScope {
    id: stage
    required property QueueViewModel queue
    width: 390; height: 600
    focus: true
    ThemedBackground { anchors.fill: parent }
    QueueView { objectName: "page"; anchors.fill: parent; focus: true; queue: stage.queue }
})";

} // namespace

/// The page of the queue, and the screen of it.
class QueueScreensTest : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<MiniPlayerBench> b;
    std::unique_ptr<ThemedScene> s;

    bool show(const char *qml, ThemeType type = ThemeType::classic, ColorScheme scheme = ColorScheme::light)
    {
        b->desktop.setColorScheme(scheme);
        s->window()->resize(470, 680);
        return s->show(qml, type, scheme, {{u"queue"_s, QVariant::fromValue(&b->queue())}});
    }
    void play(const QString &id, const QStringList &ids)
    {
        b->player().playSong(fileSong(id), fileSongs(ids));
    }
    /// Text of the items of that name, from top to bottom.
    QStringList texts(const QString &name) const
    {
        QList<QPair<double, QString>> found;
        for (const QQuickItem *item : s->items(name)) {
            if (item->isVisible())
                found.append({item->mapToScene({}).y(), item->property("text").toString()});
        }
        std::sort(found.begin(), found.end());
        QStringList result;
        for (const auto &[y, text] : std::as_const(found))
            result.append(text);
        return result;
    }
    /// The row that shows that title.
    QQuickItem *row(const QString &title) const
    {
        for (QQuickItem *item : s->items(u"queueTitle"_s) + s->items(u"title"_s)) {
            if (!item->isVisible() || item->property("text").toString() != title)
                continue;
            for (QQuickItem *over = item; over; over = over->parentItem()) {
                if (over->inherits("QQuickItemDelegate"))
                    return over;
            }
        }
        return nullptr;
    }

private Q_SLOTS:
    void init()
    {
        b = std::make_unique<MiniPlayerBench>();
        b->startMiniPlayer();
        s = std::make_unique<ThemedScene>(InterfaceParts{.desktopAppearance = &b->desktop,
                                                         .themeManager = b->themeManager.get(),
                                                         .themeService = b->themeService.get()});
        s->warnings.take();
    }
    void cleanup()
    {
        const QStringList warnings = s->warnings.take();
        s.reset();
        b.reset();
        QCOMPARE(warnings, QStringList());
    }

    void anEmptyPageSaysSo();
    void thePageListsTheQueueAndMarksWhatPlays();
    void aTapOnThePagePlays();
    void clearOfThePage();
    void keysOfThePage();
    void thePageOpensWhereTheQueueIs();
    void thePageStaysWhileItIsRead();
    void longTitlesStayInTheirRow();
    void thePageIsSeenOnWhateverLiesBehindIt();
    void anEmptiedPageTakesNoKeys();

    void anEmptyScreenSaysSo();
    void theScreenHasTwoSections();
    void theScreenSaysWhatPlays();
    void aTapOnTheScreenPlays();
    void nothingOfTheScreenTakesASongOut();

    void aHundredThousandSongsOpenAtOnce();
    void eachLookCanBeRead_data() { addThemes(); }
    void eachLookCanBeRead();
};

void QueueScreensTest::anEmptyPageSaysSo()
{
    QVERIFY(show(page));
    QCOMPARE(texts(u"queuePageTitle"_s), QStringList{u"播放队列"_s});
    QCOMPARE(texts(u"emptyQueueText"_s), QStringList{u"播放队列为空"_s});
    QVERIFY(!s->item(u"clearQueueButton"_s)->isVisible());
    QVERIFY(!s->item(u"queuePageList"_s)->isVisible());
    play(u"a"_s, {u"a"_s});
    QTRY_VERIFY(s->item(u"queuePageList"_s)->isVisible());
    QVERIFY(!s->item(u"emptyQueue"_s)->isVisible());
}

void QueueScreensTest::thePageListsTheQueueAndMarksWhatPlays()
{
    play(u"b"_s, {u"a"_s, u"b"_s, u"c"_s});
    QVERIFY(show(page));
    QTRY_COMPARE(texts(u"queueTitle"_s), (QStringList{u"Title a"_s, u"Title b"_s, u"Title c"_s}));
    QCOMPARE(texts(u"queueArtist"_s), (QStringList{u"Artist a"_s, u"Artist b"_s, u"Artist c"_s}));
    const auto marked = [this] {
        QStringList titles;
        for (const QQuickItem *mark : s->items(u"queueMark"_s)) {
            if (mark->isVisible() && mark->property("name").toString() == u"waveform"_s)
                titles.append(mark->mapRectToScene(mark->boundingRect()).center().y() <
                                      row(u"Title c"_s)->mapToScene({}).y()
                                  ? u"before c"_s
                                  : u"c"_s);
        }
        return titles;
    };
    QTRY_COMPARE(marked(), QStringList{u"before c"_s});
    QCOMPARE(ThemedScene::accessibleName(row(u"Title b"_s)), u"Title b，Artist b，正在播放"_s);
    QCOMPARE(ThemedScene::accessibleName(row(u"Title a"_s)), u"Title a，Artist a"_s);
    b->player().next();
    QTRY_COMPARE(marked(), QStringList{u"c"_s});
}

void QueueScreensTest::aTapOnThePagePlays()
{
    play(u"b"_s, {u"a"_s, u"b"_s, u"c"_s});
    QVERIFY(show(page));
    QTRY_VERIFY(row(u"Title c"_s));
    s->click(row(u"Title c"_s));
    QCOMPARE(songOf(b->player()).id(), u"c"_s);
    s->tap(row(u"Title a"_s));
    QTRY_COMPARE(songOf(b->player()).id(), u"a"_s);
    QCOMPARE(b->player().queue(), fileSongs({u"a"_s, u"b"_s, u"c"_s}));
}

void QueueScreensTest::clearOfThePage()
{
    play(u"b"_s, {u"a"_s, u"b"_s});
    QVERIFY(show(page));
    QQuickItem *button = s->item(u"clearQueueButton"_s);
    QTRY_VERIFY(button->isVisible());
    QCOMPARE(ThemedScene::accessibleName(button), u"清空"_s);
    s->click(button);
    QVERIFY(b->player().queue().isEmpty());
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
    QTRY_VERIFY(s->item(u"emptyQueue"_s)->isVisible());
    QVERIFY(!button->isVisible());
}

void QueueScreensTest::keysOfThePage()
{
    play(u"a"_s, {u"a"_s, u"b"_s, u"c"_s});
    b->answerDuration(100);
    QVERIFY(show(page));
    QTRY_VERIFY(row(u"Title a"_s));
    s->key(Qt::Key_Down);
    s->key(Qt::Key_Down);
    s->key(Qt::Key_Return);
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
    b->answerDuration(100);
    const bool wasPlaying = b->player().isPlaying();
    s->key(Qt::Key_Space);
    QCOMPARE(b->player().isPlaying(), !wasPlaying);
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
    s->item(u"clearQueueButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    s->holdKey(Qt::Key_Return);
    QVERIFY(b->player().queue().isEmpty());
}

void QueueScreensTest::thePageOpensWhereTheQueueIs()
{
    QStringList ids;
    for (int i = 0; i < 500; ++i)
        ids.append(QString::number(i));
    play(u"400"_s, ids);
    QTRY_COMPARE(b->queue().playingRow(), 400);
    QVERIFY(show(page));
    QTRY_VERIFY(row(u"Title 400"_s));
    QQuickItem *list = s->item(u"queuePageList"_s);
    const QRectF area = row(u"Title 400"_s)->mapRectToItem(list, row(u"Title 400"_s)->boundingRect());
    QVERIFY(area.top() > list->height() / 4 && area.bottom() < list->height() * 3 / 4);
    // Left and come back to, it shows where the queue has gone.
    s->item(u"page"_s)->setVisible(false);
    b->queue().play(20);
    QTRY_COMPARE(b->queue().playingRow(), 20);
    s->item(u"page"_s)->setVisible(true);
    QTRY_VERIFY(row(u"Title 20"_s));
}

void QueueScreensTest::thePageStaysWhileItIsRead()
{
    QStringList ids;
    for (int i = 0; i < 500; ++i)
        ids.append(QString::number(i));
    play(u"100"_s, ids);
    QTRY_COMPARE(b->queue().playingRow(), 100);
    QVERIFY(show(page));
    QTRY_VERIFY(row(u"Title 100"_s));
    const double before = s->item(u"queuePageList"_s)->property("contentY").toReal();
    b->player().next();
    QTRY_COMPARE(b->queue().playingRow(), 101);
    QCOMPARE(s->item(u"queuePageList"_s)->property("contentY").toReal(), before);
}

void QueueScreensTest::longTitlesStayInTheirRow()
{
    Song song = fileSong(u"long"_s);
    song.setTitle(QString(300, u'长'));
    song.setArtist(QString(300, u'名'));
    b->player().playSong(song, {song});
    for (const char *qml : {page, screen}) {
        QVERIFY(show(qml));
        QTRY_VERIFY(row(song.title()));
        QQuickItem *line = row(song.title());
        for (const QString &name : {u"queueTitle"_s, u"queueArtist"_s, u"title"_s, u"subtitle"_s}) {
            for (const QQuickItem *text : s->items(name)) {
                const QRectF area = text->mapRectToItem(line, text->boundingRect());
                QVERIFY(area.left() > 0 && area.right() < line->width());
            }
        }
    }
}

void QueueScreensTest::thePageIsSeenOnWhateverLiesBehindIt()
{
    QStringList ids;
    for (int i = 0; i < 50; ++i)
        ids.append(QString::number(i));
    play(u"0"_s, ids);
    QVERIFY(show(page));
    QTRY_VERIFY(row(u"Title 0"_s));
    const QColor ink(0xfe, 0xdc, 0xba);
    s->item(u"page"_s)->setProperty("ink", ink);
    const auto rings = [&] {
        QList<QColor> colors;
        for (QQuickItem *ring : s->items(u"focusRing"_s)) {
            if (ring->isVisible())
                colors.append(ring->property("border").value<QObject *>()->property("color").value<QColor>());
        }
        return colors;
    };
    s->item(u"queuePageList"_s)->forceActiveFocus();
    s->key(Qt::Key_Down);
    QTRY_COMPARE(rings(), QList{ink});
    s->item(u"clearQueueButton"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTRY_COMPARE(rings(), QList{ink});
    QCOMPARE(s->item(u"queuePageList"_s)->property("scrollBarInk").value<QColor>(), ink);
}

void QueueScreensTest::anEmptiedPageTakesNoKeys()
{
    play(u"a"_s, {u"a"_s, u"b"_s});
    QVERIFY(show(page));
    QTRY_VERIFY(row(u"Title a"_s));
    s->item(u"queuePageList"_s)->forceActiveFocus();
    for (const Qt::Key key : scrollingKeys)
        QVERIFY(takesKey(s->item(u"queuePageList"_s), key));
    b->queue().clear();
    QTRY_VERIFY(!s->item(u"queuePageList"_s)->isVisible());
    for (const Qt::Key key : scrollingKeys)
        QVERIFY(!takesKey(s->item(u"queuePageList"_s), key));
}

void QueueScreensTest::anEmptyScreenSaysSo()
{
    QVERIFY(show(screen));
    QCOMPARE(texts(u"queueViewTitle"_s), QStringList{u"播放队列"_s});
    QQuickItem *empty = s->item(u"queueEmpty"_s);
    QVERIFY(empty->isVisible());
    QCOMPARE(empty->property("title").toString(), u"队列为空"_s);
    QCOMPARE(empty->property("systemImage").toString(), u"list.bullet"_s);
    QCOMPARE(empty->property("description").toString(), u"播放歌曲后会显示在这里"_s);
    QVERIFY(s->item(u"emblem"_s)->isVisible());
    QVERIFY(!s->item(u"queueViewList"_s)->isVisible());
}

void QueueScreensTest::theScreenHasTwoSections()
{
    play(u"b"_s, {u"a"_s, u"b"_s, u"c"_s});
    QVERIFY(show(screen));
    QTRY_COMPARE(texts(u"sectionTitle"_s), (QStringList{u"正在播放"_s, u"接下来播放"_s}));
    QTRY_COMPARE(texts(u"title"_s), (QStringList{u"Title b"_s, u"Title c"_s, u"Title a"_s}));
    QVERIFY(!s->item(u"queueEmpty"_s)->isVisible());
    b->player().next();
    QTRY_COMPARE(texts(u"title"_s), (QStringList{u"Title c"_s, u"Title a"_s, u"Title b"_s}));
    QTRY_COMPARE(texts(u"sectionTitle"_s), (QStringList{u"正在播放"_s, u"接下来播放"_s}));
    b->player().playOnlineSong(onlineSong(u"1"_s), {});
    QTRY_COMPARE(texts(u"title"_s), (QStringList{u"Online 1"_s, u"Title a"_s, u"Title b"_s, u"Title c"_s}));
}

void QueueScreensTest::theScreenSaysWhatPlays()
{
    play(u"b"_s, {u"a"_s, u"b"_s});
    QVERIFY(show(screen));
    QTRY_VERIFY(row(u"Title a"_s) && row(u"Title b"_s));
    const auto name = [this](const QString &title) {
        return QAccessible::queryAccessibleInterface(row(title))->text(QAccessible::Name);
    };
    QCOMPARE(name(u"Title b"_s), u"Title b，Artist b，正在播放"_s);
    QCOMPARE(name(u"Title a"_s), u"Title a，Artist a"_s);
}

void QueueScreensTest::aTapOnTheScreenPlays()
{
    play(u"b"_s, {u"a"_s, u"b"_s, u"c"_s});
    QVERIFY(show(screen));
    QTRY_VERIFY(row(u"Title a"_s));
    s->click(row(u"Title a"_s));
    QCOMPARE(songOf(b->player()).id(), u"a"_s);
    QCOMPARE(b->player().queue(), fileSongs({u"a"_s, u"b"_s, u"c"_s}));
    s->item(u"queueViewList"_s)->forceActiveFocus();
    s->key(Qt::Key_End);
    s->key(Qt::Key_Return);
    QCOMPARE(songOf(b->player()).id(), u"c"_s);
}

void QueueScreensTest::nothingOfTheScreenTakesASongOut()
{
    play(u"b"_s, {u"a"_s, u"b"_s, u"c"_s});
    QVERIFY(show(screen));
    QTRY_VERIFY(row(u"Title a"_s));
    s->click(row(u"Title a"_s), Qt::RightButton);
    s->item(u"queueViewList"_s)->forceActiveFocus();
    s->key(Qt::Key_Down);
    s->key(Qt::Key_Delete);
    s->key(Qt::Key_Menu);
    QCOMPARE(b->player().queue(), fileSongs({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(songOf(b->player()).id(), u"b"_s);
}

void QueueScreensTest::aHundredThousandSongsOpenAtOnce()
{
    QList<Song> songs;
    constexpr int count = 100'000;
    songs.reserve(count);
    for (int i = 0; i < count; ++i)
        songs.append(fileSong(QString::number(i)));
    b->player().playSong(songs.at(70'000), songs);
    QTRY_COMPARE(b->queue().playingRow(), 70'000);
    for (const char *qml : {page, screen}) {
        QVERIFY(show(qml));
        QTRY_VERIFY(row(u"Title 70000"_s));
        // Rows are made for what is in sight.
        QVERIFY(s->items(u"queueTitle"_s).size() + s->items(u"title"_s).size() < 60);
    }
}

void QueueScreensTest::eachLookCanBeRead()
{
    QFETCH(const ThemeType, type);
    QFETCH(const ColorScheme, scheme);
    play(u"b"_s, {u"a"_s, u"b"_s, u"c"_s});
    // Three songs of two lines each beneath a title.
    constexpr int least = 7;
    for (const char *qml : {page, screen}) {
        QVERIFY(show(qml, type, scheme));
        QTRY_VERIFY(row(u"Title a"_s));
        int read = 0;
        // The rows of the screen have a ground of their own, those of the page none.
        const QColor rowFill = ThemedSurfaces::themedRow(&s->theme()).fill;
        for (const auto &[name, fill] : {std::pair(u"queueTitle"_s, QColor(Qt::transparent)),
                                         std::pair(u"queueArtist"_s, QColor(Qt::transparent)),
                                         std::pair(u"queuePageTitle"_s, QColor(Qt::transparent)),
                                         std::pair(u"queueViewTitle"_s, QColor(Qt::transparent)),
                                         std::pair(u"title"_s, rowFill), std::pair(u"subtitle"_s, rowFill)}) {
            for (const QQuickItem *text : s->items(name)) {
                if (!text->isVisible() || text->property("text").toString().isEmpty())
                    continue;
                const QColor ink = text->property("color").value<QColor>();
                const double ratio = leastRatio(s->theme(), fill, ink);
                QVERIFY2(ratio >= Contrast::legible, qPrintable(name + u' ' + QString::number(ratio)));
                ++read;
            }
        }
        QVERIFY2(read >= least, qPrintable(QString::number(read)));
        QVERIFY(!s->grab().isNull());
    }
}

} // namespace cadorel

QTEST_MAIN(cadorel::QueueScreensTest)
#include "tst_queue_screens.moc"
