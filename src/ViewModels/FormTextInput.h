// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace cadorel {

/// One text field of a form: what stands in it and what is to be said about it. Main thread.
class FormTextInput : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text NOTIFY textChanged)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged)
    Q_PROPERTY(QString hint READ hint NOTIFY hintChanged)

public:
    /// Says in the listener's words what is wrong with a text; nothing when it is fine.
    using Check = std::function<QString(const QString &text)>;

    explicit FormTextInput(Check check, QObject *parent);

    QString text() const { return m_text; }
    /// What is wrong, once the listener has left the field or asked for the form to be taken.
    QString error() const { return m_error; }
    /// Something worth knowing that hinders nothing.
    QString hint() const { return m_hint; }
    /// The listener has typed here since the last reset().
    bool isEdited() const { return m_isEdited; }

    /// The listener types.
    Q_INVOKABLE void edit(const QString &text);
    /// The listener leaves the field: from now on it says what is wrong.
    Q_INVOKABLE void finish();

    /// Begins anew with this text.
    void reset(const QString &text);
    /// Puts another text in its place.
    void setText(const QString &text);
    void setHint(const QString &hint);
    /// Says what is wrong. @return whether nothing is
    bool validate();
    /// The keyboard belongs here now.
    void requestFocus() { Q_EMIT focusRequested(); }

Q_SIGNALS:
    void textChanged();
    void errorChanged();
    void hintChanged();
    void finished();
    void focusRequested();

private:
    void setError(const QString &error);

    Check m_check;
    QString m_text;
    QString m_error;
    QString m_hint;
    bool m_isEdited = false;
    bool m_saysErrors = false;
};

} // namespace cadorel
