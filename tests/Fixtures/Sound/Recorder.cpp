// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fixtures/Sound/Recorder.h"

#include "Fixtures/Sound/Spectrum.h"

#include <QDeadlineTimer>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <span>

namespace cadorel {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

/// What a new recording hears first is not yet true.
constexpr auto settling = 80ms;
/// Of so much sound the end tells what is heard: what it begins with can be of before.
constexpr std::chrono::milliseconds firstJudgement = 900ms;

} // namespace

Recorder::Recorder(const SoundServer &server, const QString &device)
    : m_process(server.recording(u"float32le"_s, sampleRate, {}, device))
{
    // The first device has a listener from the start.
    if (device != SoundServer::firstDevice)
        server.heedListener(device);
    hear(settling);
    clear();
}

Recorder::~Recorder()
{
    m_process->kill();
    m_process->waitForFinished();
}

std::size_t Recorder::samplesIn(std::chrono::milliseconds length)
{
    return static_cast<std::size_t>(length.count()) * sampleRate / 1000;
}

void Recorder::collect()
{
    const std::size_t whole = static_cast<std::size_t>(m_process->bytesAvailable()) / sizeof(float);
    if (whole == 0)
        return;
    const std::size_t before = m_samples.size();
    m_samples.resize(before + whole);
    m_process->read(reinterpret_cast<char *>(m_samples.data() + before),
                    qint64{sizeof(float)} * qint64(whole));
}

void Recorder::clear()
{
    collect();
    m_samples.clear();
}

bool Recorder::hear(std::chrono::milliseconds length)
{
    return QTest::qWaitFor(
        [this, length] {
            collect();
            return m_samples.size() >= samplesIn(length);
        },
        static_cast<int>(length.count()) * 10 + 5000);
}

bool Recorder::hearSilence(std::chrono::milliseconds length, std::chrono::milliseconds limit)
{
    return QTest::qWaitFor(
        [this, length] {
            collect();
            const std::ptrdiff_t last = lastAbove(0.0005F);
            return std::ssize(m_samples) - 1 - last >= static_cast<std::ptrdiff_t>(samplesIn(length));
        },
        static_cast<int>(limit.count()));
}

bool Recorder::hearSound(float amplitude, std::chrono::milliseconds limit)
{
    return QTest::qWaitFor(
        [this, amplitude] {
            collect();
            return firstAbove(amplitude) >= 0;
        },
        static_cast<int>(limit.count()));
}

double Recorder::hertzNow()
{
    clear();
    return hear(firstJudgement) ? hertzAtEnd() : -1;
}

double Recorder::hertzAtEnd() const
{
    constexpr auto judged = 400ms;
    constexpr double audible = 0.01;
    const Spectrum::Peak peak = Spectrum(std::span(m_samples).last(samplesIn(judged)), sampleRate).loudest();
    return peak.amplitude > audible ? peak.hertz : 0;
}

bool Recorder::hearTone(double hertz, std::chrono::milliseconds limit)
{
    constexpr double tolerance = 5;
    constexpr auto betweenJudgements = 100ms;
    const QDeadlineTimer deadline(limit);
    double heard = -1;
    clear();
    for (auto length = firstJudgement; hear(length); length += betweenJudgements) {
        heard = hertzAtEnd();
        if (std::abs(heard - hertz) < tolerance)
            return true;
        if (deadline.hasExpired())
            break;
    }
    qWarning() << "heard" << heard << "Hz instead of" << hertz;
    return false;
}

std::chrono::milliseconds Recorder::toneLength(double fromHertz, double toHertz) const
{
    constexpr auto blockLength = 10ms;
    constexpr float loud = 0.3F;
    std::chrono::milliseconds total{0};
    const std::size_t size = samplesIn(blockLength);
    for (std::size_t start = 0; start + size <= m_samples.size(); start += size) {
        const std::span block(m_samples.data() + start, size);
        int crossings = 0;
        for (std::size_t i = 1; i < size; ++i)
            crossings += std::signbit(block[i]) != std::signbit(block[i - 1]) ? 1 : 0;
        const double hertz = crossings / 2.0 / std::chrono::duration<double>(blockLength).count();
        if (hertz >= fromHertz && hertz <= toHertz && std::ranges::max(block) > loud)
            total += blockLength;
    }
    return total;
}

std::ptrdiff_t Recorder::firstAbove(float amplitude) const
{
    const auto found =
        std::ranges::find_if(m_samples, [amplitude](float sample) { return std::abs(sample) > amplitude; });
    return found == m_samples.end() ? -1 : found - m_samples.begin();
}

std::ptrdiff_t Recorder::lastAbove(float amplitude) const
{
    const auto found = std::find_if(m_samples.rbegin(), m_samples.rend(),
                                    [amplitude](float sample) { return std::abs(sample) > amplitude; });
    return std::distance(found, m_samples.rend()) - 1;
}

} // namespace cadorel
