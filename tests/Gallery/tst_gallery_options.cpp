// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GalleryOptions.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

class GalleryOptionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void nothingAsksForTheFirstPageInThePlainLook();
    void everythingCanBeAskedFor();
    void whatCannotBeUnderstoodIsTold_data();
    void whatCannotBeUnderstoodIsTold();
};

void GalleryOptionsTest::nothingAsksForTheFirstPageInThePlainLook()
{
    const auto options = GalleryOptions::parse({u"gallery"_s});
    QVERIFY(options);
    QCOMPARE(options->look, ThemeType::classic);
    QCOMPARE(options->isDark, false);
    QCOMPARE(options->page, 0);
    QCOMPARE(options->textScale, 1.0);
    QVERIFY(options->file.isEmpty());
}

void GalleryOptionsTest::everythingCanBeAskedFor()
{
    const auto options = GalleryOptions::parse({u"gallery"_s, u"--look"_s, u"kawaiiPink"_s, u"--scheme"_s,
                                                u"dark"_s, u"--page"_s, u"3"_s, u"--scale"_s, u"1.3"_s,
                                                u"--size"_s, u"390x844"_s, u"--save"_s, u"a.png"_s});
    QVERIFY(options);
    QCOMPARE(options->look, ThemeType::kawaiiPink);
    QCOMPARE(options->isDark, true);
    QCOMPARE(options->page, 2);
    QCOMPARE(options->textScale, 1.3);
    QCOMPARE(options->size, QSize(390, 844));
    QCOMPARE(options->file, u"a.png"_s);
}

void GalleryOptionsTest::whatCannotBeUnderstoodIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("look") << QStringList{u"--look"_s, u"Classic"_s};
    QTest::newRow("scheme") << QStringList{u"--scheme"_s, u"dim"_s};
    QTest::newRow("page 0") << QStringList{u"--page"_s, u"0"_s};
    QTest::newRow("page 5") << QStringList{u"--page"_s, u"5"_s};
    QTest::newRow("page by name") << QStringList{u"--page"_s, u"controls"_s};
    QTest::newRow("scale") << QStringList{u"--scale"_s, u"nan"_s};
    QTest::newRow("large scale") << QStringList{u"--scale"_s, u"3"_s};
    QTest::newRow("size") << QStringList{u"--size"_s, u"390"_s};
    QTest::newRow("empty size") << QStringList{u"--size"_s, u"0x844"_s};
    QTest::newRow("huge size") << QStringList{u"--size"_s, u"9999x9999"_s};
    QTest::newRow("no file") << QStringList{u"--save"_s, QString()};
    QTest::newRow("option") << QStringList{u"--colour"_s, u"red"_s};
    QTest::newRow("word") << QStringList{u"controls"_s};
}

void GalleryOptionsTest::whatCannotBeUnderstoodIsTold()
{
    QFETCH(const QStringList, arguments);
    const auto options = GalleryOptions::parse(QStringList{u"gallery"_s} + arguments);
    QVERIFY(!options);
    QVERIFY(!options.error().isEmpty());
}

QTEST_GUILESS_MAIN(GalleryOptionsTest)
#include "tst_gallery_options.moc"
