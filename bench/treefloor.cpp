#include "treefloor.h"

#include "library/arbolclaves.h"

#include <QHash>
#include <QPainter>
#include <QPixmap>
#include <QSqlQuery>
#include <QTreeWidget>
#include <QVariant>

namespace treefloor {

namespace {

std::vector<Fila> consulta(const QSqlDatabase& db, const QString& sql)
{
    std::vector<Fila> filas;
    QSqlQuery query(db);
    query.setForwardOnly(true);
    if (!query.exec(sql))
        return filas;
    while (query.next()) {
        Fila fila;
        fila.clave = query.value(0).toInt();
        fila.nombre = query.value(1).toString();
        fila.padre = query.value(2).toInt();
        filas.push_back(std::move(fila));
    }
    return filas;
}

QIcon icono(const QColor& color)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setBrush(color);
    painter.drawRoundedRect(1, 1, 14, 14, 3, 3);
    return QIcon(pixmap);
}

} // namespace

QList<QIcon> imagenes()
{
    return {icono(QColor(200, 160, 40)), icono(QColor(40, 120, 200)), icono(QColor(60, 160, 60))};
}

Filas leer(const QSqlDatabase& db)
{
    Filas filas;
    filas.perspectivas =
        consulta(db, QStringLiteral("Select Sys_PK, uf_Nombre, uf_padre FROM ut_bi_Perspectiva Order By uf_padre, uf_Nombre"));
    filas.metricas = consulta(db, QStringLiteral("Select Sys_PK, uf_Nombre, uf_FK_Perspectiva FROM ut_bi_Metrica Order By "
                                                 "uf_FK_Perspectiva, uf_Nombre"));
    filas.indicadores = consulta(db, QStringLiteral("Select Sys_PK, uf_Nombre, uf_FK_Perspectiva FROM ut_bi_Indicador "
                                                    "Order By uf_FK_Perspectiva, uf_Nombre"));
    return filas;
}

int construir(QTreeWidget& arbol, const Filas& filas, const QList<QIcon>& imagenes, bool copiarNombres)
{
    const size_t total = filas.perspectivas.size() + filas.metricas.size() + filas.indicadores.size();
    QHash<int, QTreeWidgetItem*> perspectivas;
    perspectivas.reserve(qsizetype(filas.perspectivas.size()));
    std::vector<QTreeWidgetItem*> orden;
    orden.reserve(total);

    auto nuevo = [&](QTreeWidgetItem* padre, const QString& clave, const QString& texto, int imagen,
                     const QString& tag) {
        auto* item = new QTreeWidgetItem;
        item->setText(0, copiarNombres ? QString(texto.constData(), texto.size()) : texto);
        item->setData(0, ArbolClaves::RolClave, clave);
        item->setData(0, ArbolClaves::RolTag, tag);
        item->setData(0, ArbolClaves::RolImagen, imagen);
        item->setIcon(0, imagenes.at(imagen - 1));
        if (padre)
            padre->addChild(item);
        else
            arbol.addTopLevelItem(item);
        orden.push_back(item);
        return item;
    };

    const QString tagP = QStringLiteral("P");
    const QString tagM = QStringLiteral("M");
    const QString tagI = QStringLiteral("I");
    for (const Fila& p : filas.perspectivas) {
        QTreeWidgetItem* padre = nullptr;
        if (p.padre != 0) {
            padre = perspectivas.value(p.padre);
            if (!padre)
                continue;
        }
        perspectivas.insert(p.clave, nuevo(padre, QStringLiteral("KP_") + QString::number(p.clave), p.nombre, 1, tagP));
    }
    for (const Fila& m : filas.metricas) {
        if (QTreeWidgetItem* padre = perspectivas.value(m.padre))
            nuevo(padre, QStringLiteral("MT_") + QString::number(m.clave), m.nombre, 2, tagM);
    }
    for (const Fila& i : filas.indicadores) {
        if (QTreeWidgetItem* padre = perspectivas.value(i.padre))
            nuevo(padre, QStringLiteral("IK_") + QString::number(i.clave), i.nombre, 2, tagI);
    }
    // Every node but the last ends up expanded, as the component leaves them.
    for (size_t i = 0; i + 1 < orden.size(); ++i)
        orden[i]->setExpanded(true);
    return int(orden.size());
}

} // namespace treefloor
