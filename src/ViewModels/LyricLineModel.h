// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/LyricLine.h"
#include "Models/LyricLineStyle.h"

#include <QAbstractListModel>

namespace cadorel {

/// The lines of a song's lyrics, each with what it looks like about the current one. When another line
/// becomes current, only the rows that look different then are announced. Main thread.
class LyricLineModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(double activePointSize READ activePointSize NOTIFY lookChanged)
public:
    enum Role {
        TextRole = Qt::UserRole + 1,
        TimeMsRole,
        IsActiveRole,
        DistanceRole, ///< from the current line; LyricLineStyle::farthestDistance stands for all beyond
        PointSizeRole,
        IsBoldRole,
        LineOpacityRole,
        BlurRadiusRole,
        LineScaleRole
    };

    explicit LyricLineModel(QObject *parent = nullptr);

    int count() const { return static_cast<int>(m_lines.size()); }
    const QList<LyricLine> &lines() const { return m_lines; }
    int currentLine() const { return m_currentLine; }
    /// Font size of the current line, in points: the largest.
    double activePointSize() const { return m_fontSize + LyricLineStyle::activeGrowth; }

    int rowCount(const QModelIndex &parent) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Another song's lines, of which the one at @p currentLine is current.
    void setLines(const QList<LyricLine> &lines, int currentLine);
    void setCurrentLine(int line);
    /// @param fontSize of lines that are not current, in points
    void setLook(double fontSize, bool blurEnabled);

Q_SIGNALS:
    void countChanged();
    void lookChanged();

private:
    /// Of a row, were @p current the current line.
    LyricLineStyle style(int row, int current) const;
    void tell(int firstRow, int lastRow);

    QList<LyricLine> m_lines;
    int m_currentLine = 0;
    double m_fontSize = 0;
    bool m_blurEnabled = false;
};

} // namespace cadorel
