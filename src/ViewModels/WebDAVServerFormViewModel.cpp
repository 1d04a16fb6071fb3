// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/WebDAVServerFormViewModel.h"

#include "Models/WebDAVPreset.h"
#include "Services/WebDAVService.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/ServerAddress.h"
#include "ViewModels/WebDAVPresetListModel.h"

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString newAddress = u"https://"_s;
const QString rootPath = u"/"_s;
/// Stands in the path of a preset for the listener to replace.
const QString userPlaceholder = u"用户名"_s;
constexpr int lastPort = 65535;

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
    : ServerFormViewModel(parent)
    , m_service(service)
    , m_presets(new WebDAVPresetListModel(this))
    , m_port(new FormTextInput(portError, this))
    , m_basePath(new FormTextInput([](const QString &) { return QString(); }, this))
{
    addField(m_port);
    addField(m_basePath);
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
    fetchPassword(config.passwordKeychainKey());
}

void WebDAVServerFormViewModel::reset(const WebDAVConfig &config, std::optional<WebDAVConfig> edited)
{
    m_edited = std::move(edited);
    m_port->reset(portText(config.port));
    m_basePath->reset(config.basePath);
    open(config.name, config.serverURL, config.username, config.isEnabled);
}

QList<FormTextInput *> WebDAVServerFormViewModel::fields() const
{
    return {name(), serverURL(), m_port, m_basePath, username(), password()};
}

void WebDAVServerFormViewModel::applyPreset(int row)
{
    const QList<WebDAVPreset> &presets = WebDAVPreset::presets();
    if (row < 0 || row >= presets.size())
        return;
    const WebDAVPreset &preset = presets.at(row);
    name()->reset(preset.name);
    serverURL()->reset(preset.serverURL);
    m_basePath->reset(preset.basePath);
    m_port->reset(portText(preset.port));
    updateHints();
    if (ServerAddress::parse(preset.serverURL).problem == ServerAddress::Problem::none)
        username()->requestFocus();
    else
        serverURL()->requestFocus();
}

void WebDAVServerFormViewModel::takeAddressApart()
{
    const ServerAddress address = ServerAddress::parse(serverURL()->text());
    takeCredentials(address);
    // The path of an address counts for nothing; one that was pasted in is meant as the path below.
    const QString path = m_basePath->text().trimmed();
    const bool isPathMeant = !address.path.isEmpty() && (path.isEmpty() || path == rootPath);
    if (isPathMeant)
        m_basePath->setText(address.path);
    const bool isBare = address.path.isEmpty() || isPathMeant || address.path == path;
    const bool isReadable = address.problem == ServerAddress::Problem::none;
    serverURL()->setText(isReadable && isBare ? address.scheme + u"://"_s + address.authority
                                              : address.text());
}

void WebDAVServerFormViewModel::updateHints()
{
    const ServerAddress address = ServerAddress::parse(serverURL()->text());
    const QString path = m_basePath->text().trimmed();
    if (address.isOpenToAll())
        serverURL()->setHint(u"http 不加密，密码会以明文经过网络"_s);
    else if (!address.path.isEmpty() && path != rootPath && !path.isEmpty() && path != address.path)
        serverURL()->setHint(u"地址中的路径不起作用，以根路径为准"_s);
    else
        serverURL()->setHint(QString());
    m_basePath->setHint(path.contains(userPlaceholder) ? u"请把“用户名”换成你在服务器上的用户名"_s
                                                       : QString());
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
    config.name = name()->text().trimmed();
    config.serverURL = serverURL()->text().trimmed();
    config.port = portOf(m_port->text());
    config.username = username()->text().trimmed();
    const QString path = m_basePath->text().trimmed();
    config.basePath = path.isEmpty() ? rootPath : path;
    config.isEnabled = isEnabled();
    return config;
}

bool WebDAVServerFormViewModel::isMoved(const WebDAVConfig &config) const
{
    return m_edited && (m_edited->name != config.name || m_edited->serverURL != config.serverURL ||
                        m_edited->port != config.port || m_edited->username != config.username ||
                        m_edited->basePath != config.basePath || storedPassword() != password()->text());
}

QCoro::Task<ServerFormViewModel::TestResult> WebDAVServerFormViewModel::testServer()
{
    const std::expected<void, WebDAVError> result =
        co_await m_service.testConnection(config(), password()->text());
    if (!result)
        co_return std::unexpected(result.error().description());
    co_return TestResult();
}

QCoro::Task<ServerFormViewModel::Stored> WebDAVServerFormViewModel::store()
{
    const WebDAVConfig config = this->config();
    const Stored stored{.server = config.id, .isMoved = isMoved(config)};
    co_await m_service.saveConfig(config, password()->text());
    co_return stored;
}

} // namespace cadorel
