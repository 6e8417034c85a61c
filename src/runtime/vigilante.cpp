#include "vigilante.h"

#include <QJSEngine>

Vigilante::Vigilante(QJSEngine& motor, int milisegundos)
    : m_hilo([this, &motor, milisegundos] { vigilar(motor, milisegundos); })
{
}

Vigilante::~Vigilante()
{
    {
        std::lock_guard lock(m_mutex);
        m_terminado = true;
    }
    m_fin.notify_one();
    m_hilo.join();
}

void Vigilante::vigilar(QJSEngine& motor, int milisegundos)
{
    std::unique_lock lock(m_mutex);
    if (m_fin.wait_for(lock, std::chrono::milliseconds(milisegundos), [this] { return m_terminado; }))
        return;
    m_disparado = true;
    motor.setInterrupted(true);
}
