// Tables changed by someone else while a host is connected: another
// connection or another program adds or widens a column, and the next Load
// and Save of every entity and configuration table work as before.
#include "ado/recordset.h"
#include "model/efigura.h"
#include "model/eindicador.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "model/etabindicador.h"
#include "model/etablero.h"
#include "testdatabase.h"

#include <QProcess>
#include <QTest>
#include <functional>
#include <memory>

namespace {

// An entity class, its table, and a property stored in one of its columns.
struct Entidad {
    const QMetaObject* clase;
    const char* tabla;
    const char* propiedad;
    const char* columnaAncha; // a column PostgreSQL can widen in place
    const char* tipoAncho;
};

const Entidad Entidades[] = {
    {&EPerspectiva::staticMetaObject, "ut_bi_Perspectiva", "Nombre", "uf_Nombre", "varchar(60)"},
    {&EMetrica::staticMetaObject, "ut_bi_Metrica", "Nombre", "uf_Nombre", "varchar(60)"},
    {&EIndicador::staticMetaObject, "ut_bi_Indicador", "Nombre", "uf_Nombre", "varchar(60)"},
    {&ETablero::staticMetaObject, "ut_bi_Tablero", "Nombre", "uf_Nombre", "varchar(60)"},
    {&ETabIndicador::staticMetaObject, "ut_bi_TabIndicador", "FK_Entidad", "uf_FK_Entidad", "bigint"},
    {&EFigura::staticMetaObject, "ut_bi_Fig", "Texto", "uf_Texto", "varchar(300)"},
};

// A configuration kind, its table, and one of its properties.
struct Configuracion {
    int tipo;
    const char* tabla;
    const char* propiedad;
};

const Configuracion Configuraciones[] = {
    {1, "ut_bi_BarraProg", "Dia_Min"},
    {2, "ut_bi_MatrizGraf", "Grafico_Titulo"},
    {3, "ut_bi_Semaforo", "Dia_Limite1"},
};

using Alteracion = std::function<void(const QString& sql)>;

bool guardar(QObject* entidad, QObject* cnx)
{
    bool hecho = false;
    QMetaObject::invokeMethod(entidad, "Save", Q_RETURN_ARG(bool, hecho), Q_ARG(QObject*, cnx));
    return hecho;
}

std::unique_ptr<QObject> cargar(const QMetaObject& clase, QObject* cnx, int clave)
{
    std::unique_ptr<QObject> entidad(clase.newInstance());
    bool hecho = false;
    QMetaObject::invokeMethod(entidad.get(), "Load", Q_RETURN_ARG(bool, hecho), Q_ARG(QObject*, cnx),
                              Q_ARG(int, clave));
    return hecho ? std::move(entidad) : nullptr;
}

QVariant valorDe(const Entidad& entidad, int n)
{
    if (qstrcmp(entidad.propiedad, "FK_Entidad") == 0)
        return 100 + n;
    return QStringLiteral("Valor %1").arg(n);
}

} // namespace

class TstCambioEsquema : public QObject {
    Q_OBJECT

    TestDatabase db;
    int m_columnas = 0;

    QString columnaNueva() { return QStringLiteral("uf_Agregada%1 integer").arg(++m_columnas); }

    // Another connection of this same program changes the table.
    Alteracion otraConexion()
    {
        return [this](const QString& sql) { db.openAnother()->Execute(sql); };
    }

    // Another program, the database's own command-line client, changes it.
    Alteracion otroPrograma()
    {
        return [this](const QString& sql) {
            QProcess cliente;
            if (db.isPostgres())
                cliente.start(QStringLiteral("psql"), {db.url(), QStringLiteral("-v"), QStringLiteral("ON_ERROR_STOP=1"),
                                                       QStringLiteral("-q"), QStringLiteral("-c"), sql});
            else
                cliente.start(QStringLiteral("sqlite3"), {db.url().mid(int(qstrlen("sqlite://"))), sql});
            QVERIFY2(cliente.waitForFinished(60000), "the client did not finish");
            QVERIFY2(cliente.exitCode() == 0, cliente.readAllStandardError().constData());
        };
    }

    // Saves a new entity and loads it, so that the connection keeps the
    // table's statements; then the table changes, and loads and saves of the
    // same and of new rows still read and write what they should.
    void sobreviveAlCambio(const Entidad& entidad, const Alteracion& alterar, const QString& cambio)
    {
        QObject* cnx = &db.connection();
        std::unique_ptr<QObject> nueva(entidad.clase->newInstance());
        nueva->setProperty(entidad.propiedad, valorDe(entidad, 1));
        QVERIFY(guardar(nueva.get(), cnx));
        const int clave = nueva->property("Sys_PK").toInt();
        QVERIFY(cargar(*entidad.clase, cnx, clave));

        alterar(QStringLiteral("ALTER TABLE %1 %2").arg(QLatin1String(entidad.tabla), cambio));
        if (QTest::currentTestFailed())
            return;

        auto leida = cargar(*entidad.clase, cnx, clave);
        QVERIFY2(leida, "the row no longer loads");
        QCOMPARE(leida->property(entidad.propiedad), valorDe(entidad, 1));
        leida->setProperty(entidad.propiedad, valorDe(entidad, 2));
        QVERIFY2(guardar(leida.get(), cnx), "the row no longer saves");
        std::unique_ptr<QObject> otra(entidad.clase->newInstance());
        otra->setProperty(entidad.propiedad, valorDe(entidad, 3));
        QVERIFY2(guardar(otra.get(), cnx), "a new row no longer saves");

        auto otraConexion = db.openAnother();
        QCOMPARE(cargar(*entidad.clase, otraConexion.get(), clave)->property(entidad.propiedad), valorDe(entidad, 2));
        const int otraClave = otra->property("Sys_PK").toInt();
        QCOMPARE(cargar(*entidad.clase, cnx, otraClave)->property(entidad.propiedad), valorDe(entidad, 3));
    }

    void datosEntidades()
    {
        QTest::addColumn<int>("indice");
        for (int i = 0; i < int(std::size(Entidades)); ++i)
            QTest::newRow(Entidades[i].tabla) << i;
    }

    // An indicator of the kind keeps its configuration through a change of
    // the configuration's table.
    void configuracionSobreviveAlCambio(const Configuracion& conf, const Alteracion& alterar)
    {
        QObject* cnx = &db.connection();
        EIndicador indicador;
        indicador.setTipo(conf.tipo);
        indicador.Configuracion()->setProperty(conf.propiedad, 5);
        QVERIFY(indicador.Save(cnx));
        EIndicador antes;
        QVERIFY(antes.Load(cnx, indicador.Sys_PK()));

        alterar(QStringLiteral("ALTER TABLE %1 ADD COLUMN %2").arg(QLatin1String(conf.tabla), columnaNueva()));
        if (QTest::currentTestFailed())
            return;

        EIndicador despues;
        QVERIFY(despues.Load(cnx, indicador.Sys_PK()));
        QCOMPARE(despues.Configuracion()->property(conf.propiedad).toString(), QStringLiteral("5"));
        despues.Configuracion()->setProperty(conf.propiedad, 7);
        QVERIFY(despues.Save(cnx));
        EIndicador otraVez;
        QVERIFY(otraVez.Load(cnx, indicador.Sys_PK()));
        QCOMPARE(otraVez.Configuracion()->property(conf.propiedad).toString(), QStringLiteral("7"));
    }

    void datosConfiguraciones()
    {
        QTest::addColumn<int>("indice");
        for (int i = 0; i < int(std::size(Configuraciones)); ++i)
            QTest::newRow(Configuraciones[i].tabla) << i;
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void columnAddedByAnotherConnectionLeavesLoadAndSaveWorking_data() { datosEntidades(); }
    void columnAddedByAnotherConnectionLeavesLoadAndSaveWorking()
    {
        QFETCH(int, indice);
        sobreviveAlCambio(Entidades[indice], otraConexion(), QStringLiteral("ADD COLUMN ") + columnaNueva());
    }

    void columnAddedByAnotherProgramLeavesLoadAndSaveWorking_data() { datosEntidades(); }
    void columnAddedByAnotherProgramLeavesLoadAndSaveWorking()
    {
        QFETCH(int, indice);
        sobreviveAlCambio(Entidades[indice], otroPrograma(), QStringLiteral("ADD COLUMN ") + columnaNueva());
    }

    void columnAddedThroughTheSameConnectionLeavesLoadAndSaveWorking_data() { datosEntidades(); }
    void columnAddedThroughTheSameConnectionLeavesLoadAndSaveWorking()
    {
        QFETCH(int, indice);
        sobreviveAlCambio(Entidades[indice], [this](const QString& sql) { db.exec(sql); },
                          QStringLiteral("ADD COLUMN ") + columnaNueva());
    }

    void columnWidenedByAnotherProgramLeavesLoadAndSaveWorking_data() { datosEntidades(); }
    void columnWidenedByAnotherProgramLeavesLoadAndSaveWorking()
    {
        if (!db.isPostgres())
            QSKIP("SQLite has no statement that changes a column's type in place");
        QFETCH(int, indice);
        const Entidad& entidad = Entidades[indice];
        sobreviveAlCambio(entidad, otroPrograma(),
                          QStringLiteral("ALTER COLUMN %1 TYPE %2")
                              .arg(QLatin1String(entidad.columnaAncha), QLatin1String(entidad.tipoAncho)));
    }

    void anyQueryAfterAnotherConnectionAddsAColumnSeesTheNewColumn()
    {
        EMetrica metrica;
        metrica.setNombre(QStringLiteral("Ventas"));
        QVERIFY(metrica.Save(&db.connection()));
        const QString todas = QStringLiteral("SELECT * FROM ut_bi_Metrica ORDER BY uf_Nombre");
        ado::Recordset antes;
        antes.setActiveConnection(&db.connection());
        antes.setSource(todas);
        antes.Open();
        const int columnas = antes.FieldCount();

        otraConexion()(QStringLiteral("ALTER TABLE ut_bi_Metrica ADD COLUMN ") + columnaNueva());
        for (int vez = 0; vez < 2; ++vez) {
            ado::Recordset despues;
            despues.setActiveConnection(&db.connection());
            despues.setSource(todas);
            despues.Open();
            QCOMPARE(despues.FieldCount(), columnas + 1);
            QCOMPARE(despues.Fields(QStringLiteral("uf_Nombre")).toString(), QStringLiteral("Ventas"));
        }
    }

    void readsLeaveNoTransactionOfTheirOwnOpen()
    {
        EMetrica metrica;
        metrica.setNombre(QStringLiteral("Ventas"));
        QVERIFY(metrica.Save(&db.connection()));
        EMetrica leida;
        QVERIFY(leida.Load(&db.connection(), metrica.Sys_PK()));
        // A transaction still open would refuse to start another one.
        db.exec(QStringLiteral("BEGIN"));
        db.exec(QStringLiteral("COMMIT"));
    }

    void aTransactionTheHostOpenedStaysTheHosts()
    {
        db.exec(QStringLiteral("BEGIN"));
        EMetrica metrica;
        metrica.setNombre(QStringLiteral("Provisional"));
        QVERIFY(metrica.Save(&db.connection()));
        EMetrica leida;
        QVERIFY(leida.Load(&db.connection(), metrica.Sys_PK()));
        QCOMPARE(leida.Nombre(), QStringLiteral("Provisional"));
        db.exec(QStringLiteral("ROLLBACK"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")).toInt(), 0);
    }

    void configurationTableChangedByAnotherConnectionStillLoadsAndSaves_data() { datosConfiguraciones(); }
    void configurationTableChangedByAnotherConnectionStillLoadsAndSaves()
    {
        QFETCH(int, indice);
        configuracionSobreviveAlCambio(Configuraciones[indice], otraConexion());
    }

    void configurationTableChangedByAnotherProgramStillLoadsAndSaves_data() { datosConfiguraciones(); }
    void configurationTableChangedByAnotherProgramStillLoadsAndSaves()
    {
        QFETCH(int, indice);
        configuracionSobreviveAlCambio(Configuraciones[indice], otroPrograma());
    }
};

QTEST_GUILESS_MAIN(TstCambioEsquema)
#include "tst_cambioesquema.moc"
