// SPDX-License-Identifier: GPL-3.0-or-later
#include "Servers/DavTree.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <sys/stat.h>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr QFile::Permissions readable =
    QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther;
constexpr QFile::Permissions enterable = readable | QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;

constexpr qint64 secondsOfDate = 1'709'971'626;

const QStringList &audioEndings()
{
    static const QStringList endings{u"mp3"_s, u"flac"_s, u"m4a"_s, u"ogg"_s, u"opus"_s, u"wav"_s};
    return endings;
}

bool isHidden(const QString &path)
{
    return path.startsWith(u'.') || path.contains(u"/."_s);
}

} // namespace

DavTree::DavTree()
{
    QFile::setPermissions(root(), enterable);
}

void DavTree::addFolder(const QString &path)
{
    QString made = root();
    for (const QString &name : path.split(u'/', Qt::SkipEmptyParts)) {
        made += u'/' + name;
        if (!QDir().mkpath(made) || !QFile::setPermissions(made, enterable))
            qFatal("cannot make the folder %s", qPrintable(made));
    }
}

void DavTree::addFile(const QString &path, const QByteArray &content)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    if (slash > 0)
        addFolder(path.first(slash));
    const QByteArray bytes = content.isEmpty() ? "The content of " + path.toUtf8() + '\n' : content;
    QFile file(pathOnDisk(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    file.close();
    adopt(path);
}

void DavTree::adopt(const QString &path)
{
    if (!QFile::setPermissions(pathOnDisk(path), readable))
        qFatal("there is no file %s", qPrintable(path));
    m_files.append(path);
}

QByteArray DavTree::content(const QString &path) const
{
    QFile file(pathOnDisk(path));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return file.readAll();
}

void DavTree::addAwkwardNames()
{
    for (const QString &path : {
             u"开场.mp3"_s,
             u"readme.txt"_s,
             u"no ending"_s,
             u".hidden.mp3"_s,
             u".hidden folder/inside.mp3"_s,
             u"With Spaces/two  spaces.flac"_s,
             u"With Spaces/UPPER CASE.MP3"_s,
             u"With Spaces/cover.jpg"_s,
             u"中文专辑/歌曲 一.flac"_s,
             u"中文专辑/Disc 2/第二首.m4a"_s,
             u"#1 Hits/#1 song.mp3"_s,
             u"100% Pure/50% off.mp3"_s,
             u"100% Pure/%41 literal.mp3"_s,
             u"A+B/C+D.ogg"_s,
             u"R&B/Soul & Blues.m4a"_s,
             u"under_score/track_01.mp3"_s,
             u"What?/Why?.mp3"_s,
             u"Quote's/[live] {take}; a=b, c \"d\" <e>.wav"_s,
             u"Less < & more >/x & y < z.mp3"_s,
             u"%41 folder/100%25.mp3"_s,
             u"a: b/back\\slash.mp3"_s,
             u"Same/Same/Same.mp3"_s,
             u"Emoji 🎵/♥.opus"_s,
             u"Café/composed.mp3"_s,
             u"Cafe\u0301/decomposed.mp3"_s,
         })
        addFile(path);
    addFolder(u"Empty"_s);
}

void DavTree::addChain(int levels)
{
    for (int level = 1; level <= levels; ++level)
        addFile(chainFile(level));
}

QString DavTree::chainFile(int level)
{
    QString folders;
    for (int above = 1; above <= level; ++above)
        folders += u"level %1/"_s.arg(above);
    return folders + u"song of level %1.mp3"_s.arg(level);
}

QStringList DavTree::audioFiles() const
{
    QStringList audio = m_files;
    audio.removeIf([](const QString &path) {
        return !audioEndings().contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
    });
    audio.sort();
    return audio;
}

QStringList DavTree::visibleAudioFiles() const
{
    QStringList audio = audioFiles();
    audio.removeIf(isHidden);
    return audio;
}

void DavTree::setDates() const
{
    constexpr timespec moment{.tv_sec = secondsOfDate, .tv_nsec = 0};
    const std::array times{moment, moment};
    const auto setDate = [&times](const QString &path) {
        ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times.data(), 0);
    };
    QDirIterator entries(root(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext())
        setDate(entries.next());
    setDate(root());
}

QString DavTree::date()
{
    return QLocale::c().toString(QDateTime::fromSecsSinceEpoch(secondsOfDate, Qt::UTC),
                                 u"ddd, dd MMM yyyy HH:mm:ss 'GMT'"_s);
}

} // namespace cadorel
