// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/RowDifference.h"

#include <QHash>

namespace cadorel {

namespace {

/// Number of the row in the new list for each old row, -1 for a row that goes. The n-th row with an id stands
/// for the n-th new row with it.
QList<qsizetype> placesInNewList(const QList<QString> &before, const QList<QString> &after)
{
    QMultiHash<QString, qsizetype> places;
    places.reserve(after.size());
    // The entry added last is found first, hence from the back.
    for (qsizetype row = after.size() - 1; row >= 0; --row)
        places.insert(after.at(row), row);

    QList<qsizetype> result;
    result.reserve(before.size());
    for (const QString &id : before) {
        const auto place = places.find(id);
        if (place == places.end()) {
            result.append(-1);
            continue;
        }
        result.append(place.value());
        places.erase(place);
    }
    return result;
}

bool appendRemovals(QList<qsizetype> &places, QList<RowStep> &steps, qsizetype limit)
{
    for (qsizetype end = places.size(); end > 0;) {
        if (places.at(end - 1) != -1) {
            --end;
            continue;
        }
        qsizetype first = end - 1;
        while (first > 0 && places.at(first - 1) == -1)
            --first;
        steps.append({.kind = RowStep::Kind::remove, .first = first, .count = end - first, .to = 0});
        if (steps.size() > limit)
            return false;
        end = first;
    }
    places.removeIf([](qsizetype place) { return place == -1; });
    return true;
}

bool appendMoves(QList<qsizetype> &places, QList<RowStep> &steps, qsizetype limit)
{
    QList<qsizetype> wanted = places;
    std::sort(wanted.begin(), wanted.end());
    for (qsizetype row = 0; row < places.size(); ++row) {
        if (places.at(row) == wanted.at(row))
            continue;
        const qsizetype first = places.indexOf(wanted.at(row), row);
        qsizetype count = 1;
        while (first + count < places.size() && places.at(first + count) == wanted.at(row + count))
            ++count;
        steps.append({.kind = RowStep::Kind::move, .first = first, .count = count, .to = row});
        if (steps.size() > limit)
            return false;
        std::rotate(places.begin() + row, places.begin() + first, places.begin() + first + count);
    }
    return true;
}

bool appendInsertions(const QList<qsizetype> &places, qsizetype newSize, QList<RowStep> &steps,
                      qsizetype limit)
{
    qsizetype row = 0;
    const auto insertUpTo = [&](qsizetype end) {
        if (end > row)
            steps.append({.kind = RowStep::Kind::insert, .first = row, .count = end - row, .to = 0});
        row = end;
    };
    for (const qsizetype place : places) {
        insertUpTo(place);
        if (steps.size() > limit)
            return false;
        row = place + 1;
    }
    insertUpTo(newSize);
    return steps.size() <= limit;
}

} // namespace

std::optional<QList<RowStep>> rowDifference(const QList<QString> &before, const QList<QString> &after,
                                            qsizetype limit)
{
    QList<qsizetype> places = placesInNewList(before, after);
    QList<RowStep> steps;
    if (!appendRemovals(places, steps, limit) || !appendMoves(places, steps, limit) ||
        !appendInsertions(places, after.size(), steps, limit))
        return std::nullopt;
    return steps;
}

} // namespace cadorel
