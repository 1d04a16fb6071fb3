// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/JsonWriter.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace cadorel {

QByteArray JsonWriter::take()
{
    m_needsComma = false;
    return std::exchange(m_text, {});
}

void JsonWriter::separator()
{
    if (m_needsComma)
        m_text += ',';
}

void JsonWriter::beginArray()
{
    separator();
    m_text += '[';
    m_needsComma = false;
}

void JsonWriter::beginArray(const char *name)
{
    key(name);
    m_text += '[';
    m_needsComma = false;
}

void JsonWriter::endArray()
{
    m_text += ']';
    m_needsComma = true;
}

void JsonWriter::beginObject()
{
    separator();
    m_text += '{';
    m_needsComma = false;
}

void JsonWriter::endObject()
{
    m_text += '}';
    m_needsComma = true;
}

void JsonWriter::key(const char *key)
{
    separator();
    m_text += '"';
    m_text += key;
    m_text += "\":";
    m_needsComma = true;
}

void JsonWriter::member(const char *name, const QString &value)
{
    key(name);
    string(value.toUtf8());
}

void JsonWriter::memberUtf8(const char *name, const QByteArray &value)
{
    key(name);
    string(value);
}

void JsonWriter::element(const QString &value)
{
    separator();
    string(value.toUtf8());
    m_needsComma = true;
}

void JsonWriter::member(const char *name, double value)
{
    key(name);
    // JSON has no infinities and no NaN; 0 is how a record says "unknown".
    const double written = std::isfinite(value) ? value : 0.0;
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, written);
    m_text.append(buffer, result.ptr - buffer);
}

void JsonWriter::member(const char *name, int value)
{
    key(name);
    m_text += QByteArray::number(value);
}

void JsonWriter::member(const char *name, bool value)
{
    key(name);
    m_text += value ? "true" : "false";
}

void JsonWriter::string(const QByteArray &utf8)
{
    static constexpr char hex[] = "0123456789abcdef";
    m_text += '"';
    qsizetype plainFrom = 0;
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        if (c >= 0x20 && c != '"' && c != '\\')
            continue;
        m_text.append(utf8.constData() + plainFrom, i - plainFrom);
        plainFrom = i + 1;
        switch (c) {
        case '"':
            m_text += "\\\"";
            break;
        case '\\':
            m_text += "\\\\";
            break;
        case '\n':
            m_text += "\\n";
            break;
        case '\r':
            m_text += "\\r";
            break;
        case '\t':
            m_text += "\\t";
            break;
        default:
            m_text += "\\u00";
            m_text += hex[c >> 4U];
            m_text += hex[c & 0xFU];
        }
    }
    m_text.append(utf8.constData() + plainFrom, utf8.size() - plainFrom);
    m_text += '"';
}

} // namespace cadorel
