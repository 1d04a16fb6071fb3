// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/WebDAVConfig.h"
#include "ViewModels/ServerFormViewModel.h"

#include <QString>

#include <optional>

namespace cadorel {

class WebDAVPresetListModel;
class WebDAVService;

/// The form in which a listener sets up a WebDAV server. Main thread.
class WebDAVServerFormViewModel
    : public cadorel::ServerFormViewModel // QML's tools look up the name as it stands
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/FormTextInput.h")
    Q_MOC_INCLUDE("ViewModels/WebDAVPresetListModel.h")
    Q_PROPERTY(cadorel::WebDAVPresetListModel *presets READ presets CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *port READ port CONSTANT)
    Q_PROPERTY(cadorel::FormTextInput *basePath READ basePath CONSTANT)

public:
    /// @param service outlives this object
    explicit WebDAVServerFormViewModel(WebDAVService &service, QObject *parent);
    ~WebDAVServerFormViewModel() override;
    Q_DISABLE_COPY_MOVE(WebDAVServerFormViewModel)

    bool isEditing() const override { return m_edited.has_value(); }
    WebDAVPresetListModel *presets() const { return m_presets; }
    FormTextInput *port() const { return m_port; }
    FormTextInput *basePath() const { return m_basePath; }

    /// For a new server.
    void openNew();
    void openExisting(const WebDAVConfig &config);

    /// Takes name, address, port and path of a ready-made kind of server, whatever the fields held.
    Q_INVOKABLE void applyPreset(int row);

protected:
    QList<FormTextInput *> fields() const override;
    void takeAddressApart() override;
    void updateHints() override;
    QCoro::Task<TestResult> testServer() override;
    QCoro::Task<Stored> store() override;

private:
    void reset(const WebDAVConfig &config, std::optional<WebDAVConfig> edited);
    WebDAVConfig config() const;
    bool isMoved(const WebDAVConfig &config) const;

    WebDAVService &m_service;
    WebDAVPresetListModel *m_presets;
    FormTextInput *m_port;
    FormTextInput *m_basePath;
    std::optional<WebDAVConfig> m_edited;
};

} // namespace cadorel
