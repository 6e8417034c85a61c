#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

class QJSEngine;

// Stops a script that runs past its time: a thread of its own, started once
// for the engine's life, waits while a run is armed and interrupts the
// engine when the run's time is up, which is the only way to break out of a
// loop the script never leaves.
class Vigilante {
public:
    explicit Vigilante(QJSEngine& motor);
    ~Vigilante();
    Vigilante(const Vigilante&) = delete;
    Vigilante& operator=(const Vigilante&) = delete;

    void armar(int milisegundos);
    // Ends the watch of a run; answers whether the run was interrupted.
    bool desarmar();

private:
    void vigilar();

    QJSEngine& m_motor;
    std::mutex m_mutex;
    std::condition_variable m_cambio;
    bool m_armado = false;
    bool m_disparado = false;
    bool m_terminar = false;
    std::chrono::steady_clock::time_point m_plazo;
    std::thread m_hilo;
};
