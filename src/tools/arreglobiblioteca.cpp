#include "arreglobiblioteca.h"

#include "llamadasmotor.h"
#include "model/vendimarbi.h"
#include "vb/automationerror.h"

#include <QMetaProperty>
#include <QSet>

namespace ArregloBiblioteca {

namespace {

bool reubicar(QObject* engine, int clave, int padre)
{
    if (!llamadasmotor::derecho(engine, QStringLiteral("KZ4-TBL-05-002")))
        return false;
    const auto perspectiva = llamadasmotor::cargar(engine, VendimarBI::cPerspectiva, clave);
    if (!perspectiva)
        return false;
    perspectiva->setProperty("FK_Padre", padre);
    return llamadasmotor::guardar(engine, perspectiva.get());
}

// Saving an indicator clears the three configuration tables and writes the
// one row of its kind from what it loaded (an empty one when it had none).
// Before saving, references to the given metrics are set to none.
bool guardarIndicador(QObject* engine, int clave, const QSet<int>& metricasQuitadas)
{
    if (!llamadasmotor::derecho(engine, QStringLiteral("KZ4-TBL-06-002")))
        return false;
    const auto indicador = llamadasmotor::cargar(engine, VendimarBI::cIndicador, clave);
    if (!indicador)
        return false;
    if (QObject* configuracion = indicador->property("Configuracion").value<QObject*>()) {
        const QMetaObject* meta = configuracion->metaObject();
        for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
            const QMetaProperty propiedad = meta->property(i);
            if (QByteArray(propiedad.name()).contains("Metrica")
                && metricasQuitadas.contains(propiedad.read(configuracion).toInt()))
                propiedad.write(configuracion, 0);
        }
    }
    return llamadasmotor::guardar(engine, indicador.get());
}

} // namespace

bool aplicar(QObject* engine, const Problema& problema, int padre)
{
    if (!engine)
        return false;
    try {
        switch (problema.arreglo) {
        case Arreglo::ReubicarPerspectiva:
            return reubicar(engine, problema.clave, padre);
        case Arreglo::EliminarFilas:
            return llamadasmotor::eliminar(engine, problema.tipoEntidad, problema.clave);
        case Arreglo::RehacerConfiguracion:
            return guardarIndicador(engine, problema.clave, {});
        case Arreglo::QuitarMetricas: {
            QSet<int> metricas;
            for (const FilaProblema& fila : problema.filas)
                metricas.insert(fila.clave);
            return guardarIndicador(engine, problema.clave, metricas);
        }
        case Arreglo::Ninguno:
            break;
        }
    } catch (const vb::AutomationError&) {
    }
    return false;
}

} // namespace ArregloBiblioteca
