// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/SongListModel.h"

#include "ViewModels/CoverRegistry.h"
#include "ViewModels/RowDifference.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QThreadPool>

#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Above this many groups of rows, showing the list afresh is cheaper for the model and for its views.
constexpr qsizetype maximumSteps = 256;

/// Every change that a row shows.
bool looksEqual(const Song &a, const Song &b)
{
    return a.isSameRecord(b) ||
           (a.title() == b.title() && a.artist() == b.artist() && a.album() == b.album() &&
            a.duration() == b.duration() && a.artworkData() == b.artworkData() &&
            a.artworkURL() == b.artworkURL() && a.assetPathUtf8() == b.assetPathUtf8());
}

bool isSameRow(const Song &a, const Song &b)
{
    return a.isSameRecord(b) || a.id() == b.id();
}

/// One line of text: tags may hold line breaks.
QString oneLine(QString text)
{
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return text.trimmed();
}

} // namespace

SongListModel::SongListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int SongListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant SongListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Song &song = m_songs.at(index.row());
    switch (role) {
    case SongIdRole:
        return song.id();
    case Qt::DisplayRole:
    case TitleRole:
        return displayTitle(song);
    case SubtitleRole: {
        const QString artist = oneLine(song.artist());
        const QString album = oneLine(song.album());
        return artist.isEmpty() || album.isEmpty() ? artist + album : artist + u" · "_s + album;
    }
    case DurationTextRole:
        return std::isfinite(song.duration()) && song.duration() > 0 ? song.formattedDuration() : QString();
    case CoverSourceRole:
        return CoverRegistry::shared().source(song);
    case IsCurrentRole:
        return !m_currentSongId.isEmpty() && song.id() == m_currentSongId;
    case IsDeletableRole:
        return song.isImported();
    default:
        return {};
    }
}

QHash<int, QByteArray> SongListModel::roleNames() const
{
    return {{SongIdRole, "songId"},           {TitleRole, "title"},
            {SubtitleRole, "subtitle"},       {DurationTextRole, "durationText"},
            {CoverSourceRole, "coverSource"}, {IsCurrentRole, "isCurrent"},
            {IsDeletableRole, "isDeletable"}};
}

QString SongListModel::displayTitle(const Song &song)
{
    QString title = oneLine(song.title());
    if (!title.isEmpty())
        return title;
    // A stored file carries the hash of its first name in front of that name.
    static const QRegularExpression storedPrefix(u"^[0-9A-F]{16}_(?=.)"_s);
    const QString name = oneLine(QFileInfo(song.assetPath()).completeBaseName().remove(storedPrefix));
    return name.isEmpty() ? u"未知歌曲"_s : name;
}

void SongListModel::setCurrentSongId(const QString &id)
{
    if (id == m_currentSongId)
        return;
    const QString before = std::exchange(m_currentSongId, id);
    for (qsizetype row = 0; row < m_songs.size(); ++row) {
        const QString &rowId = m_songs.at(row).id();
        if (rowId == before || rowId == id) {
            const QModelIndex changed = index(static_cast<int>(row));
            Q_EMIT dataChanged(changed, changed, {IsCurrentRole});
        }
    }
}

int SongListModel::rowOf(const QString &songId) const
{
    const auto isThis = [&songId](const Song &song) { return song.id() == songId; };
    const auto found = std::find_if(m_songs.cbegin(), m_songs.cend(), isThis);
    return found == m_songs.cend() ? -1 : static_cast<int>(found - m_songs.cbegin());
}

void SongListModel::setSongs(const QList<Song> &songs)
{
    const int countBefore = count();
    if (m_songs.isEmpty() && !songs.isEmpty()) {
        // The start of a large library: nothing to compare.
        beginInsertRows({}, 0, static_cast<int>(songs.size()) - 1);
        m_songs = songs;
        endInsertRows();
        Q_EMIT countChanged();
        return;
    }
    // Most updates touch one place: what stands before and after it needs no search.
    const qsizetype shorter = qMin(m_songs.size(), songs.size());
    qsizetype prefix = 0;
    while (prefix < shorter && isSameRow(m_songs.at(prefix), songs.at(prefix)))
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < shorter - prefix &&
           isSameRow(m_songs.at(m_songs.size() - 1 - suffix), songs.at(songs.size() - 1 - suffix)))
        ++suffix;

    const auto idsBetween = [suffix, prefix](const QList<Song> &list) {
        QList<QString> ids;
        ids.reserve(list.size() - suffix - prefix);
        for (qsizetype row = prefix; row < list.size() - suffix; ++row)
            ids.append(list.at(row).id());
        return ids;
    };
    if (const auto steps = rowDifference(idsBetween(m_songs), idsBetween(songs), maximumSteps)) {
        for (const RowStep &step : *steps)
            apply(step, prefix, songs);
        showContents(songs);
    } else {
        beginResetModel();
        m_songs = songs;
        endResetModel();
    }
    if (count() != countBefore)
        Q_EMIT countChanged();
}

void SongListModel::apply(const RowStep &step, qsizetype offset, const QList<Song> &songs)
{
    const qsizetype first = offset + step.first;
    const qsizetype last = first + step.count - 1;
    const qsizetype to = offset + step.to;
    switch (step.kind) {
    case RowStep::Kind::remove:
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(last));
        m_songs.remove(first, step.count);
        endRemoveRows();
        break;
    case RowStep::Kind::move:
        beginMoveRows({}, static_cast<int>(first), static_cast<int>(last), {}, static_cast<int>(to));
        std::rotate(m_songs.begin() + to, m_songs.begin() + first, m_songs.begin() + last + 1);
        endMoveRows();
        break;
    case RowStep::Kind::insert:
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(last));
        m_songs.insert(first, step.count, Song());
        std::copy_n(songs.cbegin() + first, step.count, m_songs.begin() + first);
        endInsertRows();
        break;
    }
}

void SongListModel::showContents(const QList<Song> &songs)
{
    struct Range
    {
        qsizetype first;
        qsizetype last;
    };
    QList<Range> changed;
    for (qsizetype row = 0; row < songs.size(); ++row) {
        if (looksEqual(m_songs.at(row), songs.at(row)))
            continue;
        if (!changed.isEmpty() && changed.constLast().last == row - 1)
            changed.last().last = row;
        else
            changed.append({.first = row, .last = row});
    }
    // After a walk over a server every record is new, and freeing 100,000 takes longer than a frame may.
    QThreadPool::globalInstance()->start([old = std::exchange(m_songs, songs)] { Q_UNUSED(old); });
    for (const Range &range : std::as_const(changed))
        Q_EMIT dataChanged(index(static_cast<int>(range.first)), index(static_cast<int>(range.last)));
}

} // namespace cadorel
