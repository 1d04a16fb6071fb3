// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/WebDAVConfig.h"

#include <QCoroTask>
#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace cadorel {

class FormTextInput;
class WebDAVPresetListModel;
class WebDAVService;

/// The form in which a listener sets up a server. The password of a server that is there already comes from
/// the credential store, which may take as long as it wants: what is typed meanwhile wins. Main thread.
class WebDAVServerFormViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/FormTextInput.h")
    Q_MOC_INCLUDE("ViewModels/WebDAVPresetListModel.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(bool isEditing READ isEditing NOTIFY isOpenChanged)
    Q_PROPERTY(cadorel::WebDAVPresetListModel *presets READ presets CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *name READ name CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *serverURL READ serverURL CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *port READ port CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *username READ username CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *password READ password CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *basePath READ basePath CONSTANT)
    Q_PROPERTY(bool isEnabled READ isEnabled WRITE setEnabled NOTIFY isEnabledChanged)
    Q_PROPERTY(bool isLoadingPassword READ isLoadingPassword NOTIFY isLoadingPasswordChanged)
    Q_PROPERTY(bool isTesting READ isTesting NOTIFY isTestingChanged)
    Q_PROPERTY(bool isSaving READ isSaving NOTIFY isSavingChanged)
    Q_PROPERTY(bool canSubmit READ canSubmit NOTIFY canSubmitChanged)
    Q_PROPERTY(QString testMessage READ testMessage NOTIFY testMessageChanged)
    Q_PROPERTY(bool testSucceeded READ testSucceeded NOTIFY testMessageChanged)

public:
    /// @param service outlives this object
    explicit WebDAVServerFormViewModel(WebDAVService &service, QObject *parent);
    ~WebDAVServerFormViewModel() override;
    Q_DISABLE_COPY_MOVE(WebDAVServerFormViewModel)

    bool isOpen() const { return m_isOpen; }
    /// The server is there already.
    bool isEditing() const { return m_edited.has_value(); }
    WebDAVPresetListModel *presets() const { return m_presets; }
    FormTextInput *name() const { return m_name; }
    FormTextInput *serverURL() const { return m_serverURL; }
    FormTextInput *port() const { return m_port; }
    FormTextInput *username() const { return m_username; }
    FormTextInput *password() const { return m_password; }
    FormTextInput *basePath() const { return m_basePath; }
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

    /// For a new server.
    void openNew();
    void openExisting(const WebDAVConfig &config);

    /// Takes name, address, port and path of a ready-made kind of server, whatever the fields held.
    Q_INVOKABLE void applyPreset(int row);
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

private:
    void reset(const WebDAVConfig &config, std::optional<WebDAVConfig> edited);
    void setOpen(bool isOpen);
    void takeAddressApart();
    void updateHints();
    void dropTest();
    bool validate(const QList<FormTextInput *> &fields);
    WebDAVConfig config() const;
    bool isMoved(const WebDAVConfig &config) const;
    QCoro::Task<void> loadPassword(WebDAVConfig config);
    QCoro::Task<void> runTest();
    QCoro::Task<void> runSave();
    void setBusy(bool &flag, bool value, void (WebDAVServerFormViewModel::*signal)());
    void setTestMessage(const QString &message, bool succeeded);

    WebDAVService &m_service;
    WebDAVPresetListModel *m_presets;
    FormTextInput *m_name;
    FormTextInput *m_serverURL;
    FormTextInput *m_port;
    FormTextInput *m_username;
    FormTextInput *m_password;
    FormTextInput *m_basePath;
    std::optional<WebDAVConfig> m_edited;
    /// What the credential store had; nothing when it is not known.
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
