// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <optional>

namespace cadorel {

/// What a figure is held against, measured in the same run.
struct Reference
{
    QString what;
    double value = 0;
};

/// One measured figure. It is good when its ratio to the reference, or itself where there is none, is at most
/// `bar`; without a bar it is only told.
struct Figure
{
    QString what;
    double value = 0;
    QString unit;
    std::optional<Reference> reference = std::nullopt;
    std::optional<double> bar = std::nullopt;
};

/// Prints figures, one line each. While it exists what others write to standard output goes nowhere, so that
/// the player's own log lines are written but not seen.
class Report
{
public:
    Report();
    ~Report();
    Q_DISABLE_COPY_MOVE(Report)

    void add(const Figure &figure);
    /// A line of its own, for what explains the figures.
    void note(const QString &text);

private:
    int m_output;
};

} // namespace cadorel
