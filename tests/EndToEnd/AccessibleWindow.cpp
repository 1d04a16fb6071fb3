// SPDX-License-Identifier: GPL-3.0-or-later
#include "EndToEnd/AccessibleWindow.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QHash>
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

const QString &component()
{
    static const QString name = u"org.a11y.atspi.Component"_s;
    return name;
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

/// Whose places are meant: those on the display.
constexpr uint onScreen = 0;
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

/// Waits for it; empty when what is asked about is gone by now.
QVariantList answer(QDBusPendingCall call)
{
    call.waitForFinished();
    const QDBusMessage message = call.reply();
    return message.type() == QDBusMessage::ReplyMessage ? message.arguments() : QVariantList();
}

QVariant propertyIn(const QDBusPendingCall &call)
{
    const QVariantList values = answer(call);
    return values.isEmpty() ? QVariant() : values.constFirst().value<QDBusVariant>().variant();
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

QDBusPendingCall AccessibleWindow::ask(const QString &path, const QString &interface, const QString &method,
                                       const QVariantList &arguments)
{
    constexpr int limitMs = 5'000;
    QDBusMessage message = QDBusMessage::createMethodCall(m_player, path, interface, method);
    message.setArguments(arguments);
    return m_bus.connection(u"reader"_s).asyncCall(message, limitMs);
}

QDBusPendingCall AccessibleWindow::askProperty(const QString &path, const QString &interface,
                                               const QString &name)
{
    return ask(path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {interface, name});
}

QVariantList AccessibleWindow::call(const QString &path, const QString &interface, const QString &method,
                                    const QVariantList &arguments)
{
    return answer(ask(path, interface, method, arguments));
}

QVariant AccessibleWindow::property(const QString &path, const QString &interface, const QString &name)
{
    return propertyIn(askProperty(path, interface, name));
}

QRect AccessibleWindow::placeOf(const QString &path)
{
    const QVariantList place = call(path, component(), u"GetExtents"_s, {onScreen});
    return place.isEmpty() ? QRect() : rectangle(place.constFirst());
}

AccessibleWindow::Reading AccessibleWindow::itemsAt(const QStringList &paths)
{
    struct Asked
    {
        QDBusPendingCall name;
        QDBusPendingCall role;
        QDBusPendingCall description;
        QDBusPendingCall place;
        QDBusPendingCall state;
    };
    // All is asked before the first answer is waited for: a window has hundreds of items.
    QList<Asked> questions;
    for (const QString &path : paths)
        questions.append({.name = askProperty(path, accessible(), u"Name"_s),
                          .role = ask(path, accessible(), u"GetRoleName"_s),
                          .description = askProperty(path, accessible(), u"Description"_s),
                          .place = ask(path, component(), u"GetExtents"_s, {onScreen}),
                          .state = ask(path, accessible(), u"GetState"_s)});
    Reading result{.isWhole = true};
    for (qsizetype i = 0; i < paths.size(); ++i) {
        const Asked &asked = questions.at(i);
        const QVariant name = propertyIn(asked.name);
        const QVariantList role = answer(asked.role);
        const QVariantList state = answer(asked.state);
        // The program itself has no place, and says so.
        const QVariantList place = answer(asked.place);
        const quint64 bits = state.isEmpty() ? 0 : states(state.constFirst());
        result.isWhole = result.isWhole && name.isValid() && !role.isEmpty() && !state.isEmpty();
        result.items.append({.name = name.toString(),
                             .role = role.isEmpty() ? QString() : role.constFirst().toString(),
                             .description = propertyIn(asked.description).toString(),
                             .place = place.isEmpty() ? QRect() : rectangle(place.constFirst()),
                             .isShown = ((bits >> showingState) & 1) != 0,
                             .isEnabled = ((bits >> enabledState) & 1) != 0,
                             .path = paths.at(i)});
    }
    return result;
}

QList<std::optional<QStringList>> AccessibleWindow::childrenOf(const QStringList &parents)
{
    QList<QDBusPendingCall> questions;
    for (const QString &path : parents)
        questions.append(ask(path, accessible(), u"GetChildren"_s));
    QList<std::optional<QStringList>> result;
    for (const QDBusPendingCall &asked : std::as_const(questions)) {
        const QVariantList children = answer(asked);
        result.append(children.isEmpty() ? std::nullopt : std::optional(paths(children.constFirst())));
    }
    return result;
}

std::optional<QList<AccessibleWindow::Item>> AccessibleWindow::items()
{
    Reading reading = read();
    return reading.isWhole ? std::optional(std::move(reading.items)) : std::nullopt;
}

AccessibleWindow::Reading AccessibleWindow::read()
{
    constexpr int deepest = 60;
    if (player().isEmpty())
        return {};
    Reading result{.isWhole = true};
    // Level by level, so that each is one question; then in the order of the tree.
    QHash<QString, QList<Item>> tree;
    QList<Item> level{Item{.path = root()}};
    for (int depth = 0; depth <= deepest && !level.isEmpty(); ++depth) {
        QStringList parents;
        for (const Item &item : std::as_const(level))
            parents.append(item.path);
        const QList<std::optional<QStringList>> children = childrenOf(parents);
        QStringList all;
        for (const std::optional<QStringList> &each : children) {
            all += each.value_or(QStringList());
            result.isWhole = result.isWhole && each;
        }
        Reading below = itemsAt(all);
        result.isWhole = result.isWhole && below.isWhole;
        auto next = below.items.begin();
        QList<Item> shown;
        for (qsizetype i = 0; i < level.size(); ++i) {
            for (qsizetype left = children.at(i) ? children.at(i)->size() : 0; left > 0; --left, ++next) {
                next->parentName = level.at(i).name;
                // The program itself is a child of the root, and no place on the display.
                if (!next->isShown && depth > 0)
                    continue;
                shown.append(*next);
                tree[level.at(i).path].append(*next);
            }
        }
        level = shown;
    }
    const auto collect = [&](const auto &self, const QString &path) -> void {
        const QList<Item> below = tree.take(path);
        for (const Item &item : below) {
            result.items.append(item);
            self(self, item.path);
        }
    };
    collect(collect, root());
    return result;
}

std::optional<AccessibleWindow::Item> AccessibleWindow::find(const Matches &matches, int limitMs)
{
    // What slides in is not where it will be. The end of a way is slow: two looks alone would not tell.
    constexpr qint64 restMs = 200;
    std::optional<Item> found;
    QRect before;
    QElapsedTimer rest;
    QString path;
    const auto isThere = [&] {
        // Meanwhile that one is looked at alone: telling of all takes the player's time.
        if (rest.isValid() && !rest.hasExpired(restMs) && placeOf(path) == before)
            return false;
        const QList<Item> all = read().items;
        const auto isMeant = [&matches](const Item &item) {
            return item.isEnabled && !item.place.isEmpty() && matches(item);
        };
        const auto last = std::find_if(all.crbegin(), all.crend(), isMeant);
        if (last == all.crend())
            return false;
        if (last->place != before || !rest.isValid()) {
            before = last->place;
            path = last->path;
            rest.start();
        } else if (rest.hasExpired(restMs)) {
            found = *last;
        }
        return found.has_value();
    };
    if (!QTest::qWaitFor(isThere, limitMs)) {
        for (const Item &item : read().items)
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
