// SPDX-License-Identifier: GPL-3.0-or-later
#include "Models/PlaybackSnapshot.h"

#include "Utils/JsonForms.h"
#include "Utils/JsonWriter.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

std::optional<QByteArray> PlaybackSnapshot::encoded() const
{
    if (!std::isfinite(position) || !std::isfinite(duration))
        return std::nullopt;
    JsonWriter writer;
    writer.beginObject();
    writer.member("songId", songId);
    writer.member("title", title);
    writer.member("artist", artist);
    writer.member("album", album);
    writer.member("filePath", filePath);
    writer.member("position", position);
    writer.member("duration", duration);
    writer.member("date", dateToJson(date).toDouble());
    writer.endObject();
    return writer.take();
}

std::optional<PlaybackSnapshot> PlaybackSnapshot::decoded(const QByteArray &json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    for (const QLatin1StringView key : {"songId"_L1, "title"_L1, "artist"_L1, "album"_L1, "filePath"_L1}) {
        if (!object.value(key).isString())
            return std::nullopt;
    }
    const std::optional<QDateTime> date = dateFromJson(object.value("date"_L1));
    if (!object.value("position"_L1).isDouble() || !object.value("duration"_L1).isDouble() || !date)
        return std::nullopt;
    return PlaybackSnapshot{.songId = object.value("songId"_L1).toString(),
                            .title = object.value("title"_L1).toString(),
                            .artist = object.value("artist"_L1).toString(),
                            .album = object.value("album"_L1).toString(),
                            .filePath = object.value("filePath"_L1).toString(),
                            .position = object.value("position"_L1).toDouble(),
                            .duration = object.value("duration"_L1).toDouble(),
                            .date = *date};
}

} // namespace cadorel
