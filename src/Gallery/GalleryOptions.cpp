// SPDX-License-Identifier: GPL-3.0-or-later
#include "Gallery/GalleryOptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

/// Windows beyond this cannot be drawn.
constexpr int largestSide = 8192;
constexpr double smallestScale = 0.8;
constexpr double largestScale = 1.5;

std::optional<QSize> sizeOf(const QString &text)
{
    static const QRegularExpression pattern(u"^(\\d{1,4})x(\\d{1,4})$"_s);
    const QRegularExpressionMatch match = pattern.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (!match.hasMatch() || size.isEmpty() || size.width() > largestSide || size.height() > largestSide)
        return std::nullopt;
    return size;
}

} // namespace

std::expected<GalleryOptions, QString> GalleryOptions::parse(const QStringList &arguments)
{
    const QCommandLineOption look(u"look"_s, u"classic, neumorphism or kawaiiPink"_s, u"name"_s,
                                  u"classic"_s);
    const QCommandLineOption scheme(u"scheme"_s, u"light or dark"_s, u"name"_s, u"light"_s);
    const QCommandLineOption page(u"page"_s, u"1 controls, 2 symbols, 3 pictures, 4 text and colours"_s,
                                  u"number"_s, u"1"_s);
    const QCommandLineOption scale(u"scale"_s, u"size of texts, 0.8 to 1.5"_s, u"factor"_s, u"1"_s);
    const QCommandLineOption size(u"size"_s, u"of the window"_s, u"WxH"_s, u"1200x860"_s);
    const QCommandLineOption save(u"save"_s, u"saves the whole page as a PNG and ends"_s, u"file"_s);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"All components of the player in all their states."_s);
    const QCommandLineOption help = parser.addHelpOption();
    parser.addOptions({look, scheme, page, scale, size, save});

    if (!parser.parse(arguments))
        return std::unexpected(parser.errorText());
    if (parser.isSet(help))
        return std::unexpected(parser.helpText());
    if (!parser.positionalArguments().isEmpty())
        return std::unexpected(u"unknown argument: "_s + parser.positionalArguments().constFirst());

    GalleryOptions options;
    const auto type = themeTypeOf(parser.value(look));
    if (!type)
        return std::unexpected(u"unknown look: "_s + parser.value(look));
    options.look = *type;
    const QString schemeName = parser.value(scheme);
    if (schemeName != u"light" && schemeName != u"dark")
        return std::unexpected(u"unknown scheme: "_s + schemeName);
    options.isDark = schemeName == u"dark";
    const int number = parser.value(page).toInt();
    if (number < 1 || number > pageCount)
        return std::unexpected(u"no such page: "_s + parser.value(page));
    options.page = number - 1;
    options.textScale = parser.value(scale).toDouble();
    if (!(options.textScale >= smallestScale && options.textScale <= largestScale))
        return std::unexpected(u"no such scale: "_s + parser.value(scale));
    const auto wanted = sizeOf(parser.value(size));
    if (!wanted)
        return std::unexpected(u"no such size: "_s + parser.value(size));
    options.size = *wanted;
    options.file = parser.value(save);
    if (parser.isSet(save) && options.file.isEmpty())
        return std::unexpected(u"no file to save to"_s);
    return options;
}

} // namespace cadorel
