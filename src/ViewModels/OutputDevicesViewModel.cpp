// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/OutputDevicesViewModel.h"

#include "Platform/OutputDevices.h"
#include "ViewModels/OutputDeviceModel.h"

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

OutputDevicesViewModel::OutputDevicesViewModel(OutputDevices *devices, QObject *parent)
    : QObject(parent)
    , m_devices(devices)
    , m_model(new OutputDeviceModel(this))
{
    if (!m_devices)
        return;
    connect(m_devices, &OutputDevices::devicesChanged, this, &OutputDevicesViewModel::refresh);
    connect(m_devices, &OutputDevices::chosenDeviceChanged, this, &OutputDevicesViewModel::refresh);
    connect(m_devices, &OutputDevices::chosenDeviceLost, this, [this](const QString &name) {
        setNotice(u"“"_s + name + u"”已断开，声音改由系统默认设备播放"_s);
    });
    refresh();
}

OutputDevicesViewModel::~OutputDevicesViewModel() = default;

bool OutputDevicesViewModel::hasDevices() const
{
    return m_model->count() > 0;
}

void OutputDevicesViewModel::open()
{
    if (m_devices)
        m_devices->activate();
    setOpen(true);
}

void OutputDevicesViewModel::close()
{
    setOpen(false);
}

void OutputDevicesViewModel::choose(int row)
{
    if (!m_devices || row < 0 || row >= m_model->count())
        return;
    setNotice(QString());
    m_devices->choose(m_model->idAt(row));
}

void OutputDevicesViewModel::dismissNotice()
{
    setNotice(QString());
}

void OutputDevicesViewModel::refresh()
{
    m_model->show(m_devices->devices(), m_devices->chosenDevice());
    Q_EMIT devicesChanged();
}

void OutputDevicesViewModel::setOpen(bool isOpen)
{
    if (std::exchange(m_isOpen, isOpen) != isOpen)
        Q_EMIT isOpenChanged();
}

void OutputDevicesViewModel::setNotice(const QString &notice)
{
    if (std::exchange(m_notice, notice) != notice)
        Q_EMIT noticeChanged();
}

} // namespace cadorel
