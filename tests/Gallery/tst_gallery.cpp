// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GalleryTest.h"

#include <QAccessible>
#include <QDir>
#include <QImage>
#include <QQmlContext>
#include <QQmlEngine>
#include <QSet>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// Below an item of this name texts may end in an ellipsis.
constexpr auto mayElide = "elided";
constexpr int narrowest = 320;

QString nameOf(const QQuickItem *item)
{
    return QString::fromLatin1(item->metaObject()->className()) + u" \""_s +
           item->property("text").toString() + u'"';
}

bool isText(const QQuickItem *item)
{
    return item->inherits("QQuickText") && !item->property("text").toString().isEmpty();
}

bool isBelowElided(const QQuickItem *item)
{
    for (; item; item = item->parentItem()) {
        if (item->objectName().startsWith(QLatin1StringView(mayElide)))
            return true;
    }
    return false;
}

/// At the least width that a window can have, names of songs may end in an ellipsis, and what is only a hint
/// or a sample; a control still says all that it says.
bool mayEndEarly(const QQuickItem *item, int width)
{
    static const QSet<QString> names = {u"title"_s, u"subtitle"_s, u"placeholder"_s, u"sample"_s};
    return isBelowElided(item) || (width == narrowest && names.contains(item->objectName()));
}

/// Where the letters of a text are on the page.
QRectF lettersOf(const QQuickItem *text)
{
    const double width = text->property("contentWidth").toDouble();
    const double height = text->property("contentHeight").toDouble();
    const auto alignment = text->property("horizontalAlignment").toInt();
    const double rest = text->width() - width;
    const double left = alignment == Qt::AlignRight ? rest : alignment == Qt::AlignHCenter ? rest / 2 : 0;
    const double top = (text->height() - height) / 2;
    return text->mapRectToScene(QRectF(left, top, width, height));
}

/// The files that the components of what is seen come from.
void addComponents(const QQuickItem *item, QSet<QString> &names)
{
    for (const QMetaObject *about = item->metaObject(); about; about = about->superClass())
        names.insert(QString::fromLatin1(about->className()).section(u"_QML"_s, 0, 0));
    for (const QQmlContext *context = qmlContext(item); context; context = context->parentContext())
        names.insert(context->baseUrl().fileName().section(u'.', 0, 0));
}

} // namespace

class GalleryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { installFonts(); }
    void everyPageLoadsWithoutAWarning_data();
    void everyPageLoadsWithoutAWarning();
    void noTextIsCut_data();
    void noTextIsCut();
    void everyControlHasAName_data() { addPages(); }
    void everyControlHasAName();
    void everyComponentIsShown();
    void twoPicturesOfAPageAreEqual();
    void posesAreSeen();
};

void GalleryTest::everyPageLoadsWithoutAWarning_data()
{
    QTest::addColumn<ThemeType>("look");
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<int>("page");
    for (const ThemeType look : allThemeTypes()) {
        for (const bool isDark : {false, true}) {
            for (int page = 0; page < GalleryOptions::pageCount; ++page)
                QTest::addRow("%s %s, page %d", qPrintable(rawValue(look)), isDark ? "dark" : "light",
                              page + 1)
                    << look << isDark << page;
        }
    }
}

void GalleryTest::everyPageLoadsWithoutAWarning()
{
    QFETCH(const ThemeType, look);
    QFETCH(const bool, isDark);
    QFETCH(const int, page);
    WarningWatch warnings;
    {
        GalleryOptions options = pageIn(look, page);
        options.isDark = isDark;
        GalleryStage stage(options);
        QVERIFY(stage.load());
        const auto picture = await(stage.picture());
        QVERIFY(picture);
        QVERIFY(!picture->isNull());
        QVERIFY(picture->height() > 844);
    }
    QCOMPARE(warnings.take(), QStringList());
}

void GalleryTest::noTextIsCut_data()
{
    QTest::addColumn<ThemeType>("look");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("scale");
    for (const ThemeType look : allThemeTypes()) {
        for (int page = 0; page < GalleryOptions::pageCount; ++page) {
            for (const int width : {narrowest, 390, 1200}) {
                for (const double scale : {1.0, 1.3})
                    QTest::addRow("%s, page %d, %d wide, scale %.1f", qPrintable(rawValue(look)), page + 1,
                                  width, scale)
                        << look << page << width << scale;
            }
        }
    }
}

void GalleryTest::noTextIsCut()
{
    QFETCH(const ThemeType, look);
    QFETCH(const int, page);
    QFETCH(const int, width);
    QFETCH(const double, scale);
    GalleryOptions options = pageIn(look, page, width);
    options.textScale = scale;
    GalleryStage stage(options);
    QVERIFY(stage.load());
    const auto picture = await(stage.picture());
    QVERIFY(picture && !picture->isNull());

    struct Line
    {
        const QQuickItem *text;
        QRectF letters;
    };
    QList<Line> lines;
    const QList<QQuickItem *> items = visibleItems(stage);
    for (const QQuickItem *item : items) {
        if (!isText(item))
            continue;
        const QString name = nameOf(item);
        QVERIFY2(item->property("contentHeight").toDouble() <= item->height() + 0.5, qPrintable(name));
        if (!mayEndEarly(item, width)) {
            QVERIFY2(!item->property("truncated").toBool(), qPrintable(name));
            QVERIFY2(item->property("contentWidth").toDouble() <= item->width() + 0.5, qPrintable(name));
        }
        const QRectF letters = lettersOf(item);
        QVERIFY2(letters.left() >= 0 && letters.right() <= width, qPrintable(name));
        for (const Line &line : std::as_const(lines)) {
            const QRectF both = line.letters.intersected(letters);
            QVERIFY2(both.width() < 1 || both.height() < 1, qPrintable(name + u" on "_s + nameOf(line.text)));
        }
        lines.append({item, letters});
    }
    QVERIFY(lines.size() > 10);
}

void GalleryTest::everyControlHasAName()
{
    QFETCH(const ThemeType, look);
    QFETCH(const int, page);
    GalleryStage stage(pageIn(look, page));
    QVERIFY(stage.load());
    stage.window()->show();
    QVERIFY(QTest::qWaitForWindowExposed(stage.window()));
    int controls = 0;
    const QList<QQuickItem *> items = visibleItems(stage);
    for (QQuickItem *item : items) {
        const QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
        const bool isControl = item->inherits("QQuickAbstractButton") || item->inherits("QQuickTextField") ||
                               (interface && interface->role() == QAccessible::Slider);
        if (!isControl)
            continue;
        ++controls;
        QVERIFY2(interface, qPrintable(nameOf(item)));
        QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), qPrintable(nameOf(item)));
    }
    QVERIFY(controls >= 9); // those of the bar
}

void GalleryTest::everyComponentIsShown()
{
    QSet<QString> shown;
    for (int page = 0; page < GalleryOptions::pageCount; ++page) {
        GalleryStage stage(pageIn(ThemeType::kawaiiPink, page));
        QVERIFY(stage.load());
        const auto picture = await(stage.picture());
        QVERIFY(picture && !picture->isNull());
        const QList<QQuickItem *> items = visibleItems(stage);
        for (const QQuickItem *item : items)
            addComponents(item, shown);
    }
    // Tokens and helpers, which nobody sees by themselves; a menu is not there before it is opened.
    const QSet<QString> noComponents = {u"ThemedMenu"_s, u"Metrics"_s,        u"Motion"_s,
                                        u"Press"_s,      u"SystemColors"_s,   u"TextStyle"_s,
                                        u"TextStyles"_s, u"ResponseSpring"_s, u"RoundTouchArea"_s};
    // Of the screens, those of the icons alone: the others are shown over made data by screen_gallery.
    QStringList components = {u"AppIconButton"_s, u"AppIconPickerView"_s, u"AppIconPreview"_s};
    const QStringList files =
        QDir(QStringLiteral(CADOREL_SOURCE_DIR "/src/Theme")).entryList({u"*.qml"_s}, QDir::Files);
    for (const QString &file : files)
        components.append(file.chopped(4));
    QVERIFY(components.size() > 50);
    for (const QString &component : std::as_const(components))
        QVERIFY2(noComponents.contains(component) || shown.contains(component), qPrintable(component));
}

void GalleryTest::twoPicturesOfAPageAreEqual()
{
    QList<QImage> pictures;
    for (int i = 0; i < 2; ++i) {
        GalleryStage stage(pageIn(ThemeType::kawaiiPink, 2));
        QVERIFY(stage.load());
        const auto picture = await(stage.picture());
        QVERIFY(picture && !picture->isNull());
        pictures.append(*picture);
    }
    QCOMPARE(pictures.at(0), pictures.at(1));
}

void GalleryTest::posesAreSeen()
{
    GalleryStage stage(pageIn(ThemeType::classic, 0));
    QVERIFY(stage.load());
    const auto picture = await(stage.picture());
    QVERIFY(picture && !picture->isNull());
    int hovered = 0;
    int pressed = 0;
    int focused = 0;
    int disabled = 0;
    int dragged = 0;
    const QList<QQuickItem *> items = visibleItems(stage);
    for (const QQuickItem *item : items) {
        hovered += item->property("hovered").toBool() ? 1 : 0;
        if (item->property("down").toBool()) {
            ++pressed;
            const QVariant scale = item->property("pressedScale");
            if (scale.isValid())
                QCOMPARE(item->scale(), scale.toReal());
        }
        dragged += item->property("isDragging").toBool() ? 1 : 0;
        focused += QByteArrayView(item->metaObject()->className()).contains("FocusRing") ? 1 : 0;
        disabled += item->isEnabled() ? 0 : 1;
    }
    // One of each kind of button, and of rows and settings.
    QVERIFY2(hovered >= 10, qPrintable(QString::number(hovered)));
    QVERIFY2(pressed >= 10, qPrintable(QString::number(pressed)));
    QVERIFY2(focused >= 10, qPrintable(QString::number(focused)));
    QVERIFY2(disabled >= 10, qPrintable(QString::number(disabled)));
    QCOMPARE(dragged, 1);
}

QTEST_MAIN(GalleryTest)
#include "tst_gallery.moc"
