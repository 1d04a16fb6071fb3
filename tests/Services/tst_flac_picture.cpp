// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/MadePicture.h"
#include "Services/Cloud/FlacPicture.h"

#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

constexpr quint32 greatest = 0xFFFFFFFF;

/// Offsets in a block with an empty media type and description.
constexpr qsizetype mimeLengthAt = 4;
constexpr qsizetype descriptionLengthAt = 8;
constexpr qsizetype pictureLengthAt = 28;

QByteArray withNumber(QByteArray block, qsizetype at, quint32 number)
{
    return block.replace(at, qsizetype{sizeof number}, madeNumber(number));
}

} // namespace

class FlacPictureTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void pictureIsFound_data();
    void pictureIsFound();
    void blockOfThirtyTwoBytesIsRejected();
    void lengthBeyondTheEndIsRejected_data();
    void lengthBeyondTheEndIsRejected();
    void everyBlockThatIsCutShortIsRejected();
    void bytesBehindThePictureAreLeftOut();
};

void FlacPictureTest::pictureIsFound_data()
{
    QTest::addColumn<QByteArray>("mimeType");
    QTest::addColumn<QByteArray>("description");
    QTest::newRow("usual") << QByteArray("image/jpeg") << QByteArray();
    QTest::newRow("described") << QByteArray("image/png") << QByteArray("封面");
    QTest::newRow("nothing told") << QByteArray() << QByteArray();
    QTest::newRow("odd lengths") << QByteArray("x") << QByteArray("abcde");
}

void FlacPictureTest::pictureIsFound()
{
    QFETCH(QByteArray, mimeType);
    QFETCH(QByteArray, description);
    const QByteArray picture = madePng();
    QCOMPARE(flacPicture(madePictureBlock(picture, mimeType, description)), picture);
}

void FlacPictureTest::blockOfThirtyTwoBytesIsRejected()
{
    // Eight numbers, with no room for a picture.
    const QByteArray block = madePictureBlock({}, {}, {});
    QCOMPARE(block.size(), 32);
    QVERIFY(!flacPicture(block));
    QVERIFY(!flacPicture({}));
    QVERIFY(!flacPicture(block.first(31)));
    QCOMPARE(flacPicture(madePictureBlock("p", {}, {})), "p"_ba);
}

void FlacPictureTest::lengthBeyondTheEndIsRejected_data()
{
    QTest::addColumn<qsizetype>("at");
    QTest::addColumn<quint32>("number");
    const auto size = static_cast<quint32>(madePictureBlock("picture", {}, {}).size());
    const struct
    {
        const char *name;
        qsizetype at;
    } lengths[] = {
        {"media type", mimeLengthAt}, {"description", descriptionLengthAt}, {"picture", pictureLengthAt}};
    for (const auto &length : lengths) {
        for (const quint32 number : {size, greatest, greatest / 2, greatest / 2 + 1, greatest - 3})
            QTest::addRow("%s of %u", length.name, number) << length.at << number;
    }
    QTest::newRow("picture longer by one") << pictureLengthAt << quint32{8};
}

void FlacPictureTest::lengthBeyondTheEndIsRejected()
{
    QFETCH(qsizetype, at);
    QFETCH(quint32, number);
    QVERIFY(!flacPicture(withNumber(madePictureBlock("picture", {}, {}), at, number)));
}

void FlacPictureTest::everyBlockThatIsCutShortIsRejected()
{
    const QByteArray block = madePictureBlock("a picture of some length", "image/png", "described");
    for (qsizetype size = 0; size < block.size(); ++size)
        QVERIFY2(!flacPicture(block.first(size)), qPrintable(QString::number(size)));
    QVERIFY(flacPicture(block));
}

void FlacPictureTest::bytesBehindThePictureAreLeftOut()
{
    QCOMPARE(flacPicture(madePictureBlock("picture") + "more"), "picture"_ba);
}

QTEST_GUILESS_MAIN(FlacPictureTest)
#include "tst_flac_picture.moc"
