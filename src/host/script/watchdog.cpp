#include "watchdog.h"

#include <cstdio>
#include <cstdlib>

namespace {

std::chrono::steady_clock::duration durationOf(double seconds)
{
    return std::chrono::duration_cast<std::chrono::steady_clock::duration>(std::chrono::duration<double>(seconds));
}

} // namespace

Watchdog::Watchdog(std::function<void()> onExpiry)
    : m_onExpiry(std::move(onExpiry))
{
}

Watchdog::~Watchdog()
{
    stop();
}

void Watchdog::start(double seconds)
{
    {
        std::lock_guard lock(m_mutex);
        m_seconds = seconds;
        m_deadline = std::chrono::steady_clock::now() + durationOf(seconds);
        m_stopping = false;
    }
    m_thread = std::thread([this] { watch(); });
}

void Watchdog::restart(double seconds)
{
    {
        std::lock_guard lock(m_mutex);
        m_seconds = seconds;
        m_deadline = std::chrono::steady_clock::now() + durationOf(seconds);
    }
    m_changed.notify_all();
}

void Watchdog::stop()
{
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_all();
    if (m_thread.joinable())
        m_thread.join();
}

double Watchdog::seconds() const
{
    std::lock_guard lock(m_mutex);
    return m_seconds;
}

void Watchdog::watch()
{
    std::unique_lock lock(m_mutex);
    while (!m_stopping) {
        // The deadline may move (restart), so wait for it afresh each time.
        const auto deadline = m_deadline;
        m_changed.wait_until(lock, deadline);
        if (m_stopping || std::chrono::steady_clock::now() < m_deadline)
            continue;
        m_expired = true;
        lock.unlock();
        m_onExpiry();
        lock.lock();
        if (!m_changed.wait_for(lock, Grace, [this] { return m_stopping; })) {
            std::fputs("vbi script: the script did not stop after its time limit; ending the program\n", stderr);
            std::fflush(stderr);
            std::_Exit(3);
        }
    }
}
