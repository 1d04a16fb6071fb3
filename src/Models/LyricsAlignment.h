// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace cadorel {

/// Names of the alignments of lyrics, in a space of their own so that screens know them as
/// "LyricsAlignments.Type.left".
namespace LyricsAlignments {
Q_NAMESPACE

enum class Type { left, center };
Q_ENUM_NS(Type)

} // namespace LyricsAlignments

/// How the lines of lyrics stand on the page, in the order in which it is offered.
using LyricsAlignment = LyricsAlignments::Type;

/// All of them, in their order.
const QList<LyricsAlignment> &allLyricsAlignments();
/// The text that stands for the alignment in the preferences.
QString rawValue(LyricsAlignment alignment);
/// The alignment of a stored text; nothing for an unknown one.
std::optional<LyricsAlignment> lyricsAlignmentOf(const QString &rawValue);
/// Name as a listener reads it.
QString displayName(LyricsAlignment alignment);
/// How a line's text is set: leading or centred.
Qt::Alignment textAlignment(LyricsAlignment alignment);
/// Where a line narrower than the page stands.
Qt::Alignment frameAlignment(LyricsAlignment alignment);

} // namespace cadorel
