#include "vigilante.h"

#include <QJSEngine>

Vigilante::Vigilante(QJSEngine& motor)
    : m_motor(motor)
    , m_hilo([this] { vigilar(); })
{
}

Vigilante::~Vigilante()
{
    {
        std::lock_guard lock(m_mutex);
        m_terminar = true;
    }
    m_cambio.notify_one();
    m_hilo.join();
}

void Vigilante::armar(int milisegundos)
{
    {
        std::lock_guard lock(m_mutex);
        m_armado = true;
        m_disparado = false;
        m_plazo = std::chrono::steady_clock::now() + std::chrono::milliseconds(milisegundos);
    }
    m_cambio.notify_one();
}

bool Vigilante::desarmar()
{
    std::lock_guard lock(m_mutex);
    m_armado = false;
    return m_disparado;
}

void Vigilante::vigilar()
{
    std::unique_lock lock(m_mutex);
    while (!m_terminar) {
        if (!m_armado) {
            m_cambio.wait(lock);
        } else if (std::chrono::steady_clock::now() < m_plazo) {
            m_cambio.wait_until(lock, m_plazo);
        } else {
            // Checked under the lock: a run disarmed in time is never interrupted.
            m_motor.setInterrupted(true);
            m_disparado = true;
            m_armado = false;
        }
    }
}
