#pragma once

#include "problema.h"

class QObject;

// Carries out the fix a problem offers, through the engine's operations so
// that the signed-in user's rights are asked as for any other change: a
// perspective is moved as its editor would (right "KZ4-TBL-05-002"), an
// indicator saved again as its designer would ("KZ4-TBL-06-002"), rows
// removed by the engine's delete of their kind.
namespace ArregloBiblioteca {

// True when the fix was made; false when the user lacks the right, the
// problem offers no fix, or the database refused. padre is the perspective
// a hidden perspective is moved under: 0, the top level, unless told.
bool aplicar(QObject* engine, const Problema& problema, int padre = 0);

} // namespace ArregloBiblioteca
