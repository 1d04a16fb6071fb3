// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Keyring/PrivateBus.h"

#include <QList>
#include <QRect>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class QDBusPendingCall;
class QDBusVirtualObject;

namespace cadorel {

/// What a screen reader is told of the player: the name, the kind and the place of everything in its window.
/// Tests that press things by these names go on to work when the window is laid out anew.
class AccessibleWindow
{
public:
    struct Item
    {
        QString name = {};
        /// "push button", "list item", "text"…, as the desktop's interface names them.
        QString role = {};
        QString description = {};
        /// Of what it belongs to.
        QString parentName = {};
        /// Pixels of the display.
        QRect place = {};
        bool isShown = false;
        bool isEnabled = false;
        /// Where it is on the bus.
        QString path = {};
    };
    using Matches = std::function<bool(const Item &)>;

    AccessibleWindow();
    ~AccessibleWindow();
    Q_DISABLE_COPY_MOVE(AccessibleWindow)

    /// Says on a program's session bus that there is a screen reader, which listens on a bus of its own.
    /// Before the program starts; @p session lives longer.
    bool start(PrivateBus &session);
    /// That bus.
    PrivateBus &bus() { return m_bus; }

    /// Everything that is shown now, from behind to the front. Nothing when it could not be read to its end:
    /// the window may change while it is asked, and what is missing then need not be gone.
    std::optional<QList<Item>> items();
    /// Waits for an item that is enabled and at rest. @return the one in front; nothing after @p
    /// limitMs
    std::optional<Item> find(const Matches &matches, int limitMs = 20'000);
    /// What an item offers to do, by the names of the toolkit.
    QStringList actions(const Item &item);
    /// Asks the item itself for something that it offers, "Press" or "Toggle", as a screen reader does: no
    /// mouse comes near. @return whether it offers that
    bool act(const Item &item, const QString &action = QStringLiteral("Press"));
    /// Value of a slider; not a number when the item is none.
    double value(const Item &item);
    /// Moves a slider.
    void setValue(const Item &item, double value);

private:
    QString player();
    QDBusPendingCall ask(const QString &path, const QString &interface, const QString &method,
                         const QVariantList &arguments = {});
    QDBusPendingCall askProperty(const QString &path, const QString &interface, const QString &name);
    QVariantList call(const QString &path, const QString &interface, const QString &method,
                      const QVariantList &arguments = {});
    QVariant property(const QString &path, const QString &interface, const QString &name);
    QRect placeOf(const QString &path);
    /// As much as can be read.
    struct Reading
    {
        QList<Item> items = {};
        /// Every question had its answer.
        bool isWhole = false;
    };
    Reading read();
    Reading itemsAt(const QStringList &paths);
    /// Paths below each of them; nothing for one that gave no answer.
    QList<std::optional<QStringList>> childrenOf(const QStringList &parents);

    PrivateBus m_bus;
    std::unique_ptr<QDBusVirtualObject> m_announcement;
    QString m_player;
};

} // namespace cadorel
