// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

#include <expected>
#include <optional>

namespace cadorel {

class FormTextInput;
struct ServerAddress;

/// What the forms for servers of every kind have in common. The password of a server that is there already
/// comes from the credential store, which may take as long as it wants: what is typed meanwhile wins. Main
/// thread.
class ServerFormViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/FormTextInput.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY isOpenChanged)
    Q_PROPERTY(cadorel::FormTextInput *name READ name CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *serverURL READ serverURL CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *username READ username CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *password READ password CONSTANT)
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY isEnabledChanged)
    Q_PROPERTY(bool isLoadingPassword READ isLoadingPassword NOTIFY isLoadingPasswordChanged)
    Q_PROPERTY(bool isTesting READ isTesting NOTIFY isTestingChanged)
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY isSavingChanged)
    Q_PROPERTY(bool canSubmit READ canSubmit NOTIFY canSubmitChanged)
    Q_PROPERTY(QString testMessage READ testMessage NOTIFY testMessageChanged)
    Q_PROPERTY(bool testSucceeded READ testSucceeded NOTIFY testMessageChanged)

public:
    ~ServerFormViewModel() override;
    Q_DISABLE_COPY_MOVE(ServerFormViewModel)

    bool isOpen() const { return m_isOpen; }
    /// The server is there already.
    virtual bool isEditing() const = 0;
    FormTextInput *name() const { return m_name; }
    FormTextInput *serverURL() const { return m_serverURL; }
    FormTextInput *username() const { return m_username; }
    FormTextInput *password() const { return m_password; }
    bool isEnabled() const { return m_isEnabled; }
    void setEnabled(bool isEnabled);
    bool isLoadingPassword() const { return m_isLoadingPassword; }
    bool isTesting() const { return m_isTesting; }
    bool isSaving() const { return m_isSaving; }
    /// There is a password, or none to wait for, and nothing is being stored.
    bool canSubmit() const;
    /// How the last test ended, for the listener to read; empty when the fields have changed since.
    QString testMessage() const { return m_testMessage; }
    bool testSucceeded() const { return m_testSucceeded; }

    /// Tries the server as the fields describe it, saved or not.
    Q_INVOKABLE void test();
    /// Stores the server, then closes the form.
    Q_INVOKABLE void save();
    /// Closes the form without storing anything; what is being stored already stays.
    Q_INVOKABLE void cancel();

Q_SIGNALS:
    /// A server has been stored. @param isMoved songs that were found before lead to where it was
    void saved(const QUuid &server, bool isMoved);
    void isOpenChanged();
    void isEnabledChanged();
    void isLoadingPasswordChanged();
    void isTestingChanged();
    void isSavingChanged();
    void canSubmitChanged();
    void testMessageChanged();

protected:
    /// Nothing, or why the server cannot be used.
    using TestResult = std::expected<void, QString>;
    struct Stored
    {
        QUuid server;
        bool isMoved = false;
    };

    explicit ServerFormViewModel(QObject *parent);

    /// A field that only this kind of form has. To be called by constructors.
    void addField(FormTextInput *field);
    /// Begins anew with what the common fields hold.
    void open(const QString &name, const QString &serverURL, const QString &username, bool isEnabled);
    /// Fills the password of a server that is there already, once open() has run.
    void fetchPassword(const QString &key);
    /// What the credential store had; nothing when it is not known.
    const std::optional<QString> &storedPassword() const { return m_storedPassword; }
    /// Takes credentials that were pasted with the address over to their fields.
    void takeCredentials(const ServerAddress &address);

    /// All fields in the order in which they stand.
    virtual QList<FormTextInput *> fields() const = 0;
    /// The listener has left the address, or wants the form to be taken.
    virtual void takeAddressApart() = 0;
    /// The address or a field of the kind's own has changed.
    virtual void updateHints() = 0;
    /// Both read the fields before they first wait.
    virtual QCoro::Task<TestResult> testServer() = 0;
    virtual QCoro::Task<Stored> store() = 0;

private:
    void close();
    void setOpen(bool isOpen);
    void dropTest();
    bool validate(const QList<FormTextInput *> &fields);
    QCoro::Task<void> loadPassword(QString key);
    QCoro::Task<void> runTest();
    QCoro::Task<void> runSave();
    void setBusy(bool &flag, bool value, void (ServerFormViewModel::*signal)());
    void setTestMessage(const QString &message, bool succeeded);

    FormTextInput *m_name;
    FormTextInput *m_serverURL;
    FormTextInput *m_username;
    FormTextInput *m_password;
    std::optional<QString> m_storedPassword;
    bool m_isOpen = false;
    bool m_isEnabled = true;
    bool m_isLoadingPassword = false;
    bool m_isTesting = false;
    bool m_isSaving = false;
    QString m_testMessage;
    bool m_testSucceeded = false;
    /// Counts the openings and closings: an answer for an earlier one is dropped.
    quint64 m_session = 0;
    /// Counts the tests and the changes that make one worthless.
    quint64 m_testNumber = 0;
};

} // namespace cadorel
