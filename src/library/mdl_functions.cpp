#include "mdl_functions.h"

#include "arbolclaves.h"
#include "model/pasos.h"

#include <QComboBox>
#include <QListWidget>

namespace mdl_functions {

namespace {

const QString PrefijoPerspectiva = QStringLiteral("KP_");
const QString PrefijoMetrica = QStringLiteral("MT_");
const QString PrefijoIndicador = QStringLiteral("IK_");

// Walks every row of an open recordset, each row as its own trapped step. A
// recordset that cannot move on ends the walk rather than looping forever.
template <typename Paso>
void recorrer(ado::Recordset& rs, Paso&& paso)
{
    try {
        while (!rs.atEnd()) {
            model::paso([&] { paso(rs); });
            rs.MoveNext();
        }
    } catch (const std::exception&) {
        // AutomationError included: the walk simply ends.
    }
}

// A name column as display text: NULL shows as an empty text, so a nameless
// row keeps its place (and its children) instead of disappearing.
QString nombre(const ado::Recordset& rs)
{
    const QVariant value = rs.Fields(QStringLiteral("uf_Nombre"));
    return vb::isNull(value) ? QString() : vb::toText(value);
}

// "KP_12": a prefix and the decimal key. A NULL key raises (94), which skips
// the row that needs it.
QString claveNodo(const QString& prefijo, const QVariant& valor)
{
    return prefijo + QString::number(vb::toLong(valor));
}

// Restores the tree's painting however the fill ends; painting is held back
// so tens of thousands of insertions do not each schedule a repaint. What is
// restored is the tree's own setting, not whatever a parent imposes for now.
class SinRepintar {
public:
    explicit SinRepintar(QWidget* widget)
        : m_widget(widget)
        , m_antes(!widget->testAttribute(Qt::WA_ForceUpdatesDisabled))
    {
        m_widget->setUpdatesEnabled(false);
    }
    ~SinRepintar() { m_widget->setUpdatesEnabled(m_antes); }
    SinRepintar(const SinRepintar&) = delete;
    SinRepintar& operator=(const SinRepintar&) = delete;

private:
    QWidget* m_widget;
    bool m_antes;
};

// Metrics and indicators hang from their perspective the same way; only the
// query, the key prefix, the image and the tag differ.
void agregarHojas(QObject* conexion, ArbolClaves* arbol, const QString& sql, const QString& prefijo, short imagen,
                  const QString& tagHoja)
{
    const auto rs = AbrirConsulta(conexion, sql);
    if (!rs)
        return;
    // A row whose perspective is not in the tree is left out: agregar refuses
    // an unknown parent and adds nothing. Asking the tree first would hash
    // the parent's key twice per row, and string hashing is most of what a
    // large fill costs.
    recorrer(*rs, [&](const ado::Recordset& fila) {
        const QString padre = claveNodo(PrefijoPerspectiva, fila.Fields(QStringLiteral("uf_FK_Perspectiva")));
        arbol->agregar(padre, claveNodo(prefijo, fila.Fields(QStringLiteral("Sys_PK"))), nombre(fila), imagen,
                       tagHoja);
    });
}

// What the fills and the selection need of a list box or a drop-down list,
// so both kinds share one implementation.
template <typename Lista>
struct Entradas;

// An entry goes in with its item data already set (none when the data is
// invalid): one model insertion per entry instead of an insertion and then a
// change, which for a thousand metrics is a good part of the fill.
template <>
struct Entradas<QListWidget> {
    static void limpiar(QListWidget* lista) { lista->clear(); }
    static void agregar(QListWidget* lista, const QString& texto, const QVariant& dato)
    {
        if (lista->isSortingEnabled()) {
            // A sorted list has always had the data set on whatever entry
            // ends up last, not necessarily the new one; callers may rely on it.
            lista->addItem(texto);
            if (QListWidgetItem* ultimo = lista->item(lista->count() - 1); ultimo && dato.isValid())
                ultimo->setData(Qt::UserRole, dato);
            return;
        }
        auto* item = new QListWidgetItem(texto);
        if (dato.isValid())
            item->setData(Qt::UserRole, dato);
        lista->addItem(item);
    }
    static int cuenta(const QListWidget* lista) { return lista->count(); }
    static QVariant dato(const QListWidget* lista, int posicion)
    {
        const QListWidgetItem* item = lista->item(posicion);
        return item ? item->data(Qt::UserRole) : QVariant();
    }
    static void seleccionar(QListWidget* lista, int posicion)
    {
        if (posicion < 0) {
            lista->clearSelection();
            lista->setCurrentRow(-1);
        } else {
            lista->setCurrentRow(posicion);
        }
    }
};

template <>
struct Entradas<QComboBox> {
    static void limpiar(QComboBox* lista) { lista->clear(); }
    // QComboBox stores no item data for an invalid value.
    static void agregar(QComboBox* lista, const QString& texto, const QVariant& dato) { lista->addItem(texto, dato); }
    static int cuenta(const QComboBox* lista) { return lista->count(); }
    static QVariant dato(const QComboBox* lista, int posicion) { return lista->itemData(posicion, Qt::UserRole); }
    static void seleccionar(QComboBox* lista, int posicion) { lista->setCurrentIndex(posicion); }
};

enum class Limpieza { AntesDeConsultar, DespuesDeConsultar };

// One entry per row: the name, with the key as its item data.
template <typename Lista>
void llenarLista(QObject* conexion, Lista* lista, const QString& sql, Limpieza limpieza)
{
    using E = Entradas<Lista>;
    if (!lista)
        return;
    if (limpieza == Limpieza::AntesDeConsultar)
        model::paso([&] { E::limpiar(lista); });
    const auto rs = AbrirConsulta(conexion, sql);
    if (limpieza == Limpieza::DespuesDeConsultar)
        model::paso([&] { E::limpiar(lista); });
    if (!rs)
        return;
    recorrer(*rs, [&](const ado::Recordset& fila) {
        const QString texto = nombre(fila);
        // Its own step: an entry whose key cannot be read goes in all the
        // same, without data.
        QVariant dato;
        model::paso([&] { dato = vb::toLong(fila.Fields(QStringLiteral("Sys_PK"))); });
        E::agregar(lista, texto, dato);
    });
}

QString consultaMetricas(int clave)
{
    return QStringLiteral("Select Sys_PK, uf_Nombre FROM ut_bi_Metrica Where uf_FK_Perspectiva=") +
           QString::number(clave) + QStringLiteral(" Order by uf_Nombre");
}

// Every list entry has an item data; one never given any reads as 0, as an
// entry added without a key does in a classic list box.
int datoEntero(const QVariant& dato)
{
    if (!dato.isValid() || vb::isNull(dato))
        return 0;
    return vb::toLong(dato);
}

template <typename Lista>
void seleccionarPorClave(Lista* lista, int clave)
{
    using E = Entradas<Lista>;
    if (!lista)
        return;
    model::paso([&] { E::seleccionar(lista, -1); });
    const int cuenta = E::cuenta(lista);
    for (int posicion = 0; posicion < cuenta; ++posicion) {
        bool igual = false;
        model::paso([&] { igual = datoEntero(E::dato(lista, posicion)) == clave; });
        if (igual) {
            model::paso([&] { E::seleccionar(lista, posicion); });
            return;
        }
    }
}

} // namespace

void LlenarArbol(QObject* conexion, ArbolClaves* arbol, short imgPerspectiva, short imgMetrica, short imgIndicador)
{
    if (!arbol)
        return;
    model::paso([&] { arbol->limpiar(); });

    const auto perspectivas = AbrirConsulta(
        conexion, QStringLiteral("Select Sys_PK, uf_Nombre, uf_padre FROM ut_bi_Perspectiva Order By uf_padre, uf_Nombre"));
    if (!perspectivas)
        return;

    const SinRepintar sinRepintar(arbol);

    // One pass in the query's order: a perspective whose parent has not been
    // added yet is left out, and so is everything below it.
    recorrer(*perspectivas, [&](const ado::Recordset& fila) {
        const QString clave = claveNodo(PrefijoPerspectiva, fila.Fields(QStringLiteral("Sys_PK")));
        const int padre = vb::toLong(fila.Fields(QStringLiteral("uf_padre")));
        if (padre == 0) {
            arbol->agregar(QString(), clave, nombre(fila), imgPerspectiva, QStringLiteral("P"));
            return;
        }
        // agregar adds nothing under a parent it does not hold.
        arbol->agregar(PrefijoPerspectiva + QString::number(padre), clave, nombre(fila), imgPerspectiva,
                       QStringLiteral("P"));
    });

    if (imgMetrica > 0) {
        model::paso([&] {
            agregarHojas(conexion, arbol,
                         QStringLiteral("Select Sys_PK, uf_Nombre, uf_FK_Perspectiva FROM ut_bi_Metrica Order By "
                                        "uf_FK_Perspectiva, uf_Nombre"),
                         PrefijoMetrica, imgMetrica, QStringLiteral("M"));
        });
    }
    if (imgIndicador > 0) {
        model::paso([&] {
            agregarHojas(conexion, arbol,
                         QStringLiteral("Select Sys_PK, uf_Nombre, uf_FK_Perspectiva FROM ut_bi_Indicador Order By "
                                        "uf_FK_Perspectiva, uf_Nombre"),
                         PrefijoIndicador, imgIndicador, QStringLiteral("I"));
        });
    }

    // The walk starts one position early and stops one early: position 0
    // addresses no node, and the last node added is never expanded. Every
    // child is added after its parent, so the last node has no children and
    // every parent still ends up expanded. Dialogs rely on exactly this state.
    const int cuenta = arbol->cuenta();
    for (int posicion = 0; posicion <= cuenta - 1; ++posicion) {
        model::paso([&] {
            if (QTreeWidgetItem* item = arbol->nodoEn(posicion))
                item->setExpanded(true);
        });
    }
}

void LlenarListaMetricas(QObject* conexion, int clave, QListWidget* lista)
{
    llenarLista(conexion, lista, consultaMetricas(clave), Limpieza::AntesDeConsultar);
}

void LlenarListaMetricas(QObject* conexion, int clave, QComboBox* lista)
{
    llenarLista(conexion, lista, consultaMetricas(clave), Limpieza::AntesDeConsultar);
}

void LlenarListaIndicadores(QObject* conexion, QListWidget* lista, int clave)
{
    llenarLista(conexion, lista,
                QStringLiteral("Select Sys_PK, uf_Nombre FROM ut_bi_Indicador Where uf_FK_Perspectiva=") +
                    QString::number(clave) + QStringLiteral(" Order By uf_Nombre"),
                Limpieza::DespuesDeConsultar);
}

void SeleccionarPorClave(QListWidget* lista, int clave)
{
    seleccionarPorClave(lista, clave);
}

void SeleccionarPorClave(QComboBox* lista, int clave)
{
    seleccionarPorClave(lista, clave);
}

} // namespace mdl_functions
