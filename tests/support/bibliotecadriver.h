#pragma once
// Drives the library dialogs and the indicator picker as a user would: clicks
// on tree nodes, the messages they answer, and checks of what a person sees.

#include "dialogdriver.h"
#include "library/arbolclaves.h"
#include "modalanswerer.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "testdatabase.h"

#include <QApplication>
#include <QComboBox>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

namespace biblioteca {

using namespace driver;

const QString Pregunta = QStringLiteral("¿Seguro desea eliminar este elemento?");
const QString ConsultaArbol = QStringLiteral("Select Sys_PK, uf_Nombre, uf_padre FROM ut_bi_Perspectiva");

inline ArbolClaves* arbolDe(QWidget* w)
{
    return control<ArbolClaves>(w, QStringLiteral("tvw"));
}

inline QString kp(int clave)
{
    return QStringLiteral("KP_%1").arg(clave);
}

// The tree in display order, one "parent>key" entry per node ("key" alone at the top).
inline QStringList forma(const QTreeWidget* t)
{
    QStringList lineas;
    std::function<void(const QTreeWidgetItem*)> visitar = [&](const QTreeWidgetItem* item) {
        const QString padre = item->parent() ? ArbolClaves::clave(item->parent()) + QLatin1Char('>') : QString();
        lineas.append(padre + ArbolClaves::clave(item));
        for (int i = 0; i < item->childCount(); ++i)
            visitar(item->child(i));
    };
    for (int i = 0; i < t->topLevelItemCount(); ++i)
        visitar(t->topLevelItem(i));
    return lineas;
}

inline QStringList seleccion(const QTreeWidget* t)
{
    QStringList claves;
    for (const QTreeWidgetItem* item : t->selectedItems())
        claves.append(ArbolClaves::clave(item));
    return claves;
}

inline QPoint centroDe(ArbolClaves* t, const QString& clave)
{
    QTreeWidgetItem* item = t->nodo(clave);
    if (!item) {
        qWarning("no node %s", qPrintable(clave));
        return {};
    }
    t->scrollToItem(item);
    return t->visualItemRect(item).center();
}

// A click on a node, as the user selects it.
inline void clic(QWidget* w, const QString& clave)
{
    ArbolClaves* t = arbolDe(w);
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, centroDe(t, clave));
}

// A double click: the first click selects, the second one acts.
inline void dobleClic(QWidget* w, const QString& clave)
{
    ArbolClaves* t = arbolDe(w);
    const QPoint punto = centroDe(t, clave);
    QTest::mouseClick(t->viewport(), Qt::LeftButton, {}, punto);
    QTest::mouseDClick(t->viewport(), Qt::LeftButton, {}, punto);
}

// "text|buttons|default", with " [icono]" after a text shown with an icon.
inline QString describir(QWidget* w)
{
    auto* box = qobject_cast<QMessageBox*>(w);
    if (!box)
        return QStringLiteral("<%1 instead of a message box>").arg(w->objectName());
    QStringList botones;
    for (QAbstractButton* b : box->buttons())
        botones.append(b->text().remove(QLatin1Char('&')));
    botones.sort();
    const QString defecto = box->defaultButton() ? box->defaultButton()->text().remove(QLatin1Char('&')) : QString();
    return box->text() + (box->icon() == QMessageBox::NoIcon ? QString() : QStringLiteral(" [icono]"))
           + QLatin1Char('|') + botones.join(QLatin1Char(',')) + QLatin1Char('|') + defecto;
}

inline QString simple(const QString& texto)
{
    return texto + QStringLiteral("|Aceptar|Aceptar");
}

inline QString siNo(const QString& texto)
{
    return texto + QStringLiteral("|No,Sí|No");
}

// Records a message box and answers it with one of its buttons.
inline ModalAnswerer::Handler responder(QStringList* vistos, const QString& boton = QStringLiteral("Aceptar"))
{
    return [vistos, boton](QWidget* w) {
        vistos->append(describir(w));
        ModalAnswerer::press(w, boton);
    };
}

inline QStringList ventanas(const ModalAnswerer& a)
{
    QStringList v;
    for (const QString& visto : a.seen)
        v.append(visto.section(QLatin1Char('|'), 0, 0));
    return v;
}

// Closes whatever modal window is left open once the time is up, so a
// broken expectation fails the test instead of hanging it.
class Vigilante : public QObject {
public:
    explicit Vigilante(int ms)
    {
        m_timer.setInterval(ms);
        connect(&m_timer, &QTimer::timeout, this, [this] {
            vencido = true;
            m_timer.setInterval(200);
            if (QWidget* modal = QApplication::activeModalWidget())
                QMetaObject::invokeMethod(modal, "reject", Qt::QueuedConnection);
        });
        m_timer.start();
    }
    bool vencido = false;

private:
    QTimer m_timer;
};

// Visible buttons whose caption does not fit them whole.
inline QStringList textosCortados(QWidget* dlg)
{
    QStringList cortados;
    for (QAbstractButton* b : dlg->findChildren<QAbstractButton*>()) {
        if (b->isVisible() && !b->text().isEmpty()
            && (b->width() < b->sizeHint().width() || b->height() < b->sizeHint().height()))
            cortados.append(b->text());
    }
    return cortados;
}

// The named controls that Tab visits, in order, starting at the first one.
inline QStringList ordenTab(QWidget* dlg, QWidget* primero)
{
    QStringList orden;
    QWidget* w = primero;
    do {
        if (w->isVisible() && (w->focusPolicy() & Qt::TabFocus) && !w->objectName().isEmpty()
            && !w->objectName().startsWith(QLatin1String("qt_")) && w->window() == dlg)
            orden.append(w->objectName());
        w = w->nextInFocusChain();
    } while (w && w != primero && orden.size() < 50);
    return orden;
}

// Picks the entry of a drop-down list by its text.
inline void elegirEn(QWidget* w, const QString& combo, const QString& texto)
{
    auto* c = control<QComboBox>(w, combo);
    c->setCurrentIndex(c->findText(texto));
}

// A perspective of the library, bound to no host entity.
inline int nuevaPerspectiva(TestDatabase& db, const QString& nombre, int padre = 0)
{
    EPerspectiva p;
    p.setNombre(nombre);
    p.setEntidadAsociada(QStringLiteral("@"));
    p.setGrupos(QStringLiteral("*"));
    p.setFK_Padre(padre);
    return p.Save(&db.connection()) ? p.Sys_PK() : 0;
}

// A metric with every field its editor asks for.
inline int nuevaMetrica(TestDatabase& db, const QString& nombre, int enPerspectiva)
{
    EMetrica m;
    m.setNombre(nombre);
    m.setTitulo(QStringLiteral("Título"));
    m.setDescripcion(QStringLiteral("Descripción"));
    m.setFormato(QStringLiteral("#"));
    m.setCodigoFuente(QStringLiteral("return 1;"));
    m.setFK_Perspectiva(enPerspectiva);
    return m.Save(&db.connection()) ? m.Sys_PK() : 0;
}

// An indicator row of the progress-bar kind, without its configuration.
inline int nuevoIndicador(TestDatabase& db, const QString& nombre, int enPerspectiva)
{
    db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva) VALUES ('%1', 1, %2)")
                .arg(nombre)
                .arg(enPerspectiva));
    return db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador")).toInt();
}

} // namespace biblioteca
