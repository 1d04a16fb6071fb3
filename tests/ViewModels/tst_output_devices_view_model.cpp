// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fakes/FakeOutputDevices.h"
#include "ViewModels/OutputDeviceModel.h"
#include "ViewModels/OutputDevicesViewModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

using namespace cadorel;
using namespace Qt::StringLiterals;

namespace {

const OutputDevice speaker{.id = u"speaker"_s, .name = u"内置扬声器"_s, .isDefault = true};
const OutputDevice headset{.id = u"headset"_s, .name = u"蓝牙耳机"_s, .kind = OutputDevice::Kind::headphones};

} // namespace

/// The picker of what the player plays on.
class TestOutputDevicesViewModel : public QObject
{
    Q_OBJECT
private:
    std::unique_ptr<FakeOutputDevices> m_machine;
    std::unique_ptr<OutputDevicesViewModel> m_picker;
    std::unique_ptr<QAbstractItemModelTester> m_tester;

    QVariant at(int row, OutputDeviceModel::Role role) const
    {
        return m_picker->devices()->data(m_picker->devices()->index(row), role);
    }
    QStringList names() const
    {
        QStringList list;
        for (int row = 0; row < m_picker->devices()->count(); ++row)
            list.append(at(row, OutputDeviceModel::NameRole).toString());
        return list;
    }
    int chosenRow() const
    {
        int chosen = -1;
        for (int row = 0; row < m_picker->devices()->count(); ++row) {
            if (!at(row, OutputDeviceModel::IsChosenRole).toBool())
                continue;
            if (chosen >= 0)
                return -2; // one alone is chosen
            chosen = row;
        }
        return chosen;
    }

private Q_SLOTS:
    void init()
    {
        m_machine = std::make_unique<FakeOutputDevices>();
        m_picker = std::make_unique<OutputDevicesViewModel>(m_machine.get());
        m_tester = std::make_unique<QAbstractItemModelTester>(
            m_picker->devices(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    }
    void cleanup()
    {
        m_tester.reset();
        m_picker.reset();
        m_machine.reset();
    }

    void nobodyLooksForDevicesBeforeThePickerIsOpened()
    {
        QCOMPARE(m_machine->activations, 0);
        m_picker->open();
        QCOMPARE(m_machine->activations, 1);
        QCOMPARE(m_picker->isOpen(), true);
        m_picker->close();
        QCOMPARE(m_picker->isOpen(), false);
    }
    void withoutDevicesThereIsNothingToChoose()
    {
        QCOMPARE(m_picker->hasDevices(), false);
        QCOMPARE(m_picker->devices()->count(), 0);
        m_picker->choose(0);
        QCOMPARE(m_machine->chosenDevice(), QString());
    }
    void theDefaultComesFirstAndTellsWhichDeviceItIs()
    {
        m_machine->setDevices({speaker, headset});
        QCOMPARE(names(), (QStringList{u"系统默认"_s, u"内置扬声器"_s, u"蓝牙耳机"_s}));
        QCOMPARE(at(0, OutputDeviceModel::DetailRole).toString(), u"内置扬声器"_s);
        QCOMPARE(chosenRow(), 0);
        QCOMPARE(m_picker->hasDevices(), true);
    }
    void symbolsTellHeadphonesFromSpeakers()
    {
        m_machine->setDevices({speaker, headset});
        QCOMPARE(at(1, OutputDeviceModel::SymbolRole).toString(), u"speaker.wave.2.fill"_s);
        QCOMPARE(at(2, OutputDeviceModel::SymbolRole).toString(), u"headphones"_s);
    }
    void aRowIsChosenAndTheDefaultTakesOverAgain()
    {
        m_machine->setDevices({speaker, headset});
        m_picker->choose(2);
        QCOMPARE(m_machine->chosenDevice(), u"headset"_s);
        QCOMPARE(chosenRow(), 2);
        m_picker->choose(0);
        QCOMPARE(m_machine->chosenDevice(), QString());
        QCOMPARE(chosenRow(), 0);
        m_picker->choose(3);
        m_picker->choose(-1);
        QCOMPARE(chosenRow(), 0);
    }
    void theDeviceInUseIsMarked()
    {
        OutputDevice used = headset;
        used.isInUse = true;
        m_machine->setDevices({speaker, used});
        QCOMPARE(at(1, OutputDeviceModel::DetailRole).toString(), QString());
        QCOMPARE(at(2, OutputDeviceModel::DetailRole).toString(), u"正在播放"_s);
    }
    void aDeviceThatComesOrGoesMovesNoOtherRow()
    {
        m_machine->setDevices({speaker});
        QSignalSpy resets(m_picker->devices(), &QAbstractItemModel::modelReset);
        QSignalSpy inserts(m_picker->devices(), &QAbstractItemModel::rowsInserted);
        QSignalSpy removals(m_picker->devices(), &QAbstractItemModel::rowsRemoved);
        m_machine->setDevices({speaker, headset});
        QCOMPARE(inserts.count(), 1);
        m_machine->setDevices({speaker});
        QCOMPARE(removals.count(), 1);
        QCOMPARE(resets.count(), 0);
    }
    void aChosenDeviceThatGoesAwayIsNamedUntilItIsRead()
    {
        m_machine->setDevices({speaker, headset});
        m_picker->choose(2);
        QSignalSpy notices(m_picker.get(), &OutputDevicesViewModel::noticeChanged);
        m_machine->setDevices({speaker});
        QCOMPARE(m_picker->notice(), u"“蓝牙耳机”已断开，声音改由系统默认设备播放"_s);
        QCOMPARE(chosenRow(), 0);
        m_picker->dismissNotice();
        QCOMPARE(m_picker->notice(), QString());
        QCOMPARE(notices.count(), 2);
    }
    void anotherChoiceEndsTheNotice()
    {
        m_machine->setDevices({speaker, headset});
        m_picker->choose(2);
        m_machine->setDevices({speaker});
        m_picker->choose(1);
        QCOMPARE(m_picker->notice(), QString());
    }
    void aMachineThatTellsNothingHasNoDevices()
    {
        OutputDevicesViewModel picker(nullptr);
        picker.open();
        picker.choose(0);
        QCOMPARE(picker.hasDevices(), false);
    }
};

QTEST_GUILESS_MAIN(TestOutputDevicesViewModel)
#include "tst_output_devices_view_model.moc"
