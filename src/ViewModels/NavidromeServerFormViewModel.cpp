// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/NavidromeServerFormViewModel.h"

#include "Services/NavidromeService.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/ServerAddress.h"

#include <QUrl>

#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString newAddress = u"http://"_s;
const QString usualPath = u"/rest"_s;
/// Where such a server shows its own pages: what a browser's address bar gives.
constexpr QLatin1StringView webPages{"/app"};

/// A typed address without what belongs to the API or the server's own pages. Escapes in its path stay.
QString textOfServer(const ServerAddress &address, const QString &apiBasePath)
{
    if (address.problem != ServerAddress::Problem::none)
        return address.text();
    const QString host = address.scheme + u"://"_s + address.authority;
    QString path = address.text().sliced(host.size());
    while (path.endsWith(u'/'))
        path.chop(1);
    QString api = apiBasePath;
    while (api.endsWith(u'/'))
        api.chop(1);
    if (!api.isEmpty() && !api.startsWith(u'/'))
        api.prepend(u'/');
    const QString escaped = QString::fromLatin1(QUrl::toPercentEncoding(api, "/"));
    for (const QString &ending : {api, escaped, QString(webPages)}) {
        if (!ending.isEmpty() && path.endsWith(ending)) {
            path.chop(ending.size());
            break;
        }
    }
    return host + path;
}

} // namespace

NavidromeServerFormViewModel::NavidromeServerFormViewModel(NavidromeService &service, QObject *parent)
    : ServerFormViewModel(parent)
    , m_service(service)
    , m_apiBasePath(new FormTextInput([](const QString &) { return QString(); }, this))
{
    addField(m_apiBasePath);
}

NavidromeServerFormViewModel::~NavidromeServerFormViewModel() = default;

void NavidromeServerFormViewModel::openNew()
{
    NavidromeConfig config;
    config.serverURL = newAddress;
    reset(config, std::nullopt);
}

void NavidromeServerFormViewModel::openExisting(const NavidromeConfig &config)
{
    reset(config, config);
    fetchPassword(config.passwordKeychainKey());
}

void NavidromeServerFormViewModel::reset(const NavidromeConfig &config, std::optional<NavidromeConfig> edited)
{
    m_edited = std::move(edited);
    m_apiBasePath->reset(config.apiBasePath);
    open(config.name, config.serverURL, config.username, config.isEnabled);
}

QList<FormTextInput *> NavidromeServerFormViewModel::fields() const
{
    return {name(), serverURL(), m_apiBasePath, username(), password()};
}

void NavidromeServerFormViewModel::takeAddressApart()
{
    const ServerAddress address = ServerAddress::parse(serverURL()->text());
    takeCredentials(address);
    serverURL()->setText(textOfServer(address, m_apiBasePath->text().trimmed()));
}

void NavidromeServerFormViewModel::updateHints()
{
    const ServerAddress address = ServerAddress::parse(serverURL()->text());
    serverURL()->setHint(address.isOpenToAll() ? u"http 不加密，登录信息可能被网络上的人看到"_s : QString());
}

NavidromeConfig NavidromeServerFormViewModel::config() const
{
    NavidromeConfig config;
    if (m_edited) {
        config.id = m_edited->id;
        config.lastSyncDate = m_edited->lastSyncDate;
    }
    config.name = name()->text().trimmed();
    config.serverURL = serverURL()->text().trimmed();
    const QString path = m_apiBasePath->text().trimmed();
    config.apiBasePath = path.isEmpty() ? usualPath : path;
    config.username = username()->text().trimmed();
    config.isEnabled = isEnabled();
    return config;
}

QCoro::Task<ServerFormViewModel::TestResult> NavidromeServerFormViewModel::testServer()
{
    const NavidromeService::Result result = co_await m_service.testConnection(config(), password()->text());
    if (!result)
        co_return std::unexpected(result.error().message);
    co_return TestResult();
}

QCoro::Task<ServerFormViewModel::Stored> NavidromeServerFormViewModel::store()
{
    const NavidromeConfig config = this->config();
    const Stored stored{.server = config.id,
                        .isMoved = !m_edited || m_edited->serverURL != config.serverURL ||
                                   m_edited->apiBasePath != config.apiBasePath ||
                                   m_edited->username != config.username ||
                                   storedPassword() != password()->text()};
    co_await m_service.saveConfig(config, password()->text());
    co_return stored;
}

} // namespace cadorel
