// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

namespace cadorel {

class APIConfigService;
class FormTextInput;
class OnlineMusicService;

/// The form for the address of the online music API. Main thread.
class APISettingsViewModel : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/FormTextInput.h")
    Q_PROPERTY(bool isOpen READ isOpen NOTIFY isOpenChanged)
    Q_PROPERTY(bool usesDefault READ usesDefault NOTIFY usesDefaultChanged)
    Q_PROPERTY(cadorel::FormTextInput *tempURL READ tempURL CONSTANT)
    Q_PROPERTY(bool showInvalidURLAlert READ showInvalidURLAlert WRITE setShowInvalidURLAlert NOTIFY
                   showInvalidURLAlertChanged)
    Q_PROPERTY(bool showResetAlert READ showResetAlert WRITE setShowResetAlert NOTIFY showResetAlertChanged)

public:
    /// @param apiConfig and @param service outlive this object
    APISettingsViewModel(APIConfigService &apiConfig, OnlineMusicService &service, QObject *parent);
    ~APISettingsViewModel() override;
    Q_DISABLE_COPY_MOVE(APISettingsViewModel)

    bool isOpen() const { return m_isOpen; }
    /// The server in use is the one that nobody has chosen.
    bool usesDefault() const;
    /// The address as it stands in the form.
    FormTextInput *tempURL() const { return m_tempURL; }
    /// The listener is being told that the address is none.
    bool showInvalidURLAlert() const { return m_showInvalidURLAlert; }
    void setShowInvalidURLAlert(bool shows);
    /// The listener is being asked whether he means it.
    bool showResetAlert() const { return m_showResetAlert; }
    void setShowResetAlert(bool shows);

    /// Comes up with the address in use.
    Q_INVOKABLE void open();
    Q_INVOKABLE void close();
    /// Takes the address, if it is one; the charts of the old server go.
    Q_INVOKABLE void saveURL();
    /// Goes back to the default address; the charts of the old server go.
    Q_INVOKABLE void reset();
    /// Asks the server that is in use for its charts. Only the console tells how that went.
    Q_INVOKABLE void testConnection();

Q_SIGNALS:
    void isOpenChanged();
    void usesDefaultChanged();
    void showInvalidURLAlertChanged();
    void showResetAlertChanged();
    /// Another server is in use.
    void serverChanged();

private:
    void setOpen(bool isOpen);

    APIConfigService &m_apiConfig;
    OnlineMusicService &m_service;
    FormTextInput *m_tempURL;
    bool m_isOpen = false;
    bool m_showInvalidURLAlert = false;
    bool m_showResetAlert = false;
};

} // namespace cadorel
