// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/MarkedSound.h"

#include <QByteArray>
#include <QDataStream>
#include <QFile>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace cadorel {

namespace {

constexpr int highest = 8'000; // of 32,768: loud enough, and far from what any player must limit
constexpr double typicalPower = (highest / 32'768.0) * (highest / 32'768.0) / 3;
constexpr double silence = 1e-4;
constexpr float audible = 0.0005F;
constexpr double alike = 0.95;
constexpr std::ptrdiff_t nearby = 3 * MarkedSound::sampleRate;

double dot(const float *a, const float *b, std::size_t count)
{
    // Four sums at once, for the processor's sake.
    std::array<float, 4> sums{};
    for (std::size_t i = 0; i + 4 <= count; i += 4) {
        for (std::size_t lane = 0; lane < 4; ++lane)
            sums[lane] += a[i + lane] * b[i + lane];
    }
    return double{sums[0]} + double{sums[1]} + double{sums[2]} + double{sums[3]};
}

double energy(std::span<const float> piece)
{
    return dot(piece.data(), piece.data(), piece.size());
}

} // namespace

MarkedSound::MarkedSound(double seconds)
    : m_samples(static_cast<std::size_t>(seconds * sampleRate))
{
    std::mt19937 engine(20);
    for (float &sample : m_samples)
        sample = static_cast<float>(static_cast<int>(engine() % (2 * highest + 1)) - highest) / 32'768.0F;
}

bool MarkedSound::write(const QString &path) const
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QByteArray content;
    QDataStream out(&content, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto bytes = static_cast<quint32>(m_samples.size() * sizeof(qint16));
    out.writeRawData("RIFF", 4);
    out << quint32{bytes + 36};
    out.writeRawData("WAVEfmt ", 8);
    out << quint32{16} << quint16{1} << quint16{1} << quint32{sampleRate} << quint32{sampleRate * 2}
        << quint16{2} << quint16{16};
    out.writeRawData("data", 4);
    out << bytes;
    for (const float sample : m_samples)
        out << static_cast<qint16>(std::lround(sample * 32'768.0F));
    return file.write(content) == content.size();
}

MarkedSound::Place MarkedSound::find(std::span<const float> piece, std::ptrdiff_t first,
                                     std::ptrdiff_t last) const
{
    Place best;
    const double pieceEnergy = energy(piece);
    const double typicalEnergy = typicalPower * static_cast<double>(piece.size());
    last = std::min(last, std::ssize(m_samples) - std::ssize(piece));
    for (std::ptrdiff_t at = std::max<std::ptrdiff_t>(first, 0); at <= last; ++at) {
        const std::span original(m_samples.data() + at, piece.size());
        const double common = dot(piece.data(), original.data(), piece.size());
        // Most places are nothing like it, and pieces of noise are about equally loud.
        if (common * common <= 0.25 * pieceEnergy * typicalEnergy)
            continue;
        const double originalEnergy = energy(original);
        const double likeness = common / std::sqrt(pieceEnergy * originalEnergy);
        if (likeness > best.likeness)
            best = {at, likeness, common / originalEnergy};
    }
    return best;
}

MarkedSound::Place MarkedSound::find(std::span<const float> piece) const
{
    return find(piece, 0, std::ssize(m_samples));
}

std::optional<double> MarkedSound::endOf(std::span<const float> recording, double near) const
{
    constexpr std::ptrdiff_t longestFade = sampleRate / 10;
    constexpr std::ptrdiff_t step = momentSamples / 2;
    const auto isAudible = [](float sample) { return std::abs(sample) > audible; };
    const auto last = std::find_if(recording.rbegin(), recording.rend(), isAudible);
    const std::ptrdiff_t end = std::distance(last, recording.rend());
    const auto expected = static_cast<std::ptrdiff_t>(near * sampleRate);
    for (std::ptrdiff_t at = end; at >= momentSamples && end - at <= longestFade; at -= step) {
        const auto piece = recording.subspan(static_cast<std::size_t>(at - momentSamples), momentSamples);
        const Place place = find(piece, expected - sampleRate, expected + sampleRate);
        if (place.likeness >= alike)
            return place.seconds() + static_cast<double>(end - at + momentSamples) / sampleRate;
    }
    return std::nullopt;
}

MarkedSound::Mix MarkedSound::mix(std::span<const float> piece, std::ptrdiff_t first,
                                  std::ptrdiff_t second) const
{
    const std::ptrdiff_t last = std::ssize(m_samples) - std::ssize(piece);
    if (std::min(first, second) < 0 || std::max(first, second) > last)
        return {};
    // Least squares: piece ~ a x(first) + b x(second).
    const std::span one(m_samples.data() + first, piece.size());
    const std::span other(m_samples.data() + second, piece.size());
    const double both = dot(one.data(), other.data(), piece.size());
    const double ofOne = dot(piece.data(), one.data(), piece.size());
    const double ofOther = dot(piece.data(), other.data(), piece.size());
    const double determinant = energy(one) * energy(other) - both * both;
    return {(ofOne * energy(other) - ofOther * both) / determinant,
            (ofOther * energy(one) - ofOne * both) / determinant};
}

std::vector<MarkedSound::Moment> MarkedSound::follow(std::span<const float> recording) const
{
    std::vector<Moment> moments;
    std::optional<std::ptrdiff_t> expected;
    for (std::ptrdiff_t at = 0; at + momentSamples <= std::ssize(recording); at += momentSamples) {
        const auto piece = recording.subspan(static_cast<std::size_t>(at), momentSamples);
        Moment moment;
        moment.recorded = at;
        moment.isSilent = energy(piece) < silence * silence * momentSamples;
        if (!moment.isSilent) {
            // It mostly goes on where it was, or not far from there.
            Place place;
            if (expected)
                place = find(piece, *expected, *expected);
            if (expected && place.likeness < alike)
                place = find(piece, *expected - nearby, *expected + nearby);
            if (!expected)
                place = find(piece);
            if (place.likeness >= alike) {
                moment.place = place;
                expected = place.sample;
            }
        }
        if (expected)
            *expected += momentSamples;
        moments.push_back(moment);
    }
    return moments;
}

} // namespace cadorel
