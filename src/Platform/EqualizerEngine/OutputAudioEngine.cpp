// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/OutputAudioEngine.h"

#include <utility>

namespace cadorel {

OutputAudioEngine::OutputAudioEngine(OutputFactory makeOutput, FileOpener openFile)
    : m_makeOutput(std::move(makeOutput))
    , m_openFile(std::move(openFile))
    , m_node({.process = [this](float *interleaved,
                                qint64 frameCount) { m_equalizer.process(interleaved, frameCount); },
              .reset = [this] { m_equalizer.reset(); }})
{
}

OutputAudioEngine::~OutputAudioEngine()
{
    closeOutput();
}

void OutputAudioEngine::closeOutput()
{
    m_node.setOutput(nullptr);
    m_output.reset();
}

void OutputAudioEngine::connectNodes(const AudioFormat &format)
{
    m_node.stop();
    if (format != m_node.format())
        closeOutput();
    m_node.setFormat(format);
    m_equalizer.prepare(format);
}

void OutputAudioEngine::start()
{
    if (isRunning())
        return;
    closeOutput();
    auto output = m_makeOutput();
    output->open(m_node.format(), m_node.source());
    m_output = std::move(output);
    m_node.setOutput(m_output.get());
}

} // namespace cadorel
