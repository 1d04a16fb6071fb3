// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

namespace cadorel {

/// Writes compact JSON with the members in the order of the calls, which QJsonObject, sorting its keys,
/// cannot. The caller keeps begin and end in pairs. Reentrant.
class JsonWriter
{
public:
    /// The text so far, in UTF-8.
    const QByteArray &text() const { return m_text; }
    /// Gives the text away and starts anew.
    QByteArray take();

    void beginArray();
    /// Begins an array as a member of the object.
    void beginArray(const char *key);
    void endArray();
    void beginObject();
    void endObject();

    void member(const char *key, const QString &value);
    void member(const char *key, double value);
    void member(const char *key, int value);
    void member(const char *key, bool value);
    void member(const char *key, const char *value) = delete;
    /// A text that is already valid UTF-8, as QString::toUtf8() gives it.
    void memberUtf8(const char *key, const QByteArray &value);
    /// A text of the array.
    void element(const QString &value);

private:
    void separator();
    void key(const char *key);
    void string(const QByteArray &utf8);

    QByteArray m_text;
    bool m_needsComma = false;
};

} // namespace cadorel
