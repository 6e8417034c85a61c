#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

class QJSEngine;

// Stops a script that runs past its time: for as long as it lives, a thread
// of its own waits the given milliseconds and then interrupts the engine,
// which is the only way to break out of a loop the script never leaves.
class Vigilante {
public:
    Vigilante(QJSEngine& motor, int milisegundos);
    ~Vigilante();
    Vigilante(const Vigilante&) = delete;
    Vigilante& operator=(const Vigilante&) = delete;

    bool disparado() const { return m_disparado; }

private:
    void vigilar(QJSEngine& motor, int milisegundos);

    std::mutex m_mutex;
    std::condition_variable m_fin;
    bool m_terminado = false;
    std::atomic<bool> m_disparado = false;
    std::thread m_hilo;
};
