// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace cadorel {

/// Whether a text that ends at the limit of its field may have lost half of its last character.
enum class FieldEnd { whole, maybeCut };

/// Text whose bytes are declared Latin-1, or declared nothing at all: UTF-8 when it is valid UTF-8, GBK when
/// it hardly can be anything else, otherwise Latin-1. Much music from China carries GBK in such fields.
QString legacyText(QByteArrayView bytes, FieldEnd end = FieldEnd::whole);

} // namespace cadorel
