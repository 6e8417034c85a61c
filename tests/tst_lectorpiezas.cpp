// What the dashboard's tiles are given to paint from, read from the sample
// dashboard, and the references that turn a tile into a broken one.
#include "enginefixture.h"
#include "lectorpiezas.h"
#include "model/emetrica.h"
#include "model/eindicador.h"
#include "model/etabindicador.h"
#include "model/etablero.h"
#include "model/coleccion.h"
#include "model/vendimarbi.h"
#include "render/piezatablero.h"
#include "render/valoresmuestra.h"
#include "schemainstaller.h"
#include "testdatabase.h"

#include <QTest>
#include <memory>

using namespace VendimarBI;

class TstLectorPiezas : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    std::unique_ptr<QObject> tablero;
    QList<const ETabIndicador*> colocados;
    ValoresMuestra muestras;

    int clave(const QString& tabla, const QString& nombre)
    {
        return db.scalar(QStringLiteral("SELECT Sys_PK FROM %1 WHERE uf_Nombre='%2'").arg(tabla, nombre)).toInt();
    }

    // The sample dashboard's placements, loaded afresh after a test changed rows.
    void cargarTablero()
    {
        colocados.clear();
        tablero.reset(fixture.engine->CargarEntidad(cTablero, clave(QStringLiteral("ut_bi_Tablero"), QStringLiteral("Mi tablero"))));
        QVERIFY(tablero);
        for (QObject* tab : *tablero->property("Indicadores").value<Coleccion*>())
            colocados.append(qobject_cast<const ETabIndicador*>(tab));
        QCOMPARE(colocados.size(), 3);
    }

    // The tile of the placement of that indicator name.
    DatosPieza datosDe(const QList<DatosPieza>& datos, const QString& nombre)
    {
        const int indicador = clave(QStringLiteral("ut_bi_Indicador"), nombre);
        for (const DatosPieza& d : datos)
            if (d.colocado->FK_Indicador() == indicador)
                return d;
        return {};
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        SchemaInstaller::addDemoData(db.connection());
        fixture.preparar(db.connection());
        cargarTablero();
    }

    void everyPlacementGetsItsIndicatorAndMetrics()
    {
        LectorPiezas lector(fixture.engine.get());
        const QList<DatosPieza> datos = lector.leer(colocados);
        QCOMPARE(datos.size(), 3);
        for (const DatosPieza& d : datos) {
            QVERIFY(d.indicador);
            QVERIFY(d.configuracionGuardada);
            QVERIFY(PiezaTablero(d, muestras).averia().isEmpty());
        }
        const DatosPieza resumen = datosDe(datos, QStringLiteral("Resumen de ventas"));
        QCOMPARE(resumen.metricas.size(), 2);
        QCOMPARE(PiezaTablero(resumen, muestras).tipo(), int(cMatrizGrafico));
        // Each metric comes with its source, which the view mode runs.
        for (const EMetrica* metrica : resumen.metricas) {
            QVERIFY(metrica->CodigoFuente().contains(QLatin1String("return ")));
            QCOMPARE(metrica->CodigoFuente(),
                     db.scalar(QStringLiteral("SELECT uf_Codigo FROM ut_bi_Metrica WHERE Sys_PK=%1").arg(metrica->Sys_PK())).toString());
        }
    }

    void tileBoundToAnEntityNamesIt()
    {
        LectorPiezas lector(fixture.engine.get());
        const QList<DatosPieza> datos = lector.leer(colocados);
        const DatosPieza semaforo = datosDe(datos, QStringLiteral("Semáforo de existencias"));
        QCOMPARE(semaforo.entidad, fixture.engine->InfoEntidad(QStringLiteral("Producto"), 2));
        QVERIFY(semaforo.entidad.contains(QStringLiteral("Vino blanco joven 75 cl")));
        // Placements without an entity, or whose perspective needs none, name nothing.
        QVERIFY(datosDe(datos, QStringLiteral("Avance de ventas")).entidad.isEmpty());
        db.exec(QStringLiteral("UPDATE ut_bi_TabIndicador SET uf_FK_Entidad=1"));
        cargarTablero();
        LectorPiezas otro(fixture.engine.get());
        QVERIFY(datosDe(otro.leer(colocados), QStringLiteral("Avance de ventas")).entidad.isEmpty());
    }

    void placementOfAnIndicatorThatNoLongerExistsIsBroken()
    {
        db.exec(QStringLiteral("UPDATE ut_bi_TabIndicador SET uf_FK_Indicador=987654 WHERE uf_pinicial=2"));
        cargarTablero();
        LectorPiezas lector(fixture.engine.get());
        const QList<DatosPieza> datos = lector.leer(colocados);
        int rotas = 0;
        for (const DatosPieza& d : datos) {
            const QString averia = PiezaTablero(d, muestras).averia();
            if (d.colocado->FK_Indicador() == 987654) {
                QVERIFY(!d.indicador);
                QCOMPARE(averia, QStringLiteral("El indicador 987654 ya no existe"));
                ++rotas;
            } else {
                QVERIFY(averia.isEmpty());
            }
        }
        QCOMPARE(rotas, 1);
    }

    // A decimal-comma locale cannot write the configuration row, and the
    // indicator is left without one: its tile says so instead of drawing zeros.
    void indicatorSavedUnderADecimalCommaLocaleIsBroken()
    {
        const QLocale antes;
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        std::unique_ptr<QObject> indicador(
            fixture.engine->CargarEntidad(cIndicador, clave(QStringLiteral("ut_bi_Indicador"), QStringLiteral("Avance de ventas"))));
        indicador->property("Configuracion").value<QObject*>()->setProperty("Dia_Min", 0.5);
        QVERIFY(fixture.engine->GuardarEntidad(indicador.get()));
        QLocale::setDefault(antes);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_BarraProg")).toInt(), 0);
        LectorPiezas lector(fixture.engine.get());
        const DatosPieza barra = datosDe(lector.leer(colocados), QStringLiteral("Avance de ventas"));
        QVERIFY(!barra.configuracionGuardada);
        QCOMPARE(PiezaTablero(barra, muestras).averia(), QStringLiteral("«Avance de ventas» no tiene configuración guardada"));
    }

    void configurationWhoseMetricNoLongerExistsIsBroken()
    {
        const int tickets = clave(QStringLiteral("ut_bi_Metrica"), QStringLiteral("Tickets"));
        db.exec(QStringLiteral("DELETE FROM ut_bi_Metrica WHERE Sys_PK=%1").arg(tickets));
        LectorPiezas lector(fixture.engine.get());
        const QList<DatosPieza> datos = lector.leer(colocados);
        QCOMPARE(PiezaTablero(datosDe(datos, QStringLiteral("Resumen de ventas")), muestras).averia(),
                 QStringLiteral("La métrica %1 ya no existe").arg(tickets));
        QVERIFY(PiezaTablero(datosDe(datos, QStringLiteral("Avance de ventas")), muestras).averia().isEmpty());
    }

    void closedConnectionGivesBrokenTilesNotAnError()
    {
        db.connection().Close();
        LectorPiezas lector(fixture.engine.get());
        const QList<DatosPieza> datos = lector.leer(colocados);
        QCOMPARE(datos.size(), 3);
        for (const DatosPieza& d : datos)
            QVERIFY(!PiezaTablero(d, muestras).averia().isEmpty());
        db.connection().Open(db.url());
    }
};

QTEST_MAIN(TstLectorPiezas)
#include "tst_lectorpiezas.moc"
