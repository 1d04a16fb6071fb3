// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/Tags/LegacyText.h"

#include <QByteArray>
#include <QString>

#include <taglib/tbytevector.h>
#include <taglib/tstring.h>
#include <taglib/tstringlist.h>

namespace cadorel {

/// Between the values of a field that has several: two artists are one line to a reader.
inline constexpr QLatin1StringView valueSeparator(" / ");

/// What a field says of its text.
enum class DeclaredEncoding { latin1, unicode };

/// TagLib's text, which holds UTF-16 units one to a wchar_t.
QString toQString(const TagLib::String &text);
/// The values in one text.
QString toQString(const TagLib::StringList &values, QLatin1StringView separator = valueSeparator);
/// Text of a field that the file declares to be Latin-1 or some form of Unicode; what is declared Latin-1 is
/// not always.
QString toQString(const TagLib::String &text, DeclaredEncoding encoding);
/// A copy of the bytes.
QByteArray toQByteArray(const TagLib::ByteVector &bytes);
/// Bytes whose encoding nobody declared.
QString legacyText(const TagLib::ByteVector &bytes, FieldEnd end = FieldEnd::whole);

} // namespace cadorel
