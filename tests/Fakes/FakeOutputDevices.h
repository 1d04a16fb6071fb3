// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/OutputDevices.h"

#include <algorithm>
#include <utility>

namespace cadorel {

/// A machine whose devices come and go when the test says so.
class FakeOutputDevices : public OutputDevices
{
    Q_OBJECT
public:
    using OutputDevices::OutputDevices;

    int activations = 0;

    void activate() override { ++activations; }
    QList<OutputDevice> devices() const override { return m_devices; }
    QString chosenDevice() const override { return m_chosen; }
    void choose(const QString &id) override
    {
        if ((id.isEmpty() || has(m_devices, id)) && std::exchange(m_chosen, id) != id)
            Q_EMIT chosenDeviceChanged();
    }

    /// What there is from now on.
    void setDevices(const QList<OutputDevice> &devices)
    {
        const QList<OutputDevice> before = std::exchange(m_devices, devices);
        const bool isLost = !m_chosen.isEmpty() && !has(devices, m_chosen);
        const auto lost = std::ranges::find(before, m_chosen, &OutputDevice::id);
        if (isLost)
            m_chosen.clear();
        if (before != devices)
            Q_EMIT devicesChanged();
        if (!isLost)
            return;
        Q_EMIT chosenDeviceChanged();
        Q_EMIT chosenDeviceLost(lost->name);
    }

private:
    static bool has(const QList<OutputDevice> &devices, const QString &id)
    {
        return std::ranges::find(devices, id, &OutputDevice::id) != devices.cend();
    }

    QList<OutputDevice> m_devices;
    QString m_chosen;
};

} // namespace cadorel
