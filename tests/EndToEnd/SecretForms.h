// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace cadorel {

/// What a secret looks like when it leaks: as it is, in parts, or in one of the encodings that programs use.
class SecretForms
{
public:
    struct Form
    {
        QString name;
        QByteArray bytes;
    };

    explicit SecretForms(const QString &secret);

    const QList<Form> &forms() const { return m_forms; }
    /// Names of the forms that these bytes hold. What is percent-encoded, in whatever mixture, is found too.
    QStringList in(const QByteArray &bytes) const;

private:
    QList<Form> m_forms;
};

} // namespace cadorel
