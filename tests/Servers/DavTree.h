// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace cadorel {

/// A directory tree for a server, which anybody may read. Paths are relative to its root, without a "/" at
/// either end.
class DavTree
{
public:
    DavTree();

    /// Where the server finds it.
    QString root() const { return m_directory.path(); }

    /// A file and the folders above it. @param content empty: one that no other path has
    void addFile(const QString &path, const QByteArray &content = {});
    void addFolder(const QString &path);
    /// A file that somebody else put at pathOnDisk(), its folder included, is now part of the tree.
    void adopt(const QString &path);
    QString pathOnDisk(const QString &path) const { return root() + u'/' + path; }
    QByteArray content(const QString &path) const;

    /// Names with everything that an address or an answer has to escape, hidden ones, files that are no
    /// audio, and a folder without files.
    void addAwkwardNames();
    /// Folders inside each other, one audio file in each: see chainFile().
    void addChain(int levels);
    /// The file of a level, 1 being the folder in the root.
    static QString chainFile(int level);

    /// The files that are audio by their ending, sorted.
    QStringList audioFiles() const;
    /// The same without those that are hidden or lie in hidden folders.
    QStringList visibleAudioFiles() const;

    /// The same date for every file and folder, so that answers can be compared between days.
    void setDates() const;
    /// That date, as servers write it.
    static QString date();

private:
    QTemporaryDir m_directory;
    QStringList m_files;
};

} // namespace cadorel
