// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeOutputDevices.h"
#include "Fixtures/Sound/SoundServer.h"
#include "Platform/Pulse/PulseOutputDevices.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int patienceMs = 20'000;

/// A machine with a loudspeaker, to which a test adds devices.
class Machine
{
public:
    virtual ~Machine() = default;
    /// Whether the loudspeaker is there, and nothing else.
    virtual bool start() = 0;
    virtual OutputDevices &devices() = 0;
    virtual bool plugIn(const QString &id, const QString &name) = 0;
    virtual bool unplug(const QString &id) = 0;
    virtual bool makeDefault(const QString &id) = 0;
};

class FakeMachine : public Machine
{
public:
    bool start() override
    {
        m_devices.setDevices({{.id = u"out"_s, .name = u"Null Output"_s, .isDefault = true}});
        return true;
    }
    OutputDevices &devices() override { return m_devices; }
    bool plugIn(const QString &id, const QString &name) override
    {
        m_devices.setDevices(m_devices.devices() + QList<OutputDevice>{{.id = id, .name = name}});
        return true;
    }
    bool unplug(const QString &id) override
    {
        QList<OutputDevice> left = m_devices.devices();
        left.removeIf([&id](const OutputDevice &device) { return device.id == id; });
        m_devices.setDevices(left);
        return true;
    }
    bool makeDefault(const QString &id) override
    {
        QList<OutputDevice> devices = m_devices.devices();
        for (OutputDevice &device : devices)
            device.isDefault = device.id == id;
        m_devices.setDevices(devices);
        return true;
    }

private:
    FakeOutputDevices m_devices;
};

class ServerMachine : public Machine
{
public:
    bool start() override
    {
        if (!m_server.start())
            return false;
        m_devices.activate();
        return QTest::qWaitFor([this] { return m_devices.devices().size() == 1; }, patienceMs);
    }
    OutputDevices &devices() override { return m_devices; }
    bool plugIn(const QString &id, const QString &name) override
    {
        m_modules.insert(id, m_server.addDevice(id, name));
        return !m_modules.value(id).isEmpty();
    }
    bool unplug(const QString &id) override { return m_server.unload(m_modules.take(id)); }
    bool makeDefault(const QString &id) override
    {
        return !m_server.ask({u"set-default-sink"_s, id}).isNull();
    }

    SoundServer &server() { return m_server; }

private:
    SoundServer m_server;
    PulseOutputDevices m_devices;
    QHash<QString, QByteArray> m_modules;
};

} // namespace

/// Devices that come and go, and the one that a listener chooses.
class TestOutputDevices : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<Machine> m_machine;

    OutputDevices &devices() { return m_machine->devices(); }
    const OutputDevice *device(const QString &id)
    {
        m_list = devices().devices();
        const auto found = std::ranges::find(m_list, id, &OutputDevice::id);
        return found == m_list.cend() ? nullptr : &*found;
    }
    bool comes(const QString &id)
    {
        return QTest::qWaitFor([this, &id] { return device(id) != nullptr; }, patienceMs);
    }
    bool goes(const QString &id)
    {
        return QTest::qWaitFor([this, &id] { return device(id) == nullptr; }, patienceMs);
    }

    QList<OutputDevice> m_list;

private Q_SLOTS:
    void initTestCase_data()
    {
        QTest::addColumn<bool>("real");
        QTest::newRow("fake") << false;
        QTest::newRow("PulseAudio") << true;
    }
    void init()
    {
        QFETCH_GLOBAL(const bool, real);
        QVERIFY2(!real || SoundServer::available(), "no PulseAudio: scripts/setup installs it");
        if (real)
            m_machine = std::make_unique<ServerMachine>();
        else
            m_machine = std::make_unique<FakeMachine>();
        QVERIFY(m_machine->start());
    }
    void cleanup() { m_machine.reset(); }

    void whatIsThereIsListedWithItsNameForAListener()
    {
        QVERIFY(m_machine->plugIn(u"usb"_s, u"USB 解码器"_s));
        QVERIFY(comes(u"usb"_s));
        QCOMPARE(device(u"usb"_s)->name, u"USB 解码器"_s);
        QCOMPARE(device(u"usb"_s)->isDefault, false);
        QCOMPARE(device(u"out"_s)->isDefault, true);
        QCOMPARE(device(u"out"_s)->name, u"Null Output"_s);
        QCOMPARE(device(u"out"_s)->isInUse, false);
    }
    void aDeviceThatIsPluggedInIsToldAndSoIsOneThatIsPulledOut()
    {
        QSignalSpy changes(&devices(), &OutputDevices::devicesChanged);
        QVERIFY(m_machine->plugIn(u"usb"_s, u"USB"_s));
        QVERIFY(comes(u"usb"_s));
        QVERIFY(!changes.isEmpty());
        changes.clear();
        QVERIFY(m_machine->unplug(u"usb"_s));
        QVERIFY(goes(u"usb"_s));
        QVERIFY(!changes.isEmpty());
    }
    void anotherDefaultIsTold()
    {
        QVERIFY(m_machine->plugIn(u"usb"_s, u"USB"_s));
        QVERIFY(comes(u"usb"_s));
        QVERIFY(m_machine->makeDefault(u"usb"_s));
        QTRY_VERIFY_WITH_TIMEOUT(device(u"usb"_s)->isDefault && !device(u"out"_s)->isDefault, patienceMs);
    }
    void atFirstTheSoundFollowsTheDefault() { QCOMPARE(devices().chosenDevice(), QString()); }
    void aChoiceIsToldOnce()
    {
        QSignalSpy choices(&devices(), &OutputDevices::chosenDeviceChanged);
        devices().choose(u"out"_s);
        QCOMPARE(devices().chosenDevice(), u"out"_s);
        QCOMPARE(choices.count(), 1);
        devices().choose(u"out"_s);
        QCOMPARE(choices.count(), 1);
        devices().choose(QString());
        QCOMPARE(devices().chosenDevice(), QString());
        QCOMPARE(choices.count(), 2);
    }
    void whatIsNotThereCannotBeChosen()
    {
        QSignalSpy choices(&devices(), &OutputDevices::chosenDeviceChanged);
        devices().choose(u"gone"_s);
        QCOMPARE(devices().chosenDevice(), QString());
        QCOMPARE(choices.count(), 0);
    }
    void aChosenDeviceThatGoesAwayGivesWayToTheDefaultAndIsNamed()
    {
        QVERIFY(m_machine->plugIn(u"usb"_s, u"USB 解码器"_s));
        QVERIFY(comes(u"usb"_s));
        devices().choose(u"usb"_s);
        QSignalSpy choices(&devices(), &OutputDevices::chosenDeviceChanged);
        QSignalSpy losses(&devices(), &OutputDevices::chosenDeviceLost);
        QVERIFY(m_machine->unplug(u"usb"_s));
        QTRY_COMPARE_WITH_TIMEOUT(losses.count(), 1, patienceMs);
        QCOMPARE(losses.constFirst().constFirst().toString(), u"USB 解码器"_s);
        QCOMPARE(choices.count(), 1);
        QCOMPARE(devices().chosenDevice(), QString());
        QVERIFY(!device(u"usb"_s));
    }
    void anotherDeviceThatGoesAwayLeavesTheChoice()
    {
        QVERIFY(m_machine->plugIn(u"usb"_s, u"USB"_s));
        QVERIFY(comes(u"usb"_s));
        devices().choose(u"out"_s);
        QSignalSpy losses(&devices(), &OutputDevices::chosenDeviceLost);
        QVERIFY(m_machine->unplug(u"usb"_s));
        QVERIFY(goes(u"usb"_s));
        QCOMPARE(devices().chosenDevice(), u"out"_s);
        QCOMPARE(losses.count(), 0);
    }
    void theChoiceOutlivesAServerThatStartsAnew()
    {
        QFETCH_GLOBAL(const bool, real);
        if (!real)
            QSKIP("a fake machine has no server");
        SoundServer &server = static_cast<ServerMachine &>(*m_machine).server();
        devices().choose(u"out"_s);
        QSignalSpy losses(&devices(), &OutputDevices::chosenDeviceLost);
        server.stop();
        QVERIFY(goes(u"out"_s));
        QVERIFY(server.start());
        QVERIFY(comes(u"out"_s));
        QCOMPARE(devices().chosenDevice(), u"out"_s);
        QCOMPARE(losses.count(), 0);
    }
    void aServerThatStartsAnewMayTakeItsTimeWithTheChosenDevice_data()
    {
        QTest::addColumn<bool>("comes");
        QTest::newRow("it comes") << true;
        QTest::newRow("it does not") << false;
    }
    void aServerThatStartsAnewMayTakeItsTimeWithTheChosenDevice()
    {
        QFETCH_GLOBAL(const bool, real);
        QFETCH(const bool, comes);
        if (!real)
            QSKIP("a fake machine has no server");
        SoundServer &server = static_cast<ServerMachine &>(*m_machine).server();
        QVERIFY(m_machine->plugIn(u"usb"_s, u"USB 解码器"_s));
        QVERIFY(this->comes(u"usb"_s));
        devices().choose(u"usb"_s);
        QSignalSpy losses(&devices(), &OutputDevices::chosenDeviceLost);
        server.stop();
        QVERIFY(goes(u"out"_s));
        QVERIFY(server.start());
        QVERIFY(this->comes(u"out"_s));
        QCOMPARE(devices().chosenDevice(), u"usb"_s);
        QCOMPARE(losses.count(), 0);
        if (comes) {
            QVERIFY(m_machine->plugIn(u"usb"_s, u"USB 解码器"_s));
            QVERIFY(this->comes(u"usb"_s));
            QCOMPARE(devices().chosenDevice(), u"usb"_s);
            QCOMPARE(losses.count(), 0);
            // From then on it can go like any other.
            QVERIFY(m_machine->unplug(u"usb"_s));
        }
        QTRY_COMPARE_WITH_TIMEOUT(losses.count(), 1, patienceMs);
        QCOMPARE(losses.constFirst().constFirst().toString(), u"USB 解码器"_s);
        QCOMPARE(devices().chosenDevice(), QString());
    }
};

} // namespace cadorel

QTEST_GUILESS_MAIN(cadorel::TestOutputDevices)
#include "tst_output_devices.moc"
