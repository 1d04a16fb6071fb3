// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/Import/ImportClaims.h"

#include <utility>

namespace cadorel {

ImportClaims::~ImportClaims()
{
    for (auto &claim : std::exchange(m_claims, {}))
        claim.second.finish();
}

bool ImportClaims::claim(const QByteArray &path)
{
    const auto [claim, isNew] = m_claims.try_emplace(path);
    if (isNew)
        claim->second.start();
    return isNew;
}

void ImportClaims::release(const QByteArray &path)
{
    auto node = m_claims.extract(path);
    if (!node.empty())
        node.mapped().finish();
}

QFuture<void> ImportClaims::released(const QByteArray &path) const
{
    const auto claim = m_claims.find(path);
    return claim == m_claims.end() ? QtFuture::makeReadyFuture() : claim->second.future();
}

} // namespace cadorel
