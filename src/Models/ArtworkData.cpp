// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/ArtworkData.h"

#include <QFile>

namespace cadorel {

ArtworkData::ArtworkData(const QByteArray &bytes)
    : d(new Data)
{
    d->bytes = bytes;
    d->size = bytes.size();
}

ArtworkData ArtworkData::inFile(const QByteArray &utf8Path, qint64 size)
{
    ArtworkData artwork;
    artwork.d = new Data;
    artwork.d->path = utf8Path;
    artwork.d->size = size;
    return artwork;
}

QByteArray ArtworkData::bytes() const
{
    if (!d)
        return {};
    if (d->path.isEmpty())
        return d->bytes;
    QFile file(QString::fromUtf8(d->path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool operator==(const ArtworkData &a, const ArtworkData &b)
{
    if (a.d == b.d)
        return true;
    return a.d && b.d && a.d->size == b.d->size && a.d->path == b.d->path && a.d->bytes == b.d->bytes;
}

} // namespace cadorel
