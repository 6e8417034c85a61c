// The library health check: each problem the library can hide, built on the
// database, is reported exactly once with the rows involved, and its fix,
// made through the engine, leaves a healthy library.
#include "enginefixture.h"
#include "model/vendimarbi.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "tools/arreglobiblioteca.h"
#include "tools/fotobiblioteca.h"
#include "tools/informerevision.h"
#include "tools/revisionbiblioteca.h"

#include <QJsonArray>
#include <QLocale>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

class TstRevisionBiblioteca : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    // The healthy library every test starts from.
    int ventas = 0;
    int metrica = 0;
    int indicador = 0;
    int tablero = 0;

    int insertar(const QString& tabla, const QString& columnas, const QString& valores)
    {
        return db.scalar(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) RETURNING Sys_PK").arg(tabla, columnas, valores))
            .toInt();
    }

    int perspectiva(const QString& nombre, const QString& padre)
    {
        return insertar(QStringLiteral("ut_bi_Perspectiva"), QStringLiteral("uf_Nombre, uf_padre"),
                        QStringLiteral("'%1', %2").arg(nombre, padre));
    }

    int nuevaMetrica(const QString& nombre, int enPerspectiva)
    {
        return insertar(QStringLiteral("ut_bi_Metrica"), QStringLiteral("Sys_GUID, uf_Nombre, uf_FK_Perspectiva"),
                        QStringLiteral("'{%1}', '%1', %2").arg(nombre).arg(enPerspectiva));
    }

    int nuevoIndicador(const QString& nombre, int tipo, int enPerspectiva)
    {
        return insertar(QStringLiteral("ut_bi_Indicador"), QStringLiteral("uf_Nombre, uf_Tipo, uf_FK_Perspectiva"),
                        QStringLiteral("'%1', %2, %3").arg(nombre).arg(tipo).arg(enPerspectiva));
    }

    void barra(int deIndicador, int conMetrica)
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_BarraProg (uf_FK_Indicador, uf_FK_Metrica, uf_Dia_Max) VALUES (%1, %2, 10)")
                    .arg(deIndicador)
                    .arg(conMetrica));
    }

    QList<Problema> revisar()
    {
        return RevisionBiblioteca(FotoBiblioteca::leer(db.connection())).problemas();
    }

    // The one problem the library has, when it is of the kind expected; an
    // empty problem (and a failed test) otherwise.
    Problema unico(const QString& tipo)
    {
        const QList<Problema> problemas = revisar();
        const bool esperado = problemas.size() == 1 && problemas.first().tipo == tipo;
        [&] { QVERIFY2(esperado, qPrintable(tipo + QLatin1Char('\n') + InformeRevision::texto(problemas))); }();
        return esperado ? problemas.first() : Problema{};
    }

    static QList<QPair<QString, int>> filas(const Problema& p)
    {
        QList<QPair<QString, int>> resultado;
        for (const FilaProblema& f : p.filas)
            resultado.append({f.tabla, f.clave});
        return resultado;
    }

    void arreglarYComprobarSana(const Problema& p, int padre = 0)
    {
        QVERIFY(ArregloBiblioteca::aplicar(fixture.engine.get(), p, padre));
        const QList<Problema> despues = revisar();
        QVERIFY2(despues.isEmpty(), qPrintable(InformeRevision::texto(despues)));
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        fixture.preparar(db.connection());
        ventas = perspectiva(QStringLiteral("Ventas"), QStringLiteral("0"));
        metrica = nuevaMetrica(QStringLiteral("Importe"), ventas);
        indicador = nuevoIndicador(QStringLiteral("Avance"), 1, ventas);
        barra(indicador, metrica);
        tablero = insertar(QStringLiteral("ut_bi_Tablero"), QStringLiteral("uf_Nombre, uf_FK_Usuario"), QStringLiteral("'Mío', 1"));
        insertar(QStringLiteral("ut_bi_TabIndicador"), QStringLiteral("uf_FK_Tablero, uf_FK_Indicador"),
                 QStringLiteral("%1, %2").arg(tablero).arg(indicador));
        insertar(QStringLiteral("ut_bi_Fig"), QStringLiteral("uf_FK_Tablero, uf_Texto"), QStringLiteral("%1, 'Hola'").arg(tablero));
    }

    void healthyLibraryHasNoProblems()
    {
        QVERIFY(revisar().isEmpty());
        db.clear();
        SchemaInstaller::addDemoData(db.connection());
        const QList<Problema> demo = revisar();
        QVERIFY2(demo.isEmpty(), qPrintable(InformeRevision::texto(demo)));
    }

    void perspectiveWhoseParentIsReadLaterIsReportedWithEverythingItHides()
    {
        // The tree reads by parent key: arriba hangs under tope, a larger key
        // than its own, so its child (read in arriba's group) comes first.
        const int arriba = perspectiva(QStringLiteral("Arriba"), QStringLiteral("0"));
        const int tope = perspectiva(QStringLiteral("Tope"), QStringLiteral("0"));
        db.exec(QStringLiteral("UPDATE ut_bi_Perspectiva SET uf_padre=%1 WHERE Sys_PK=%2").arg(tope).arg(arriba));
        const int hija = perspectiva(QStringLiteral("Hija"), QString::number(arriba));
        const int nieta = perspectiva(QStringLiteral("Nieta"), QString::number(hija));
        const int m = nuevaMetrica(QStringLiteral("Oculta"), nieta);
        const int i = nuevoIndicador(QStringLiteral("Oculto"), 1, hija);
        barra(i, 0);

        const Problema p = unico(QStringLiteral("perspectiva-padre-posterior"));
        QCOMPARE(p.clave, hija);
        const QList<QPair<QString, int>> esperadas{{QStringLiteral("ut_bi_Perspectiva"), hija},
                                                  {QStringLiteral("ut_bi_Perspectiva"), nieta},
                                                  {QStringLiteral("ut_bi_Metrica"), m},
                                                  {QStringLiteral("ut_bi_Indicador"), i}};
        QCOMPARE(filas(p), esperadas);
        QCOMPARE(p.filas.at(1).detalle, QStringLiteral("Tope / Arriba / Hija / Nieta"));
        QVERIFY(p.descripcion.contains(QStringLiteral("«Arriba»")));
        // Arriba hangs under a larger key: under it, Hija would stay hidden.
        QCOMPARE(p.padresPosibles,
                 (QList<QPair<int, QString>>{{ventas, QStringLiteral("Ventas")}, {tope, QStringLiteral("Tope")}}));
        QCOMPARE(p.arreglo, Arreglo::ReubicarPerspectiva);
        arreglarYComprobarSana(p);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_padre FROM ut_bi_Perspectiva WHERE Sys_PK=%1").arg(hija)).toInt(), 0);
    }

    void perspectiveWithMissingParentCanBeMovedUnderAnExistingOne()
    {
        const int huerfana = perspectiva(QStringLiteral("Huérfana"), QStringLiteral("99999"));
        const Problema p = unico(QStringLiteral("perspectiva-padre-inexistente"));
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_Perspectiva"), huerfana}}));
        QCOMPARE(p.filas.first().detalle, QStringLiteral("? / Huérfana"));
        QVERIFY(p.descripcion.contains(QStringLiteral("99999")));
        QCOMPARE(p.padresPosibles, (QList<QPair<int, QString>>{{ventas, QStringLiteral("Ventas")}}));
        arreglarYComprobarSana(p, ventas);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_padre FROM ut_bi_Perspectiva WHERE Sys_PK=%1").arg(huerfana)).toInt(), ventas);
    }

    void perspectiveWithNullParentIsHidden()
    {
        const int sinPadre = perspectiva(QStringLiteral("Sin padre"), QStringLiteral("NULL"));
        const Problema p = unico(QStringLiteral("perspectiva-padre-inexistente"));
        QCOMPARE(p.clave, sinPadre);
        QVERIFY(p.descripcion.contains(QStringLiteral("NULL")));
        arreglarYComprobarSana(p);
    }

    void cycleIsReportedOnceWithWhatHangsBelowIt()
    {
        const int a = perspectiva(QStringLiteral("A"), QStringLiteral("0"));
        const int b = perspectiva(QStringLiteral("B"), QString::number(a));
        const int debajo = perspectiva(QStringLiteral("Debajo"), QString::number(b));
        db.exec(QStringLiteral("UPDATE ut_bi_Perspectiva SET uf_padre=%1 WHERE Sys_PK=%2").arg(b).arg(a));
        const Problema p = unico(QStringLiteral("perspectiva-ciclo"));
        QCOMPARE(p.clave, a);
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_Perspectiva"), a},
                                                       {QStringLiteral("ut_bi_Perspectiva"), b},
                                                       {QStringLiteral("ut_bi_Perspectiva"), debajo}}));
        arreglarYComprobarSana(p);
    }

    void perspectiveThatIsItsOwnParentIsACycle()
    {
        const int sola = perspectiva(QStringLiteral("Sola"), QStringLiteral("0"));
        db.exec(QStringLiteral("UPDATE ut_bi_Perspectiva SET uf_padre=%1 WHERE Sys_PK=%1").arg(sola));
        const Problema p = unico(QStringLiteral("perspectiva-ciclo"));
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_Perspectiva"), sola}}));
        arreglarYComprobarSana(p);
    }

    void hostileNamesAreReportedAsTheyAre()
    {
        const QString nombre = QStringLiteral("O'Brien\"; DROP TABLE ut_bi_Metrica; -- 売上 по зоне");
        QString enSql = nombre;
        enSql.replace(QLatin1Char('\''), QStringLiteral("''"));
        const int arriba = perspectiva(enSql, QStringLiteral("0"));
        const int rara = perspectiva(QStringLiteral("   "), QString::number(arriba));
        db.exec(QStringLiteral("UPDATE ut_bi_Perspectiva SET uf_padre=%1 WHERE Sys_PK=%2").arg(rara).arg(arriba));
        const Problema p = unico(QStringLiteral("perspectiva-ciclo"));
        QCOMPARE(p.filas.size(), 2);
        QCOMPARE(p.filas.at(0).nombre, nombre);
        QVERIFY(p.descripcion.contains(nombre));
        QVERIFY(InformeRevision::texto({p}).contains(nombre));
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")).toInt(), 1);
        arreglarYComprobarSana(p);
    }

    void metricAndIndicatorOfADeletedPerspectiveAreReported()
    {
        const int borrada = perspectiva(QStringLiteral("Borrada"), QStringLiteral("0"));
        const int m = nuevaMetrica(QStringLiteral("Suelta"), borrada);
        QVERIFY(fixture.engine->EliminarEntidad(VendimarBI::cPerspectiva, borrada));
        Problema p = unico(QStringLiteral("metrica-sin-perspectiva"));
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_Metrica"), m}}));
        QCOMPARE(p.arreglo, Arreglo::Ninguno);
        QVERIFY(!ArregloBiblioteca::aplicar(fixture.engine.get(), p));

        db.exec(QStringLiteral("UPDATE ut_bi_Indicador SET uf_FK_Perspectiva=%1").arg(borrada));
        db.exec(QStringLiteral("DELETE FROM ut_bi_Metrica WHERE Sys_PK=%1").arg(m));
        p = unico(QStringLiteral("indicador-sin-perspectiva"));
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_Indicador"), indicador}}));
    }

    void indicatorWithoutItsConfigurationRowGetsAnEmptyOne()
    {
        db.exec(QStringLiteral("DELETE FROM ut_bi_BarraProg"));
        const Problema p = unico(QStringLiteral("indicador-sin-configuracion"));
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_Indicador"), indicador}}));
        QCOMPARE(p.arreglo, Arreglo::RehacerConfiguracion);
        arreglarYComprobarSana(p);
        QCOMPARE(fixture.um->asked.last(), QStringLiteral("KZ4-TBL-06-002"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_BarraProg WHERE uf_FK_Indicador=%1").arg(indicador)).toInt(), 1);
    }

    void saveUnderADecimalCommaLocaleIsFoundAndRepaired()
    {
        const QLocale antes;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        std::unique_ptr<QObject> nuevo(fixture.engine->CrearEntidad(VendimarBI::cIndicador));
        nuevo->setProperty("Nombre", QStringLiteral("Con coma"));
        nuevo->setProperty("FK_Perspectiva", ventas);
        nuevo->property("Configuracion").value<QObject*>()->setProperty("Dia_Max", 2.5);
        const bool guardado = fixture.engine->GuardarEntidad(nuevo.get());
        QLocale::setDefault(antes);
        QVERIFY(guardado);
        const int clave = nuevo->property("Sys_PK").toInt();
        const Problema p = unico(QStringLiteral("indicador-sin-configuracion"));
        QCOMPARE(p.clave, clave);
        QVERIFY(p.descripcion.contains(QStringLiteral("ut_bi_BarraProg")));
        arreglarYComprobarSana(p);
    }

    void rowsInAnotherKindsTableAreReportedAndRemoved()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Semaforo (uf_FK_Indicador, uf_FK_Metrica) VALUES (%1, %2)").arg(indicador).arg(metrica));
        const Problema p = unico(QStringLiteral("configuracion-de-otro-tipo"));
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_Indicador"), indicador},
                                                       {QStringLiteral("ut_bi_Semaforo"), indicador}}));
        arreglarYComprobarSana(p);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Dia_Max FROM ut_bi_BarraProg")).toDouble(), 10.0);
    }

    void repeatedConfigurationRowsBecomeOne()
    {
        barra(indicador, metrica);
        const Problema p = unico(QStringLiteral("configuracion-repetida"));
        QCOMPARE(p.filas.size(), 3);
        arreglarYComprobarSana(p);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_BarraProg")).toInt(), 1);
    }

    void configurationRowsOfADeletedIndicatorAreRemoved()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Semaforo (uf_FK_Indicador) VALUES (77777)"));
        db.exec(QStringLiteral("INSERT INTO ut_bi_MatrizGraf (uf_FK_Indicador) VALUES (77777)"));
        const Problema p = unico(QStringLiteral("configuracion-sin-indicador"));
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_MatrizGraf"), 77777},
                                                       {QStringLiteral("ut_bi_Semaforo"), 77777}}));
        arreglarYComprobarSana(p);
        QCOMPARE(fixture.um->asked.last(), QStringLiteral("KZ4-TBL-06-003"));
    }

    void deletedMetricInAConfigurationIsReportedAndCleared()
    {
        const int matriz = nuevoIndicador(QStringLiteral("Matriz"), 2, ventas);
        const int borrada = nuevaMetrica(QStringLiteral("Borrada"), ventas);
        db.exec(QStringLiteral("INSERT INTO ut_bi_MatrizGraf (uf_FK_Indicador, uf_FK_M_Metrica1, uf_FK_M_Metrica2, "
                               "uf_FK_G_Metrica1, uf_G_Titulo, uf_G_Tipo) VALUES (%1, %2, %3, %3, 'T', 1)")
                    .arg(matriz).arg(metrica).arg(borrada));
        QVERIFY(fixture.engine->EliminarEntidad(VendimarBI::cMetrica, borrada));
        const Problema p = unico(QStringLiteral("metrica-inexistente"));
        QCOMPARE(p.clave, matriz);
        QCOMPARE(p.filas.size(), 2);
        QCOMPARE(p.filas.at(0).clave, borrada);
        arreglarYComprobarSana(p);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_M_Metrica1 FROM ut_bi_MatrizGraf")).toInt(), metrica);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_G_Metrica1 FROM ut_bi_MatrizGraf")).toInt(), 0);
    }

    void metricOfAnotherPerspectiveIsReportedWithoutAFix()
    {
        const int otra = perspectiva(QStringLiteral("Otra"), QStringLiteral("0"));
        db.exec(QStringLiteral("UPDATE ut_bi_Metrica SET uf_FK_Perspectiva=%1").arg(otra));
        const Problema p = unico(QStringLiteral("metrica-de-otra-perspectiva"));
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_Metrica"), metrica}}));
        QCOMPARE(p.filas.first().detalle, QStringLiteral("uf_fk_metrica — Otra"));
        QCOMPARE(p.arreglo, Arreglo::Ninguno);
    }

    void placementOfADeletedIndicatorIsRemoved()
    {
        QVERIFY(fixture.engine->EliminarEntidad(VendimarBI::cIndicador, indicador));
        const Problema p = unico(QStringLiteral("colocacion-sin-indicador"));
        const int colocacion = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_TabIndicador")).toInt();
        QCOMPARE(filas(p), (QList<QPair<QString, int>>{{QStringLiteral("ut_bi_TabIndicador"), colocacion}}));
        arreglarYComprobarSana(p);
        QCOMPARE(fixture.um->asked.last(), QStringLiteral("KZ4-TBL-03-000"));
    }

    void itemsOfADeletedDashboardAreReportedOneByOne()
    {
        db.exec(QStringLiteral("DELETE FROM ut_bi_Tablero"));
        const QList<Problema> problemas = revisar();
        QCOMPARE(problemas.size(), 2);
        QCOMPARE(problemas.at(0).tipo, QStringLiteral("colocacion-sin-tablero"));
        QCOMPARE(problemas.at(1).tipo, QStringLiteral("figura-sin-tablero"));
        QCOMPARE(problemas.at(1).filas.first().tabla, QStringLiteral("ut_bi_Fig"));
        QVERIFY(ArregloBiblioteca::aplicar(fixture.engine.get(), problemas.at(0)));
        arreglarYComprobarSana(problemas.at(1));
    }

    void refusedRightChangesNothing()
    {
        db.exec(QStringLiteral("DELETE FROM ut_bi_BarraProg"));
        const Problema p = unico(QStringLiteral("indicador-sin-configuracion"));
        fixture.um->refused.insert(QStringLiteral("KZ4-TBL-06-002"));
        QVERIFY(!ArregloBiblioteca::aplicar(fixture.engine.get(), p));
        QCOMPARE(revisar().size(), 1);
    }

    void commandExitsWithOneAndListsTheProblemsInJson()
    {
        QProcess vbi;
        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("check"), db.url()});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 0);
        QVERIFY(QString::fromUtf8(vbi.readAllStandardOutput()).contains(QStringLiteral("sana")));

        db.exec(QStringLiteral("DELETE FROM ut_bi_BarraProg"));
        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("check"), db.url(), QStringLiteral("--json")});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 1);
        const QJsonObject informe = QJsonDocument::fromJson(vbi.readAllStandardOutput()).object();
        QCOMPARE(informe.value(QStringLiteral("sana")).toBool(true), false);
        const QJsonArray problemas = informe.value(QStringLiteral("problemas")).toArray();
        QCOMPARE(problemas.size(), 1);
        QCOMPARE(problemas.at(0).toObject().value(QStringLiteral("tipo")).toString(), QStringLiteral("indicador-sin-configuracion"));
    }

    void commandRefusesAnUnreadableDatabase()
    {
        QProcess vbi;
        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("check"), QStringLiteral("sqlite::memory:")});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 2);
        QVERIFY(QString::fromUtf8(vbi.readAllStandardError()).contains(QStringLiteral("cannot read the library")));
    }
};

QTEST_MAIN(TstRevisionBiblioteca)
#include "tst_revisionbiblioteca.moc"
