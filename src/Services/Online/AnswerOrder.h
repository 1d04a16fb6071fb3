// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

namespace cadorel {

/// Keeps the answers to one kind of request in the order of their arrival. Long ones are read by workers, so
/// one may be read after another that came later: it must not take back what that one did, nor what has begun
/// since. One thread.
class AnswerOrder
{
public:
    /// Something that happened, later than everything with a smaller number.
    using Moment = quint64;

    /// A request begins.
    Moment begin() { return m_begun = ++m_now; }
    /// An answer arrives, or the news that none will.
    Moment arrive() { return ++m_now; }
    /// No request began since then: the answer ends the wait.
    bool endsWait(Moment arrived) const { return arrived > m_begun; }
    /// No later answer has been shown: this one may be, and counts as shown.
    bool show(Moment arrived)
    {
        if (arrived < m_shown)
            return false;
        m_shown = arrived;
        return true;
    }

private:
    Moment m_now = 0;
    Moment m_begun = 0;
    Moment m_shown = 0;
};

} // namespace cadorel
