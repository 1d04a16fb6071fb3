// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Services/Seams/PlaylistStore.h"
#include "ViewModels/RowDifference.h"

#include <QAbstractListModel>
#include <QList>
#include <QPointer>
#include <QThreadPool>

#include <algorithm>
#include <utility>

namespace cadorel {

/// A list model whose rows are the records of a list that is replaced as a whole. A new list is compared with
/// the rows, and only the difference is announced, so that a view keeps its place while rows come and go.
/// Main thread.
class RowModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    explicit RowModel(QObject *parent = nullptr);

    int count() const { return rowCount({}); }
    /// First row of this id, see showRows(); -1 when there is none, or when the model has no use for it.
    Q_INVOKABLE virtual int rowOf(const QString & /*id*/) const { return -1; }

Q_SIGNALS:
    void countChanged();

protected:
    /// Tells a change of @p role for every row now and whenever a playlist changes: a view asks again for the
    /// rows that it shows, and nobody looks for the few that differ. Null tells no more.
    void followFavorites(const PlaylistStore *playlists, int role);
    /// What followFavorites() was given, while it lives.
    const PlaylistStore *favorites() const { return m_favorites; }

    /// Above this many groups of rows, showing the list afresh is cheaper for the model and for its views.
    static constexpr qsizetype maximumSteps = 256;

    /// Makes @p shown, which rowCount() and data() read, equal to @p wanted. Rows are removed, moved and
    /// inserted in contiguous groups; only a list that shares next to nothing with the rows resets the model.
    /// @tparam Rows tells records apart by three static functions: `id(record)` is the text that names a row,
    /// which may repeat; `isSameRow(a, b)` compares ids, and `looksEqual(a, b)` everything that a row shows
    template <typename Rows, typename Record>
    void showRows(QList<Record> &shown, const QList<Record> &wanted);

private:
    template <typename Rows, typename Record>
    static QList<QString> idsBetween(const QList<Record> &list, qsizetype prefix, qsizetype suffix);
    template <typename Record>
    void apply(const RowStep &step, qsizetype offset, QList<Record> &shown, const QList<Record> &wanted);
    template <typename Rows, typename Record>
    void showContents(QList<Record> &shown, const QList<Record> &wanted);

    QPointer<const PlaylistStore> m_favorites;
};

template <typename Rows, typename Record>
void RowModel::showRows(QList<Record> &shown, const QList<Record> &wanted)
{
    const qsizetype countBefore = shown.size();
    if (shown.isEmpty() && !wanted.isEmpty()) {
        // The start of a large library: nothing to compare.
        beginInsertRows({}, 0, static_cast<int>(wanted.size()) - 1);
        shown = wanted;
        endInsertRows();
        Q_EMIT countChanged();
        return;
    }
    // Most updates touch one place: what stands before and after it needs no search.
    const qsizetype shorter = qMin(shown.size(), wanted.size());
    qsizetype prefix = 0;
    while (prefix < shorter && Rows::isSameRow(shown.at(prefix), wanted.at(prefix)))
        ++prefix;
    qsizetype suffix = 0;
    while (suffix < shorter - prefix &&
           Rows::isSameRow(shown.at(shown.size() - 1 - suffix), wanted.at(wanted.size() - 1 - suffix)))
        ++suffix;
    if (const auto steps = rowDifference(idsBetween<Rows>(shown, prefix, suffix),
                                         idsBetween<Rows>(wanted, prefix, suffix), maximumSteps)) {
        for (const RowStep &step : *steps)
            apply(step, prefix, shown, wanted);
        showContents<Rows>(shown, wanted);
    } else {
        beginResetModel();
        shown = wanted;
        endResetModel();
    }
    if (shown.size() != countBefore)
        Q_EMIT countChanged();
}

template <typename Rows, typename Record>
QList<QString> RowModel::idsBetween(const QList<Record> &list, qsizetype prefix, qsizetype suffix)
{
    QList<QString> ids;
    ids.reserve(list.size() - suffix - prefix);
    for (qsizetype row = prefix; row < list.size() - suffix; ++row)
        ids.append(Rows::id(list.at(row)));
    return ids;
}

template <typename Record>
void RowModel::apply(const RowStep &step, qsizetype offset, QList<Record> &shown, const QList<Record> &wanted)
{
    const qsizetype first = offset + step.first;
    const qsizetype last = first + step.count - 1;
    const qsizetype to = offset + step.to;
    switch (step.kind) {
    case RowStep::Kind::remove:
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(last));
        shown.remove(first, step.count);
        endRemoveRows();
        break;
    case RowStep::Kind::move:
        beginMoveRows({}, static_cast<int>(first), static_cast<int>(last), {}, static_cast<int>(to));
        std::rotate(shown.begin() + to, shown.begin() + first, shown.begin() + last + 1);
        endMoveRows();
        break;
    case RowStep::Kind::insert:
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(last));
        shown.insert(first, step.count, Record());
        std::copy_n(wanted.cbegin() + first, step.count, shown.begin() + first);
        endInsertRows();
        break;
    }
}

template <typename Rows, typename Record>
void RowModel::showContents(QList<Record> &shown, const QList<Record> &wanted)
{
    struct Range
    {
        qsizetype first;
        qsizetype last;
    };
    QList<Range> changed;
    for (qsizetype row = 0; row < wanted.size(); ++row) {
        if (Rows::looksEqual(shown.at(row), wanted.at(row)))
            continue;
        if (!changed.isEmpty() && changed.constLast().last == row - 1)
            changed.last().last = row;
        else
            changed.append({.first = row, .last = row});
    }
    // After a walk over a server every record is new, and freeing 100,000 takes longer than a frame may.
    QThreadPool::globalInstance()->start([old = std::exchange(shown, wanted)] { Q_UNUSED(old); });
    for (const Range &range : std::as_const(changed))
        Q_EMIT dataChanged(index(static_cast<int>(range.first)), index(static_cast<int>(range.last)));
}

} // namespace cadorel
