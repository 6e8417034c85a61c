#pragma once

#include <QList>
#include <QPair>
#include <QString>

// One row a problem involves: its table, key and name, and a detail such as
// the perspective path or the column that holds a broken reference.
struct FilaProblema {
    QString tabla;
    int clave = 0;
    QString nombre;
    QString detalle;
};

// What can be done about a problem without losing anything a user made.
enum class Arreglo {
    Ninguno,              // needs a person's decision
    ReubicarPerspectiva,  // give the perspective a parent that makes it visible
    EliminarFilas,        // remove rows nothing can reach any more
    RehacerConfiguracion, // save the indicator again: one configuration row of its kind
    QuitarMetricas        // set the references to missing metrics to none
};

// A problem of the library: its kind (a stable identifier), what is wrong,
// why it matters, the rows involved and the fix on offer. tipoEntidad and
// clave name the entity the fix works on.
struct Problema {
    QString tipo;
    QString descripcion;
    QString porque;
    QList<FilaProblema> filas;
    Arreglo arreglo = Arreglo::Ninguno;
    int tipoEntidad = 0;
    int clave = 0;
    // For a hidden perspective: the perspectives it can be moved under and
    // then show with everything below it (key and path), besides the top level.
    QList<QPair<int, QString>> padresPosibles;

    // The fix in a few words, empty when there is none.
    QString textoArreglo() const;
};
