// SPDX-License-Identifier: GPL-3.0-or-later
#include "Services/EqualizerService.h"

#include "Platform/Platform.h"
#include "Platform/SharedServices.h"
#include "Utils/Console.h"
#include "Utils/LogText.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

namespace cadorel {

using namespace Qt::StringLiterals;

namespace {

const QString enabledKey = u"equalizer_enabled"_s;
const QString presetKey = u"equalizer_preset"_s;
const QString bandsKey = u"equalizer_bands"_s;
const QString preampKey = u"equalizer_preamp"_s;

/// Width of each band in octaves.
constexpr double bandwidth = 1.0;
/// Beyond every file, and a number of frames at every sample rate; in seconds.
constexpr double farthestSeek = 1e9;

bool isNumber(float value)
{
    return std::isfinite(value);
}

/// The gains as texts that read back as the same numbers.
QStringList textsOf(const EqualizerGains &gains)
{
    QStringList texts;
    for (const float gain : gains)
        texts.append(consoleNumber(gain));
    return texts;
}

/// The gains of a stored list; nothing when one is missing or no number.
std::optional<EqualizerGains> gainsIn(const std::optional<QStringList> &texts)
{
    if (!texts || texts->size() != equalizerBandCount)
        return std::nullopt;
    EqualizerGains gains{};
    for (int band = 0; band < equalizerBandCount; ++band) {
        bool isRead = false;
        const float gain = texts->at(band).toFloat(&isRead);
        if (!isRead || !isNumber(gain))
            return std::nullopt;
        gains.at(static_cast<size_t>(band)) = gain;
    }
    return gains;
}

} // namespace

const std::array<QString, equalizerBandCount> EqualizerService::frequencyLabels{
    u"32"_s, u"64"_s, u"125"_s, u"250"_s, u"500"_s, u"1K"_s, u"2K"_s, u"4K"_s, u"8K"_s, u"16K"_s};

EqualizerService::EqualizerService(Preferences &preferences, std::unique_ptr<AudioEngine> engine)
    : m_preferences(preferences)
    , m_audioEngine(std::move(engine))
{
    setupAudioEngine();
    loadSettings();
}

EqualizerService::~EqualizerService() = default;

EqualizerService &EqualizerService::shared()
{
    return sharedService<EqualizerService>([] {
        Platform &platform = processPlatform();
        return std::make_unique<EqualizerService>(
            *platform.preferences, platform.makeAudioEngine ? platform.makeAudioEngine() : nullptr);
    });
}

void EqualizerService::setupAudioEngine()
{
    if (!m_audioEngine)
        return;
    EqualizerUnit &equalizer = m_audioEngine->equalizer();
    for (int band = 0; band < equalizerBandCount; ++band)
        equalizer.setBand(band, {.frequency = frequencies.at(static_cast<size_t>(band)),
                                 .bandwidth = bandwidth,
                                 .gain = 0,
                                 .bypass = false});
    print(u"🎛️ 均衡器: 音频引擎初始化完成"_s);
}

// MARK: settings

void EqualizerService::setEnabled(bool enabled)
{
    const bool changes = std::exchange(m_isEnabled, enabled) != enabled;
    saveSettings();
    updateEqualizerBands();
    if (changes)
        Q_EMIT isEnabledChanged(enabled);
}

void EqualizerService::setCurrentPreset(EqualizerPreset preset)
{
    const bool changes = std::exchange(m_currentPreset, preset) != preset;
    if (preset != EqualizerPreset::custom)
        applyPreset(preset);
    saveSettings();
    if (changes)
        Q_EMIT currentPresetChanged();
}

void EqualizerService::setBands(const EqualizerGains &bands)
{
    if (!std::ranges::all_of(bands, isNumber))
        return;
    const bool change = std::exchange(m_bands, bands) != bands;
    updateEqualizerBands();
    if (!m_isApplyingPreset)
        setCurrentPreset(EqualizerPreset::custom);
    saveSettings();
    if (change)
        Q_EMIT bandsChanged();
}

void EqualizerService::setPreampGain(float decibels)
{
    if (!isNumber(decibels))
        return;
    const bool changes = std::exchange(m_preampGain, decibels) != decibels;
    updateEqualizerBands();
    saveSettings();
    if (changes)
        Q_EMIT preampGainChanged();
}

void EqualizerService::applyPreset(EqualizerPreset preset)
{
    if (preset == EqualizerPreset::custom)
        return;
    const QScopedValueRollback applying(m_isApplyingPreset, true);
    setBands(bandValues(preset));
}

void EqualizerService::reset()
{
    setCurrentPreset(EqualizerPreset::flat);
    setPreampGain(0);
}

void EqualizerService::setBand(int index, float gain)
{
    if (index < 0 || index >= equalizerBandCount)
        return;
    EqualizerGains bands = m_bands;
    bands.at(static_cast<size_t>(index)) = std::clamp(gain, lowestGain, highestGain);
    setBands(bands);
}

float EqualizerService::getBand(int index) const
{
    return index < 0 || index >= equalizerBandCount ? 0 : m_bands.at(static_cast<size_t>(index));
}

/// Takes the settings as they are stored: nothing is written, nothing reacts. They reach the engine with the
/// next file.
void EqualizerService::loadSettings()
{
    m_isEnabled = m_preferences.boolValue(enabledKey).value_or(false);
    const auto preamp = static_cast<float>(m_preferences.doubleValue(preampKey).value_or(0));
    m_preampGain = isNumber(preamp) ? preamp : 0;
    const std::optional<QString> preset = m_preferences.stringValue(presetKey);
    const std::optional<EqualizerPreset> known = preset ? equalizerPresetOf(*preset) : std::nullopt;
    const std::optional<EqualizerGains> gains = gainsIn(m_preferences.stringsValue(bandsKey));
    // One of the two can stand in for the other.
    m_bands = gains.value_or(bandValues(known.value_or(EqualizerPreset::flat)));
    const bool isFlat = m_bands == bandValues(EqualizerPreset::flat);
    m_currentPreset = known.value_or(isFlat ? EqualizerPreset::flat : EqualizerPreset::custom);
}

void EqualizerService::saveSettings()
{
    m_preferences.setBool(enabledKey, m_isEnabled);
    m_preferences.setString(presetKey, rawValue(m_currentPreset));
    m_preferences.setStrings(bandsKey, textsOf(m_bands));
    m_preferences.setDouble(preampKey, m_preampGain);
}

void EqualizerService::updateEqualizerBands()
{
    if (!m_audioEngine) {
        print(u"🎛️ 均衡器: equalizer 未初始化"_s);
        return;
    }
    EqualizerUnit &equalizer = m_audioEngine->equalizer();
    equalizer.setGlobalGain(m_isEnabled ? m_preampGain : 0);
    for (int index = 0; index < equalizerBandCount; ++index) {
        EqualizerBand band = equalizer.band(index);
        band.gain = m_isEnabled ? getBand(index) : 0;
        band.bypass = !m_isEnabled;
        equalizer.setBand(index, band);
    }
    print(u"🎛️ 均衡器更新: "_s + (m_isEnabled ? u"启用"_s : u"关闭"_s) + u", 预设: "_s +
          displayName(m_currentPreset) + u", 前级: "_s + consoleNumber(m_preampGain) + u"dB"_s);
    if (m_isEnabled)
        print(u"🎛️ 频段: "_s + textsOf(m_bands).join(u", "_s));
}

// MARK: engine

bool EqualizerService::isEngineRunning() const
{
    return m_audioEngine && m_audioEngine->isRunning();
}

bool EqualizerService::isPlaying() const
{
    return isEngineRunning() && m_audioEngine->playerNode().isPlaying();
}

double EqualizerService::currentTime() const
{
    const std::optional<NodeTime> time =
        m_audioEngine ? m_audioEngine->playerNode().playerTime() : std::nullopt;
    return time && time->sampleRate > 0 ? m_seekPosition + time->sampleTime / time->sampleRate
                                        : m_seekPosition;
}

double EqualizerService::duration() const
{
    return m_audioFile ? static_cast<double>(m_audioFile->length()) / sampleRate() : 0;
}

double EqualizerService::sampleRate() const
{
    return m_audioFile->processingFormat().sampleRate;
}

void EqualizerService::prepareToPlay(const QUrl &file)
{
    stop();
    m_audioFile.reset();
    m_seekPosition = 0;
    if (!m_audioEngine)
        throw std::runtime_error(u"均衡器引擎不可用"_s.toStdString());
    const std::shared_ptr<AudioFile> opened = m_audioEngine->openFile(file);
    m_audioEngine->connectNodes(opened->processingFormat());
    updateEqualizerBands();
    startEngine();
    m_audioEngine->playerNode().scheduleFile(opened);
    m_audioFile = opened;
    print(u"🎛️ 均衡器: 准备播放 "_s + logText(file.fileName()));
}

void EqualizerService::startEngine()
{
    if (!m_audioEngine->isRunning())
        m_audioEngine->start();
}

void EqualizerService::play()
{
    if (!m_audioEngine)
        return;
    startEngine();
    m_audioEngine->playerNode().play();
}

void EqualizerService::pause()
{
    if (m_audioEngine)
        m_audioEngine->playerNode().pause();
}

void EqualizerService::stop()
{
    if (m_audioEngine)
        m_audioEngine->playerNode().stop();
}

void EqualizerService::seek(double time)
{
    if (!m_audioFile)
        return;
    PlayerNode &node = m_audioEngine->playerNode();
    const bool wasPlaying = node.isPlaying();
    node.stop();
    // Past the end nothing is left to schedule, but the clock stands at what was asked: the player sees the
    // end by it, after as much silence as it takes to look.
    m_seekPosition = time > 0 ? std::min(time, farthestSeek) : 0;
    const auto startFrame = static_cast<qint64>(m_seekPosition * sampleRate());
    const qint64 frameCount = m_audioFile->length() - startFrame;
    if (frameCount > 0)
        node.scheduleSegment(m_audioFile, startFrame, frameCount);
    if (wasPlaying)
        node.play();
}

void EqualizerService::setVolume(float volume)
{
    if (m_audioEngine)
        m_audioEngine->playerNode().setVolume(volume);
}

} // namespace cadorel
