// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Fixtures/Keyring/PrivateBus.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>

namespace cadorel {

/// A private session bus with a real keyring on it, unlocked and empty, in a home of its own. The environment
/// of this process stays as it is: a program finds the keyring when it is started with environment(), and
/// this process by busAddress(). There is nobody on the bus who could show a prompt.
class KeyringSession
{
public:
    KeyringSession();
    ~KeyringSession();
    Q_DISABLE_COPY_MOVE(KeyringSession)

    /// Whether the machine has the programs.
    static bool available();

    /// Ready for calls when it returns true. Also after stopKeyring(): what was stored is still there.
    bool start();
    /// Ends the keyring alone, as if it had crashed; its bus and what it stored stay.
    void stopKeyring();
    /// Locks the keyring. From now on every access to it needs a prompt.
    bool lock();

    /// @p base, or that of this process, with the private bus in place of the session's.
    QProcessEnvironment
    environment(const QProcessEnvironment &base = QProcessEnvironment::systemEnvironment()) const;
    QByteArray busAddress() const { return m_bus.address().toUtf8(); }
    PrivateBus &bus() { return m_bus; }
    qint64 keyringProcess() const { return m_keyring ? m_keyring->processId() : 0; }

    /// Number of items in the keyring that have these attributes; -1 when it does not answer.
    int itemCount(const QString &service, const QString &account);

private:
    QTemporaryDir m_home;
    PrivateBus m_bus;
    bool m_isBusRunning = false;
    std::unique_ptr<QProcess> m_keyring;
};

} // namespace cadorel
