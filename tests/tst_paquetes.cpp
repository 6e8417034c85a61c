// Portable bundles: a library exported and imported again is the same apart
// from its keys, across databases; importing twice creates nothing twice; a
// damaged or foreign file, or one that fails half-way, leaves nothing behind.
#include "carpetaprueba.h"
#include "enginefixture.h"
#include "model/vendimarbi.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "tools/exportadorpaquete.h"
#include "tools/fotobiblioteca.h"
#include "tools/importadorpaquete.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QFile>
#include <QFileInfo>
#include <functional>
#include <QProcess>
#include <QTest>

namespace {

const QStringList Tablas{QStringLiteral("ut_bi_Perspectiva"), QStringLiteral("ut_bi_Metrica"),
                         QStringLiteral("ut_bi_Indicador"),   QStringLiteral("ut_bi_BarraProg"),
                         QStringLiteral("ut_bi_Semaforo"),    QStringLiteral("ut_bi_MatrizGraf"),
                         QStringLiteral("ut_bi_Tablero"),     QStringLiteral("ut_bi_TabIndicador"),
                         QStringLiteral("ut_bi_Fig")};

// An SQLite library of a test's own, beside the test database.
struct OtraBase {
    CarpetaPrueba carpeta;
    ado::Connection conexion;
    EngineFixture fixture;

    explicit OtraBase(const QString& nombre)
    {
        conexion.Open(QStringLiteral("sqlite://") + carpeta.archivo(nombre));
        SchemaInstaller::apply(conexion);
        fixture.preparar(conexion);
    }
};

QString texto(const QVariant& valor)
{
    return valor.isNull() ? QString() : valor.toString();
}

// The library with every key replaced by what it names: perspectives by
// their path, metrics by GUID, indicators by path and name, dashboards by
// name and user. Two libraries that differ only in keys read the same.
QStringList sinClaves(ado::Connection& conexion)
{
    const FotoBiblioteca foto = FotoBiblioteca::leer(conexion);
    const auto perspectivas = FotoBiblioteca::porClave(foto.perspectivas);
    const auto metricas = FotoBiblioteca::porClave(foto.metricas);
    const auto indicadores = FotoBiblioteca::porClave(foto.indicadores);
    const auto tableros = FotoBiblioteca::porClave(foto.tableros);
    const std::function<QString(int)> ruta = [&](int clave) -> QString {
        const FotoBiblioteca::Fila* fila = perspectivas.value(clave);
        return fila ? ruta(entero(*fila, QStringLiteral("uf_padre"))) + QLatin1Char('/') + texto(fila->value(QStringLiteral("uf_nombre")))
                    : QString();
    };
    const auto identidad = [&](const QString& columna, const QVariant& valor) -> QString {
        const int clave = valor.toInt();
        if (columna == QLatin1String("uf_padre") || columna == QLatin1String("uf_fk_perspectiva"))
            return ruta(clave);
        if (columna.contains(QLatin1String("metrica")))
            return metricas.contains(clave) ? texto(metricas.value(clave)->value(QStringLiteral("sys_guid"))) : texto(valor);
        if (columna == QLatin1String("uf_fk_indicador"))
            return indicadores.contains(clave) ? ruta(entero(*indicadores.value(clave), QStringLiteral("uf_fk_perspectiva")))
                    + QLatin1Char('/') + texto(indicadores.value(clave)->value(QStringLiteral("uf_nombre")))
                                               : texto(valor);
        // A placement that shows no period is read as showing all four and
        // written back so: the same placement to the component.
        if (columna == QLatin1String("uf_periodos") && clave == 0)
            return QStringLiteral("15");
        if (columna == QLatin1String("uf_fk_tablero"))
            return tableros.contains(clave) ? texto(tableros.value(clave)->value(QStringLiteral("uf_nombre"))) : texto(valor);
        return texto(valor);
    };
    QStringList lineas;
    const auto agregar = [&](const QString& tabla, const QList<FotoBiblioteca::Fila>& filas) {
        for (const FotoBiblioteca::Fila& fila : filas) {
            QStringList columnas = fila.keys();
            columnas.removeAll(QStringLiteral("sys_pk"));
            columnas.sort();
            QStringList valores;
            for (const QString& columna : columnas)
                valores.append(columna + QLatin1Char('=') + identidad(columna, fila.value(columna)));
            lineas.append(tabla + QLatin1Char(' ') + valores.join(QLatin1Char('|')));
        }
    };
    agregar(QStringLiteral("P"), foto.perspectivas);
    agregar(QStringLiteral("M"), foto.metricas);
    agregar(QStringLiteral("I"), foto.indicadores);
    agregar(QStringLiteral("B"), foto.barras);
    agregar(QStringLiteral("S"), foto.semaforos);
    agregar(QStringLiteral("G"), foto.matrices);
    agregar(QStringLiteral("T"), foto.tableros);
    agregar(QStringLiteral("C"), foto.colocaciones);
    agregar(QStringLiteral("F"), foto.figuras);
    lineas.sort();
    return lineas;
}

QByteArray exportarTodo(EngineFixture& fixture, ado::Connection& conexion)
{
    return QJsonDocument(ExportadorPaquete(fixture.engine.get(), conexion).todo()).toJson();
}

} // namespace

class TstPaquetes : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;

    QList<int> cuentas(ado::Connection& conexion)
    {
        QList<int> resultado;
        EEngine lector;
        for (const QString& tabla : Tablas)
            resultado.append(lector.getScalar(QStringLiteral("SELECT COUNT(*) FROM ") + tabla, &conexion).toInt());
        return resultado;
    }

    static int clave(EngineFixture& f, ado::Connection& conexion, const QString& sql)
    {
        return f.engine->getScalar(sql, &conexion).toInt();
    }

    // The sample library plus what it lacks: a deeper chain with a hostile
    // name, a metric with a non-Latin name and a long source, a placement
    // that names a host entity.
    static void llenar(ado::Connection& conexion, EngineFixture& f)
    {
        SchemaInstaller::addDemoData(conexion);
        std::unique_ptr<QObject> hoja(f.engine->CrearEntidad(VendimarBI::cPerspectiva));
        hoja->setProperty("Nombre", QStringLiteral("Zona 'norte'; DROP TABLE ut_bi_Metrica; --"));
        hoja->setProperty("FK_Padre", clave(f, conexion, QStringLiteral("SELECT Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre='Por sucursal'")));
        hoja->setProperty("EntidadAsociada", QStringLiteral("Sucursal"));
        QVERIFY(f.engine->GuardarEntidad(hoja.get()));
        std::unique_ptr<QObject> metrica(f.engine->CrearEntidad(VendimarBI::cMetrica));
        metrica->setProperty("Nombre", QStringLiteral("売上 по зоне"));
        metrica->setProperty("FK_Perspectiva", hoja->property("Sys_PK"));
        metrica->setProperty("CodigoFuente", QString(15000, QLatin1Char('x')));
        QVERIFY(f.engine->GuardarEntidad(metrica.get()));
        std::unique_ptr<QObject> colocacion(f.engine->CrearEntidad(VendimarBI::ctabindicador));
        colocacion->setProperty("FK_Tablero", clave(f, conexion, QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_Tablero")));
        colocacion->setProperty("FK_Indicador", clave(f, conexion, QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador")));
        colocacion->setProperty("FK_Entidad", 4242);
        colocacion->setProperty("Limite3", 12.75);
        colocacion->setProperty("Muestra_Mes", true);
        QVERIFY(f.engine->GuardarEntidad(colocacion.get()));
    }

    ImportadorPaquete::Resumen importar(const QByteArray& paquete, bool ensayo = false)
    {
        return ImportadorPaquete(fixture.engine.get()).importar(paquete, ensayo);
    }

    // The bundle is refused with a message that says so, and the library
    // is as it was.
    void rechazado(const QByteArray& paquete, const QString& motivo)
    {
        const QList<int> antes = cuentas(db.connection());
        try {
            importar(paquete);
            QFAIL("the bundle was accepted");
        } catch (const ImportadorPaquete::Rechazo& r) {
            QVERIFY2(r.motivo.contains(motivo), qPrintable(r.motivo));
        }
        QCOMPARE(cuentas(db.connection()), antes);
    }

    QByteArray paqueteDeMuestra()
    {
        OtraBase origen(QStringLiteral("origen.db"));
        llenar(origen.conexion, origen.fixture);
        return exportarTodo(origen.fixture, origen.conexion);
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        fixture.preparar(db.connection());
    }

    // SQLite -> the test database (PostgreSQL in its run) -> SQLite.
    void roundTripKeepsTheLibraryApartFromKeys()
    {
        OtraBase origen(QStringLiteral("origen.db"));
        llenar(origen.conexion, origen.fixture);
        // Keys here start elsewhere, so a bundle that kept them would show.
        db.exec(QStringLiteral("INSERT INTO ut_bi_Perspectiva (uf_Nombre, uf_padre) VALUES ('Relleno', 0)"));
        db.exec(QStringLiteral("DELETE FROM ut_bi_Perspectiva"));
        importar(exportarTodo(origen.fixture, origen.conexion));
        OtraBase destino(QStringLiteral("destino.db"));
        ImportadorPaquete(destino.fixture.engine.get()).importar(exportarTodo(fixture, db.connection()), false);

        const QStringList esperado = sinClaves(origen.conexion);
        QCOMPARE(esperado.size(), 22);
        QCOMPARE(sinClaves(db.connection()), esperado);
        QCOMPARE(sinClaves(destino.conexion), esperado);
        QCOMPARE(cuentas(destino.conexion), cuentas(origen.conexion));
    }

    void reimportCreatesNothingTwice()
    {
        const QByteArray paquete = paqueteDeMuestra();
        const ImportadorPaquete::Resumen primero = importar(paquete);
        QCOMPARE(primero.creados.value(QStringLiteral("metrics")), 4);
        const QList<int> despuesDelPrimero = cuentas(db.connection());
        const ImportadorPaquete::Resumen segundo = importar(paquete);
        QCOMPARE(cuentas(db.connection()), despuesDelPrimero);
        int creados = 0;
        for (int n : segundo.creados)
            creados += n;
        QCOMPARE(creados, 0);
        QCOMPARE(segundo.reutilizados.value(QStringLiteral("metrics")), 4);
        QCOMPARE(segundo.reutilizados.value(QStringLiteral("perspectives")), 5);
    }

    void twinsInTheBundleStayTwo()
    {
        OtraBase origen(QStringLiteral("origen.db"));
        for (int i = 0; i < 2; ++i) {
            std::unique_ptr<QObject> gemela(origen.fixture.engine->CrearEntidad(VendimarBI::cPerspectiva));
            gemela->setProperty("Nombre", QStringLiteral("Gemela"));
            QVERIFY(origen.fixture.engine->GuardarEntidad(gemela.get()));
        }
        const QByteArray paquete = exportarTodo(origen.fixture, origen.conexion);
        QCOMPARE(importar(paquete).creados.value(QStringLiteral("perspectives")), 2);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Perspectiva WHERE uf_Nombre='Gemela'")).toInt(), 2);
        QCOMPARE(importar(paquete).creados.value(QStringLiteral("perspectives")), 0);
    }

    void metricsKeepTheirGuidAndAreMatchedByIt()
    {
        const QByteArray paquete = paqueteDeMuestra();
        importar(paquete);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica WHERE Sys_GUID='{6B1D2A10-6E2B-4C1A-9F00-000000000001}'")).toInt(), 1);
        // Renamed here: still the same metric, so it is reused, not copied.
        db.exec(QStringLiteral("UPDATE ut_bi_Metrica SET uf_Nombre='Otra', uf_FK_Perspectiva=0"));
        QCOMPARE(importar(paquete).creados.value(QStringLiteral("metrics")), 0);
    }

    void dryRunTellsWithoutWriting()
    {
        const ImportadorPaquete::Resumen resumen = importar(paqueteDeMuestra(), true);
        QCOMPARE(resumen.creados.value(QStringLiteral("indicators")), 3);
        QCOMPARE(cuentas(db.connection()), QList<int>(Tablas.size(), 0));
    }

    void damagedOrForeignFilesAreRefused()
    {
        const QByteArray bueno = paqueteDeMuestra();
        rechazado(QByteArray(), QStringLiteral("not a VendimarBI bundle"));
        rechazado(bueno.left(bueno.size() / 2), QStringLiteral("not a VendimarBI bundle"));
        rechazado(R"({"dashboard": {"panels": []}, "schemaVersion": 36})", QStringLiteral("not a VendimarBI bundle"));
        rechazado(QByteArray(50000, 'x'), QStringLiteral("not a VendimarBI bundle"));
        QJsonObject paquete = QJsonDocument::fromJson(bueno).object();
        QJsonObject futuro = paquete;
        futuro.insert(QStringLiteral("version"), 2);
        rechazado(QJsonDocument(futuro).toJson(), QStringLiteral("version"));
        QJsonObject repetida = paquete;
        QJsonArray perspectivas = repetida.value(QStringLiteral("perspectivas")).toArray();
        perspectivas.append(perspectivas.first());
        repetida.insert(QStringLiteral("perspectivas"), perspectivas);
        rechazado(QJsonDocument(repetida).toJson(), QStringLiteral("repeats the key"));
        QJsonObject versionTexto = paquete;
        versionTexto.insert(QStringLiteral("version"), QStringLiteral("1"));
        rechazado(QJsonDocument(versionTexto).toJson(), QStringLiteral("version"));
        QJsonObject sinLista = paquete;
        sinLista.remove(QStringLiteral("metricas"));
        rechazado(QJsonDocument(sinLista).toJson(), QStringLiteral("\"metricas\""));
        QJsonObject malTipo = paquete;
        QJsonArray indicadores = malTipo.value(QStringLiteral("indicadores")).toArray();
        QJsonObject primero = indicadores.at(0).toObject();
        QJsonObject configuracion = primero.value(QStringLiteral("configuracion")).toObject();
        configuracion.insert(configuracion.keys().first(), QStringLiteral("mucho"));
        primero.insert(QStringLiteral("configuracion"), configuracion);
        indicadores.replace(0, primero);
        malTipo.insert(QStringLiteral("indicadores"), indicadores);
        rechazado(QJsonDocument(malTipo).toJson(), QStringLiteral("wrong kind"));
    }

    // The last dashboard's name is too long for its column: by then the
    // perspectives, metrics and indicators are in, and all of them go.
    void failureHalfWayLeavesNothing()
    {
        QJsonObject paquete = QJsonDocument::fromJson(paqueteDeMuestra()).object();
        QJsonArray tableros = paquete.value(QStringLiteral("tableros")).toArray();
        QJsonObject tablero = tableros.last().toObject();
        QJsonObject propiedades = tablero.value(QStringLiteral("propiedades")).toObject();
        propiedades.insert(QStringLiteral("Nombre"), QString(50000, QChar(0x7D22)));
        tablero.insert(QStringLiteral("propiedades"), propiedades);
        tableros.replace(tableros.size() - 1, tablero);
        paquete.insert(QStringLiteral("tableros"), tableros);
        rechazado(QJsonDocument(paquete).toJson(), QStringLiteral("Nothing was written"));
    }

    void closedConnectionIsRefused()
    {
        const QByteArray paquete = paqueteDeMuestra();
        auto otra = db.openAnother();
        EngineFixture cerrada;
        cerrada.preparar(*otra);
        otra->Close();
        try {
            ImportadorPaquete(cerrada.engine.get()).importar(paquete, false);
            QFAIL("imported on a closed connection");
        } catch (const ImportadorPaquete::Rechazo& r) {
            QCOMPARE(r.motivo, QStringLiteral("The engine has no open connection."));
        }
        QCOMPARE(cuentas(db.connection()), QList<int>(Tablas.size(), 0));
    }

    // Under a decimal-comma locale the component writes a fractional bound
    // with a comma and the database refuses the configuration row: the
    // import stops and takes back what it had made.
    void configurationRefusedByTheDatabaseLeavesNothing()
    {
        QJsonObject paquete = QJsonDocument::fromJson(paqueteDeMuestra()).object();
        QJsonArray indicadores = paquete.value(QStringLiteral("indicadores")).toArray();
        QJsonObject barra = indicadores.at(0).toObject();
        QJsonObject configuracion = barra.value(QStringLiteral("configuracion")).toObject();
        QVERIFY(configuracion.contains(QStringLiteral("Dia_Max")));
        configuracion.insert(QStringLiteral("Dia_Max"), 2.5);
        barra.insert(QStringLiteral("configuracion"), configuracion);
        indicadores.replace(0, barra);
        paquete.insert(QStringLiteral("indicadores"), indicadores);
        const QLocale antes;
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
        rechazado(QJsonDocument(paquete).toJson(), QStringLiteral("could not be stored"));
        QLocale::setDefault(antes);
    }

    void refusedRightImportsNothing()
    {
        fixture.um->refused.insert(QStringLiteral("KZ4-TBL-06-001"));
        rechazado(paqueteDeMuestra(), QStringLiteral("KZ4-TBL-06-001"));
        QVERIFY(fixture.um->asked.contains(QStringLiteral("KZ4-TBL-05-001")));
    }

    void perspectiveBundleBringsItsChainAndTheMetricsItsIndicatorsName()
    {
        SchemaInstaller::addDemoData(db.connection());
        const int porCliente = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre='Por cliente'")).toInt();
        const int inventario = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre='Inventario'")).toInt();
        ExportadorPaquete exportador(fixture.engine.get(), db.connection());
        QJsonObject paquete = exportador.perspectiva(porCliente);
        QCOMPARE(paquete.value(QStringLiteral("perspectivas")).toArray().size(), 2); // Ventas / Por cliente
        QCOMPARE(paquete.value(QStringLiteral("metricas")).toArray().size(), 0);
        QCOMPARE(paquete.value(QStringLiteral("formato")).toString(), QStringLiteral("vendimarbi-paquete"));
        QCOMPARE(paquete.value(QStringLiteral("version")).toInt(), 1);

        paquete = ExportadorPaquete(fixture.engine.get(), db.connection()).perspectiva(inventario);
        QCOMPARE(paquete.value(QStringLiteral("perspectivas")).toArray().size(), 1);
        QCOMPARE(paquete.value(QStringLiteral("indicadores")).toArray().size(), 1);
        QCOMPARE(paquete.value(QStringLiteral("metricas")).toArray().size(), 1);
        QVERIFY(ExportadorPaquete(fixture.engine.get(), db.connection()).perspectiva(99999).isEmpty());
    }

    void dashboardBundleBringsItsIndicatorsAndTheirMetrics()
    {
        SchemaInstaller::addDemoData(db.connection());
        const int tablero = db.scalar(QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_Tablero")).toInt();
        const QJsonObject paquete = ExportadorPaquete(fixture.engine.get(), db.connection()).tablero(tablero);
        const QJsonArray tableros = paquete.value(QStringLiteral("tableros")).toArray();
        QCOMPARE(tableros.size(), 1);
        QCOMPARE(tableros.at(0).toObject().value(QStringLiteral("colocaciones")).toArray().size(), 3);
        QCOMPARE(tableros.at(0).toObject().value(QStringLiteral("figuras")).toArray().size(), 2);
        QCOMPARE(paquete.value(QStringLiteral("indicadores")).toArray().size(), 3);
        QCOMPARE(paquete.value(QStringLiteral("metricas")).toArray().size(), 3);
        QVERIFY(ExportadorPaquete(fixture.engine.get(), db.connection()).tablero(99999).isEmpty());
    }

    // Every bash block of the guide, in order, in one shell: LIBRARY is a
    // fresh SQLite file, OTHER the test database.
    void guideExamplesRun()
    {
        QFile guia(QFileInfo(QStringLiteral(__FILE__)).absolutePath() + QStringLiteral("/../docs/health-and-bundles.md"));
        QVERIFY(guia.open(QIODevice::ReadOnly));
        QString script = QStringLiteral("set -eo pipefail\nvbi() { \"$VBI_PROGRAM\" \"$@\"; }\n");
        bool dentro = false;
        int bloques = 0;
        for (const QString& linea : QString::fromUtf8(guia.readAll()).split(QLatin1Char('\n'))) {
            if (!dentro && linea.trimmed() == QLatin1String("```bash")) {
                dentro = true;
                ++bloques;
            } else if (dentro && linea.trimmed() == QLatin1String("```")) {
                dentro = false;
            } else if (dentro) {
                script += linea + QLatin1Char('\n');
            }
        }
        QVERIFY(bloques >= 5);
        CarpetaPrueba carpeta;
        QProcessEnvironment entorno = QProcessEnvironment::systemEnvironment();
        entorno.insert(QStringLiteral("VBI_PROGRAM"), QStringLiteral(VBI_PROGRAM));
        entorno.insert(QStringLiteral("LIBRARY"), QStringLiteral("sqlite://") + carpeta.archivo(QStringLiteral("library.db")));
        entorno.insert(QStringLiteral("OTHER"), db.url());
        QProcess bash;
        bash.setProcessEnvironment(entorno);
        bash.setWorkingDirectory(carpeta.archivo(QString()));
        bash.start(QStringLiteral("bash"), {QStringLiteral("-c"), script});
        QVERIFY(bash.waitForFinished(120000));
        const QString salida = QString::fromUtf8(bash.readAllStandardOutput());
        QVERIFY2(bash.exitCode() == 0, qPrintable(salida + QString::fromUtf8(bash.readAllStandardError())));
        QVERIFY(salida.contains(QStringLiteral("metrics: 0 created, 3 reused")));
        QVERIFY(salida.contains(QStringLiteral("[indicador-sin-perspectiva]")));
        QVERIFY(salida.contains(QStringLiteral("exit status 1")));
    }

    void commandsExportAndImportThroughFiles()
    {
        CarpetaPrueba carpeta;
        SchemaInstaller::addDemoData(db.connection());
        const QString archivo = carpeta.archivo(QStringLiteral("biblioteca.json"));
        QProcess vbi;
        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("export"), db.url(), QStringLiteral("--all"), QStringLiteral("--out"), archivo});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 0);
        db.clear();
        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("import"), db.url(), archivo});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 0);
        QVERIFY(QString::fromUtf8(vbi.readAllStandardOutput()).contains(QStringLiteral("metrics: 3 created, 0 reused")));
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_TabIndicador")).toInt(), 3);

        QFile ajeno(carpeta.archivo(QStringLiteral("ajeno.json")));
        QVERIFY(ajeno.open(QIODevice::WriteOnly));
        ajeno.write("[1, 2, 3]");
        ajeno.close();
        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("import"), db.url(), ajeno.fileName()});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 1);
        QVERIFY(QString::fromUtf8(vbi.readAllStandardError()).contains(QStringLiteral("not a VendimarBI bundle")));

        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("export"), db.url(), QStringLiteral("--perspective"),
                                                db.scalar(QStringLiteral("SELECT MIN(Sys_PK) FROM ut_bi_Perspectiva")).toString()});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 0);
        const QJsonObject enSalida = QJsonDocument::fromJson(vbi.readAllStandardOutput()).object();
        QCOMPARE(enSalida.value(QStringLiteral("formato")).toString(), QStringLiteral("vendimarbi-paquete"));

        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("export"), db.url(), QStringLiteral("--all"), QStringLiteral("--dashboard"), QStringLiteral("1")});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 2);

        vbi.start(QStringLiteral(VBI_PROGRAM), {QStringLiteral("export"), db.url(), QStringLiteral("--dashboard"), QStringLiteral("99999")});
        QVERIFY(vbi.waitForFinished(60000));
        QCOMPARE(vbi.exitCode(), 1);
    }
};

QTEST_MAIN(TstPaquetes)
#include "tst_paquetes.moc"
