// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace cadorel {

/// Names of the places of the root screen, in a space of their own so that screens know them as
/// "ContentTabs.Tab.library".
namespace ContentTabs {
Q_NAMESPACE

enum class Tab { library, playlists, webdav, search, settings };
Q_ENUM_NS(Tab)
} // namespace ContentTabs

/// The places of the root screen, in the order of their tabs.
using ContentTab = ContentTabs::Tab;

/// All of them, in their order.
const QList<ContentTab> &allContentTabs();
/// The name of the case, for what finds the tab in a window.
QString caseName(ContentTab tab);
/// Its title, as a listener reads it.
QString rawValue(ContentTab tab);
/// Name of its symbol, and of the one that shows that it is selected.
QString symbol(ContentTab tab);
QString selectedSymbol(ContentTab tab);
/// Name of its picture in the look that has drawn icons.
QString kawaiiIcon(ContentTab tab);

} // namespace cadorel
