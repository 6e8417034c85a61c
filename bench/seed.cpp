#include "seed.h"

#include "benchdatabase.h"

#include <QUuid>

namespace seed {

namespace {

QString texto(const QString& value)
{
    QString quoted = value;
    quoted.replace(QLatin1Char('\''), QStringLiteral("''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

QString guid()
{
    return QUuid::createUuid().toString(QUuid::WithBraces).toUpper();
}

} // namespace

TreeShape treeShape(int nodes)
{
    TreeShape shape;
    shape.perspectivas = (nodes + 10) / 21;
    shape.metricas = (nodes - shape.perspectivas) / 2;
    shape.indicadores = nodes - shape.perspectivas - shape.metricas;
    return shape;
}

void fillTree(BenchDatabase& db, int nodes)
{
    const TreeShape shape = treeShape(nodes);
    const int p = shape.perspectivas;
    // Three levels, as a grown library has them: a twentieth at the top, nine
    // twentieths below those, the rest one level further down. Parents sort
    // before their children, so every node attaches.
    const int arriba = std::max(1, p / 20);
    const int medio = std::max(0, p * 9 / 20);
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_Perspectiva (Sys_PK, uf_Nombre, uf_padre) VALUES "), 1, p,
                  [&](int k) {
                      const int padre = k <= arriba           ? 0
                          : k <= arriba + medio               ? (k - arriba - 1) % arriba + 1
                                                              : (k - arriba - medio - 1) % std::max(1, medio) + arriba + 1;
                      return QStringLiteral("(%1,'Perspectiva %2',%3)").arg(k).arg(k, 5, 10, QLatin1Char('0')).arg(padre);
                  });
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_PK, uf_Nombre, uf_FK_Perspectiva) VALUES "), 1,
                  shape.metricas,
                  [&](int k) { return QStringLiteral("(%1,'Métrica %1',%2)").arg(k).arg((k - 1) % p + 1); });
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_Indicador (Sys_PK, uf_Nombre, uf_Tipo, uf_FK_Perspectiva) VALUES "),
                  1, shape.indicadores,
                  [&](int k) { return QStringLiteral("(%1,'Indicador %1',1,%2)").arg(k).arg((k - 1) % p + 1); });
    for (const char* table : {"ut_bi_Perspectiva", "ut_bi_Metrica", "ut_bi_Indicador"})
        db.syncKeys(QLatin1String(table));
    db.exec(QStringLiteral("ANALYZE"));
}

QString nombreMetrica(int k)
{
    return QStringLiteral("Métrica de ventas %1").arg(k, 4, 10, QLatin1Char('0'));
}

QString descripcionMetrica(int k)
{
    return QStringLiteral("Importe neto vendido por la sucursal %1, sin impuestos ni devoluciones").arg(k % 40);
}

QString codigoMetrica(int k)
{
    return QStringLiteral("function calcular(periodo, entidad) {\r\n"
                          "  var ventas = consulta('SELECT SUM(importe) FROM Venta WHERE sucursal = ' + entidad);\r\n"
                          "  var devoluciones = consulta('SELECT SUM(importe) FROM Devolucion WHERE sucursal = ' + entidad);\r\n"
                          "  return (ventas - devoluciones) / %1;\r\n"
                          "}\r\n")
        .arg(k % 7 + 1);
}

void fillLibrary(BenchDatabase& db)
{
    db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (Sys_PK, uf_Nombre, uf_padre) VALUES (%1, 'Ventas', 0)")
                .arg(Perspectiva));
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_Metrica (Sys_PK, Sys_GUID, uf_Nombre, uf_Descripcion, uf_Titulo, "
                                 "uf_Decimales, uf_Formato, uf_Codigo, uf_FK_Perspectiva) VALUES "),
                  1, Metricas, [](int k) {
                      return QStringLiteral("(%1,%2,%3,%4,%5,2,'#,##0.00',%6,%7)")
                          .arg(k)
                          .arg(texto(guid()), texto(nombreMetrica(k)), texto(descripcionMetrica(k)),
                               texto(QStringLiteral("Ventas netas %1").arg(k)), texto(codigoMetrica(k)))
                          .arg(Perspectiva);
                  });

    // Kinds in turn: 1 progress bar, 2 matrix and chart, 3 traffic light.
    auto tipo = [](int k) { return (k - 1) % 3 + 1; };
    auto metrica = [](int k) { return (k + 498) % Metricas + 1; };
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_Indicador (Sys_PK, uf_Nombre, uf_Tipo, uf_FK_Perspectiva) VALUES "),
                  1, Indicadores, [&](int k) {
                      return QStringLiteral("(%1,'Indicador %1',%2,%3)").arg(k).arg(tipo(k)).arg(Perspectiva);
                  });
    QStringList barras, matrices, semaforos;
    for (int k = 1; k <= Indicadores; ++k) {
        const QString m = QString::number(metrica(k));
        switch (tipo(k)) {
        case 1: {
            QStringList v{QString::number(k), m};
            for (int periodo = 0; periodo < 4; ++periodo)
                v << QString::number(10.5 * periodo) << QString::number(1000.25 * (periodo + 1)) << QStringLiteral("16711680")
                  << QStringLiteral("255") << QStringLiteral("65280");
            barras << QLatin1Char('(') + v.join(QLatin1Char(',')) + QLatin1Char(')');
            break;
        }
        case 2: {
            QStringList v{QString::number(k)};
            for (int i = 1; i <= 15; ++i)
                v << QString::number((k + i * 37) % Metricas + 1);
            v << texto(QStringLiteral("Ventas contra meta %1").arg(k)) << QStringLiteral("3");
            matrices << QLatin1Char('(') + v.join(QLatin1Char(',')) + QLatin1Char(')');
            break;
        }
        default: {
            QStringList v{QString::number(k), m};
            for (int i = 0; i < 8; ++i)
                v << QString::number(100.0 * (i + 1) + 0.5);
            v << QString::number(k % 2);
            semaforos << QLatin1Char('(') + v.join(QLatin1Char(',')) + QLatin1Char(')');
            break;
        }
        }
    }
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_BarraProg VALUES "), 0, int(barras.size()) - 1,
                  [&](int i) { return barras.at(i); });
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_MatrizGraf VALUES "), 0, int(matrices.size()) - 1,
                  [&](int i) { return matrices.at(i); });
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_Semaforo VALUES "), 0, int(semaforos.size()) - 1,
                  [&](int i) { return semaforos.at(i); });

    db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (Sys_PK, uf_Nombre, uf_FK_Usuario) VALUES (%1, 'Tablero "
                           "de la dirección', 1)")
                .arg(Tablero));
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_TabIndicador (Sys_PK, uf_FK_Tablero, uf_FK_Indicador, "
                                 "uf_FK_Entidad, uf_X, uf_Y, uf_W, uf_H, uf_pinicial, uf_Periodos, uf_l1, uf_l2, "
                                 "uf_l3, uf_l4, uf_l5, uf_l6, uf_l7, uf_l8) VALUES "),
                  1, TabIndicadores, [](int k) {
                      QStringList v{QString::number(k), QString::number(Tablero), QString::number((k - 1) % Indicadores + 1),
                                    QString::number(k % 5), QString::number(k % 20 * 1500),
                                    QString::number(k / 20 * 1200), QStringLiteral("3000"), QStringLiteral("2400"),
                                    QString::number(k % 4), QString::number(k % 15 + 1)};
                      for (int i = 0; i < 8; ++i)
                          v << QString::number(50.0 * i + 0.25);
                      return QLatin1Char('(') + v.join(QLatin1Char(',')) + QLatin1Char(')');
                  });
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_Fig (Sys_PK, uf_FK_Tablero, uf_X, uf_Y, uf_W, uf_H, uf_Tipo, "
                                 "uf_Fuente, uf_Texto, uf_TamFuente, uf_atrib_fuente, uf_color, uf_fondo, uf_alin) VALUES "),
                  1, Figuras, [](int k) {
                      return QStringLiteral("(%1,%2,%3,%4,2400,450,0,'DejaVu Sans',%5,10,%6,0,16777215,%7)")
                          .arg(k)
                          .arg(Tablero)
                          .arg(k % 20 * 1500)
                          .arg(k / 20 * 1200 + 600)
                          .arg(texto(QStringLiteral("Etiqueta número %1").arg(k)))
                          .arg(k % 8)
                          .arg(k % 3);
                  });
    for (const char* table : {"ut_bi_Perspectiva", "ut_bi_Metrica", "ut_bi_Indicador", "ut_bi_Tablero",
                              "ut_bi_TabIndicador", "ut_bi_Fig"})
        db.syncKeys(QLatin1String(table));
    db.exec(QStringLiteral("ANALYZE"));
}

void fillDashboard(BenchDatabase& db)
{
    db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (Sys_PK, uf_Nombre, uf_FK_Usuario) VALUES (%1, 'Cien indicadores', 1)")
                .arg(TableroCien));
    db.exec(QStringLiteral("INSERT INTO ut_bi_Tablero (Sys_PK, uf_Nombre, uf_FK_Usuario) VALUES (%1, 'Vacío', 1)")
                .arg(TableroVacio));
    // Keys after the library's placements; every period shown, limits around the seeded bounds.
    db.insertRows(QStringLiteral("INSERT INTO ut_bi_TabIndicador (Sys_PK, uf_FK_Tablero, uf_FK_Indicador, "
                                 "uf_FK_Entidad, uf_X, uf_Y, uf_W, uf_H, uf_pinicial, uf_Periodos, uf_l1, uf_l2, "
                                 "uf_l3, uf_l4, uf_l5, uf_l6, uf_l7, uf_l8) VALUES "),
                  0, CienIndicadores - 1, [](int k) {
                      QStringList v{QString::number(TabIndicadores + 1 + k), QString::number(TableroCien),
                                    QString::number(k + 1), QStringLiteral("0"), QString::number(k % 10 * 1000),
                                    QString::number(k / 10 * 700), QStringLiteral("990"), QStringLiteral("690"),
                                    QString::number(k % 4), QStringLiteral("15")};
                      for (int i = 0; i < 8; ++i)
                          v << QString::number(i % 2 == 0 ? 1000.0 * (i / 2 + 1) : 100.0 * (i / 2));
                      return QLatin1Char('(') + v.join(QLatin1Char(',')) + QLatin1Char(')');
                  });
    for (const char* table : {"ut_bi_Tablero", "ut_bi_TabIndicador"})
        db.syncKeys(QLatin1String(table));
    db.exec(QStringLiteral("ANALYZE"));
}

} // namespace seed
