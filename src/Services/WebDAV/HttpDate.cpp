// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/WebDAV/HttpDate.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

constexpr int secondsPerMinute = 60;
constexpr int secondsPerHour = 3600;

/// 1...12; the expression below lets no other name through.
int monthNumber(QStringView name)
{
    constexpr std::array names{"jan"_L1, "feb"_L1, "mar"_L1, "apr"_L1, "may"_L1, "jun"_L1,
                               "jul"_L1, "aug"_L1, "sep"_L1, "oct"_L1, "nov"_L1, "dec"_L1};
    const auto found = std::find_if(names.cbegin(), names.cend(), [name](QLatin1StringView candidate) {
        return name.compare(candidate, Qt::CaseInsensitive) == 0;
    });
    return static_cast<int>(found - names.cbegin()) + 1;
}

/// Distance of a named zone from UTC; nothing when the name is unknown.
std::optional<int> hoursOfZone(QStringView name)
{
    struct Zone
    {
        QLatin1StringView name;
        int hours;
    };
    // RFC 822, section 5.1.
    constexpr std::array zones{Zone{"GMT"_L1, 0},  Zone{"UTC"_L1, 0},  Zone{"UT"_L1, 0},
                               Zone{"Z"_L1, 0},    Zone{"EST"_L1, -5}, Zone{"EDT"_L1, -4},
                               Zone{"CST"_L1, -6}, Zone{"CDT"_L1, -5}, Zone{"MST"_L1, -7},
                               Zone{"MDT"_L1, -6}, Zone{"PST"_L1, -8}, Zone{"PDT"_L1, -7}};
    const auto found = std::find_if(zones.cbegin(), zones.cend(), [name](const Zone &zone) {
        return name.compare(zone.name, Qt::CaseInsensitive) == 0;
    });
    return found == zones.cend() ? std::nullopt : std::optional(found->hours);
}

} // namespace

std::optional<QDateTime> dateFromHttpText(const QString &text)
{
    static const QRegularExpression form(uR"(\A(?:Mon|Tue|Wed|Thu|Fri|Sat|Sun), ([0-9]{1,2}) )"
                                         uR"((Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) ([0-9]{4}) )"
                                         uR"(([0-9]{1,2}):([0-9]{1,2}):([0-9]{1,2}) )"
                                         uR"((?:(?:GMT|UTC)?([+-])([0-9]{1,2}):?([0-9]{2})?|([A-Z]+))\z)"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const auto number = [&match](int group) { return match.capturedView(group).toInt(); };
    const QDate day(number(3), monthNumber(match.capturedView(2)), number(1));
    const QTime time(number(4), number(5), number(6));

    constexpr int lastHour = 23;
    constexpr int lastMinute = 59;
    if (number(8) > lastHour || number(9) > lastMinute)
        return std::nullopt;
    const int distance = number(8) * secondsPerHour + number(9) * secondsPerMinute;
    const std::optional<int> offset =
        match.hasCaptured(7)
            ? std::optional(match.capturedView(7) == u"-" ? -distance : distance)
            : hoursOfZone(match.capturedView(10)).transform([](int hours) { return hours * secondsPerHour; });
    if (!day.isValid() || !time.isValid() || !offset)
        return std::nullopt;
    return QDateTime(day, time, Qt::UTC).addSecs(-*offset);
}

} // namespace cadorel
