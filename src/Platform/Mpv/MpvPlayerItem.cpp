// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Mpv/MpvPlayerItem.h"

#include "Platform/Mpv/FailureText.h"
#include "Platform/Mpv/WhenFinished.h"
#include "Platform/ResourceLoader.h"

#include <QCoroFuture>

#include <algorithm>
#include <cmath>

namespace cadorel {

MpvPlayerItem::MpvPlayerItem(MediaAsset asset, DurationScanner scanner)
    : m_asset(std::move(asset))
    , m_scanner(std::move(scanner))
{
    if (usesLoader())
        m_loaderLifetime = m_asset.resourceLoader->lifetime();
    m_durationPromise.start();
}

MpvPlayerItem::~MpvPlayerItem()
{
    // A promise that dies without a result would leave its awaiter nothing to read.
    abandonDuration(abandonedItemText());
}

double MpvPlayerItem::duration() const
{
    return std::isnan(m_preciseDuration) ? m_engineDuration : m_preciseDuration;
}

std::optional<SeekableRange> MpvPlayerItem::seekableRange() const
{
    if (!m_seekable || std::isnan(duration()))
        return {};
    return SeekableRange{.start = 0, .duration = duration()};
}

QCoro::Task<std::expected<double, QString>> MpvPlayerItem::loadDuration()
{
    if (m_scan == Scan::none && m_asset.prefersPreciseDuration && isLocal() && !durationAnswered())
        watchScan(m_scanner.scan(m_asset.url.toLocalFile()));
    // The frame keeps the future alone: it may outlive the item.
    const QFuture<DurationResult> answer = m_durationPromise.future();
    co_return co_await answer;
}

void MpvPlayerItem::takeLoadedBytes(const QByteArray &bytes)
{
    if (m_scan != Scan::none || !m_asset.prefersPreciseDuration)
        return;
    if (bytes.isEmpty())
        m_scan = Scan::failed;
    else
        watchScan(m_scanner.scan(bytes));
}

bool MpvPlayerItem::scanCounts() const
{
    return m_asset.prefersPreciseDuration && (isLocal() || usesLoader()) && m_scan != Scan::failed;
}

void MpvPlayerItem::watchScan(const QFuture<DurationResult> &scan)
{
    m_scan = Scan::underWay;
    whenFinished(scan, this, [this](const DurationResult &result) {
        if (result && *result > 0) {
            m_scan = Scan::done;
            m_preciseDuration = *result;
            answerDuration(result);
        } else {
            m_scan = Scan::failed;
            setEngineDuration(m_engineDuration);
            if (m_engineDurationFinal)
                abandonDuration(unknownDurationText());
        }
    });
}

void MpvPlayerItem::setEngineDuration(double seconds)
{
    if (!(seconds > 0) || !std::isfinite(seconds))
        return;
    m_engineDuration = seconds;
    if (!scanCounts())
        answerDuration(seconds);
}

void MpvPlayerItem::endEngineDuration()
{
    m_engineDurationFinal = true;
    if (m_scan != Scan::underWay && std::isnan(duration()))
        abandonDuration(unknownDurationText());
}

void MpvPlayerItem::abandonDuration(const QString &reason)
{
    answerDuration(std::unexpected(reason));
}

void MpvPlayerItem::answerDuration(const DurationResult &result)
{
    if (durationAnswered())
        return;
    m_durationPromise.addResult(result);
    m_durationPromise.finish();
}

void MpvPlayerItem::beginLoading()
{
    const bool statusMoves = m_status != Status::unknown;
    m_status = Status::unknown;
    m_error.clear();
    m_currentTime = unknown;
    m_advancing = false;
    m_timescale = 0;
    m_seekable = false;
    m_engineDuration = unknown;
    m_engineDurationFinal = false;
    if (durationAnswered()) {
        m_durationPromise = {};
        m_durationPromise.start();
        if (!std::isnan(m_preciseDuration))
            answerDuration(m_preciseDuration);
    }
    if (statusMoves)
        Q_EMIT statusChanged();
}

void MpvPlayerItem::becomeReady()
{
    if (m_status == Status::readyToPlay)
        return;
    m_status = Status::readyToPlay;
    Q_EMIT statusChanged();
}

void MpvPlayerItem::fail(const QString &description)
{
    abandonDuration(description);
    m_status = Status::failed;
    m_error = description;
    Q_EMIT statusChanged();
}

void MpvPlayerItem::setCurrentTime(double seconds)
{
    m_currentTime = withinLength(seconds);
    m_timeTold = std::chrono::steady_clock::now();
}

void MpvPlayerItem::setAdvancing(bool advancing)
{
    if (m_advancing == advancing)
        return;
    // It stands where it has come to, or goes on from where it stood.
    setCurrentTime(currentTime());
    m_advancing = advancing;
}

double MpvPlayerItem::currentTime() const
{
    if (!m_advancing)
        return m_currentTime;
    const std::chrono::duration<double> since = std::chrono::steady_clock::now() - m_timeTold;
    return withinLength(m_currentTime + since.count());
}

double MpvPlayerItem::withinLength(double seconds) const
{
    const double limit = duration();
    // No number stays none.
    return seconds < 0 ? 0 : seconds > limit ? limit : seconds;
}

} // namespace cadorel
