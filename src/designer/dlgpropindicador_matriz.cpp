// The matrix and chart panel: the list of available metrics and the two
// ordered lists the buttons act on.
#include "dlgpropindicador.h"

#include "engine/msgbox.h"
#include "library/mdl_functions.h"
#include "model/ematrizgrafico.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QTabWidget>
#include <QToolButton>
#include <QPushButton>

namespace {

constexpr int LimiteMatriz = 10;
constexpr int LimiteGrafico = 5;

// Reading or writing a position that does not exist is skipped, as the moves
// require: it is what lets "Bajar" with nothing selected blank the first entry.
struct Entrada {
    QString texto;
    int dato = 0;
};

void leerEntrada(const QListWidget* lista, int posicion, Entrada& destino)
{
    if (const QListWidgetItem* item = lista->item(posicion)) {
        destino.texto = item->text();
        destino.dato = item->data(Qt::UserRole).toInt();
    }
}

void escribirEntrada(QListWidget* lista, int posicion, const Entrada& origen)
{
    if (QListWidgetItem* item = lista->item(posicion)) {
        item->setText(origen.texto);
        item->setData(Qt::UserRole, origen.dato);
    }
}

// Position i takes what position j holds; nothing happens when either is missing.
void copiarEntrada(QListWidget* lista, int j, int i)
{
    if (!lista->item(i) || !lista->item(j))
        return;
    Entrada entrada;
    leerEntrada(lista, j, entrada);
    escribirEntrada(lista, i, entrada);
}

} // namespace

// The stored slots are replayed through the add step, in slot order, so the
// lists are rebuilt with the same checks and messages a click meets: a metric
// missing from the available list is dropped with a message, a repeated one
// is kept once.
void dlgPropIndicador::LlenarMatriz(EMatrizGrafico* configuracion)
{
    if (!configuracion)
        return;
    cTitGraf->setText(configuracion->Grafico_Titulo());
    switch (configuracion->Grafico_Tipo()) {
    case 1:
        cTipoGraf->setCurrentIndex(0);
        break;
    case 3:
        cTipoGraf->setCurrentIndex(1);
        break;
    case 0:
        cTipoGraf->setCurrentIndex(2);
        break;
    case 14:
        cTipoGraf->setCurrentIndex(3);
        break;
    default:
        break;
    }
    lstSelMatriz->clear();
    lstGraf->clear();

    cTabM->setCurrentIndex(0);
    for (int i = 1; i <= EMatrizGrafico::MetricasMatriz; ++i) {
        const QByteArray nombre = "Matriz_Metrica" + QByteArray::number(i);
        const int clave = configuracion->property(nombre.constData()).toInt();
        if (clave > 0) {
            mdl_functions::SeleccionarPorClave(lstMetricas, clave);
            cAdd_Click();
        }
    }
    cTabM->setCurrentIndex(1);
    for (int i = 1; i <= EMatrizGrafico::MetricasGrafico; ++i) {
        const QByteArray nombre = "Grafico_Metrica" + QByteArray::number(i);
        const int clave = configuracion->property(nombre.constData()).toInt();
        if (clave > 0) {
            mdl_functions::SeleccionarPorClave(lstMetricas, clave);
            cAdd_Click();
        }
    }
    cTabM->setCurrentIndex(0);
}

// The chart preferences tab has nothing to add to, so the list buttons rest there.
void dlgPropIndicador::cTabM_Click(int pestana)
{
    const bool activos = pestana != 2;
    lstMetricas->setEnabled(activos);
    for (QWidget* boton : std::initializer_list<QWidget*>{cAdd, Command3, Command4, Command5, Command6, Command7})
        boton->setEnabled(activos);
}

QListWidget* dlgPropIndicador::listaActual() const
{
    return cTabM->currentIndex() == 0 ? lstSelMatriz : lstGraf;
}

bool dlgPropIndicador::EstaEnLista(QListWidget* lista, int clave) const
{
    for (int i = 0; i < lista->count(); ++i) {
        if (lista->item(i)->data(Qt::UserRole).toInt() == clave)
            return true;
    }
    return false;
}

// The duplicate test comes before the size test, so a repeated metric in a
// full list is reported as repeated. Every entry arrives through here, so the
// lists never pass their limits and an equality test suffices.
void dlgPropIndicador::cAdd_Click()
{
    const int seleccion = indiceSeleccionado(lstMetricas);
    if (seleccion < 0) {
        vbui::MsgBox(QStringLiteral("Debe seleccionar una métrica de la lista de la izquierda"));
        return;
    }
    QListWidget* lista = listaActual();
    const QListWidgetItem* origen = lstMetricas->item(seleccion);
    const int clave = origen->data(Qt::UserRole).toInt();
    if (EstaEnLista(lista, clave)) {
        vbui::MsgBox(QStringLiteral("La métrica seleccionada ya está en la lista"));
        return;
    }
    if (lista == lstGraf && lista->count() == LimiteGrafico) {
        vbui::MsgBox(QStringLiteral("Solo se admiten 5 elementos (métricas) en la lista"));
        return;
    }
    if (lista == lstSelMatriz && lista->count() == LimiteMatriz) {
        vbui::MsgBox(QStringLiteral("Solo se admiten 10 elementos (métricas) en la lista"));
        return;
    }
    lista->addItem(origen->text());
    lista->item(lista->count() - 1)->setData(Qt::UserRole, clave);
}

void dlgPropIndicador::Command3_Click()
{
    QListWidget* lista = listaActual();
    const int seleccion = indiceSeleccionado(lista);
    if (seleccion < 0) {
        vbui::MsgBox(QStringLiteral("Seleccione un elemento"));
        return;
    }
    delete lista->takeItem(seleccion);
    // As with a list box, removing the selected entry leaves nothing selected.
    seleccionarIndice(lista, -1);
}

void dlgPropIndicador::Command5_Click()
{
    listaActual()->clear();
}

void dlgPropIndicador::Command6_Click()
{
    QListWidget* lista = listaActual();
    const int i = indiceSeleccionado(lista);
    if (i < 1)
        return;
    Entrada guardada;
    leerEntrada(lista, i, guardada);
    copiarEntrada(lista, i - 1, i);
    escribirEntrada(lista, i - 1, guardada);
    seleccionarIndice(lista, i - 1);
}

// The guard has no lower bound: with nothing selected (i = -1) the exchange
// runs against a missing position, so the first entry receives the empty
// text and key 0 and becomes selected. Kept on purpose: configurations
// already stored may have been made with it.
void dlgPropIndicador::Command7_Click()
{
    QListWidget* lista = listaActual();
    const int i = indiceSeleccionado(lista);
    if (i > lista->count() - 2)
        return;
    Entrada guardada;
    leerEntrada(lista, i, guardada);
    copiarEntrada(lista, i + 1, i);
    escribirEntrada(lista, i + 1, guardada);
    seleccionarIndice(lista, i + 1);
}
