#pragma once
// The floor of the library tree: the three SELECTs LlenarArbol runs, read
// through Qt SQL into plain rows, and the same QTreeWidget built from those
// rows with nothing but Qt's own calls. Same nodes, texts, keys, tags,
// images and expanded state as the component's tree.

#include <QIcon>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <vector>

class QTreeWidget;

namespace treefloor {

struct Fila {
    int clave = 0;
    int padre = 0;
    QString nombre;
};

struct Filas {
    std::vector<Fila> perspectivas;
    std::vector<Fila> metricas;
    std::vector<Fila> indicadores;
};

// The image list the library dialogs give their tree: perspective, metric, indicator.
QList<QIcon> imagenes();

// The three SELECTs, word for word as LlenarArbol sends them.
Filas leer(const QSqlDatabase& db);

// Builds the tree and answers how many nodes it holds. With copiarNombres
// every text gets storage of its own instead of sharing the row's, so that a
// memory measurement counts the texts the tree keeps.
int construir(QTreeWidget& arbol, const Filas& filas, const QList<QIcon>& imagenes, bool copiarNombres = false);

} // namespace treefloor
