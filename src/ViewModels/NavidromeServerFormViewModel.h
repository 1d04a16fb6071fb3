// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Models/NavidromeConfig.h"
#include "ViewModels/ServerFormViewModel.h"

#include <optional>

namespace cadorel {

class NavidromeService;

/// The form in which a listener sets up a Subsonic server. Main thread.
class NavidromeServerFormViewModel : public cadorel::ServerFormViewModel
{
    Q_OBJECT
    Q_MOC_INCLUDE("ViewModels/FormTextInput.h")
    Q_PROPERTY(cadorel::FormTextInput *apiBasePath READ apiBasePath CONSTANT)

public:
    /// @param service outlives this object
    NavidromeServerFormViewModel(NavidromeService &service, QObject *parent);
    ~NavidromeServerFormViewModel() override;
    Q_DISABLE_COPY_MOVE(NavidromeServerFormViewModel)

    bool isEditing() const override { return m_edited.has_value(); }
    FormTextInput *apiBasePath() const { return m_apiBasePath; }

    /// For a new server.
    void openNew();
    void openExisting(const NavidromeConfig &config);

protected:
    QList<FormTextInput *> fields() const override;
    void takeAddressApart() override;
    void updateHints() override;
    QCoro::Task<TestResult> testServer() override;
    QCoro::Task<Stored> store() override;

private:
    void reset(const NavidromeConfig &config, std::optional<NavidromeConfig> edited);
    NavidromeConfig config() const;

    NavidromeService &m_service;
    FormTextInput *m_apiBasePath;
    std::optional<NavidromeConfig> m_edited;
};

} // namespace cadorel
