// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace cadorel {

class OutputDeviceModel;
class OutputDevices;

/// The picker of what the player plays on. Main thread.
class OutputDevicesViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/OutputDeviceModel.h")
    Q_PROPERTY(cadorel::OutputDeviceModel *devices READ devices CONSTANT)
    Q_PROPERTY(bool hasDevices READ hasDevices NOTIFY devicesChanged)
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

public:
    /// @param devices outlives this object; null where nothing tells of devices
    explicit OutputDevicesViewModel(OutputDevices *devices, QObject *parent = nullptr);
    ~OutputDevicesViewModel() override;
    Q_DISABLE_COPY_MOVE(OutputDevicesViewModel)

    OutputDeviceModel *devices() const { return m_model; }
    bool hasDevices() const;
    bool isOpen() const { return m_isOpen; }
    /// That the chosen device has gone, until the listener has read it or chosen another; empty for nothing.
    QString notice() const { return m_notice; }

    /// Opens the picker. From then on devices are followed.
    Q_INVOKABLE void open();
    Q_INVOKABLE void close();
    /// Plays on what a row of `devices` shows, whether the picker is open or not.
    Q_INVOKABLE void choose(int row);
    Q_INVOKABLE void dismissNotice();

Q_SIGNALS:
    void devicesChanged();
    void isOpenChanged();
    void noticeChanged();

private:
    void refresh();
    void setOpen(bool isOpen);
    void setNotice(const QString &notice);

    OutputDevices *m_devices;
    OutputDeviceModel *m_model;
    bool m_isOpen = false;
    QString m_notice;
};

} // namespace cadorel
