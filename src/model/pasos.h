#pragma once
// Loads and saves trap errors step by step: a step that fails is skipped and
// the next one runs. These helpers keep each step to one line.

#include "vb/automationerror.h"
#include "vb/variantconv.h"
#include "vb/vb.h"

#include "mdl_consulta.h"

#include <QString>
#include <QVariant>

namespace model {

// Runs one step; an error inside it is swallowed.
template <typename Step>
void paso(Step&& step)
{
    try {
        step();
    } catch (const vb::AutomationError&) {
    } catch (const std::exception&) {
    }
}

// Reads a column into a property through its converter; a NULL, a missing
// column or a value that does not convert leaves the property unchanged.
template <typename Source, typename Target, typename Convert>
void leer(const Source& source, const QString& column, Target& target, Convert convert)
{
    paso([&] {
        const QVariant value = source.Campo(column);
        if (!vb::isNull(value))
            target = convert(value);
    });
}

template <typename Source>
void leer(const Source& source, const QString& column, int& target)
{
    leer(source, column, target, vb::toLong);
}

template <typename Source>
void leer(const Source& source, const QString& column, short& target)
{
    leer(source, column, target, vb::toInteger);
}

template <typename Source>
void leer(const Source& source, const QString& column, double& target)
{
    leer(source, column, target, vb::toDouble);
}

template <typename Source>
void leer(const Source& source, const QString& column, QString& target)
{
    leer(source, column, target, vb::toText);
}

} // namespace model

class RegistroTabla;
class QObject;

namespace model {

// Makes the entity's row current: the row of a non-zero key, which must
// exist, or a new row for key 0. A stale key never turns into an insert.
bool localizar(RegistroTabla& reg, int sysPK, QObject* cnx);

// Assigns one column as its own step.
void asignar(RegistroTabla& reg, const QString& column, const QVariant& value);

// Writes the row; on success the entity's key takes the row's key.
bool escribir(RegistroTabla& reg, int& sysPK);

// Runs a statement that returns no rows; false when there is no open
// connection or the database refuses it.
bool ejecutar(QObject* cnx, const QString& sql);

// Hands the first row of the query to the filler; false when the query fails
// or returns no row, and then the filler never runs.
template <typename Filler>
bool cargarPrimeraFila(QObject* cnx, const QString& sql, Filler llenar);

} // namespace model

template <typename Filler>
bool model::cargarPrimeraFila(QObject* cnx, const QString& sql, Filler llenar)
{
    bool loaded = false;
    paso([&] {
        const auto rs = mdl_functions::AbrirConsulta(cnx, sql);
        if (!rs)
            return;
        llenar(FilaConsulta(*rs));
        loaded = true;
    });
    return loaded;
}
