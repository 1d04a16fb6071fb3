// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/Song.h"

#include <QList>
#include <QStringList>

#include <initializer_list>

namespace cadorel {

/// The songs of @p ids in their order, repeats too, each the first of @p sources with its id; ids that name
/// none are left out. Takes one walk over the sources, whatever the number of ids. Any thread.
QList<Song> songsWithIds(const QStringList &ids, std::initializer_list<QList<Song>> sources);

} // namespace cadorel
