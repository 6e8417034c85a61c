#pragma once
// The shared routines with which every dialog reads the library out of the
// database and shows it. None raises: a failed step leaves its effect out.

#include "model/mdl_consulta.h"

class ArbolClaves;
class QComboBox;
class QListWidget;
class QObject;

namespace mdl_functions {

// Fills the tree with the perspective hierarchy and, when their image is
// above 0, the metrics or the indicators hanging from it.
void LlenarArbol(QObject* conexion, ArbolClaves* arbol, short imgPerspectiva, short imgMetrica, short imgIndicador);

// The metrics of one perspective, by name; item data is the metric key.
void LlenarListaMetricas(QObject* conexion, int clave, QListWidget* lista);
void LlenarListaMetricas(QObject* conexion, int clave, QComboBox* lista);

// The indicators of one perspective, by name. Note the argument order,
// which differs from LlenarListaMetricas.
void LlenarListaIndicadores(QObject* conexion, QListWidget* lista, int clave);

// Selects the first entry whose item data equals the key; nothing when none does.
void SeleccionarPorClave(QListWidget* lista, int clave);
void SeleccionarPorClave(QComboBox* lista, int clave);

} // namespace mdl_functions
