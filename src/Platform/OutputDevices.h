// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace cadorel {

/// Something to play on.
struct OutputDevice
{
    enum class Kind { speaker, headphones };

    /// As the machine names it; the same when the device comes again.
    QString id;
    /// As a listener knows it.
    QString name;
    Kind kind = Kind::speaker;
    /// What plays where nothing is chosen.
    bool isDefault = false;
    /// The player's sound goes there now.
    bool isInUse = false;

    bool operator==(const OutputDevice &) const = default;
};

/// What the machine can play on, and the listener's choice of it. The choice counts for all that this process
/// plays, ends with it, and ends when the device goes away. Main thread.
class OutputDevices : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Begins to look what there is, or tries again where nothing could be seen; devicesChanged() tells.
    virtual void activate() = 0;
    /// In the machine's order; empty without a sound server, and before activate() has been answered.
    virtual QList<OutputDevice> devices() const = 0;
    /// Id of the chosen device; empty where the sound follows the machine's default.
    virtual QString chosenDevice() const = 0;
    /// What plays goes on there, without a gap where the machine can, and what is played from now on begins
    /// there. @param id of one of devices(), or empty for the default; another one changes nothing
    virtual void choose(const QString &id) = 0;

Q_SIGNALS:
    void devicesChanged();
    void chosenDeviceChanged();
    /// The chosen device has gone; the sound follows the default again. @param name of the device
    void chosenDeviceLost(const QString &name);
};

} // namespace cadorel
