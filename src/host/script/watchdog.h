#pragma once
// The script's time limit. A script stuck in a JavaScript loop holds the
// only thread that runs timers, so the limit is watched from a thread of its
// own: on expiry it calls back (which interrupts the script engine), and if
// the program still has not wound down after a grace period, it ends the
// process outright rather than hang.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

class Watchdog {
public:
    explicit Watchdog(std::function<void()> onExpiry);
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    // Starts counting: the limit runs out `seconds` from now.
    void start(double seconds);
    // A new limit, counted from now.
    void restart(double seconds);
    void stop();
    bool expired() const { return m_expired.load(); }
    double seconds() const;

    // How long the program may take to wind down after the limit.
    static constexpr std::chrono::seconds Grace{10};

private:
    void watch();

    std::function<void()> m_onExpiry;
    std::thread m_thread;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::chrono::steady_clock::time_point m_deadline;
    double m_seconds = 0;
    bool m_stopping = false;
    std::atomic<bool> m_expired{false};
};
