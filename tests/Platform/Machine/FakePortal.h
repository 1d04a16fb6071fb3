// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Keyring/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QMap>
#include <QVariantMap>

#include <optional>

namespace cadorel {

/// A bus of its own with a portal on it that does what a test says.
class FakePortal : public QDBusVirtualObject
{
    Q_OBJECT

public:
    struct Filter
    {
        QString name;
        QStringList patterns;
    };

    /// Starts the bus; the portal is not on it yet.
    FakePortal();
    ~FakePortal() override;
    Q_DISABLE_COPY_MOVE(FakePortal)

    bool isBusRunning() const { return m_isBusRunning; }
    /// Another connection to the bus.
    QDBusConnection client();
    /// Puts the portal on the bus, and takes it off.
    bool appear();
    void vanish();

    /// Version of the interface; 0 for a portal without file dialogs.
    uint version = 3;
    /// Says nothing when asked for the version.
    bool isHanging = false;
    /// Refuses to open a dialog.
    bool isRefusing = false;
    /// Answers before it returns the handle.
    bool answersEarly = false;
    /// Makes its own request path, as old portals did.
    bool choosesPath = false;
    /// Opens the dialog and waits for vanish().
    bool leavesOpen = false;
    uint response = 0;
    QStringList uris;

    /// What the last call asked for.
    QString parentWindow;
    QString title;
    QVariantMap options;
    QList<Filter> filters;
    int opened = 0;

    /// By namespace and key; none for a portal without settings.
    std::optional<QMap<QString, QVariantMap>> settings;
    /// Says nothing when asked for them.
    bool keepsSettings = false;
    /// What the last one asked for.
    QStringList askedSpaces;
    int settingsRead = 0;
    /// Changes a setting and tells everybody.
    void change(const QString &space, const QString &key, const QVariant &value);

    QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    bool answerVersion(const QDBusMessage &message, const QDBusConnection &connection);
    bool openFile(const QDBusMessage &message, const QDBusConnection &connection);
    bool readSettings(const QDBusMessage &message, const QDBusConnection &connection);

    PrivateBus m_bus;
    const bool m_isBusRunning;
    QDBusConnection m_connection;
    const QString m_name;
};

} // namespace cadorel
