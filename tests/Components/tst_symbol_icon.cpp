// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/PictureChecks.h"
#include "Components/SymbolImageProvider.h"
#include "Utils/SymbolFiles.h"
#include "Views/UserInterface.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTemporaryDir>
#include <QTest>
#include <limits>
#include <memory>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// The symbol as it should look: its vectors drawn at the very place, in black.
QImage ideal(const QSize &image, const QString &name, const QRectF &place)
{
    QImage result(image, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::white);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(symbolFile(name)).render(&painter, place);
    return result;
}

/// Mean difference of two images in the place, in levels of grey, 0 to 255.
qreal difference(const QImage &one, const QImage &other, const QRect &place)
{
    qreal sum = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            sum += qAbs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y)));
    }
    return sum / place.width() / place.height();
}

} // namespace

class SymbolIconTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pictureHasSizeAndColour();
    void unreadableColourIsBlack();
    void unknownSymbolIsACircle();
    void hugeSizeIsBounded();
    void iconIsSharp_data();
    void iconIsSharp();
    void iconTakesItsColour();
    void strangeNameIsACircle_data();
    void strangeNameIsACircle();
    void emptyNameDrawsNothing();
    void screenReadersPassItBy();

private:
    /// Shows a symbol on white at (7, 5), and what is seen then. Null when the window does not appear.
    QImage show(const QString &properties);

    std::unique_ptr<QQuickView> m_view;
    QTemporaryDir m_folder;
};

QImage SymbolIconTest::show(const QString &properties)
{
    const QString path = m_folder.filePath(u"Shown.qml"_s);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    file.write(u"import QtQuick\nimport Cadorel\nRectangle { width: 80; height: 80; color: \"white\"\n"
               "SymbolIcon { objectName: \"icon\"; x: 7; y: 5; %1 } }"_s.arg(properties)
                   .toUtf8());
    file.close();
    m_view = std::make_unique<QQuickView>();
    installUserInterface(*m_view->engine());
    m_view->setSource(QUrl::fromLocalFile(path));
    if (m_view->status() != QQuickView::Ready)
        return {};
    m_view->show();
    return QTest::qWaitForWindowExposed(m_view.get()) ? m_view->grabWindow() : QImage();
}

void SymbolIconTest::pictureHasSizeAndColour()
{
    SymbolImageProvider provider;
    for (const auto &address : {u"play.fill?color=#ff3b30"_s, u"play.fill?color=%23ff3b30"_s}) {
        QSize size;
        const QImage image = provider.requestImage(address, &size, {48, 48});
        QCOMPARE(image.size(), size);
        QVERIFY(size.width() >= 48 && size.width() == size.height());
        QCOMPARE(image.pixelColor(image.rect().center()), QColor(0xff, 0x3b, 0x30));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
    }
    const QImage half = provider.requestImage(u"play.fill?color=#800000ff"_s, nullptr, {30, 30});
    QCOMPARE(half.pixelColor(half.rect().center()).alpha(), 0x80);
    QCOMPARE(half.pixelColor(half.rect().center()).blue(), 255);
}

void SymbolIconTest::unreadableColourIsBlack()
{
    SymbolImageProvider provider;
    const QImage black = provider.requestImage(u"play.fill?color=#000000"_s, nullptr, {32, 32});
    for (const auto &address :
         {u"play.fill"_s, u"play.fill?"_s, u"play.fill?color="_s, u"play.fill?color=#12"_s,
          u"play.fill?colour=red"_s, u"play.fill?color=%00%ff%zz"_s,
          u"play.fill?color="_s + QString(100000, u'#')})
        QCOMPARE(provider.requestImage(address, nullptr, {32, 32}), black);
}

void SymbolIconTest::unknownSymbolIsACircle()
{
    SymbolImageProvider provider;
    const QImage circle = provider.requestImage(u"circle"_s, nullptr, {32, 32});
    for (const auto &address : {u"no.such.symbol"_s, u""_s, u"?"_s, u"../../icons/phosphor/LICENSE"_s,
                                u"..%2F..%2Fetc"_s, QString(100000, u'a')})
        QCOMPARE(provider.requestImage(address, nullptr, {32, 32}), circle);
}

void SymbolIconTest::hugeSizeIsBounded()
{
    SymbolImageProvider provider;
    constexpr int huge = std::numeric_limits<int>::max();
    for (const QSize &asked : {QSize(huge, huge), QSize(1, huge), QSize(huge, -1)})
        QCOMPARE(provider.requestImage(u"circle"_s, nullptr, asked).size(), QSize(1024, 1024));
    for (const QSize &asked : {QSize(), QSize(0, 0), QSize(-huge, -huge)})
        QVERIFY(provider.requestImage(u"circle"_s, nullptr, asked).width() >= 24);
    QVERIFY(!provider.requestImage(u"circle"_s, nullptr, {1, 1}).isNull());
}

void SymbolIconTest::iconIsSharp_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {14, 15, 18, 24, 29, 30, 56})
        QTest::addRow("%d", size) << size;
}

void SymbolIconTest::iconIsSharp()
{
    QFETCH(int, size);
    for (const QString &name : {u"list.bullet"_s, u"gearshape.fill"_s, u"waveform"_s}) {
        const QImage seen = show(u"name: \"%1\"; size: %2; color: \"black\""_s.arg(name).arg(size));
        QVERIFY(!seen.isNull());
        const qreal ratio = m_view->effectiveDevicePixelRatio();
        QCOMPARE(seen.width(), qRound(80 * ratio));
        const QRectF place(7 * ratio, 5 * ratio, size * ratio, size * ratio);
        const qreal off = difference(seen, ideal(seen.size(), name, place), place.toAlignedRect());
        // A picture of as many pixels as asked for is off by ten and more where it lies between them.
        QVERIFY2(off < 2, qPrintable(u"%1: %2"_s.arg(name).arg(off)));
    }
}

void SymbolIconTest::iconTakesItsColour()
{
    const QImage solid = show(u"name: \"circle.fill\"; size: 40; color: \"#ff3b30\""_s);
    const qreal ratio = m_view->effectiveDevicePixelRatio();
    const QPoint middle(qRound(27 * ratio), qRound(25 * ratio));
    QCOMPARE(solid.pixelColor(middle), QColor(0xff, 0x3b, 0x30));
    QCOMPARE(solid.pixelColor(1, 1), QColor(Qt::white));
    const QImage half = show(u"name: \"circle.fill\"; size: 40; color: \"#800000ff\""_s);
    QVERIFY(qAbs(half.pixelColor(middle).red() - 127) <= 1);
    QCOMPARE(half.pixelColor(middle).blue(), 255);
    const QImage clear = show(u"name: \"circle.fill\"; size: 40; color: \"transparent\""_s);
    QCOMPARE(clear.pixelColor(middle), QColor(Qt::white));
}

void SymbolIconTest::strangeNameIsACircle_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"no.such.symbol", "play.fill?color=red", "#", "%", "%2f..%2f", "a/../b", "心", " "})
        QTest::newRow(name) << QString::fromUtf8(name);
}

void SymbolIconTest::strangeNameIsACircle()
{
    QFETCH(QString, name);
    const QImage circle = show(u"name: \"circle\"; size: 40"_s);
    QVERIFY(!circle.isNull());
    QCOMPARE(show(u"name: \"%1\"; size: 40"_s.arg(name)), circle);
}

void SymbolIconTest::emptyNameDrawsNothing()
{
    const QImage nothing = show(u"name: \"\"; size: 40"_s);
    QVERIFY(!nothing.isNull());
    QCOMPARE(nothing, show(u"name: \"circle\"; size: 40; visible: false"_s));
}

void SymbolIconTest::screenReadersPassItBy()
{
    QVERIFY(!show(u"name: \"circle\""_s).isNull());
    auto *icon = m_view->rootObject()->findChild<QQuickItem *>(u"icon"_s);
    QVERIFY(icon);
    const QAccessibleInterface *window = QAccessible::queryAccessibleInterface(m_view.get());
    QVERIFY(window);
    QList<const QAccessibleInterface *> left = {window};
    while (!left.isEmpty()) {
        const QAccessibleInterface *one = left.takeFirst();
        QVERIFY(one->object() != icon);
        for (int i = 0; i < one->childCount(); ++i)
            left.append(one->child(i));
    }
}

QTEST_MAIN(SymbolIconTest)
#include "tst_symbol_icon.moc"
