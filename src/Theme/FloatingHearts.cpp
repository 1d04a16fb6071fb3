// SPDX-License-Identifier: GPL-3.0-or-later
#include "Theme/FloatingHearts.h"

#include <algorithm>
#include <cmath>

namespace cadorel {

namespace {

/// How far the start and the end of the way lie outside of the box, and the start from its sides.
constexpr double beneath = 30;
constexpr double above = 30;
constexpr double sideMargin = 20;

struct Range
{
    double low;
    double high;
};
constexpr Range scales{0.5, 1.2};
constexpr Range opacities{0.2, 0.5};
constexpr Range rotations{-30, 30};
constexpr Range seconds{4, 6};

} // namespace

FloatingHearts::FloatingHearts(Clock &clock, Random &random, QObject *parent)
    : QAbstractListModel(parent)
    , m_clock(clock)
    , m_random(random)
{
}

int FloatingHearts::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_hearts.size());
}

QVariant FloatingHearts::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const FloatingHeart &heart = m_hearts.at(index.row());
    switch (role) {
    case HeartIdRole:
        return heart.id.toString(QUuid::WithoutBraces);
    case HeartXRole:
        return heart.x;
    case HeartYRole:
        return heart.y;
    case HeartScaleRole:
        return heart.scale;
    case HeartOpacityRole:
        return heart.opacity;
    case HeartRotationRole:
        return heart.rotation;
    case DurationRole:
        return static_cast<int>(heart.duration.count());
    default:
        return {};
    }
}

QHash<int, QByteArray> FloatingHearts::roleNames() const
{
    return {{HeartIdRole, "heartId"},
            {HeartXRole, "heartX"},
            {HeartYRole, "heartY"},
            {HeartScaleRole, "heartScale"},
            {HeartOpacityRole, "heartOpacity"},
            {HeartRotationRole, "heartRotation"},
            {DurationRole, "duration"}};
}

void FloatingHearts::setRunning(bool running)
{
    if (running == isRunning())
        return;
    if (running) {
        m_timer = m_clock.repeating(interval, [this] { addHeart(m_size); });
    } else {
        m_timer.reset();
        m_ends.clear();
        beginResetModel();
        m_hearts.clear();
        endResetModel();
    }
    Q_EMIT runningChanged();
}

void FloatingHearts::setSize(const QSizeF &size)
{
    if (size == m_size)
        return;
    m_size = size;
    Q_EMIT sizeChanged();
}

void FloatingHearts::addHeart(const QSizeF &size)
{
    const bool isBox = std::isfinite(size.width()) && std::isfinite(size.height()) && size.height() > 0;
    if (!isBox || size.width() < narrowestBox)
        return;
    FloatingHeart heart{
        .id = QUuid::createUuid(),
        .x = static_cast<float>(m_random.real(sideMargin, size.width() - sideMargin)),
        .y = static_cast<float>(size.height() + beneath),
        .scale = static_cast<float>(m_random.real(scales.low, scales.high)),
        .opacity = m_random.real(opacities.low, opacities.high),
        .rotation = m_random.real(rotations.low, rotations.high),
    };
    using Seconds = std::chrono::duration<double>;
    heart.duration =
        std::chrono::round<std::chrono::milliseconds>(Seconds(m_random.real(seconds.low, seconds.high)));
    const QUuid id = heart.id;
    const int row = static_cast<int>(m_hearts.size());
    beginInsertRows({}, row, row);
    m_hearts.append(heart);
    endInsertRows();

    m_hearts.last().y = static_cast<float>(-above);
    m_hearts.last().opacity = 0;
    Q_EMIT dataChanged(index(row), index(row), {HeartYRole, HeartOpacityRole});

    m_ends[id] = m_clock.singleShot(lifetime, [this, id] { remove(rowOf(id)); });
    if (m_hearts.size() >= bound)
        remove(0);
}

qsizetype FloatingHearts::rowOf(const QUuid &id) const
{
    return std::ranges::find(m_hearts, id, &FloatingHeart::id) - m_hearts.cbegin();
}

void FloatingHearts::remove(qsizetype row)
{
    const QUuid id = m_hearts.at(row).id;
    beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
    m_hearts.remove(row);
    endRemoveRows();
    m_ends.erase(id);
}

} // namespace cadorel
