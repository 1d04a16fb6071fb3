// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/EqualizerEngine/ThreadedOutput.h"

#include <utility>

namespace cadorel {

ThreadedOutput::Guard::Guard(const ThreadedOutput &output)
    : m_lock(output.m_mutex, std::defer_lock)
{
    ++output.m_waiting;
    m_lock.lock();
    --output.m_waiting;
}

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
        const Guard guard(*this);
        m_isClosing = true;
        m_changed.notify_all();
    }
    if (m_thread.joinable())
        m_thread.join();
}

bool ThreadedOutput::isOpen() const
{
    const Guard guard(*this);
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
    const Guard guard(*this);
    setPlaying(m_isOpen);
}

void ThreadedOutput::pause()
{
    const Guard guard(*this);
    setPlaying(false);
}

void ThreadedOutput::drop()
{
    const Guard guard(*this);
    setPlaying(false);
    m_isHungry = false;
    dropped();
}

void ThreadedOutput::wake()
{
    const Guard guard(*this);
    m_isHungry = false;
    m_changed.notify_all();
}

void ThreadedOutput::breakDown()
{
    const Guard guard(*this);
    setPlaying(false);
    m_isOpen = false;
}

double ThreadedOutput::framesHeard() const
{
    const Guard guard(*this);
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
            lock.unlock();
            while (m_waiting > 0)
                std::this_thread::yield();
            lock.lock();
        } else if (turn.until) {
            m_changed.wait_until(lock, *turn.until);
        } else {
            m_changed.wait(lock);
        }
    }
}

} // namespace cadorel
