// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GalleryTest.h"
#include "Views/HeapUse.h"

#include <QImage>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QThreadPool>

#include <algorithm>
#include <cstdlib>
#include <optional>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int switches = 200;
/// KiB that a switch could leave behind without being seen by this test: less than an item takes.
constexpr double leastLeak = 0.5;

/// Waits until no picture is being loaded.
bool picturesAreThere(const GalleryStage &stage)
{
    constexpr int loading = 2; // Image.Loading and Loader.Loading
    return QTest::qWaitFor([&stage] {
        bool isLoading = false;
        visitItems(stage.window()->contentItem(), [&isLoading](QQuickItem *item) {
            isLoading = isLoading || item->property("status").toInt() == loading;
        });
        return !isLoading;
    });
}

/// What the process has asked for and not given back, in KiB, without what bindings have left to be
/// collected.
double memoryInUse(const GalleryStage &stage)
{
    QThreadPool::globalInstance()->waitForDone();
    stage.window()->grabWindow();
    return static_cast<double>(settledHeap(*qmlEngine(stage.window()))) / 1024;
}

/// Everything that lives in the window.
qsizetype objectsIn(const GalleryStage &stage)
{
    qsizetype items = 0;
    visitItems(stage.window()->contentItem(), [&items](QQuickItem *) { ++items; });
    return items + stage.window()->findChildren<QObject *>().size();
}

bool takeLook(GalleryStage &stage, ThemeType look)
{
    stage.themeManager().switchTo(look);
    return QTest::qWaitFor([&stage, look] { return stage.themeManager().currentThemeType() == look; });
}

/// Switches round the looks and schemes that many times, drawing each.
bool switchRound(GalleryStage &stage, int count)
{
    for (int i = 0; i < count; ++i) {
        if (!takeLook(stage, allThemeTypes().at(i % allThemeTypes().size())))
            return false;
        stage.appearance().setDark(i / allThemeTypes().size() % 2 == 1);
        if (stage.window()->grabWindow().isNull())
            return false;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

QQuickItem *firstOf(const GalleryStage &stage, const char *type)
{
    const QList<QQuickItem *> items = visibleItems(stage);
    for (QQuickItem *item : items) {
        if (QByteArrayView(item->metaObject()->className()).startsWith(type))
            return item;
    }
    return nullptr;
}

void click(const GalleryStage &stage, const QQuickItem *item, double atX = 0.5)
{
    const QPointF place(item->width() * atX, item->height() / 2);
    QTest::mouseClick(stage.window(), Qt::LeftButton, {}, item->mapToScene(place).toPoint());
}

/// Sets off what moves on the page of controls: the knobs of pickers, springs of buttons, at last @p heart.
/// @param to the look that is taken in the first turn of the main loop in which the heart moves
void setInMotion(GalleryStage &stage, const QQuickItem *heart, std::optional<ThemeType> to)
{
    const QList<QQuickItem *> items = visibleItems(stage);
    for (const QQuickItem *item : items) {
        const QByteArrayView type(item->metaObject()->className());
        // Those of the bar choose looks and pages.
        if (!item->isEnabled() || item->mapToScene(QPointF()).y() < 150)
            continue;
        if (type.startsWith("ThemedSegmentedPicker_"))
            click(stage, item, 0.1);
        else if (type.startsWith("ThemedPlayButton"))
            click(stage, item);
    }
    const QPoint centre = heart->mapToScene(QPointF(heart->width() / 2, heart->height() / 2)).toPoint();
    QTest::mousePress(stage.window(), Qt::LeftButton, {}, centre);
    if (to)
        stage.themeManager().switchTo(*to);
    QTest::mouseRelease(stage.window(), Qt::LeftButton, {}, centre);
    // What a control says to a mouse that rests on it is no part of how it ends.
    QTest::mouseMove(stage.window(), QPoint(1, 1));
}

/// Number of pixels that a person could tell apart in two pictures of one size. A spring ends within a
/// thousandth of where it goes, which a colour may show in its last bit.
int differentPixels(const QImage &a, const QImage &b)
{
    constexpr int rounding = 2;
    int different = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb one = a.pixel(x, y);
            const QRgb other = b.pixel(x, y);
            const int most =
                std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                          std::abs(qBlue(one) - qBlue(other))});
            different += most > rounding ? 1 : 0;
        }
    }
    return different;
}

} // namespace

class GallerySwitchesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { installFonts(); }
    void manySwitchesLeaveNothingBehind_data();
    void manySwitchesLeaveNothingBehind();
    void aSwitchInMidAnimationEndsWhereItWould_data();
    void aSwitchInMidAnimationEndsWhereItWould();
    void theWindowChangesWithoutARestart();
};

void GallerySwitchesTest::manySwitchesLeaveNothingBehind_data()
{
    QTest::addColumn<int>("page");
    QTest::newRow("controls") << 0;
    QTest::newRow("pictures") << 2;
}

void GallerySwitchesTest::manySwitchesLeaveNothingBehind()
{
    QFETCH(const int, page);
    WarningWatch warnings;
    GalleryStage stage(pageIn(ThemeType::classic, page));
    QVERIFY(stage.load());
    stage.appearance().setReducesMotion(true);
    stage.window()->show();
    QVERIFY(QTest::qWaitForWindowExposed(stage.window()));
    // Each look has a picture of its own behind the Now Playing screen.
    for (const ThemeType look : allThemeTypes()) {
        QVERIFY(takeLook(stage, look));
        QImage picture(64, 64, QImage::Format_RGB32);
        picture.fill(Qt::red);
        stage.themeService().setCustomBackgroundImage(picture);
    }
    // Each look in each scheme has been seen by then, and what is kept to be drawn again is there.
    constexpr int round = 6;
    QVERIFY(switchRound(stage, 6 * round));
    const qsizetype objects = objectsIn(stage);
    constexpr int rounds = (switches + round - 1) / round;
    // What is left behind is left in each turn; a cache that fills late grows in the first ones.
    constexpr int turns = 3;
    double growth = leastLeak * switches;
    for (int turn = 0; turn < turns && growth >= leastLeak * switches; ++turn) {
        QVERIFY(picturesAreThere(stage));
        const double memory = memoryInUse(stage);
        QVERIFY(switchRound(stage, rounds * round));
        QVERIFY(picturesAreThere(stage));
        QCOMPARE(objectsIn(stage), objects);
        growth = memoryInUse(stage) - memory;
    }
#if !__has_feature(address_sanitizer) && !__has_feature(thread_sanitizer)
    QVERIFY2(growth < leastLeak * switches, qPrintable(QString::number(growth) + u" KiB"_s));
#endif
    QCOMPARE(warnings.take(), QStringList());
}

void GallerySwitchesTest::aSwitchInMidAnimationEndsWhereItWould_data()
{
    QTest::addColumn<ThemeType>("from");
    QTest::addColumn<ThemeType>("to");
    for (const ThemeType from : allThemeTypes()) {
        for (const ThemeType to : allThemeTypes()) {
            if (from != to)
                QTest::addRow("%s to %s", qPrintable(rawValue(from)), qPrintable(rawValue(to))) << from << to;
        }
    }
}

void GallerySwitchesTest::aSwitchInMidAnimationEndsWhereItWould()
{
    QFETCH(const ThemeType, from);
    QFETCH(const ThemeType, to);
    QList<QImage> ends;
    for (const bool isSwitched : {false, true}) {
        GalleryStage stage(pageIn(isSwitched ? from : to, 0));
        QVERIFY(stage.load());
        stage.window()->show();
        QVERIFY(QTest::qWaitForWindowExposed(stage.window()));
        stage.window()->resize(stage.window()->width(),
                               qCeil(stage.window()->property("wholeHeight").toDouble()));
        const QQuickItem *const heart = firstOf(stage, "ThemedHeartButton");
        QVERIFY(heart);
        const QSignalSpy moves(heart, SIGNAL(isAnimatingChanged()));
        QVERIFY(moves.isValid());
        setInMotion(stage, heart, isSwitched ? std::optional(to) : std::nullopt);
        QVERIFY(!moves.isEmpty());
        QTRY_COMPARE(stage.themeManager().currentThemeType(), to);
        const auto picture = await(stage.picture());
        QVERIFY(picture && !picture->isNull());
        QVERIFY(!heart->property("isAnimating").toBool());
        ends.append(*picture);
    }
    QCOMPARE(ends.at(1).size(), ends.at(0).size());
    // The mark of selected text is a pixel wider when it is drawn anew; a heart or a knob in mid-way is
    // hundreds.
    constexpr int lineOfText = 40;
    const int different = differentPixels(ends.at(0), ends.at(1));
    QVERIFY2(different <= lineOfText, qPrintable(QString::number(different)));
}

void GallerySwitchesTest::theWindowChangesWithoutARestart()
{
    GalleryStage stage(pageIn(ThemeType::classic, 0));
    QVERIFY(stage.load());
    stage.window()->show();
    QVERIFY(QTest::qWaitForWindowExposed(stage.window()));
    QTest::keyClick(stage.window(), Qt::Key_L);
    QTRY_COMPARE(stage.themeManager().currentThemeType(), ThemeType::neumorphism);
    QTest::keyClick(stage.window(), Qt::Key_D);
    QTRY_VERIFY(stage.appearance().isDark());
    QTest::keyClick(stage.window(), Qt::Key_T);
    QTRY_COMPARE(stage.appearance().textScale(), 1.3);
    QTest::keyClick(stage.window(), Qt::Key_3);
    QTRY_COMPARE(stage.window()->property("page").toInt(), 2);
}

QTEST_MAIN(GallerySwitchesTest)
#include "tst_gallery_switches.moc"
