// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QFuture>
#include <QPromise>

#include <map>

namespace cadorel {

/// Stored paths that an import is filling and has not yet listed. A scan beside it leaves them alone, and a
/// second import of the same name waits to see what becomes of the first. Main thread.
class ImportClaims
{
public:
    ImportClaims() = default;
    /// Ends every wait.
    ~ImportClaims();
    Q_DISABLE_COPY_MOVE(ImportClaims)

    bool contains(const QByteArray &path) const { return m_claims.contains(path); }
    /// @return false when somebody else has the path
    bool claim(const QByteArray &path);
    /// Gives up a claim, listed or not.
    void release(const QByteArray &path);
    /// Ends when the present claim of the path does; another waiting import may then have it already.
    QFuture<void> released(const QByteArray &path) const;

private:
    std::map<QByteArray, QPromise<void>> m_claims;
};

} // namespace cadorel
