// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/WebDAVFile.h"

#include "Services/Import/AudioFiles.h"
#include "Utils/FileSizeText.h"

#include <QUuid>

namespace cadorel {

QString WebDAVFile::fileExtension() const
{
    const QStringView component = QStringView(name).sliced(name.lastIndexOf(u'/') + 1);
    const qsizetype dot = component.lastIndexOf(u'.');
    // A name that begins with its only dot is hidden and has no extension.
    return dot > 0 ? component.sliced(dot + 1).toString().toLower() : QString();
}

bool WebDAVFile::isAudioFile() const
{
    return supportedExtensions().contains(fileExtension());
}

QString WebDAVFile::formattedSize() const
{
    return fileSizeText(size);
}

QString WebDAVFile::newId()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

size_t qHash(const WebDAVFile &file, size_t seed)
{
    return qHashMulti(seed, file.id, file.name, file.path, file.isDirectory, file.size,
                      file.modifiedDate.value_or(QDateTime()), file.contentType.value_or(QString()));
}

} // namespace cadorel
