// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QSet>

namespace cadorel {

/// Answers whether a list holds an element without walking over it, which thousands of rows ask each time
/// that they are drawn. It keeps the list that it looked at last: as long as that one is asked for, no other
/// can share its memory, so that a changed list is known by its address.
template <typename Element>
class ListMembers
{
public:
    bool contains(const QList<Element> &list, const Element &element)
    {
        if (list.constData() != m_list.constData() || list.size() != m_list.size()) {
            m_list = list;
            m_members = QSet<Element>(list.cbegin(), list.cend());
        }
        return m_members.contains(element);
    }

private:
    QList<Element> m_list;
    QSet<Element> m_members;
};

} // namespace cadorel
