// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "EndToEnd/SecretForms.h"
#include "Fixtures/Keyring/PrivateBus.h"

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace cadorel {

/// Looks for secrets wherever a program could leave them for others to read, and notes the place and the
/// form, never the secret.
class SecretWatch
{
public:
    explicit SecretWatch(const QStringList &secrets);
    ~SecretWatch();
    Q_DISABLE_COPY_MOVE(SecretWatch)

    /// One more to look for from now on.
    void add(const QString &secret) { m_secrets.append(SecretForms(secret)); }

    /// Writes down everything on a bus from the moment that it returns true.
    bool watchBus(PrivateBus &bus);
    /// Looks through what the bus carried until now.
    bool lookAtBus();

    void lookAt(const QString &place, const QByteArray &bytes);
    /// Names and contents of all files below a folder. @param except paths that are left out
    void lookAtFiles(const QString &folder, const QStringList &except = {});
    /// Command line, environment and threads of a process and of those that it started, and the titles of all
    /// windows on a display.
    void lookAtProcess(qint64 process);
    void lookAtWindows(const QProcessEnvironment &display);

    /// "place: form", each once.
    const QStringList &findings() const { return m_findings; }

private:
    /// Sends a name over the bus until the record holds it.
    bool isRecorded(const QString &marker);
    QByteArray recorded() const;

    QList<SecretForms> m_secrets;
    QStringList m_findings;
    PrivateBus *m_bus = nullptr;
    QTemporaryDir m_directory;
    QProcess m_monitor;
};

} // namespace cadorel
