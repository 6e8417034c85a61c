#pragma once

#include "problema.h"

#include <QJsonObject>
#include <QList>
#include <QString>

// The check's report for people (numbered, with the rows involved) and for
// programs (JSON with the same content).
namespace InformeRevision {

QString texto(const QList<Problema>& problemas);
// One row involved: table, key, name and detail on a line.
QString fila(const FilaProblema& f);
QJsonObject json(const QList<Problema>& problemas);

} // namespace InformeRevision
