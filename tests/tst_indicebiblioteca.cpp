// The library searched by name, from rows made by hand: paths and uses.
#include "indicebiblioteca.h"
#include "model/vendimarbi.h"

#include <QTest>

using Fila = FotoBiblioteca::Fila;

class TstIndiceBiblioteca : public QObject {
    Q_OBJECT

    static Fila perspectiva(int clave, const QString& nombre, int padre)
    {
        return {{QStringLiteral("sys_pk"), clave}, {QStringLiteral("uf_nombre"), nombre}, {QStringLiteral("uf_padre"), padre}};
    }

private slots:
    void aPathRunsFromTheRootDown()
    {
        FotoBiblioteca foto;
        foto.perspectivas = {perspectiva(1, QStringLiteral("Ventas"), 0), perspectiva(2, QStringLiteral("Norte"), 1),
                             perspectiva(3, QStringLiteral("Monterrey"), 2)};
        const auto r = IndiceBiblioteca(foto).buscar(QStringLiteral("monterrey"));
        QCOMPARE(r.size(), 1);
        QCOMPARE(r.first().ruta, QStringLiteral("Ventas / Norte"));
        QCOMPARE(r.first().tipo, int(VendimarBI::cPerspectiva));
    }

    void aLoopOfParentsEndsThePath()
    {
        FotoBiblioteca foto;
        foto.perspectivas = {perspectiva(1, QStringLiteral("Uno"), 2), perspectiva(2, QStringLiteral("Dos"), 1)};
        foto.metricas = {{{QStringLiteral("sys_pk"), 7}, {QStringLiteral("uf_nombre"), QStringLiteral("Margen")},
                          {QStringLiteral("uf_fk_perspectiva"), 1}}};
        const auto r = IndiceBiblioteca(foto).buscar(QStringLiteral("margen"));
        QCOMPARE(r.size(), 1);
        QCOMPARE(r.first().ruta, QStringLiteral("Dos / Uno"));
        QVERIFY(r.first().usos.isEmpty());
    }

    void usesNameEachIndicatorAndDashboardOnce()
    {
        FotoBiblioteca foto;
        foto.metricas = {{{QStringLiteral("sys_pk"), 7}, {QStringLiteral("uf_nombre"), QStringLiteral("Margen")}}};
        foto.indicadores = {{{QStringLiteral("sys_pk"), 3}, {QStringLiteral("uf_nombre"), QStringLiteral("Resumen")}}};
        // The metric twice in one configuration row; a row of an indicator that no longer exists.
        foto.matrices = {{{QStringLiteral("uf_fk_indicador"), 3}, {QStringLiteral("uf_fk_m_metrica1"), 7},
                          {QStringLiteral("uf_fk_g_metrica1"), 7}},
                         {{QStringLiteral("uf_fk_indicador"), 99}, {QStringLiteral("uf_fk_m_metrica1"), 7}}};
        foto.tableros = {{{QStringLiteral("sys_pk"), 5}, {QStringLiteral("uf_nombre"), QStringLiteral("Mi tablero")}}};
        foto.colocaciones = {{{QStringLiteral("uf_fk_tablero"), 5}, {QStringLiteral("uf_fk_indicador"), 3}},
                             {{QStringLiteral("uf_fk_tablero"), 5}, {QStringLiteral("uf_fk_indicador"), 3}}};
        const IndiceBiblioteca indice(foto);
        QCOMPARE(indice.buscar(QStringLiteral("margen")).first().usos, QStringList{QStringLiteral("Resumen")});
        QCOMPARE(indice.buscar(QStringLiteral("resumen")).first().usos, QStringList{QStringLiteral("Mi tablero")});
    }

    void blankTextFindsNothing()
    {
        FotoBiblioteca foto;
        foto.perspectivas = {perspectiva(1, QStringLiteral("Ventas"), 0)};
        QVERIFY(IndiceBiblioteca(foto).buscar(QStringLiteral(" \t ")).isEmpty());
        QVERIFY(IndiceBiblioteca(foto).buscar(QString()).isEmpty());
    }
};

QTEST_MAIN(TstIndiceBiblioteca)
#include "tst_indicebiblioteca.moc"
