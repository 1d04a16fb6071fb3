// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PortalFilePicker.h"

#include "Platform/Linux/LinuxLog.h"
#include "Platform/Linux/PortalRequest.h"

#include <QCoroDBusPendingCall>
#include <QCoroFuture>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <utility>

using namespace Qt::StringLiterals;

namespace cadorel {

/// One pattern of a portal's filter, D-Bus type (us).
struct PortalPattern
{
    uint kind = 0;
    QString text;
};

/// A portal's filter, D-Bus type (sa(us)).
struct PortalFilter
{
    QString name;
    QList<PortalPattern> patterns;
};

static QDBusArgument &operator<<(QDBusArgument &argument, const PortalPattern &pattern)
{
    argument.beginStructure();
    argument << pattern.kind << pattern.text;
    argument.endStructure();
    return argument;
}

static QDBusArgument &operator<<(QDBusArgument &argument, const PortalFilter &filter)
{
    argument.beginStructure();
    argument << filter.name << filter.patterns;
    argument.endStructure();
    return argument;
}

// The signature of these two is Qt's.
// NOLINTBEGIN(bugprone-return-const-ref-from-parameter)
static const QDBusArgument &operator>>(const QDBusArgument &argument, PortalPattern &pattern)
{
    argument.beginStructure();
    argument >> pattern.kind >> pattern.text;
    argument.endStructure();
    return argument;
}

static const QDBusArgument &operator>>(const QDBusArgument &argument, PortalFilter &filter)
{
    argument.beginStructure();
    argument >> filter.name >> filter.patterns;
    argument.endStructure();
    return argument;
}
// NOLINTEND(bugprone-return-const-ref-from-parameter)

namespace {

constexpr QLatin1StringView portalService{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView portalPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView chooserInterface{"org.freedesktop.portal.FileChooser"};

// The option "directory" came with this version of the interface.
constexpr uint versionWithFolders = 3;

constexpr uint globKind = 0;

/// "*.[mM][pP]3" for "mp3": the patterns of a portal tell upper from lower case.
QString globFor(const QString &extension)
{
    QString glob = u"*."_s;
    for (const QChar letter : extension) {
        if (letter.toUpper() == letter.toLower())
            glob += letter;
        else
            glob += u'[' + QString(letter.toLower()) + letter.toUpper() + u']';
    }
    return glob;
}

QVariantMap optionsFor(const FilePicker::Request &request, const QString &token)
{
    const bool isFolder = request.kind == FilePicker::Kind::folder;
    const bool isMultiple = request.kind != FilePicker::Kind::picture;
    QVariantMap options{{u"handle_token"_s, token}, {u"modal"_s, true}, {u"multiple"_s, isMultiple}};
    if (isFolder)
        options.insert(u"directory"_s, true);
    if (!isFolder && !request.extensions.isEmpty()) {
        PortalFilter filter{.name = request.filterName, .patterns = {}};
        for (const QString &extension : request.extensions)
            filter.patterns.append({.kind = globKind, .text = globFor(extension)});
        options.insert(u"filters"_s, QVariant::fromValue(QList<PortalFilter>{filter}));
    }
    return options;
}

void registerTypes()
{
    static const bool done = [] {
        qDBusRegisterMetaType<PortalPattern>();
        qDBusRegisterMetaType<QList<PortalPattern>>();
        qDBusRegisterMetaType<PortalFilter>();
        qDBusRegisterMetaType<QList<PortalFilter>>();
        return true;
    }();
    Q_UNUSED(done)
}

using Picked = std::optional<QList<QUrl>>;

/// Does not need the picker, which may be destroyed while the dialog is open.
QCoro::Task<Picked> pickOn(QDBusConnection bus, FilePicker::Request request, std::chrono::milliseconds limit)
{
    if (!bus.isConnected())
        co_return std::nullopt;
    // One question settles everything: whether somebody owns the name or the bus can start one, and whether
    // that portal has file dialogs.
    QDBusMessage question = QDBusMessage::createMethodCall(portalService, portalPath,
                                                           u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << QString(chooserInterface) << u"version"_s;
    const QDBusPendingCall questionCall = bus.asyncCall(question, static_cast<int>(limit.count()));
    const QDBusMessage version = co_await questionCall;
    if (version.type() != QDBusMessage::ReplyMessage) {
        qCInfo(linuxLog).noquote() << "no portal for files:" << version.errorMessage();
        co_return std::nullopt;
    }
    const uint number = version.arguments().value(0).value<QDBusVariant>().variant().toUInt();
    if (number == 0 || (request.kind == FilePicker::Kind::folder && number < versionWithFolders))
        co_return std::nullopt;

    registerTypes();
    PortalRequest portalRequest(bus, version.service());
    QDBusMessage open =
        QDBusMessage::createMethodCall(version.service(), portalPath, chooserInterface, u"OpenFile"_s);
    open << request.parentWindow << request.title << optionsFor(request, portalRequest.token());
    const QDBusPendingCall openCall = bus.asyncCall(open);
    const QDBusMessage handle = co_await openCall;
    if (handle.type() != QDBusMessage::ReplyMessage) {
        qCWarning(linuxLog).noquote() << "the portal opens no dialog:" << handle.errorMessage();
        co_return std::nullopt;
    }
    portalRequest.setHandle(handle.arguments().value(0).value<QDBusObjectPath>().path());

    const PortalRequest::Answer answer = co_await portalRequest.answer();
    if (answer.ending == PortalRequest::Ending::cancelled)
        co_return QList<QUrl>();
    if (answer.ending != PortalRequest::Ending::success)
        co_return std::nullopt;
    QList<QUrl> picked;
    for (const QString &address : answer.results.value(u"uris"_s).toStringList())
        picked.append(QUrl::fromEncoded(address.toUtf8()));
    co_return picked;
}

} // namespace

PortalFilePicker::PortalFilePicker(std::function<QDBusConnection()> bus, std::chrono::milliseconds limit)
    : m_bus(std::move(bus))
    , m_limit(limit)
{
}

QCoro::Task<std::optional<QList<QUrl>>> PortalFilePicker::pick(Request request)
{
    return pickOn(m_bus(), std::move(request), m_limit);
}

} // namespace cadorel
