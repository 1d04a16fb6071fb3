// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/AccessibleWindow.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <limits>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString &root()
{
    static const QString path = u"/org/a11y/atspi/accessible/root"_s;
    return path;
}

const QString &accessible()
{
    static const QString name = u"org.a11y.atspi.Accessible"_s;
    return name;
}

/// Paths of a list of objects.
QStringList paths(const QVariant &objects)
{
    QStringList result;
    const auto list = objects.value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString service;
        QDBusObjectPath path;
        list.beginStructure();
        list >> service >> path;
        list.endStructure();
        result.append(path.path());
    }
    list.endArray();
    return result;
}

QRect rectangle(const QVariant &extents)
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto numbers = extents.value<QDBusArgument>();
    numbers.beginStructure();
    numbers >> x >> y >> width >> height;
    numbers.endStructure();
    return {x, y, width, height};
}

const QString &valueInterface()
{
    static const QString name = u"org.a11y.atspi.Value"_s;
    return name;
}

const QString &actionInterface()
{
    static const QString name = u"org.a11y.atspi.Action"_s;
    return name;
}

/// Numbers of states, by the desktop's interface.
constexpr int enabledState = 8;
constexpr int showingState = 25;

quint64 states(const QVariant &words)
{
    constexpr int wordBits = 32;
    quint64 result = 0;
    const auto list = words.value<QDBusArgument>();
    list.beginArray();
    for (int shift = 0; !list.atEnd(); shift += wordBits) {
        uint word = 0;
        list >> word;
        result |= quint64(word) << shift;
    }
    list.endArray();
    return result;
}

/// What programs ask to know whether anybody wants to read their windows, and where.
class Announcement : public QDBusVirtualObject
{
public:
    explicit Announcement(const QString &address)
        : m_address(address)
    {
    }
    QString introspect(const QString & /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        QVariant answer;
        if (message.member() == "GetAddress"_L1)
            answer = m_address;
        else if (message.member() == "Get"_L1)
            answer = QVariant::fromValue(QDBusVariant(true));
        else if (message.member() == "GetAll"_L1)
            answer = QVariantMap{{u"IsEnabled"_s, true}, {u"ScreenReaderEnabled"_s, true}};
        else
            return false;
        return connection.send(message.createReply(answer));
    }

private:
    QString m_address;
};

} // namespace

AccessibleWindow::AccessibleWindow() = default;
AccessibleWindow::~AccessibleWindow() = default;

bool AccessibleWindow::start(PrivateBus &session)
{
    m_announcement = std::make_unique<Announcement>(m_bus.address());
    QDBusConnection connection = session.connection(u"reader"_s);
    return m_bus.start() &&
           connection.registerVirtualObject(u"/org/a11y/bus"_s, m_announcement.get(),
                                            QDBusConnection::SingleNode) &&
           connection.registerService(u"org.a11y.Bus"_s);
}

QString AccessibleWindow::player()
{
    QDBusConnection connection = m_bus.connection(u"reader"_s);
    const QStringList names = connection.interface()->registeredServiceNames().value();
    if (names.contains(m_player))
        return m_player;
    // The only one that has a window to tell of.
    for (const QString &name : names) {
        m_player = name;
        if (name.startsWith(u':') && name != connection.baseService() &&
            !call(root(), accessible(), u"GetRoleName"_s).isEmpty())
            return m_player;
    }
    m_player.clear();
    return m_player;
}

QVariantList AccessibleWindow::call(const QString &path, const QString &interface, const QString &method,
                                    const QVariantList &arguments)
{
    constexpr int limitMs = 5'000;
    QDBusMessage message = QDBusMessage::createMethodCall(m_player, path, interface, method);
    message.setArguments(arguments);
    // What is asked about can be gone by now.
    const QDBusMessage answer = m_bus.connection(u"reader"_s).call(message, QDBus::Block, limitMs);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
}

QVariant AccessibleWindow::property(const QString &path, const QString &interface, const QString &name)
{
    const QVariantList answer = call(path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {interface, name});
    return answer.isEmpty() ? QVariant() : answer.constFirst().value<QDBusVariant>().variant();
}

AccessibleWindow::Item AccessibleWindow::item(const QString &path)
{
    constexpr uint onScreen = 0;
    const QVariantList role = call(path, accessible(), u"GetRoleName"_s);
    const QVariantList state = call(path, accessible(), u"GetState"_s);
    const QVariantList place = call(path, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {onScreen});
    const quint64 bits = state.isEmpty() ? 0 : states(state.constFirst());
    return {.name = property(path, accessible(), u"Name"_s).toString(),
            .role = role.isEmpty() ? QString() : role.constFirst().toString(),
            .description = property(path, accessible(), u"Description"_s).toString(),
            .place = place.isEmpty() ? QRect() : rectangle(place.constFirst()),
            .isShown = ((bits >> showingState) & 1) != 0,
            .isEnabled = ((bits >> enabledState) & 1) != 0,
            .path = path};
}

void AccessibleWindow::collect(const QString &path, const QString &name, int depth, QList<Item> &items)
{
    constexpr int deepest = 60;
    if (depth > deepest)
        return;
    const QVariantList children = call(path, accessible(), u"GetChildren"_s);
    if (children.isEmpty())
        return;
    for (const QString &child : paths(children.constFirst())) {
        Item here = item(child);
        here.parentName = name;
        // The program itself is a child of the root, and no place on the display.
        if (!here.isShown && depth > 0)
            continue;
        items.append(here);
        collect(child, here.name, depth + 1, items);
    }
}

QList<AccessibleWindow::Item> AccessibleWindow::items()
{
    QList<Item> result;
    if (!player().isEmpty())
        collect(root(), {}, 0, result);
    return result;
}

std::optional<AccessibleWindow::Item> AccessibleWindow::find(const Matches &matches, int limitMs)
{
    // What slides in is not where it will be. The end of a way is slow: two looks alone would not tell.
    constexpr qint64 restMs = 200;
    std::optional<Item> found;
    QRect before;
    QElapsedTimer rest;
    const auto isThere = [&] {
        const QList<Item> all = items();
        const auto isMeant = [&matches](const Item &item) {
            return item.isEnabled && !item.place.isEmpty() && matches(item);
        };
        const auto last = std::find_if(all.crbegin(), all.crend(), isMeant);
        if (last == all.crend())
            return false;
        if (last->place != before || !rest.isValid()) {
            before = last->place;
            rest.start();
        } else if (rest.hasExpired(restMs)) {
            found = *last;
        }
        return found.has_value();
    };
    if (!QTest::qWaitFor(isThere, limitMs)) {
        for (const Item &item : items())
            qWarning().noquote() << item.role << item.name << item.description << item.place
                                 << (item.isShown ? "" : "hidden") << (item.isEnabled ? "" : "disabled");
    }
    return found;
}

QStringList AccessibleWindow::actions(const Item &item)
{
    QStringList names;
    const int count = property(item.path, actionInterface(), u"NActions"_s).toInt();
    for (int i = 0; i < count; ++i)
        names.append(call(item.path, actionInterface(), u"GetName"_s, {i}).value(0).toString());
    return names;
}

bool AccessibleWindow::act(const Item &item, const QString &action)
{
    const qsizetype index = actions(item).indexOf(action);
    return index >= 0 &&
           call(item.path, actionInterface(), u"DoAction"_s, {static_cast<int>(index)}).value(0).toBool();
}

double AccessibleWindow::value(const Item &item)
{
    const QVariant value = property(item.path, valueInterface(), u"CurrentValue"_s);
    return value.isValid() ? value.toDouble() : std::numeric_limits<double>::quiet_NaN();
}

void AccessibleWindow::setValue(const Item &item, double value)
{
    call(item.path, u"org.freedesktop.DBus.Properties"_s, u"Set"_s,
         {valueInterface(), u"CurrentValue"_s, QVariant::fromValue(QDBusVariant(value))});
}

} // namespace cadorel
