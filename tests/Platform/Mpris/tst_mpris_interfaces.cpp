// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpris/MprisBench.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTest>
#include <QXmlStreamReader>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const QString invalidArguments = u"org.freedesktop.DBus.Error.InvalidArgs"_s;
const QString readOnly = u"org.freedesktop.DBus.Error.PropertyReadOnly"_s;

/// The interfaces of MPRIS 2.2, "name type access" and "name types" each, without what may be left out.
struct Interface
{
    QStringList methods;
    QStringList signalNames;
    QStringList properties;
    QStringList silentProperties;
};

const Interface root{.methods = {u"Quit "_s, u"Raise "_s},
                     .signalNames = {},
                     .properties = {u"CanQuit b read"_s, u"CanRaise b read"_s, u"DesktopEntry s read"_s,
                                    u"HasTrackList b read"_s, u"Identity s read"_s,
                                    u"SupportedMimeTypes as read"_s, u"SupportedUriSchemes as read"_s},
                     .silentProperties = {}};

const Interface playback{
    .methods = {u"Next "_s, u"OpenUri s"_s, u"Pause "_s, u"Play "_s, u"PlayPause "_s, u"Previous "_s,
                u"Seek x"_s, u"SetPosition ox"_s, u"Stop "_s},
    .signalNames = {u"Seeked x"_s},
    .properties = {u"CanControl b read"_s, u"CanGoNext b read"_s, u"CanGoPrevious b read"_s,
                   u"CanPause b read"_s, u"CanPlay b read"_s, u"CanSeek b read"_s,
                   u"LoopStatus s readwrite"_s, u"MaximumRate d read"_s, u"Metadata a{sv} read"_s,
                   u"MinimumRate d read"_s, u"PlaybackStatus s read"_s, u"Position x read"_s,
                   u"Rate d readwrite"_s, u"Shuffle b readwrite"_s, u"Volume d readwrite"_s},
    .silentProperties = {u"CanControl"_s, u"Position"_s}};

QMap<QString, Interface> readInterfaces(const QString &xml)
{
    QMap<QString, Interface> result;
    QXmlStreamReader reader(xml);
    Interface *current = nullptr;
    QStringList *list = nullptr;
    QString property;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        const QString name = attributes.value("name"_L1).toString();
        if (reader.name() == "interface"_L1) {
            current = &result[name];
        } else if (reader.name() == "method"_L1 || reader.name() == "signal"_L1) {
            list = reader.name() == "method"_L1 ? &current->methods : &current->signalNames;
            list->append(name + u' ');
        } else if (reader.name() == "arg"_L1) {
            list->last() += attributes.value("type"_L1);
        } else if (reader.name() == "property"_L1) {
            property = name;
            current->properties.append(QStringList{name, attributes.value("type"_L1).toString(),
                                                   attributes.value("access"_L1).toString()}
                                           .join(u' '));
        } else if (reader.name() == "annotation"_L1 && name.endsWith(".EmitsChangedSignal"_L1) &&
                   attributes.value("value"_L1) == "false"_L1) {
            current->silentProperties.append(property);
        }
    }
    if (reader.hasError())
        return {};
    for (Interface &interface : result) {
        for (QStringList *names :
             {&interface.methods, &interface.signalNames, &interface.properties, &interface.silentProperties})
            names->sort();
    }
    return result;
}

const Interface &expected(const QString &interface)
{
    return interface == MprisClient::rootInterface ? root : playback;
}

} // namespace

/// Every property and method of the two interfaces over a real bus, type by type.
class TestMprisInterfaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_bench = std::make_unique<MprisBench>();
        QVERIFY(m_bench->isReady());
    }
    void init() { QVERIFY(m_bench->begin()); }
    void cleanupTestCase() { m_bench.reset(); }

    void introspectionIsThatOfMpris();
    void everyPropertyHasItsType_data() { listInterfaces(); }
    void everyPropertyHasItsType();
    void whatIsReadOnlyRefusesToBeWritten_data() { listInterfaces(); }
    void whatIsReadOnlyRefusesToBeWritten();
    void aValueOfAnotherTypeIsRefused_data();
    void aValueOfAnotherTypeIsRefused();
    void theRootIsThisPlayer();
    void theRateIsFixed();
    void whatIsNotThereIsAnError();
    void argumentsOfAnotherTypeAreRefused_data();
    void argumentsOfAnotherTypeAreRefused();
    void theInterfaceMayBeLeftOut();
    void openingAnAddressIsRefused();

private:
    static void listInterfaces();
    MprisClient &client() { return m_bench->client(); }

    std::unique_ptr<MprisBench> m_bench;
};

void TestMprisInterfaces::listInterfaces()
{
    QTest::addColumn<QString>("interface");
    QTest::newRow("root") << MprisClient::rootInterface;
    QTest::newRow("player") << MprisClient::playerInterface;
}

void TestMprisInterfaces::introspectionIsThatOfMpris()
{
    const QDBusMessage answer = client().call(u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s);
    QCOMPARE(answer.errorMessage(), QString());
    const auto interfaces = readInterfaces(answer.arguments().constFirst().toString());
    for (const QString &name : {MprisClient::rootInterface, MprisClient::playerInterface}) {
        const Interface found = interfaces.value(name);
        QCOMPARE(found.methods, expected(name).methods);
        QCOMPARE(found.signalNames, expected(name).signalNames);
        QCOMPARE(found.properties, expected(name).properties);
        QCOMPARE(found.silentProperties, expected(name).silentProperties);
    }
    QVERIFY(interfaces.contains(u"org.freedesktop.DBus.Properties"_s));
    QVERIFY(interfaces.contains(u"org.freedesktop.DBus.Introspectable"_s));
    QVERIFY(!interfaces.contains(u"org.mpris.MediaPlayer2.TrackList"_s)); // as HasTrackList says
}

void TestMprisInterfaces::everyPropertyHasItsType()
{
    QFETCH(QString, interface);
    const QVariantMap all = client().getAll(interface);
    QCOMPARE(all.size(), expected(interface).properties.size());
    for (const QString &property : expected(interface).properties) {
        const QString name = property.section(u' ', 0, 0);
        const QString type = property.section(u' ', 1, 1);
        QVERIFY2(all.contains(name), qPrintable(name));
        QCOMPARE(name + u' ' + MprisClient::signature(all.value(name)), name + u' ' + type);
        QCOMPARE(name + u' ' + MprisClient::signature(client().get(interface, name)), name + u' ' + type);
    }
}

void TestMprisInterfaces::whatIsReadOnlyRefusesToBeWritten()
{
    QFETCH(QString, interface);
    const QVariantMap before = client().getAll(interface);
    int refused = 0;
    for (const QString &property : expected(interface).properties) {
        const QString name = property.section(u' ', 0, 0);
        if (property.endsWith(" readwrite"_L1))
            continue;
        QCOMPARE(client().set(interface, name, true), readOnly);
        ++refused;
    }
    QVERIFY(refused > 5);
    QCOMPARE(client().getAll(interface).keys(), before.keys());
    QCOMPARE(m_bench->takeCommands(), QStringList());
}

void TestMprisInterfaces::aValueOfAnotherTypeIsRefused_data()
{
    QTest::addColumn<QString>("property");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text as volume") << u"Volume"_s << QVariant(u"0.7"_s);
    QTest::newRow("integer as volume") << u"Volume"_s << QVariant(1);
    QTest::newRow("integer as rate") << u"Rate"_s << QVariant(0);
    QTest::newRow("text as shuffle") << u"Shuffle"_s << QVariant(u"true"_s);
    QTest::newRow("integer as shuffle") << u"Shuffle"_s << QVariant(1);
    QTest::newRow("truth as loop") << u"LoopStatus"_s << QVariant(true);
    QTest::newRow("list as loop") << u"LoopStatus"_s << QVariant(QStringList{u"Track"_s});
    QTest::newRow("unknown loop") << u"LoopStatus"_s << QVariant(u"Album"_s);
    QTest::newRow("loop in small letters") << u"LoopStatus"_s << QVariant(u"track"_s);
    QTest::newRow("no number as volume") << u"Volume"_s << QVariant(qQNaN());
}

void TestMprisInterfaces::aValueOfAnotherTypeIsRefused()
{
    QFETCH(QString, property);
    QFETCH(QVariant, value);
    const QVariant before = client().get(property);
    QCOMPARE(client().set(property, value), invalidArguments);
    QCOMPARE(client().get(property), before);
    QCOMPARE(m_bench->takeCommands(), QStringList());
}

void TestMprisInterfaces::theRootIsThisPlayer()
{
    const QVariantMap all = client().getAll(MprisClient::rootInterface);
    QCOMPARE(all.value(u"Identity"_s).toString(), u"Tarnova Music Player"_s);
    QCOMPARE(all.value(u"DesktopEntry"_s).toString(), u"com.cadorel.Player"_s);
    QVERIFY(QFile::exists(QStringLiteral(CADOREL_SOURCE_DIR) + u"/packaging/"_s +
                          all.value(u"DesktopEntry"_s).toString() + u".desktop"_s));
    QCOMPARE(all.value(u"CanQuit"_s).toBool(), true);
    QCOMPARE(all.value(u"CanRaise"_s).toBool(), true);
    QCOMPARE(all.value(u"HasTrackList"_s).toBool(), false);
    QCOMPARE(all.value(u"SupportedUriSchemes"_s).toStringList(), QStringList());
    QCOMPARE(all.value(u"SupportedMimeTypes"_s).toStringList(), QStringList());
}

void TestMprisInterfaces::theRateIsFixed()
{
    for (const QString &name : {u"Rate"_s, u"MinimumRate"_s, u"MaximumRate"_s})
        QCOMPARE(client().get(name).toDouble(), 1.0);
    QCOMPARE(client().get(u"CanControl"_s).toBool(), true);
}

void TestMprisInterfaces::whatIsNotThereIsAnError()
{
    const QString properties = u"org.freedesktop.DBus.Properties"_s;
    const QString player = MprisClient::playerInterface;
    const auto error = [this](const QString &interface, const QString &method,
                              const QVariantList &arguments) {
        return client().call(interface, method, arguments).errorName().section(u'.', -1);
    };
    QCOMPARE(error(properties, u"Get"_s, {player, u"Fullscreen"_s}), u"UnknownProperty"_s);
    // Each interface has its own properties.
    QCOMPARE(error(properties, u"Get"_s, {player, u"Identity"_s}), u"UnknownProperty"_s);
    QCOMPARE(error(properties, u"Get"_s, {MprisClient::rootInterface, u"Volume"_s}), u"UnknownProperty"_s);
    QCOMPARE(error(properties, u"Get"_s, {u"org.example.Other"_s, u"Volume"_s}), u"UnknownInterface"_s);
    QCOMPARE(error(properties, u"GetAll"_s, {u"org.mpris.MediaPlayer2.TrackList"_s}), u"UnknownInterface"_s);
    QCOMPARE(error(properties, u"Set"_s,
                   {u"org.example.Other"_s, u"Volume"_s, QVariant::fromValue(QDBusVariant(0.5))}),
             u"UnknownInterface"_s);
    QCOMPARE(client().set(u"Loudness"_s, 0.5).section(u'.', -1), u"UnknownProperty"_s);
    QCOMPARE(error(properties, u"Get"_s, {player}), u"InvalidArgs"_s);
    QCOMPARE(error(properties, u"GetAll"_s, {}), u"InvalidArgs"_s);
    QCOMPARE(error(properties, u"Set"_s, {player, u"Volume"_s, 0.5}), u"InvalidArgs"_s); // no variant
    QCOMPARE(error(properties, u"Forget"_s, {}), u"UnknownMethod"_s);
    QCOMPARE(error(player, u"Rewind"_s, {}), u"UnknownMethod"_s);
    QCOMPARE(error(player, u"Raise"_s, {}), u"UnknownMethod"_s);
    QVERIFY(!error(u"org.mpris.MediaPlayer2.TrackList"_s, u"GoTo"_s, {}).isEmpty());
    QCOMPARE(m_bench->takeCommands(), QStringList());
}

void TestMprisInterfaces::argumentsOfAnotherTypeAreRefused_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QVariantList>("arguments");
    QTest::newRow("a short integer") << u"Seek"_s << QVariantList{1000};
    QTest::newRow("a floating number") << u"Seek"_s << QVariantList{1000.0};
    QTest::newRow("nothing") << u"Seek"_s << QVariantList();
    QTest::newRow("a text for a path") << u"SetPosition"_s << QVariantList{u"/a"_s, 1000LL};
    QTest::newRow("one too many") << u"Play"_s << QVariantList{true};
    QTest::newRow("no address") << u"OpenUri"_s << QVariantList();
}

void TestMprisInterfaces::argumentsOfAnotherTypeAreRefused()
{
    QFETCH(QString, method);
    QFETCH(QVariantList, arguments);
    QCOMPARE(client().play(method, arguments), invalidArguments);
    QCOMPARE(m_bench->takeCommands(), QStringList());
}

void TestMprisInterfaces::theInterfaceMayBeLeftOut()
{
    QCOMPARE(client().call(QString(), u"Raise"_s).errorName(), QString());
    QCOMPARE(client().call(QString(), u"Next"_s).errorName(), QString());
    QCOMPARE(m_bench->takeCommands(), (QStringList{u"raise"_s, u"next"_s}));
    QCOMPARE(client().get(QString(), u"Identity"_s).toString(), u"Tarnova Music Player"_s);
    QCOMPARE(client().get(QString(), u"Volume"_s).toDouble(), 0.5);
}

void TestMprisInterfaces::openingAnAddressIsRefused()
{
    for (const QString &address : {u"file:///etc/passwd"_s, u"http://127.0.0.1/a.mp3"_s, QString()})
        QCOMPARE(client().play(u"OpenUri"_s, {address}), u"org.freedesktop.DBus.Error.NotSupported"_s);
    QCOMPARE(m_bench->takeCommands(), QStringList());
    QCOMPARE(client().takeChanges().size(), 0);
}

QTEST_GUILESS_MAIN(TestMprisInterfaces)
#include "tst_mpris_interfaces.moc"
