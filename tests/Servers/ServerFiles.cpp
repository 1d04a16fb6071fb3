// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/ServerFiles.h"

#include <QCryptographicHash>
#include <QFile>

namespace cadorel {

QString writeServerFile(const QString &directory, const QString &name, const QByteArray &content)
{
    const QString path = directory + u'/' + name;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() ||
        !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther))
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

QByteArray passwordLine(const QString &user, const QString &password)
{
    const QByteArray hash = QCryptographicHash::hash(password.toUtf8(), QCryptographicHash::Sha1);
    return user.toUtf8() + ":{SHA}" + hash.toBase64() + '\n';
}

} // namespace cadorel
