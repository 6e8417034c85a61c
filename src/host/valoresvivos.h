#pragma once

#include "clavevalor.h"
#include "render/fuentevalores.h"
#include "runtime/periodometrica.h"
#include "runtime/resultadometrica.h"

#include <QDate>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QThread>
#include <atomic>
#include <memory>

class CalculadorValores;

// The figures of the view mode: the metrics' own sources run on the
// database for the date chosen. Figures are worked out in a thread of their
// own, a tile's at a time, and kept while nothing they depend on changes:
// the date, the metric's source or a request to compute everything again.
// A tile's figures are read together, in one snapshot of the database.
// Until a figure arrives it is pending, and a figure whose metric fails
// carries the metric's message instead of a value.
class ValoresVivos : public QObject, public FuenteValores {
    Q_OBJECT

public:
    // limite: how long a metric may run, in milliseconds.
    ValoresVivos(const QString& url, int limite, QObject* parent = nullptr);
    ~ValoresVivos() override;

    QDate fecha() const { return m_fecha; }
    // Work asked for another date is dropped, the figures kept stay.
    void setFecha(const QDate& fecha);
    // The sources of the metrics shown, by key: a metric whose source
    // changed since it was computed is computed again.
    void setFuentes(const QHash<int, QString>& fuentes);
    // Starts working out the figures of one tile that are neither known nor on their way.
    void pedir(const QList<PeticionValor>& peticiones);
    // For the metrics run from now on; what was worked out stays.
    void setLimite(int milisegundos);
    // Forgets every figure, for data that changed under the dashboard, and
    // opens the connection anew.
    void olvidar();
    // How many figures asked for are on their way.
    int enCurso() const { return int(m_pendientes.size()); }

    double valor(const PeticionValor& peticion) const override;
    bool sonMuestras() const override { return false; }
    bool pendiente(const PeticionValor& peticion) const override;
    QString fallo(const PeticionValor& peticion) const override;

signals:
    // Some figures arrived.
    void calculados();

private:
    // The days of the period a figure is asked for, around the date shown.
    IntervaloPeriodo diasDe(const PeticionValor& peticion) const;
    static ClaveValor claveDe(const PeticionValor& peticion, const IntervaloPeriodo& dias);
    ClaveValor claveDe(const PeticionValor& peticion) const;
    // Figures on their way from an earlier generation are not waited for.
    void nuevaGeneracion();
    void recibir(quint64 generacion, const QList<ClaveValor>& claves, const QList<ResultadoMetrica>& resultados);

    QThread m_hilo;
    CalculadorValores* m_calculador;
    // Shared with the work queued in the thread, which skips what is no longer wanted.
    std::shared_ptr<std::atomic<quint64>> m_generacion;
    QDate m_fecha;
    QHash<int, QString> m_fuentes;
    QHash<ClaveValor, ResultadoMetrica> m_hechos;
    QSet<ClaveValor> m_pendientes;
};
