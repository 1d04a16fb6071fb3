// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/ThreadedOutput.h"

#include <utility>

namespace cadorel {

ThreadedOutput::~ThreadedOutput()
{
    Q_ASSERT(!m_thread.joinable());
}

void ThreadedOutput::open(const AudioFormat &format, Source source)
{
    m_format = format;
    m_source = std::move(source);
    m_isOpen = true;
    m_thread = std::thread([this] { run(); });
}

void ThreadedOutput::close()
{
    {
        const std::scoped_lock guard(m_mutex);
        m_isClosing = true;
        m_changed.notify_all();
    }
    if (m_thread.joinable())
        m_thread.join();
}

bool ThreadedOutput::isOpen() const
{
    const std::scoped_lock guard(m_mutex);
    return m_isOpen;
}

void ThreadedOutput::setPlaying(bool plays)
{
    if (m_plays == plays)
        return;
    m_plays = plays;
    playingChanged(plays);
    m_changed.notify_all();
}

void ThreadedOutput::play()
{
    const std::scoped_lock guard(m_mutex);
    setPlaying(m_isOpen);
}

void ThreadedOutput::pause()
{
    const std::scoped_lock guard(m_mutex);
    setPlaying(false);
}

void ThreadedOutput::drop()
{
    const std::scoped_lock guard(m_mutex);
    setPlaying(false);
    m_isHungry = false;
    dropped();
}

void ThreadedOutput::wake()
{
    const std::scoped_lock guard(m_mutex);
    m_isHungry = false;
    m_changed.notify_all();
}

void ThreadedOutput::breakDown()
{
    const std::scoped_lock guard(m_mutex);
    setPlaying(false);
    m_isOpen = false;
}

double ThreadedOutput::framesHeard() const
{
    const std::scoped_lock guard(m_mutex);
    return heard();
}

void ThreadedOutput::run()
{
    std::vector<float> block;
    std::unique_lock lock(m_mutex);
    while (!m_isClosing) {
        const Turn turn = m_plays && !m_isHungry ? nextTurn() : Turn{};
        if (turn.frames > 0) {
            block.resize(std::size_t(turn.frames) * std::size_t(m_format.channelCount));
            const qint64 given = m_source(block.data(), turn.frames);
            m_isHungry = given < turn.frames;
            pulled(block.data(), given);
        } else if (turn.until) {
            m_changed.wait_until(lock, *turn.until);
        } else {
            m_changed.wait(lock);
        }
    }
}

} // namespace cadorel
