// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/FormTextInput.h"

#include <utility>

namespace cadorel {

FormTextInput::FormTextInput(Check check, QObject *parent)
    : QObject(parent)
    , m_check(std::move(check))
{
}

void FormTextInput::edit(const QString &text)
{
    m_isEdited = true;
    setText(text);
}

void FormTextInput::finish()
{
    // Passing through an empty field on the way to another one is no mistake yet.
    if (m_isEdited)
        validate();
    Q_EMIT finished();
}

void FormTextInput::reset(const QString &text)
{
    m_isEdited = false;
    m_saysErrors = false;
    setText(text);
    setError(QString());
    setHint(QString());
}

void FormTextInput::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    if (m_saysErrors)
        setError(m_check(m_text));
}

void FormTextInput::setHint(const QString &hint)
{
    if (m_hint == hint)
        return;
    m_hint = hint;
    Q_EMIT hintChanged();
}

bool FormTextInput::validate()
{
    m_saysErrors = true;
    setError(m_check(m_text));
    return m_error.isEmpty();
}

void FormTextInput::setError(const QString &error)
{
    if (m_error == error)
        return;
    m_error = error;
    Q_EMIT errorChanged();
}

} // namespace cadorel
