// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/WebDAVServerFormViewModel.h"

#include "Models/WebDAVPreset.h"
#include "Services/WebDAVService.h"
#include "Utils/KeychainHelper.h"
#include "Utils/Tasks.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/ServerAddress.h"
#include "ViewModels/WebDAVPresetListModel.h"

#include <QPointer>
#include <QThreadPool>

#include <QCoroFuture>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString newAddress = u"https://"_s;
const QString rootPath = u"/"_s;
/// Stands in the path of a preset for the listener to replace.
const QString userPlaceholder = u"用户名"_s;
constexpr int lastPort = 65535;

FormTextInput::Check required(const QString &message)
{
    return [message](const QString &text) { return text.trimmed().isEmpty() ? message : QString(); };
}

QString addressError(const QString &text)
{
    switch (ServerAddress::parse(text).problem) {
    case ServerAddress::Problem::none:
        return {};
    case ServerAddress::Problem::missing:
        return u"请填写服务器地址"_s;
    case ServerAddress::Problem::scheme:
        return u"地址要以 http:// 或 https:// 开头"_s;
    case ServerAddress::Problem::host:
        return u"地址中的主机名或端口不正确"_s;
    }
    Q_UNREACHABLE();
}

std::optional<int> portOf(const QString &text)
{
    bool isNumber = false;
    const int port = text.trimmed().toInt(&isNumber);
    return isNumber && port >= 1 && port <= lastPort ? std::optional(port) : std::nullopt;
}

QString portError(const QString &text)
{
    return text.trimmed().isEmpty() || portOf(text) ? QString() : u"端口是 1 到 65535 的数字"_s;
}

QString portText(std::optional<int> port)
{
    return port ? QString::number(*port) : QString();
}

} // namespace

WebDAVServerFormViewModel::WebDAVServerFormViewModel(WebDAVService &service, QObject *parent)
    : QObject(parent)
    , m_service(service)
    , m_presets(new WebDAVPresetListModel(this))
    , m_name(new FormTextInput(required(u"请填写名称"_s), this))
    , m_serverURL(new FormTextInput(addressError, this))
    , m_port(new FormTextInput(portError, this))
    , m_username(new FormTextInput(required(u"请填写用户名"_s), this))
    , m_password(new FormTextInput(
          [](const QString &text) { return text.isEmpty() ? u"请填写密码"_s : QString(); }, this))
    , m_basePath(new FormTextInput([](const QString &) { return QString(); }, this))
{
    for (const FormTextInput *field : {m_name, m_serverURL, m_port, m_username, m_password, m_basePath})
        connect(field, &FormTextInput::textChanged, this, &WebDAVServerFormViewModel::dropTest);
    for (const FormTextInput *field : {m_serverURL, m_basePath})
        connect(field, &FormTextInput::textChanged, this, &WebDAVServerFormViewModel::updateHints);
    connect(m_serverURL, &FormTextInput::finished, this, &WebDAVServerFormViewModel::takeAddressApart);
    connect(m_password, &FormTextInput::textChanged, this, &WebDAVServerFormViewModel::canSubmitChanged);
}

WebDAVServerFormViewModel::~WebDAVServerFormViewModel() = default;

void WebDAVServerFormViewModel::openNew()
{
    WebDAVConfig config;
    config.serverURL = newAddress;
    config.basePath = rootPath;
    reset(config, std::nullopt);
}

void WebDAVServerFormViewModel::openExisting(const WebDAVConfig &config)
{
    reset(config, config);
    detach(loadPassword(config));
}

void WebDAVServerFormViewModel::reset(const WebDAVConfig &config, std::optional<WebDAVConfig> edited)
{
    ++m_session;
    m_edited = std::move(edited);
    m_storedPassword.reset();
    m_name->reset(config.name);
    m_serverURL->reset(config.serverURL);
    m_port->reset(portText(config.port));
    m_username->reset(config.username);
    m_password->reset(QString());
    m_basePath->reset(config.basePath);
    setEnabled(config.isEnabled);
    setBusy(m_isLoadingPassword, false, &WebDAVServerFormViewModel::isLoadingPasswordChanged);
    setBusy(m_isSaving, false, &WebDAVServerFormViewModel::isSavingChanged);
    dropTest();
    updateHints();
    setOpen(true);
}

void WebDAVServerFormViewModel::setOpen(bool isOpen)
{
    // Another server in an open form changes what is told together with it.
    m_isOpen = isOpen;
    Q_EMIT isOpenChanged();
    Q_EMIT canSubmitChanged();
}

void WebDAVServerFormViewModel::cancel()
{
    if (!m_isOpen)
        return;
    ++m_session;
    setBusy(m_isLoadingPassword, false, &WebDAVServerFormViewModel::isLoadingPasswordChanged);
    setBusy(m_isSaving, false, &WebDAVServerFormViewModel::isSavingChanged);
    dropTest();
    // A password stays in sight and in memory no longer than needed.
    m_password->reset(QString());
    m_storedPassword.reset();
    setOpen(false);
}

QCoro::Task<void> WebDAVServerFormViewModel::loadPassword(WebDAVConfig config)
{
    const QPointer<WebDAVServerFormViewModel> self(this);
    const quint64 session = m_session;
    setBusy(m_isLoadingPassword, true, &WebDAVServerFormViewModel::isLoadingPasswordChanged);
    const std::expected<QString, SecretStatus> found =
        co_await QtConcurrent::run(&KeychainHelper::queue(), [key = config.passwordKeychainKey()] {
            return KeychainHelper::lookup(key);
        });
    if (!self || session != m_session)
        co_return;
    setBusy(m_isLoadingPassword, false, &WebDAVServerFormViewModel::isLoadingPasswordChanged);
    if (found)
        m_storedPassword = *found;
    if (m_password->isEdited())
        co_return;
    if (found)
        m_password->setText(*found);
    else
        m_password->setHint(found.error() == SecretStatus::itemNotFound
                                ? u"没有保存过密码，请重新填写"_s
                                : u"无法读取已保存的密码，请重新填写"_s);
}

bool WebDAVServerFormViewModel::canSubmit() const
{
    return m_isOpen && !m_isSaving && (!m_isLoadingPassword || m_password->isEdited());
}

void WebDAVServerFormViewModel::applyPreset(int row)
{
    const QList<WebDAVPreset> &presets = WebDAVPreset::presets();
    if (row < 0 || row >= presets.size())
        return;
    const WebDAVPreset &preset = presets.at(row);
    m_name->reset(preset.name);
    m_serverURL->reset(preset.serverURL);
    m_basePath->reset(preset.basePath);
    m_port->reset(portText(preset.port));
    updateHints();
    if (addressError(preset.serverURL).isEmpty())
        m_username->requestFocus();
    else
        m_serverURL->requestFocus();
}

void WebDAVServerFormViewModel::takeAddressApart()
{
    const ServerAddress address = ServerAddress::parse(m_serverURL->text());
    if (address.hasCredentials) {
        m_username->setText(address.username);
        if (!address.password.isEmpty())
            m_password->edit(address.password);
    }
    // The path of an address counts for nothing; one that was pasted in is meant as the path below.
    const QString path = m_basePath->text().trimmed();
    const bool isPathMeant = !address.path.isEmpty() && (path.isEmpty() || path == rootPath);
    if (isPathMeant)
        m_basePath->setText(address.path);
    const bool isBare = address.path.isEmpty() || isPathMeant || address.path == path;
    const bool isReadable = address.problem == ServerAddress::Problem::none;
    m_serverURL->setText(isReadable && isBare ? address.scheme + u"://"_s + address.authority
                                              : address.text());
}

void WebDAVServerFormViewModel::updateHints()
{
    const ServerAddress address = ServerAddress::parse(m_serverURL->text());
    const QString path = m_basePath->text().trimmed();
    if (address.isOpenToAll())
        m_serverURL->setHint(u"http 不加密，密码会以明文经过网络"_s);
    else if (!address.path.isEmpty() && path != rootPath && !path.isEmpty() && path != address.path)
        m_serverURL->setHint(u"地址中的路径不起作用，以根路径为准"_s);
    else
        m_serverURL->setHint(QString());
    m_basePath->setHint(path.contains(userPlaceholder) ? u"请把“用户名”换成你在服务器上的用户名"_s
                                                       : QString());
}

void WebDAVServerFormViewModel::dropTest()
{
    ++m_testNumber;
    setBusy(m_isTesting, false, &WebDAVServerFormViewModel::isTestingChanged);
    setTestMessage(QString(), false);
}

bool WebDAVServerFormViewModel::validate(const QList<FormTextInput *> &fields)
{
    takeAddressApart();
    FormTextInput *first = nullptr;
    for (FormTextInput *field : fields) {
        if (!field->validate() && !first)
            first = field;
    }
    if (first)
        first->requestFocus();
    return !first;
}

WebDAVConfig WebDAVServerFormViewModel::config() const
{
    WebDAVConfig config;
    if (m_edited) {
        config.id = m_edited->id;
        // A scan may have ended since the form was opened.
        for (const WebDAVConfig &stored : m_service.configs()) {
            if (stored == *m_edited)
                config.lastSyncDate = stored.lastSyncDate;
        }
    }
    config.name = m_name->text().trimmed();
    config.serverURL = m_serverURL->text().trimmed();
    config.port = portOf(m_port->text());
    config.username = m_username->text().trimmed();
    const QString path = m_basePath->text().trimmed();
    config.basePath = path.isEmpty() ? rootPath : path;
    config.isEnabled = m_isEnabled;
    return config;
}

bool WebDAVServerFormViewModel::isMoved(const WebDAVConfig &config) const
{
    return m_edited && (m_edited->name != config.name || m_edited->serverURL != config.serverURL ||
                        m_edited->port != config.port || m_edited->username != config.username ||
                        m_edited->basePath != config.basePath || m_storedPassword != m_password->text());
}

void WebDAVServerFormViewModel::test()
{
    if (canSubmit() && !m_isTesting && validate({m_serverURL, m_port, m_username, m_password, m_basePath}))
        detach(runTest());
}

QCoro::Task<void> WebDAVServerFormViewModel::runTest()
{
    const QPointer<WebDAVServerFormViewModel> self(this);
    dropTest();
    const quint64 number = m_testNumber;
    setBusy(m_isTesting, true, &WebDAVServerFormViewModel::isTestingChanged);
    const std::expected<void, WebDAVError> result =
        co_await m_service.testConnection(config(), m_password->text());
    if (!self || number != m_testNumber)
        co_return;
    setBusy(m_isTesting, false, &WebDAVServerFormViewModel::isTestingChanged);
    const QString description = result ? u"连接成功"_s : result.error().description();
    setTestMessage(description.isEmpty() ? u"未知错误"_s : description, result.has_value());
}

void WebDAVServerFormViewModel::save()
{
    if (canSubmit() && validate({m_name, m_serverURL, m_port, m_username, m_password, m_basePath}))
        detach(runSave());
}

QCoro::Task<void> WebDAVServerFormViewModel::runSave()
{
    const QPointer<WebDAVServerFormViewModel> self(this);
    const quint64 session = m_session;
    const WebDAVConfig config = this->config();
    const bool isMoved = this->isMoved(config);
    setBusy(m_isSaving, true, &WebDAVServerFormViewModel::isSavingChanged);
    co_await m_service.saveConfig(config, m_password->text());
    if (!self)
        co_return;
    Q_EMIT saved(config.id, isMoved);
    if (session == m_session)
        cancel();
}

void WebDAVServerFormViewModel::setEnabled(bool isEnabled)
{
    if (m_isEnabled == isEnabled)
        return;
    m_isEnabled = isEnabled;
    Q_EMIT isEnabledChanged();
}

void WebDAVServerFormViewModel::setBusy(bool &flag, bool value, void (WebDAVServerFormViewModel::*signal)())
{
    if (flag == value)
        return;
    flag = value;
    Q_EMIT(this->*signal)();
    Q_EMIT canSubmitChanged();
}

void WebDAVServerFormViewModel::setTestMessage(const QString &message, bool succeeded)
{
    if (m_testMessage == message && m_testSucceeded == succeeded)
        return;
    m_testMessage = message;
    m_testSucceeded = succeeded;
    Q_EMIT testMessageChanged();
}

} // namespace cadorel
