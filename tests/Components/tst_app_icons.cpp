// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/AppIcons.h"
#include "Utils/KawaiiIcon.h"
#include "Utils/SymbolFiles.h"
#include "Views/UserInterface.h"

#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>
#include <memory>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

struct Constant
{
    const char *family;
    const char *name;
    const char *symbol;
};

constexpr Constant constants[] = {
    {"playback", "play", "play.fill"},
    {"playback", "pause", "pause.fill"},
    {"playback", "stop", "stop.fill"},
    {"playback", "previous", "backward.fill"},
    {"playback", "next", "forward.fill"},
    {"playback", "skipBackward", "gobackward.10"},
    {"playback", "skipForward", "goforward.10"},
    {"playback", "shuffle", "shuffle"},
    {"playback", "repeatAll", "repeat"},
    {"playback", "repeatOne", "repeat.1"},
    {"playback", "sequential", "arrow.forward"},
    {"playback", "playCircle", "play.circle.fill"},
    {"playback", "pauseCircle", "pause.circle.fill"},
    {"playback", "playOutline", "play"},
    {"audio", "speaker", "speaker.wave.2.fill"},
    {"audio", "speakerMute", "speaker.slash.fill"},
    {"audio", "speakerLow", "speaker.wave.1.fill"},
    {"audio", "speakerHigh", "speaker.wave.3.fill"},
    {"audio", "waveform", "waveform"},
    {"audio", "airplay", "airplayaudio"},
    {"audio", "equalizer", "slider.vertical.3"},
    {"music", "note", "music.note"},
    {"music", "noteList", "music.note.list"},
    {"music", "album", "opticaldisc.fill"},
    {"music", "playlist", "music.note.list"},
    {"music", "queue", "list.bullet"},
    {"music", "lyrics", "text.bubble.fill"},
    {"music", "musicHouse", "music.note.house.fill"},
    {"music", "library", "music.note.house"},
    {"music", "playlistFill", "music.note.list.fill"},
    {"music", "chart", "chart.bar"},
    {"music", "online", "globe"},
    {"music", "onlineFill", "globe.fill"},
    {"navigation", "back", "chevron.left"},
    {"navigation", "forward", "chevron.right"},
    {"navigation", "up", "chevron.up"},
    {"navigation", "down", "chevron.down"},
    {"navigation", "close", "xmark"},
    {"navigation", "dismiss", "chevron.down"},
    {"navigation", "more", "ellipsis"},
    {"navigation", "moreCircle", "ellipsis.circle"},
    {"navigation", "parent", "arrow.up"},
    {"action", "add", "plus"},
    {"action", "addCircle", "plus.circle.fill"},
    {"action", "remove", "minus"},
    {"action", "removeCircle", "minus.circle.fill"},
    {"action", "delete", "trash.fill"},
    {"action", "edit", "pencil"},
    {"action", "share", "square.and.arrow.up"},
    {"action", "download", "square.and.arrow.down"},
    {"action", "upload", "square.and.arrow.up"},
    {"action", "refresh", "arrow.clockwise"},
    {"action", "search", "magnifyingglass"},
    {"action", "filter", "line.3.horizontal.decrease"},
    {"action", "sort", "arrow.up.arrow.down"},
    {"action", "copy", "doc.on.doc"},
    {"action", "trash", "trash"},
    {"action", "reset", "arrow.counterclockwise"},
    {"action", "addToPlaylist", "text.badge.plus"},
    {"action", "reveal", "eye"},
    {"action", "hide", "eye.slash"},
    {"favorite", "heart", "heart"},
    {"favorite", "heartFill", "heart.fill"},
    {"favorite", "star", "star"},
    {"favorite", "starFill", "star.fill"},
    {"favorite", "bookmark", "bookmark"},
    {"favorite", "bookmarkFill", "bookmark.fill"},
    {"favorite", "heartSlash", "heart.slash"},
    {"file", "folder", "folder.fill"},
    {"file", "folderBadgePlus", "folder.badge.plus"},
    {"file", "document", "doc.fill"},
    {"file", "music", "music.note"},
    {"file", "server", "externaldrive.fill.badge.wifi"},
    {"file", "folderOutline", "folder"},
    {"file", "documentBadgePlus", "doc.badge.plus"},
    {"file", "photoLibrary", "photo.on.rectangle"},
    {"file", "photoBadgePlus", "photo.badge.plus"},
    {"file", "cloud", "cloud"},
    {"user", "person", "person.fill"},
    {"user", "personCircle", "person.circle.fill"},
    {"user", "artist", "person.fill"},
    {"user", "people", "person.2.fill"},
    {"settings", "gear", "gearshape.fill"},
    {"settings", "gearOutline", "gearshape"},
    {"settings", "theme", "paintbrush.fill"},
    {"settings", "appearance", "circle.lefthalf.filled"},
    {"settings", "accentColor", "paintpalette.fill"},
    {"settings", "sound", "speaker.wave.2.fill"},
    {"settings", "storage", "internaldrive.fill"},
    {"settings", "cache", "internaldrive.fill"},
    {"settings", "info", "info.circle.fill"},
    {"settings", "privacy", "hand.raised.fill"},
    {"settings", "about", "questionmark.circle.fill"},
    {"settings", "service", "gear"},
    {"timer", "timer", "timer"},
    {"timer", "clock", "clock.fill"},
    {"timer", "alarm", "alarm.fill"},
    {"timer", "sleep", "moon.fill"},
    {"timer", "lyricsSync", "clock.arrow.2.circlepath"},
    {"status", "checkmark", "checkmark"},
    {"status", "checkmarkCircle", "checkmark.circle.fill"},
    {"status", "xmark", "xmark"},
    {"status", "xmarkCircle", "xmark.circle.fill"},
    {"status", "warning", "exclamationmark.triangle.fill"},
    {"status", "error", "xmark.octagon.fill"},
    {"status", "loading", "arrow.triangle.2.circlepath"},
    {"status", "info", "info.circle"},
    {"status", "failure", "exclamationmark.triangle"},
    {"appearance", "sun", "sun.max.fill"},
    {"appearance", "moon", "moon.fill"},
    {"appearance", "circle", "circle"},
    {"appearance", "circleFill", "circle.fill"},
    {"appearance", "square", "square"},
    {"appearance", "squareFill", "square.fill"},
    {"appearance", "squareOnCircle", "square.on.circle"},
    {"appearance", "layered", "square.on.square"},
    {"appearance", "photo", "photo.fill"},
    {"appearance", "blur", "drop.fill"},
    {"appearance", "gradient", "square.stack.3d.up.fill"},
    {"appearance", "transparent", "square.dashed"},
    {"appearance", "picture", "photo"},
    {"animation", "bounce", "arrow.up.arrow.down"},
    {"animation", "fade", "circle.lefthalf.filled"},
    {"animation", "slide", "arrow.left.arrow.right"},
    {"animation", "scale", "arrow.up.left.and.arrow.down.right"},
    {"animation", "drop", "arrow.down"},
    {"misc", "gift", "gift.fill"},
    {"misc", "sparkles", "sparkles"},
    {"misc", "textBubble", "text.bubble"},
    {"misc", "textBubbleFill", "text.bubble.fill"},
    {"misc", "qrcode", "qrcode"},
    {"misc", "link", "link"},
    {"misc", "app", "app.fill"},
};

constexpr std::pair<const char *, const char *> pictures[] = {
    {"play", "play"},
    {"pause", "pause"},
    {"next", "next"},
    {"previous", "previous"},
    {"shuffle", "shuffle"},
    {"loopAll", "loopall"},
    {"loopOne", "loopone"},
    {"sequential", "sequentialPlay"},
    {"like", "like"},
    {"noFavor", "noFavor"},
    {"home", "home"},
    {"library", "library"},
    {"settings", "settings"},
    {"playlist", "playlist"},
    {"search", "search"},
    {"cloud", "cloud"},
    {"queue", "queue"},
    {"lyrics", "lyrics"},
    {"chevronDown", "chevronDown"},
    {"chevronUp", "chevronUp"},
    {"sleepTimer", "sleepTimer"},
    {"share", "share"},
    {"equalizer", "Equalizer"},
    {"volumeDown", "volumeDown"},
    {"volumeUp", "volumeUp"},
    {"addToPlaylist", "addToPlaylist"},
    {"delete", "delete"},
    {"edit", "edit"},
    {"artist", "artist"},
    {"albumArt", "albumArt"},
    {"genre", "genre"},
    {"recent", "recent"},
};

/// How many constants of its own a vocabulary has.
int count(const QMetaObject &family)
{
    return family.propertyCount() - family.propertyOffset();
}

} // namespace

class AppIconsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();

    void everyConstantNamesItsSymbol_data();
    void everyConstantNamesItsSymbol();
    void everyKawaiiIconNamesItsPicture_data();
    void everyKawaiiIconNamesItsPicture();
    void thereAreNoOthers();
    void vocabularyIsTheSameInCpp();
    void constantsCannotBeChanged();

private:
    /// The value of an expression in QML, evaluated as a screen does it.
    QVariant evaluate(const QString &expression);

    std::unique_ptr<QQmlEngine> m_engine;
};

void AppIconsTest::initTestCase()
{
    m_engine = std::make_unique<QQmlEngine>();
    installUserInterface(*m_engine);
}

QVariant AppIconsTest::evaluate(const QString &expression)
{
    QQmlComponent component(m_engine.get());
    component.setData(
        u"import QtQml\nimport Cadorel\nQtObject { property var value: %1 }"_s.arg(expression).toUtf8(), {});
    const std::unique_ptr<QObject> object(component.create());
    return object ? object->property("value") : QVariant();
}

void AppIconsTest::everyConstantNamesItsSymbol_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("symbol");
    for (const auto &[family, name, symbol] : constants) {
        const QByteArray expression = QByteArray("AppIcons.") + family + '.' + name;
        QTest::newRow(expression) << QString::fromLatin1(expression) << QString::fromLatin1(symbol);
    }
}

void AppIconsTest::everyConstantNamesItsSymbol()
{
    QFETCH(QString, expression);
    QFETCH(QString, symbol);
    QCOMPARE(evaluate(expression), QVariant(symbol));
    QVERIFY(hasSymbol(symbol));
}

void AppIconsTest::everyKawaiiIconNamesItsPicture_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("picture");
    for (const auto &[name, picture] : pictures) {
        const QByteArray expression = QByteArray("KawaiiIcon.") + name;
        QTest::newRow(expression) << QString::fromLatin1(expression) << QString::fromLatin1(picture);
    }
}

void AppIconsTest::everyKawaiiIconNamesItsPicture()
{
    QFETCH(QString, expression);
    QFETCH(QString, picture);
    QCOMPARE(evaluate(expression), QVariant(picture));
}

void AppIconsTest::thereAreNoOthers()
{
    using namespace AppIcons;
    const QList<const QMetaObject *> families = {
        &Playback::staticMetaObject,   &Audio::staticMetaObject,  &Music::staticMetaObject,
        &Navigation::staticMetaObject, &Action::staticMetaObject, &Favorite::staticMetaObject,
        &File::staticMetaObject,       &User::staticMetaObject,   &Settings::staticMetaObject,
        &Timer::staticMetaObject,      &Status::staticMetaObject, &Appearance::staticMetaObject,
        &Animation::staticMetaObject,  &Misc::staticMetaObject};
    int all = 0;
    for (const QMetaObject *family : families)
        all += count(*family);
    QCOMPARE(all, int(std::size(constants)));
    QCOMPARE(count(KawaiiIcon::staticMetaObject), int(std::size(pictures)));
}

void AppIconsTest::vocabularyIsTheSameInCpp()
{
    QCOMPARE(AppIcons::Playback::repeatOne, u"repeat.1"_s);
    QCOMPARE(AppIcons::Action::delete_, u"trash.fill"_s);
    QCOMPARE(AppIcons::Navigation::down, AppIcons::Navigation::dismiss);
    QCOMPARE(KawaiiIcon::delete_, u"delete"_s);
    QCOMPARE(KawaiiIcon::equalizer, u"Equalizer"_s);
}

void AppIconsTest::constantsCannotBeChanged()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"read-only"_s));
    QVERIFY(!evaluate(u"{ KawaiiIcon.play = \"stop\"; return 1; }"_s).isValid());
    QCOMPARE(evaluate(u"KawaiiIcon.play"_s), QVariant(u"play"_s));
}

QTEST_MAIN(AppIconsTest)
#include "tst_app_icons.moc"
