// SPDX-License-Identifier: GPL-3.0-or-later
#include "Utils/FileSizeText.h"

#include <array>
#include <cmath>

namespace cadorel {

using namespace Qt::StringLiterals;

QString fileSizeText(qint64 bytes)
{
    constexpr double step = 1000;
    if (bytes == 0)
        return u"Zero KB"_s;
    if (bytes == 1)
        return u"1 byte"_s;
    if (std::abs(static_cast<double>(bytes)) < step)
        return u"%1 bytes"_s.arg(bytes);

    struct Unit
    {
        QStringView name;
        int decimals;
    };
    constexpr std::array units{Unit{u"KB", 0}, Unit{u"MB", 1}, Unit{u"GB", 2}, Unit{u"TB", 2},
                               Unit{u"PB", 2}};
    double value = static_cast<double>(bytes);
    QString text;
    for (const Unit &unit : units) {
        value /= step;
        const double scale = std::pow(10, unit.decimals);
        const double rounded = std::round(value * scale) / scale;
        text = u"%1 %2"_s.arg(rounded).arg(unit.name);
        // What rounds up to a whole step belongs to the next unit.
        if (std::abs(rounded) < step)
            break;
    }
    return text;
}

} // namespace cadorel
