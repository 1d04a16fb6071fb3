// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewModels/ServerFormViewModel.h"

#include "Utils/KeychainHelper.h"
#include "Utils/Tasks.h"
#include "ViewModels/FormTextInput.h"
#include "ViewModels/ServerAddress.h"

#include <QPointer>
#include <QThreadPool>
#include <QtConcurrent>

#include <QCoroFuture>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

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

} // namespace

ServerFormViewModel::ServerFormViewModel(QObject *parent)
    : QObject(parent)
    , m_name(new FormTextInput(required(u"请填写名称"_s), this))
    , m_serverURL(new FormTextInput(addressError, this))
    , m_username(new FormTextInput(required(u"请填写用户名"_s), this))
    , m_password(new FormTextInput(
          [](const QString &text) { return text.isEmpty() ? u"请填写密码"_s : QString(); }, this))
{
    for (FormTextInput *field : {m_name, m_username, m_password})
        connect(field, &FormTextInput::textChanged, this, &ServerFormViewModel::dropTest);
    addField(m_serverURL);
    connect(m_serverURL, &FormTextInput::finished, this, &ServerFormViewModel::takeAddressApart);
    connect(m_password, &FormTextInput::textChanged, this, &ServerFormViewModel::canSubmitChanged);
}

ServerFormViewModel::~ServerFormViewModel() = default;

void ServerFormViewModel::addField(FormTextInput *field)
{
    connect(field, &FormTextInput::textChanged, this, &ServerFormViewModel::dropTest);
    connect(field, &FormTextInput::textChanged, this, &ServerFormViewModel::updateHints);
}

void ServerFormViewModel::open(const QString &name, const QString &serverURL, const QString &username,
                               bool isEnabled)
{
    close();
    m_name->reset(name);
    m_serverURL->reset(serverURL);
    m_username->reset(username);
    setEnabled(isEnabled);
    updateHints();
    setOpen(true);
}

void ServerFormViewModel::fetchPassword(const QString &key)
{
    detach(loadPassword(key));
}

void ServerFormViewModel::cancel()
{
    if (!m_isOpen)
        return;
    close();
    setOpen(false);
}

void ServerFormViewModel::close()
{
    ++m_session;
    setBusy(m_isLoadingPassword, false, &ServerFormViewModel::isLoadingPasswordChanged);
    setBusy(m_isSaving, false, &ServerFormViewModel::isSavingChanged);
    dropTest();
    // A password stays in sight and in memory no longer than needed.
    m_password->reset(QString());
    m_storedPassword.reset();
}

void ServerFormViewModel::setOpen(bool isOpen)
{
    // Another server in an open form changes what is told together with it.
    m_isOpen = isOpen;
    Q_EMIT isOpenChanged();
    Q_EMIT canSubmitChanged();
}

QCoro::Task<void> ServerFormViewModel::loadPassword(QString key)
{
    const QPointer<ServerFormViewModel> self(this);
    const quint64 session = m_session;
    setBusy(m_isLoadingPassword, true, &ServerFormViewModel::isLoadingPasswordChanged);
    const std::expected<QString, SecretStatus> found =
        co_await QtConcurrent::run(&KeychainHelper::queue(), &KeychainHelper::lookup, key);
    if (!self || session != m_session)
        co_return;
    setBusy(m_isLoadingPassword, false, &ServerFormViewModel::isLoadingPasswordChanged);
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

bool ServerFormViewModel::canSubmit() const
{
    return m_isOpen && !m_isSaving && (!m_isLoadingPassword || m_password->isEdited());
}

void ServerFormViewModel::takeCredentials(const ServerAddress &address)
{
    if (!address.hasCredentials)
        return;
    m_username->setText(address.username);
    if (!address.password.isEmpty())
        m_password->edit(address.password);
}

void ServerFormViewModel::dropTest()
{
    ++m_testNumber;
    setBusy(m_isTesting, false, &ServerFormViewModel::isTestingChanged);
    setTestMessage(QString(), false);
}

bool ServerFormViewModel::validate(const QList<FormTextInput *> &fields)
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

void ServerFormViewModel::test()
{
    // A server needs no name to be tried.
    QList<FormTextInput *> tested = fields();
    tested.removeOne(m_name);
    if (canSubmit() && !m_isTesting && validate(tested))
        detach(runTest());
}

QCoro::Task<void> ServerFormViewModel::runTest()
{
    const QPointer<ServerFormViewModel> self(this);
    dropTest();
    const quint64 number = m_testNumber;
    setBusy(m_isTesting, true, &ServerFormViewModel::isTestingChanged);
    const TestResult result = co_await testServer();
    if (!self || number != m_testNumber)
        co_return;
    setBusy(m_isTesting, false, &ServerFormViewModel::isTestingChanged);
    const QString description = result ? u"连接成功"_s : result.error();
    setTestMessage(description.isEmpty() ? u"未知错误"_s : description, result.has_value());
}

void ServerFormViewModel::save()
{
    if (canSubmit() && validate(fields()))
        detach(runSave());
}

QCoro::Task<void> ServerFormViewModel::runSave()
{
    const QPointer<ServerFormViewModel> self(this);
    const quint64 session = m_session;
    setBusy(m_isSaving, true, &ServerFormViewModel::isSavingChanged);
    const Stored stored = co_await store();
    if (!self)
        co_return;
    Q_EMIT saved(stored.server, stored.isMoved);
    if (session == m_session)
        cancel();
}

void ServerFormViewModel::setEnabled(bool isEnabled)
{
    if (m_isEnabled == isEnabled)
        return;
    m_isEnabled = isEnabled;
    Q_EMIT isEnabledChanged();
}

void ServerFormViewModel::setBusy(bool &flag, bool value, void (ServerFormViewModel::*signal)())
{
    if (flag == value)
        return;
    flag = value;
    Q_EMIT(this->*signal)();
    Q_EMIT canSubmitChanged();
}

void ServerFormViewModel::setTestMessage(const QString &message, bool succeeded)
{
    if (m_testMessage == message && m_testSucceeded == succeeded)
        return;
    m_testMessage = message;
    m_testSucceeded = succeeded;
    Q_EMIT testMessageChanged();
}

} // namespace cadorel
