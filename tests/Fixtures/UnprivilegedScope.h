// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <unistd.h>

namespace cadorel {

/// Acts as the unprivileged user while it lives, on all threads; `isActive` is false when the rights cannot
/// be changed. Tests that run without privileges are that user already.
class UnprivilegedScope
{
public:
    UnprivilegedScope()
        : m_wasRoot(::geteuid() == 0)
    {
        m_isActive = !m_wasRoot || ::seteuid(nobody) == 0;
    }
    ~UnprivilegedScope()
    {
        if (m_wasRoot && m_isActive && ::seteuid(0) != 0)
            qFatal("cannot take the rights back");
    }
    Q_DISABLE_COPY_MOVE(UnprivilegedScope)

    static constexpr uint nobody = 65534;
    bool isActive() const { return m_isActive; }

private:
    bool m_wasRoot = false;
    bool m_isActive = false;
};

} // namespace cadorel
