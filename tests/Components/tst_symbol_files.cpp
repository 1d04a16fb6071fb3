// SPDX-License-Identifier: GPL-3.0-or-later
#include "Components/PictureChecks.h"
#include "Models/EqualizerPreset.h"
#include "Models/PlayMode.h"
#include "Models/WebDAVPreset.h"
#include "Utils/SymbolFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMetaProperty>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

/// What the screens of the player call for, by what it is used for.
const QList<std::pair<const char *, QString>> symbolsOfTheScreens = {
    {"playing", u"play.fill pause.fill stop.fill play pause.circle.fill play.circle.fill playpause.fill "
                u"backward.fill forward.fill gobackward.10 goforward.10 arrow.forward arrow.backward shuffle "
                u"repeat repeat.1 list.number"_s},
    {"sound", u"speaker.wave.1.fill speaker.wave.2.fill speaker.wave.3.fill speaker.slash.fill waveform "
              u"waveform.path.ecg airplayaudio slider.vertical.3 slider.horizontal.3 bolt.fill guitars "
              u"headphones music.mic music.quarternote.3 pianokeys person.wave.2"_s},
    {"music",
     u"music.note music.note.list music.note.house music.note.house.fill opticaldisc.fill list.bullet "
     u"text.bubble text.bubble.fill text.badge.plus text.insert square.stack person.2 person.2.fill "
     u"person.fill person.circle.fill"_s},
    {"moving about",
     u"chevron.left chevron.right chevron.up chevron.down xmark ellipsis ellipsis.circle location.fill "
     u"magnifyingglass line.3.horizontal.decrease arrow.up.arrow.down arrow.left.arrow.right arrow.down "
     u"arrow.up.left.and.arrow.down.right"_s},
    {"doing", u"plus plus.circle.fill minus minus.circle.fill trash trash.fill pencil square.and.arrow.up "
              u"square.and.arrow.down arrow.clockwise arrow.clockwise.circle.fill arrow.down.circle.fill "
              u"arrow.up.circle.fill arrow.triangle.2.circlepath doc.on.doc link qrcode"_s},
    {"marks",
     u"heart heart.fill heart.slash star star.fill bookmark bookmark.fill checkmark checkmark.circle "
     u"checkmark.circle.fill circle circle.fill xmark.circle.fill xmark.octagon.fill "
     u"exclamationmark.triangle exclamationmark.triangle.fill info.circle.fill questionmark.circle "
     u"questionmark.circle.fill 1.circle.fill 2.circle.fill 3.circle.fill eye.slash bell.fill "
     u"bell.slash gift.fill sparkles"_s},
    {"files and servers",
     u"folder folder.fill folder.badge.plus doc.fill doc.badge.plus cloud cloud.fill server.rack "
     u"externaldrive externaldrive.fill externaldrive.fill.badge.wifi "
     u"externaldrive.connected.to.line.below internaldrive.fill bolt.horizontal.circle "
     u"bolt.horizontal.circle.fill"_s},
    {"settings",
     u"gear gearshape gearshape.fill paintbrush.fill paintpalette.fill hand.raised.fill app.fill photo "
     u"photo.fill photo.badge.plus photo.on.rectangle"_s},
    {"time", u"timer clock clock.fill clock.arrow.circlepath clock.arrow.2.circlepath alarm.fill moon.fill "
             u"sun.max.fill"_s},
    {"shapes", u"circle.lefthalf.filled square square.fill square.on.circle square.on.square square.dashed "
               u"square.stack.3d.up.fill rectangle.fill cube.fill drop.fill"_s},
};

/// Symbols that a listener must tell apart at a glance.
const QStringList differing = {
    u"speaker.slash.fill speaker.wave.1.fill speaker.wave.2.fill speaker.wave.3.fill"_s,
    u"repeat repeat.1 shuffle list.number arrow.forward arrow.triangle.2.circlepath"_s,
    u"heart heart.fill heart.slash star star.fill bookmark bookmark.fill"_s,
    u"gobackward.10 goforward.10 arrow.clockwise clock.arrow.circlepath clock.arrow.2.circlepath"_s,
    u"play.fill pause.fill stop.fill playpause.fill backward.fill forward.fill play.circle.fill"_s,
    u"pause.circle.fill plus.circle.fill minus.circle.fill xmark.circle.fill xmark.octagon.fill"_s,
    u"chevron.left chevron.right chevron.up chevron.down arrow.backward arrow.forward arrow.down"_s,
    u"circle circle.fill checkmark.circle checkmark.circle.fill circle.lefthalf.filled"_s,
    u"externaldrive externaldrive.fill externaldrive.fill.badge.wifi server.rack"_s,
    u"1.circle.fill 2.circle.fill 3.circle.fill info.circle.fill questionmark.circle.fill"_s,
    u"square.and.arrow.up square.and.arrow.down arrow.up.circle.fill arrow.down.circle.fill"_s,
};

constexpr int side = 64;
constexpr int rim = 8;

QString read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

class SymbolFilesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void symbolsOfTheScreensAreKnown_data();
    void symbolsOfTheScreensAreKnown();
    void everyPictureIsDrawnWithinItsGrid_data();
    void everyPictureIsDrawnWithinItsGrid();
    void similarSymbolsDiffer();
    void filledSymbolsAreHeavier();
    void everyFileIsUsed();
    void symbolsOfTheModelsAreKnown();
    void noScreenSpellsASymbol();
    void filledSymbolsInTheSourcesAreKnown();
    void unknownSymbolIsTheCircle();
};

void SymbolFilesTest::symbolsOfTheScreensAreKnown_data()
{
    QTest::addColumn<QStringList>("names");
    for (const auto &[use, names] : symbolsOfTheScreens)
        QTest::newRow(use) << names.split(u' ');
}

void SymbolFilesTest::symbolsOfTheScreensAreKnown()
{
    QFETCH(QStringList, names);
    for (const QString &name : names)
        QVERIFY2(hasSymbol(name), qPrintable(name));
}

void SymbolFilesTest::everyPictureIsDrawnWithinItsGrid_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : symbolNames())
        QTest::newRow(qPrintable(name)) << name;
}

void SymbolFilesTest::everyPictureIsDrawnWithinItsGrid()
{
    QFETCH(QString, name);
    QVERIFY(QSvgRenderer(symbolFile(name)).isValid());
    QCOMPARE(QSvgRenderer(symbolFile(name)).viewBoxF(), QRectF(0, 0, 256, 256));
    const QImage image = drawPicture(symbolFile(name), side, rim);
    // The lightest are three dots, the heaviest is a square.
    QVERIFY2(coverage(image) > 0.01 && coverage(image) < 0.6, qPrintable(QString::number(coverage(image))));
    QVERIFY(isEmptyOutside(image, rim));
}

void SymbolFilesTest::similarSymbolsDiffer()
{
    for (const QString &group : differing) {
        const QStringList names = group.split(u' ');
        for (const QString &one : names) {
            QVERIFY2(hasSymbol(one), qPrintable(one));
            for (const QString &other : names) {
                if (one < other) {
                    QVERIFY2(drawPicture(symbolFile(one), side) != drawPicture(symbolFile(other), side),
                             qPrintable(one + u" and "_s + other));
                }
            }
        }
    }
}

void SymbolFilesTest::filledSymbolsAreHeavier()
{
    constexpr auto ending = ".fill"_L1;
    int pairs = 0;
    for (const QString &name : symbolNames()) {
        const QString outlined = name.chopped(name.endsWith(ending) ? ending.size() : 0);
        if (outlined == name || !hasSymbol(outlined))
            continue;
        ++pairs;
        QVERIFY2(coverage(drawPicture(symbolFile(name), side)) >
                     1.15 * coverage(drawPicture(symbolFile(outlined), side)),
                 qPrintable(name));
    }
    QVERIFY(pairs > 20);
}

void SymbolFilesTest::everyFileIsUsed()
{
    QSet<QString> used;
    for (const QString &name : symbolNames())
        used.insert(symbolFile(name));
    QDirIterator files(u":/icons"_s, {u"*.svg"_s}, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    while (files.hasNext()) {
        ++count;
        QVERIFY2(used.contains(files.next()), qPrintable(files.filePath()));
    }
    QCOMPARE(count, used.size());
}

void SymbolFilesTest::symbolsOfTheModelsAreKnown()
{
    for (const PlayMode mode :
         {PlayMode::sequential, PlayMode::shuffle, PlayMode::repeatOne, PlayMode::repeatAll})
        QVERIFY2(hasSymbol(symbol(mode)), qPrintable(symbol(mode)));
    for (const EqualizerPreset preset : allEqualizerPresets())
        QVERIFY2(hasSymbol(symbol(preset)), qPrintable(symbol(preset)));
    for (const WebDAVPreset &preset : WebDAVPreset::presets())
        QVERIFY2(hasSymbol(preset.icon), qPrintable(preset.icon));
}

void SymbolFilesTest::noScreenSpellsASymbol()
{
    // A property that takes a symbol, and the texts that stand on its line; elsewhere only what is dotted can
    // be nothing else than a symbol. The gallery shows symbols by their names.
    static const QRegularExpression property(u"(?:[sS]ymbol|systemImage|systemName|icon|iconName):(.*)"_s);
    static const QRegularExpression text(u"\"([a-z0-9]+(?:\\.[a-z0-9]+)*)\""_s);
    QDirIterator files(QStringLiteral(CADOREL_SOURCE_DIR) + u"/src"_s, {u"*.qml"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    int properties = 0;
    while (files.hasNext()) {
        const QString file = files.next();
        if (file.contains(u"/Gallery/"_s))
            continue;
        const QStringList lines = read(file).split(u'\n');
        for (const QString &line : lines) {
            const bool takesSymbol = property.match(line).hasMatch();
            properties += takesSymbol ? 1 : 0;
            for (auto match = text.globalMatch(line); match.hasNext();) {
                const QString name = match.next().captured(1);
                const bool isSymbol = takesSymbol || (line.contains(u"name:"_s) && name.contains(u'.'));
                QVERIFY2(!isSymbol, qPrintable(file + u": "_s + line.trimmed()));
            }
        }
    }
    QVERIFY(properties > 50);
}

void SymbolFilesTest::filledSymbolsInTheSourcesAreKnown()
{
    // Elsewhere than in QML nothing tells a symbol from another text, but for this ending.
    static const QRegularExpression text(u"\"([a-z0-9.]+\\.fill)\""_s);
    QDirIterator files(QStringLiteral(CADOREL_SOURCE_DIR) + u"/src"_s, {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    int found = 0;
    while (files.hasNext()) {
        const QString source = read(files.next());
        for (auto match = text.globalMatch(source); match.hasNext(); ++found) {
            const QString name = match.next().captured(1);
            QVERIFY2(hasSymbol(name), qPrintable(files.fileName() + u": "_s + name));
        }
    }
    QVERIFY(found > 50);
}

void SymbolFilesTest::unknownSymbolIsTheCircle()
{
    for (const QString &name : {u"no.such.symbol"_s, u""_s, u"../phosphor/LICENSE"_s, u"play.fill "_s}) {
        QVERIFY(!hasSymbol(name));
        QCOMPARE(symbolFile(name), symbolFile(u"circle"_s));
    }
}

QTEST_MAIN(SymbolFilesTest)
#include "tst_symbol_files.moc"
