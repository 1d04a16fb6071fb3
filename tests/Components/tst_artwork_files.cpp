// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/PictureChecks.h"
#include "Utils/ArtworkFiles.h"
#include "Utils/KawaiiIcon.h"

#include <QFile>
#include <QMetaProperty>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr int side = 96;

/// The catalogue of the pictures that the player brings along, less the kawaii icons. There is no second
/// sticker.
const QString catalogue =
    u"Cassette Cassette1 Cassette2 Cassette3 Cassette4 AppIcon11 AppIcon22 AppIcon33 AppIcon44 "
    "cartoon1 cartoon3 cartoon4 cartoon5 cartoon6 cartoon7 cartoon8 cartoon9 cartoon10 cartoon11 cartoon12 "
    "cartoon13 cartoon14 cartoon15 cartoon16"_s;

QStringList expectedNames()
{
    QStringList names = catalogue.split(u' ');
    const QMetaObject &icons = KawaiiIcon::staticMetaObject;
    const KawaiiIcon icon;
    for (int i = icons.propertyOffset(); i < icons.propertyCount(); ++i)
        names.append(icons.property(i).read(&icon).toString());
    return names;
}

} // namespace

class ArtworkFilesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyPictureOfTheCatalogueIsThere_data();
    void everyPictureOfTheCatalogueIsThere();
    void thereAreNoOthers();
    void unknownNameHasNoPicture();
};

void ArtworkFilesTest::everyPictureOfTheCatalogueIsThere_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : expectedNames())
        QTest::newRow(qPrintable(name)) << name;
}

void ArtworkFilesTest::everyPictureOfTheCatalogueIsThere()
{
    QFETCH(QString, name);
    const QString path = artworkPath(name);
    QVERIFY(QFile::exists(path));
    QCOMPARE(KawaiiIcon::artworkFile(name), QUrl(u"qrc"_s + path));

    const QSvgRenderer renderer(path);
    QVERIFY(renderer.isValid());
    QCOMPARE(renderer.viewBoxF().width(), renderer.viewBoxF().height());
    const QImage image = drawPicture(path, side);
    QVERIFY2(coverage(image) > 0.05, qPrintable(QString::number(coverage(image))));
}

void ArtworkFilesTest::thereAreNoOthers()
{
    QStringList known = artworkNames();
    QStringList expected = expectedNames();
    known.sort();
    expected.sort();
    QCOMPARE(known, expected);
}

void ArtworkFilesTest::unknownNameHasNoPicture()
{
    for (const QString &name : {u""_s, u"cartoon2"_s, u"equalizer"_s, u"../kawaii/play"_s, u"play.svg"_s}) {
        QVERIFY2(artworkPath(name).isEmpty(), qPrintable(name));
        QVERIFY(KawaiiIcon::artworkFile(name).isEmpty());
    }
}

QTEST_MAIN(ArtworkFilesTest)
#include "tst_artwork_files.moc"
