// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Keyring/PrivateBus.h"

#include <QList>
#include <QRect>
#include <QString>

#include <functional>
#include <optional>

namespace cadorel {

/// What a screen reader is told of the player: the name, the kind and the place of everything in its window.
/// Tests that press things by these names go on to work when the window is laid out anew.
class AccessibleWindow
{
public:
    struct Item
    {
        QString name = {};
        /// "button", "list item", "text"…, as the desktop's interface names them.
        QString role = {};
        QString description = {};
        /// Pixels of the display.
        QRect place = {};
        bool isShown = false;
        bool isEnabled = false;
    };
    using Matches = std::function<bool(const Item &)>;

    /// Sets the bus up that the program speaks on; before it starts.
    bool start() { return m_bus.start(); }
    /// For the variable AT_SPI_BUS_ADDRESS of the program's environment.
    QString busAddress() const { return m_bus.address(); }
    PrivateBus &bus() { return m_bus; }

    /// Everything there is now, from behind to the front.
    QList<Item> items();
    /// Waits for an item that is shown, enabled and at rest. @return the one in front; nothing after @p
    /// limitMs
    std::optional<Item> find(const Matches &matches, int limitMs = 20'000);
    /// With this name. @param role empty for any
    std::optional<Item> find(const QString &name, const QString &role = {});
    /// Whose name begins so.
    std::optional<Item> findBeginning(const QString &beginning, const QString &role = {});
    /// Waits until none is shown with this name.
    bool isGone(const QString &name, int limitMs = 20'000);

private:
    QString player();
    QVariantList call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments = {});
    QVariant property(const QString &path, const QString &name);
    void collect(const QString &path, int depth, QList<Item> &items);
    Item item(const QString &path);

    PrivateBus m_bus;
    QString m_player;
};

} // namespace cadorel
