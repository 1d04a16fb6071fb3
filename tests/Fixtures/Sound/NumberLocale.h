// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTemporaryDir>

namespace cadorel {

/// While it exists, the process writes numbers with a comma (LC_NUMERIC). Makes the locale, since a machine
/// need not have one.
class NumberLocale
{
public:
    NumberLocale();
    ~NumberLocale();
    Q_DISABLE_COPY_MOVE(NumberLocale)

    /// False where the sources of locales are not installed.
    bool active() const { return m_active; }

private:
    QTemporaryDir m_directory;
    bool m_active = false;
};

} // namespace cadorel
