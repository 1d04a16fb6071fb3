// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/SecretForms.h"

#include <QRegularExpression>
#include <QStringEncoder>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// What is shorter stands in any file.
constexpr qsizetype shortestPart = 6;
constexpr int base64Group = 3;

QByteArray utf16(const QString &text, QStringConverter::Encoding encoding)
{
    QStringEncoder encoder(encoding);
    return encoder.encode(text);
}

/// The characters that @p bytes alone decide when @p before bytes of something else stand in front of them.
QByteArray base64Behind(qsizetype before, const QByteArray &bytes, QByteArray::Base64Option alphabet)
{
    QByteArray text = (QByteArray(before, 'x') + bytes).toBase64(alphabet | QByteArray::OmitTrailingEquals);
    if ((before + bytes.size()) % base64Group != 0)
        text.chop(1);
    return text.sliced(before == 0 ? 0 : before + 1);
}

QByteArray jsonEscaped(const QString &text)
{
    QByteArray escaped;
    for (const QChar c : text) {
        if (c.unicode() > u'~')
            escaped += "\\u" + QByteArray::number(c.unicode(), 16).rightJustified(4, '0');
        else
            escaped += c == u'/' ? QByteArray("\\/") : QByteArray(1, c.toLatin1());
    }
    return escaped;
}

} // namespace

SecretForms::SecretForms(const QString &secret)
{
    const QByteArray utf8 = secret.toUtf8();
    m_forms = {{u"UTF-8"_s, utf8},
               {u"UTF-16, low byte first"_s, utf16(secret, QStringConverter::Utf16LE)},
               {u"UTF-16, high byte first"_s, utf16(secret, QStringConverter::Utf16BE)},
               {u"hexadecimal"_s, utf8.toHex()},
               {u"hexadecimal, upper case"_s, utf8.toHex().toUpper()},
               {u"JSON escapes"_s, jsonEscaped(secret)}};
    for (qsizetype before = 0; before < base64Group; ++before) {
        m_forms.append(
            {u"base64 behind %1"_s.arg(before), base64Behind(before, utf8, QByteArray::Base64Encoding)});
        m_forms.append({u"base64 of URLs behind %1"_s.arg(before),
                        base64Behind(before, utf8, QByteArray::Base64UrlEncoding)});
    }
    static const QRegularExpression otherThanLetters(u"[^A-Za-z0-9]+"_s);
    for (const QString &part : secret.split(otherThanLetters, Qt::SkipEmptyParts)) {
        if (part.size() >= shortestPart)
            m_forms.append({u"a part"_s, part.toUtf8()});
    }
}

QStringList SecretForms::in(const QByteArray &bytes) const
{
    QStringList found;
    const QByteArray once = QByteArray::fromPercentEncoding(bytes);
    const QByteArray twice = QByteArray::fromPercentEncoding(once);
    for (const Form &form : m_forms) {
        if (bytes.contains(form.bytes))
            found.append(form.name);
        else if (once.contains(form.bytes) || twice.contains(form.bytes))
            found.append(form.name + u", percent-encoded"_s);
    }
    return found;
}

} // namespace cadorel
