// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Clock.h"
#include "Platform/Random.h"

#include <QAbstractListModel>
#include <QList>
#include <QSizeF>
#include <QUuid>

#include <map>
#include <memory>

namespace cadorel {

/// One of them. Lengths in pixels, the place that of its centre.
struct FloatingHeart
{
    QUuid id;
    float x = 0;
    float y = 0;
    float scale = 1;
    double opacity = 1;
    /// Degrees, clockwise.
    double rotation = 0;
    /// How long it takes to where it goes, from where it came up.
    std::chrono::milliseconds duration{0};

    bool operator==(const FloatingHeart &) const = default;
};

/// Hearts that rise from beneath a box and fade, one every two seconds while it runs. A row comes up where
/// the heart starts and is told to have changed right away, to where it goes: views draw the way between.
/// Main thread.
class FloatingHearts : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(bool isRunning READ isRunning WRITE setRunning NOTIFY runningChanged)
    Q_PROPERTY(QSizeF size READ size WRITE setSize NOTIFY sizeChanged)
public:
    enum Role {
        HeartIdRole = Qt::UserRole + 1,
        HeartXRole,
        HeartYRole,
        HeartScaleRole,
        HeartOpacityRole,
        HeartRotationRole,
        DurationRole
    };

    static constexpr std::chrono::milliseconds interval{2000};
    /// How long a heart stays in the list.
    static constexpr std::chrono::milliseconds lifetime{6000};
    /// A list that grows to this length loses its first heart.
    static constexpr int bound = 16;
    /// In a narrower box the range of places would be empty.
    static constexpr double narrowestBox = 40;

    /// Both outlive the hearts.
    FloatingHearts(Clock &clock, Random &random, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    const QList<FloatingHeart> &hearts() const { return m_hearts; }

    bool isRunning() const { return m_timer != nullptr; }
    /// Stopping takes the hearts away at once, and no timer stays.
    void setRunning(bool running);
    /// The box that they rise in.
    QSizeF size() const { return m_size; }
    void setSize(const QSizeF &size);

    /// Sends one up in a box of that size; none where it is too narrow, or without a size.
    void addHeart(const QSizeF &size);

Q_SIGNALS:
    void runningChanged();
    void sizeChanged();

private:
    qsizetype rowOf(const QUuid &id) const;
    void remove(qsizetype row);

    Clock &m_clock;
    Random &m_random;
    QList<FloatingHeart> m_hearts;
    QSizeF m_size;
    std::unique_ptr<ClockTimer> m_timer;
    /// What ends each heart.
    std::map<QUuid, std::unique_ptr<ClockTimer>> m_ends;
};

} // namespace cadorel
