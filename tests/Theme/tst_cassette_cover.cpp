// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/ThemedScene.h"

namespace cadorel {

using namespace Qt::StringLiterals;

/// A cover in the label of a cassette, on the screen.
class TestCassetteCover : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<ThemedScene> s;

    bool show(const QByteArray &properties, const QByteArray &cover = "image://cover/made")
    {
        return s->show("CassetteCover { width: 300; height: 300; coverSource: \"" + cover + "\"\n" +
                       properties + " }");
    }
    QRectF placeOf(const QString &name) const
    {
        const QQuickItem *item = s->item(name);
        return item->mapRectToItem(s->root(), QRectF(0, 0, item->width(), item->height()));
    }
    bool isReady(const QString &name) const { return s->item(name)->property("status").toInt() == 1; }

private Q_SLOTS:
    void init() { s = std::make_unique<ThemedScene>(); }
    void cleanup()
    {
        QCOMPARE(s->warnings.take(), QStringList());
        s.reset();
    }

    void theCoverLiesInTheLabel_data()
    {
        QTest::addColumn<QByteArray>("image");
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<QRectF>("cover");
        QTest::addRow("classic") << QByteArray("Cassette") << QByteArray("configScale: 0.18; offsetY: -0.2")
                                 << QRectF(123, 63, 54, 54);
        QTest::addRow("pink") << QByteArray("Cassette1") << QByteArray("configScale: 0.25; offsetY: -0.15")
                              << QRectF(113, 68, 75, 75);
        QTest::addRow("blue") << QByteArray("Cassette2") << QByteArray("configScale: 0.22; offsetY: -0.1")
                              << QRectF(117, 87, 66, 66);
        QTest::addRow("purple") << QByteArray("Cassette3") << QByteArray("configScale: 0.24; offsetY: -0.12")
                                << QRectF(114, 78, 72, 72);
        QTest::addRow("orange") << QByteArray("Cassette4") << QByteArray("configScale: 0.23; offsetY: -0.14")
                                << QRectF(116, 74, 69, 69);
    }
    void theCoverLiesInTheLabel()
    {
        QFETCH(QByteArray, image);
        QFETCH(QByteArray, config);
        QVERIFY(show("imageName: \"" + image + "\"; " + config));
        QCOMPARE(placeOf(u"cassette"_s), QRectF(0, 0, 300, 300));
        QTRY_VERIFY(isReady(u"cassette"_s));
        QTEST(placeOf(u"cover"_s), "cover");
        QTRY_VERIFY(isReady(u"picture"_s));
        // It is as round as the label that it lies in.
        QCOMPARE(s->item(u"cover"_s)->property("cornerRadius").toInt(),
                 qRound(s->item(u"cover"_s)->width() * 0.06));
        // It hides the picture, which is not the other way round.
        QVERIFY(s->item(u"cover"_s)->parentItem()->childItems().last() == s->item(u"cover"_s));
    }

    void withoutACassetteTheCoverFillsTheItem()
    {
        QVERIFY(show("cornerRadius: 20"));
        QCOMPARE(s->item(u"cassette"_s)->property("source").toUrl(), QUrl());
        QCOMPARE(placeOf(u"cover"_s), QRectF(0, 0, 300, 300));
        QCOMPARE(s->item(u"cover"_s)->property("cornerRadius").toInt(), 20);
    }

    void aSongWithoutACoverHasANoteInTheLabel_data()
    {
        QTest::addColumn<QByteArray>("cover");
        QTest::addRow("no address") << QByteArray();
        QTest::addRow("the address of no cover") << QByteArray("image://cover/none");
    }
    void aSongWithoutACoverHasANoteInTheLabel()
    {
        QFETCH(QByteArray, cover);
        QVERIFY(show("imageName: \"Cassette1\"; configScale: 0.25; offsetY: -0.15", cover));
        QVERIFY(s->item(u"cover"_s)->isVisible());
        QCOMPARE(s->item(u"picture"_s)->property("source").toString(), u"image://cover/none"_s);
        QTRY_VERIFY(s->item(u"picture"_s)->property("isPicture").toBool());
        // Its field is smooth but for the edges of the note.
        const QImage drawn = s->grab().copy(placeOf(u"cover"_s).toRect().translated(40, 40));
        const auto steepestIn = [&drawn](int y) {
            int steepest = 0;
            for (int x = drawn.width() / 4; x < drawn.width() * 3 / 4; ++x)
                steepest =
                    std::max(steepest, std::abs(qGray(drawn.pixel(x, y)) - qGray(drawn.pixel(x + 1, y))));
            return steepest;
        };
        QVERIFY(steepestIn(4) <= 2);
        QVERIFY(steepestIn(drawn.height() / 2) > 10);
    }

    void anUnknownCassetteLeavesTheCover()
    {
        QVERIFY(show("imageName: \"Cassette9\"; configScale: 0.5"));
        QCOMPARE(s->item(u"cassette"_s)->property("source").toUrl(), QUrl());
        QCOMPARE(placeOf(u"cover"_s), QRectF(75, 75, 150, 150));
    }

    void numbersOutOfRangeDrawACoverAllTheSame_data()
    {
        QTest::addColumn<QByteArray>("config");
        QTest::addColumn<QRectF>("cover");
        QTest::addRow("scale 40") << QByteArray("configScale: 40") << QRectF(0, 0, 300, 300);
        QTest::addRow("scale -1") << QByteArray("configScale: -1") << QRectF(143, 143, 15, 15);
        QTest::addRow("no numbers") << QByteArray("configScale: NaN; offsetX: NaN; offsetY: NaN")
                                    << QRectF(123, 123, 54, 54);
        QTest::addRow("endless") << QByteArray("configScale: 0.2; offsetX: Infinity; offsetY: -Infinity")
                                 << QRectF(270, -30, 60, 60);
    }
    void numbersOutOfRangeDrawACoverAllTheSame()
    {
        QFETCH(QByteArray, config);
        QVERIFY(show("imageName: \"Cassette1\"; " + config));
        QTEST(placeOf(u"cover"_s), "cover");
        QTRY_VERIFY(isReady(u"picture"_s));
        QVERIFY(!s->grab().isNull());
    }

    void thePictureStaysSquareInTheMiddle()
    {
        QVERIFY(s->show("CassetteCover { width: 400; height: 200; coverSource: \"image://cover/made\"; "
                        "imageName: \"Cassette\"; configScale: 0.5 }"));
        QCOMPARE(placeOf(u"cassette"_s), QRectF(100, 0, 200, 200));
        QCOMPARE(placeOf(u"cover"_s), QRectF(150, 50, 100, 100));
        s->root()->setSize({0, 0});
        QCOMPARE(s->item(u"cassette"_s)->property("source").toUrl(), QUrl());
        QVERIFY(!s->item(u"cover"_s)->isVisible());
    }

    void theCoverFollowsAChangeOfTheConfig()
    {
        QVERIFY(show("imageName: \"Cassette\"; configScale: 0.2"));
        s->root()->setProperty("configScale", 0.4);
        s->root()->setProperty("offsetX", 0.1);
        QCOMPARE(placeOf(u"cover"_s), QRectF(120, 90, 120, 120));
    }
};

} // namespace cadorel

QTEST_MAIN(cadorel::TestCassetteCover)
#include "tst_cassette_cover.moc"
