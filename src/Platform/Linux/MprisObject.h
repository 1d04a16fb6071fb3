// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDBusError>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <expected>

namespace cadorel {

/// What a call on the bus is refused with.
struct MprisError
{
    QDBusError::ErrorType type = QDBusError::Failed;
    QString text;
};

/// What stands behind an MprisObject. It gets only calls and values of the right types.
class MprisEndpoint
{
public:
    using Result = std::expected<void, MprisError>;

    virtual ~MprisEndpoint() = default;

    /// All properties of one of the two interfaces.
    virtual QVariantMap properties(const QString &interface) const = 0;
    /// Sets a property that can be written; all of those belong to the player interface.
    virtual Result change(const QString &name, const QVariant &value) = 0;
    virtual Result call(const QString &method, const QVariantList &arguments) = 0;
};

/// The object /org/mpris/MediaPlayer2 on a bus: introspection, types, properties and errors of the interfaces
/// org.mpris.MediaPlayer2 and org.mpris.MediaPlayer2.Player. QtDBus's adaptors would do but for one thing:
/// with them a property cannot refuse a value. Main thread.
class MprisObject : public QDBusVirtualObject
{
    Q_OBJECT
public:
    /// @param endpoint outlives this object
    explicit MprisObject(MprisEndpoint &endpoint);

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    QDBusMessage answerProperties(const QDBusMessage &message);
    QDBusMessage get(const QDBusMessage &message) const;
    QDBusMessage getAll(const QDBusMessage &message) const;
    QDBusMessage set(const QDBusMessage &message);

    MprisEndpoint &m_endpoint;
};

} // namespace cadorel
