// The indicator entity: its kind and the configuration object that goes with
// it, its row in ut_bi_Indicador, and how saving replaces the configuration row.
#include "ado/connection.h"
#include "model/ebarraprogreso.h"
#include "model/eindicador.h"
#include "model/ematrizgrafico.h"
#include "model/esemaforo.h"
#include "entitychecks.h"
#include "testdatabase.h"
#include "vb/automationerror.h"

#include <QCoreApplication>
#include <QLocale>
#include <QMetaProperty>
#include <QPointer>
#include <QTest>
#include <functional>
#include <memory>

namespace {

const QString BorrarSemaforo = QStringLiteral("DELETE FROM ut_bi_Semaforo WHERE uf_FK_Indicador=");
const QString BorrarMatriz = QStringLiteral("DELETE FROM ut_bi_MatrizGraf WHERE uf_FK_Indicador=");
const QString BorrarBarra = QStringLiteral("DELETE FROM ut_bi_BarraProg WHERE uf_FK_Indicador=");

// A configuration of no known class: records the calls that reach it by name.
class ConfiguracionGrabadora : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE bool Load(QObject* cnx, int FK)
    {
        loads.append(FK);
        conexion = cnx;
        return false;
    }
    Q_INVOKABLE bool Save(QObject* cnx, int FK)
    {
        saves.append(FK);
        conexion = cnx;
        return false;
    }

    QList<int> loads;
    QList<int> saves;
    QObject* conexion = nullptr;
};

// A configuration whose methods fail the way a broken automation object would.
class ConfiguracionQueFalla : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE bool Load(QObject*, int) { throw vb::AutomationError(5, QStringLiteral("Load")); }
    Q_INVOKABLE bool Save(QObject*, int) { throw vb::AutomationError(5, QStringLiteral("Save")); }
};

void runDeferredDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class TstEIndicador : public QObject {
    Q_OBJECT

    TestDatabase db;
    QLocale savedLocale;

    int rows(const QString& table, int fk)
    {
        return db.scalar(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE uf_FK_Indicador=%2").arg(table).arg(fk)).toInt();
    }

    int indicatorRows() { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Indicador")).toInt(); }

    QVariant column(const QString& name, int pk)
    {
        return db.scalar(QStringLiteral("SELECT %1 FROM ut_bi_Indicador WHERE Sys_PK=%2").arg(name).arg(pk));
    }

    // One row in each configuration table for the key, as a stale leftover.
    void seedAllConfigurationRows(int pk)
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_BarraProg (uf_FK_Indicador, uf_Dia_Min) VALUES (%1, 1)").arg(pk));
        db.exec(QStringLiteral("INSERT INTO ut_bi_Semaforo (uf_FK_Indicador, uf_Dia_Lim1) VALUES (%1, 1)").arg(pk));
        db.exec(QStringLiteral("INSERT INTO ut_bi_MatrizGraf (uf_FK_Indicador, uf_G_Titulo) VALUES (%1, 'x')").arg(pk));
    }

    int configurationRows(int pk)
    {
        return rows(QStringLiteral("ut_bi_BarraProg"), pk) + rows(QStringLiteral("ut_bi_Semaforo"), pk)
            + rows(QStringLiteral("ut_bi_MatrizGraf"), pk);
    }

    QStringList logged(const std::function<void()>& action)
    {
        ado::Connection& cnx = db.connection();
        cnx.clearLog();
        cnx.setLogSql(true);
        action();
        cnx.setLogSql(false);
        const QStringList log = cnx.executedSql();
        cnx.clearLog();
        return log;
    }

    // A saved indicator of a kind, with one recognisable setting.
    int savedIndicator(int tipo, const QString& nombre = QStringLiteral("Ventas"))
    {
        EIndicador indicador;
        indicador.setNombre(nombre);
        indicador.setFK_Perspectiva(3);
        indicador.setTipo(tipo);
        if (auto* barra = qobject_cast<EBarraProgreso*>(indicador.Configuracion()))
            barra->setDia_Max(100);
        if (auto* semaforo = qobject_cast<ESemaforo*>(indicador.Configuracion()))
            semaforo->setDia_Limite2(100);
        if (auto* matriz = qobject_cast<EMatrizGrafico*>(indicador.Configuracion()))
            matriz->setMatriz_Metrica1(100);
        return indicador.Save(&db.connection()) ? indicador.Sys_PK() : 0;
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        savedLocale = QLocale();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void cleanup()
    {
        QLocale::setDefault(savedLocale);
        runDeferredDeletes();
    }

    // --- automation identity ----------------------------------------------

    void automationIdentityIsFixed()
    {
        verifyAutomationIdentity(EIndicador::staticMetaObject, QStringLiteral("{B8779F68-2AD2-47E2-9A5C-41161F4A182C}"),
                                 QStringLiteral("{337FE020-548E-49CA-925F-E7A4D67AACBC}"));
    }

    void membersComeInInterfaceOrder()
    {
        const QMetaObject& meta = EIndicador::staticMetaObject;
        QStringList properties;
        QList<QMetaType> types;
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
            properties.append(QString::fromLatin1(meta.property(i).name()));
            types.append(meta.property(i).metaType());
            QVERIFY(meta.property(i).isWritable());
        }
        QCOMPARE(properties, (QStringList{QStringLiteral("Sys_PK"), QStringLiteral("FK_Perspectiva"),
                                          QStringLiteral("Nombre"), QStringLiteral("Configuracion"),
                                          QStringLiteral("Tipo")}));
        QCOMPARE(types, (QList<QMetaType>{QMetaType::fromType<int>(), QMetaType::fromType<int>(),
                                          QMetaType::fromType<QString>(), QMetaType::fromType<QObject*>(),
                                          QMetaType::fromType<int>()}));
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            if (meta.method(i).methodType() == QMetaMethod::Method)
                methods.append(QString::fromLatin1(meta.method(i).methodSignature()));
        }
        QCOMPARE(methods, (QStringList{QStringLiteral("Load(QObject*,int)"), QStringLiteral("Save(QObject*)")}));
    }

    // --- kind and configuration -------------------------------------------

    void newIndicatorIsProgressBarWithEmptyConfiguration()
    {
        EIndicador indicador;
        QCOMPARE(indicador.Tipo(), 1);
        QCOMPARE(indicador.Sys_PK(), 0);
        QCOMPARE(indicador.FK_Perspectiva(), 0);
        QVERIFY(indicador.Nombre().isEmpty());
        auto* barra = qobject_cast<EBarraProgreso*>(indicador.Configuracion());
        QVERIFY(barra);
        QCOMPARE(barra->Dia_Max(), 0.0);
        QCOMPARE(barra->FK_Metrica(), 0);
        // Two indicators never share a configuration.
        EIndicador otro;
        QVERIFY(otro.Configuracion() != indicador.Configuracion());
    }

    void sameKindAgainKeepsConfigurationAndItsSettings()
    {
        EIndicador indicador;
        indicador.setTipo(3);
        auto* semaforo = qobject_cast<ESemaforo*>(indicador.Configuracion());
        QVERIFY(semaforo);
        semaforo->setDia_Limite1(10);
        semaforo->setAno_Limite2(20);
        semaforo->setDescendente(true);
        indicador.setTipo(3);
        QCOMPARE(indicador.Configuracion(), semaforo);
        QCOMPARE(semaforo->Dia_Limite1(), 10.0);
        QCOMPARE(semaforo->Ano_Limite2(), 20.0);
        QVERIFY(semaforo->Descendente());
        // Through the property system as a late-bound host would put it.
        QVERIFY(indicador.setProperty("Tipo", 3));
        QCOMPARE(indicador.property("Configuracion").value<QObject*>(), semaforo);
    }

    void changingKindBringsEmptyConfigurationOfNewKind()
    {
        EIndicador indicador;
        indicador.setTipo(3);
        auto* first = qobject_cast<ESemaforo*>(indicador.Configuracion());
        QVERIFY(first);
        first->setDia_Limite1(10);
        first->setMes_Limite2(30);
        indicador.setTipo(2);
        QVERIFY(qobject_cast<EMatrizGrafico*>(indicador.Configuracion()));
        QCOMPARE(indicador.Tipo(), 2);
        indicador.setTipo(3);
        auto* second = qobject_cast<ESemaforo*>(indicador.Configuracion());
        QVERIFY(second);
        QCOMPARE(second->Dia_Limite1(), 0.0);
        QCOMPARE(second->Mes_Limite2(), 0.0);
        QVERIFY(!second->Descendente());
        indicador.setTipo(1);
        QVERIFY(qobject_cast<EBarraProgreso*>(indicador.Configuracion()));
    }

    void kindOutsideTheThreeLeavesNoConfiguration_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::newRow("0") << 0;
        QTest::newRow("4") << 4;
        QTest::newRow("-1") << -1;
    }

    void kindOutsideTheThreeLeavesNoConfiguration()
    {
        QFETCH(int, tipo);
        EIndicador indicador;
        indicador.setTipo(tipo);
        QCOMPARE(indicador.Tipo(), tipo);
        QVERIFY(!indicador.Configuracion());
        indicador.setTipo(2);
        QVERIFY(qobject_cast<EMatrizGrafico*>(indicador.Configuracion()));
    }

    void replacedConfigurationStaysUsableUntilEventsRun()
    {
        EIndicador indicador;
        QPointer<QObject> old = indicador.Configuracion();
        indicador.setTipo(3);
        // A caller still holding the bar this instant can finish with it.
        QVERIFY(old);
        qobject_cast<EBarraProgreso*>(old.data())->setDia_Min(1);
        runDeferredDeletes();
        QVERIFY(!old);
        QVERIFY(qobject_cast<ESemaforo*>(indicador.Configuracion()));
    }

    void configurationPutFromOutsideIsStoredUncheckedAndNotDestroyed()
    {
        ESemaforo ajeno;
        ajeno.setDia_Limite1(5);
        {
            EIndicador indicador;
            QPointer<QObject> own = indicador.Configuracion();
            QVERIFY(indicador.setProperty("Configuracion", QVariant::fromValue<QObject*>(&ajeno)));
            // No check against the kind: a progress-bar indicator now holds a traffic light.
            QCOMPARE(indicador.Tipo(), 1);
            QCOMPARE(indicador.Configuracion(), &ajeno);
            runDeferredDeletes();
            QVERIFY(!own);
            // Changing the kind lets go of it without destroying it.
            indicador.setTipo(3);
            QVERIFY(indicador.Configuracion() != &ajeno);
            indicador.setConfiguracion(&ajeno);
        }
        runDeferredDeletes();
        QCOMPARE(ajeno.Dia_Limite1(), 5.0);
    }

    void configurationDestroyedByItsOwnerReadsAsNone()
    {
        EIndicador indicador;
        auto ajeno = std::make_unique<EMatrizGrafico>();
        indicador.setConfiguracion(ajeno.get());
        ajeno.reset();
        QVERIFY(!indicador.Configuracion());
        QVERIFY(indicador.Save(&db.connection()));
        EIndicador leido;
        QVERIFY(leido.Load(&db.connection(), indicador.Sys_PK()));
    }

    void configurationCanBePutToNone()
    {
        EIndicador indicador;
        indicador.setConfiguracion(nullptr);
        QVERIFY(!indicador.Configuracion());
        QCOMPARE(indicador.Tipo(), 1);
        QVERIFY(indicador.Save(&db.connection()));
        QCOMPARE(configurationRows(indicador.Sys_PK()), 0);
    }

    // --- Save -------------------------------------------------------------

    void saveOfNewIndicatorStoresRowAndConfiguration()
    {
        EIndicador indicador;
        indicador.setNombre(QStringLiteral("Ventas diarias"));
        indicador.setFK_Perspectiva(12);
        auto* barra = qobject_cast<EBarraProgreso*>(indicador.Configuracion());
        barra->setFK_Metrica(8);
        barra->setDia_Max(250.5);
        QVERIFY(indicador.Save(&db.connection()));
        const int pk = indicador.Sys_PK();
        QVERIFY(pk > 0);
        QCOMPARE(column(QStringLiteral("uf_Nombre"), pk).toString(), QStringLiteral("Ventas diarias"));
        QCOMPARE(column(QStringLiteral("uf_Tipo"), pk).toInt(), 1);
        QCOMPARE(column(QStringLiteral("uf_FK_Perspectiva"), pk).toInt(), 12);
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Dia_Max FROM ut_bi_BarraProg WHERE uf_FK_Indicador=%1").arg(pk))
                     .toDouble(),
                 250.5);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_FK_Metrica FROM ut_bi_BarraProg WHERE uf_FK_Indicador=%1").arg(pk))
                     .toInt(),
                 8);
    }

    void saveRunsRowWriteThenThreeDeletesThenInsert()
    {
        EIndicador indicador;
        indicador.setNombre(QStringLiteral("Orden"));
        auto* barra = qobject_cast<EBarraProgreso*>(indicador.Configuracion());
        barra->setDia_Min(1.5);
        bool saved = false;
        const QStringList log = logged([&] { saved = indicador.Save(&db.connection()); });
        QVERIFY(saved);
        const QString key = QString::number(indicador.Sys_PK());
        QCOMPARE(log.size(), 5);
        QVERIFY2(log.at(0).startsWith(QStringLiteral("INSERT INTO ut_bi_Indicador")), qPrintable(log.at(0)));
        QCOMPARE(log.at(1), BorrarSemaforo + key);
        QCOMPARE(log.at(2), BorrarMatriz + key);
        QCOMPARE(log.at(3), BorrarBarra + key);
        QVERIFY2(log.at(4).startsWith(QStringLiteral("INSERT INTO ut_bi_barraprog (")), qPrintable(log.at(4)));
        QVERIFY2(log.at(4).contains(QStringLiteral(") VALUES (") + key + QStringLiteral(",0,1.5,0,")),
                 qPrintable(log.at(4)));
    }

    void saveOfExistingIndicatorLocatesUpdatesAndReplacesConfiguration()
    {
        const int pk = savedIndicator(3);
        QVERIFY(pk > 0);
        EIndicador indicador;
        QVERIFY(indicador.Load(&db.connection(), pk));
        qobject_cast<ESemaforo*>(indicador.Configuracion())->setDia_Limite2(7.25);
        bool saved = false;
        const QStringList log = logged([&] { saved = indicador.Save(&db.connection()); });
        QVERIFY(saved);
        const QString key = QString::number(pk);
        QCOMPARE(log.size(), 6);
        QVERIFY2(log.at(0).startsWith(QStringLiteral("SELECT")), qPrintable(log.at(0)));
        QVERIFY2(log.at(1).startsWith(QStringLiteral("UPDATE ut_bi_Indicador")), qPrintable(log.at(1)));
        QCOMPARE(log.mid(2, 3), (QStringList{BorrarSemaforo + key, BorrarMatriz + key, BorrarBarra + key}));
        QVERIFY2(log.at(5).startsWith(QStringLiteral("INSERT INTO ut_bi_semaforo (")), qPrintable(log.at(5)));
        QCOMPARE(rows(QStringLiteral("ut_bi_Semaforo"), pk), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Dia_Lim2 FROM ut_bi_Semaforo WHERE uf_FK_Indicador=%1").arg(pk))
                     .toDouble(),
                 7.25);
    }

    void savingNewIndicatorTwiceUpdatesTheSameRow()
    {
        EIndicador indicador;
        indicador.setNombre(QStringLiteral("Uno"));
        QVERIFY(indicador.Save(&db.connection()));
        const int pk = indicador.Sys_PK();
        indicador.setNombre(QStringLiteral("Dos"));
        QVERIFY(indicador.Save(&db.connection()));
        QCOMPARE(indicador.Sys_PK(), pk);
        QCOMPARE(indicatorRows(), 1);
        QCOMPARE(column(QStringLiteral("uf_Nombre"), pk).toString(), QStringLiteral("Dos"));
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 1);
    }

    void changingKindAndSavingLeavesOnlyTheNewKindsRow()
    {
        const int pk = savedIndicator(1);
        EIndicador indicador;
        QVERIFY(indicador.Load(&db.connection(), pk));
        indicador.setTipo(2);
        qobject_cast<EMatrizGrafico*>(indicador.Configuracion())->setGrafico_Titulo(QStringLiteral("Nuevo"));
        QVERIFY(indicador.Save(&db.connection()));
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 0);
        QCOMPARE(rows(QStringLiteral("ut_bi_Semaforo"), pk), 0);
        QCOMPARE(rows(QStringLiteral("ut_bi_MatrizGraf"), pk), 1);
        QCOMPARE(column(QStringLiteral("uf_Tipo"), pk).toInt(), 2);
    }

    void saveClearsStaleRowsOfEveryKind()
    {
        const int pk = savedIndicator(2);
        seedAllConfigurationRows(pk);
        EIndicador indicador;
        QVERIFY(indicador.Load(&db.connection(), pk));
        QVERIFY(indicador.Save(&db.connection()));
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 0);
        QCOMPARE(rows(QStringLiteral("ut_bi_Semaforo"), pk), 0);
        QCOMPARE(rows(QStringLiteral("ut_bi_MatrizGraf"), pk), 1);
    }

    void saveLeavesOtherIndicatorsConfigurationAlone()
    {
        const int other = savedIndicator(1, QStringLiteral("Otro"));
        seedAllConfigurationRows(other);
        const int pk = savedIndicator(3);
        QVERIFY(pk != other);
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), other), 2);
        QCOMPARE(rows(QStringLiteral("ut_bi_Semaforo"), other), 1);
        QCOMPARE(rows(QStringLiteral("ut_bi_MatrizGraf"), other), 1);
    }

    void kindWithoutConfigurationStillSavesAndClearsAllThreeTables_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::newRow("0") << 0;
        QTest::newRow("4") << 4;
    }

    void kindWithoutConfigurationStillSavesAndClearsAllThreeTables()
    {
        QFETCH(int, tipo);
        const int pk = savedIndicator(1);
        seedAllConfigurationRows(pk);
        EIndicador indicador;
        QVERIFY(indicador.Load(&db.connection(), pk));
        indicador.setTipo(tipo);
        QVERIFY(!indicador.Configuracion());
        bool saved = false;
        const QStringList log = logged([&] { saved = indicador.Save(&db.connection()); });
        QVERIFY(saved);
        QCOMPARE(column(QStringLiteral("uf_Tipo"), pk).toInt(), tipo);
        QCOMPARE(configurationRows(pk), 0);
        QCOMPARE(log.size(), 5); // locate, update, three deletes, and no insert
        QCOMPARE(log.mid(2), (QStringList{BorrarSemaforo + QString::number(pk), BorrarMatriz + QString::number(pk),
                                          BorrarBarra + QString::number(pk)}));
    }

    void saveOfDeletedRowIsFalseAndTouchesNothing()
    {
        EIndicador indicador;
        indicador.setNombre(QStringLiteral("Borrado"));
        QVERIFY(indicador.Save(&db.connection()));
        const int pk = indicador.Sys_PK();
        auto other = db.openAnother();
        other->Execute(QStringLiteral("DELETE FROM ut_bi_Indicador WHERE Sys_PK=%1").arg(pk));
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 1);
        indicador.setNombre(QStringLiteral("Resucitado"));
        bool saved = true;
        const QStringList log = logged([&] { saved = indicador.Save(&db.connection()); });
        QVERIFY(!saved);
        QCOMPARE(indicador.Sys_PK(), pk);
        QCOMPARE(indicatorRows(), 0);
        // No delete and no configuration save follow a failed row write.
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 1);
        for (const QString& sql : log) {
            QVERIFY2(!sql.startsWith(QStringLiteral("DELETE"), Qt::CaseInsensitive), qPrintable(sql));
            QVERIFY2(!sql.startsWith(QStringLiteral("INSERT"), Qt::CaseInsensitive), qPrintable(sql));
        }
    }

    void saveOfUnknownKeyIsFalseAndNeverInserts()
    {
        EIndicador indicador;
        indicador.setSys_PK(987654);
        auto recorder = std::make_unique<ConfiguracionGrabadora>();
        indicador.setConfiguracion(recorder.get());
        QVERIFY(!indicador.Save(&db.connection()));
        QCOMPARE(indicatorRows(), 0);
        QVERIFY(recorder->saves.isEmpty());
    }

    void fractionalBoundsUnderDecimalCommaLeaveIndicatorWithoutConfigurationRow()
    {
        const int pk = savedIndicator(1);
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 1);
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        EIndicador indicador;
        QVERIFY(indicador.Load(&db.connection(), pk));
        auto* barra = qobject_cast<EBarraProgreso*>(indicador.Configuracion());
        barra->setDia_Min(0.5);
        barra->setDia_Max(99.75);
        indicador.setNombre(QStringLiteral("Con coma"));
        QVERIFY(indicador.Save(&db.connection()));
        QCOMPARE(column(QStringLiteral("uf_Nombre"), pk).toString(), QStringLiteral("Con coma"));
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 0);
    }

    void wholeBoundsUnderDecimalCommaAreSaved()
    {
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        EIndicador indicador;
        auto* barra = qobject_cast<EBarraProgreso*>(indicador.Configuracion());
        barra->setDia_Min(-10);
        barra->setAno_Max(1000000);
        QVERIFY(indicador.Save(&db.connection()));
        EIndicador leido;
        QVERIFY(leido.Load(&db.connection(), indicador.Sys_PK()));
        auto* leida = qobject_cast<EBarraProgreso*>(leido.Configuracion());
        QVERIFY(leida);
        QCOMPARE(leida->Dia_Min(), -10.0);
        QCOMPARE(leida->Ano_Max(), 1000000.0);
    }

    void trafficLightDirectionIsStoredAsOneAndReadBack()
    {
        EIndicador indicador;
        indicador.setTipo(3);
        qobject_cast<ESemaforo*>(indicador.Configuracion())->setDescendente(true);
        QVERIFY(indicador.Save(&db.connection()));
        const int pk = indicador.Sys_PK();
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Invertido FROM ut_bi_Semaforo WHERE uf_FK_Indicador=%1").arg(pk))
                     .toInt(),
                 1);
        EIndicador leido;
        QVERIFY(leido.Load(&db.connection(), pk));
        QVERIFY(qobject_cast<ESemaforo*>(leido.Configuracion())->Descendente());
    }

    void chartTitleLosesApostrophesThroughTheIndicator()
    {
        EIndicador indicador;
        indicador.setTipo(2);
        qobject_cast<EMatrizGrafico*>(indicador.Configuracion())
            ->setGrafico_Titulo(QStringLiteral("L'año \"récord\" de O'Brien 🙂"));
        QVERIFY(indicador.Save(&db.connection()));
        EIndicador leido;
        QVERIFY(leido.Load(&db.connection(), indicador.Sys_PK()));
        QCOMPARE(qobject_cast<EMatrizGrafico*>(leido.Configuracion())->Grafico_Titulo(),
                 QStringLiteral("Laño \"récord\" de OBrien 🙂"));
    }

    // --- Load -------------------------------------------------------------

    void loadReadsRowAndConfigurationOfEachKind_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::newRow("progress bar") << 1;
        QTest::newRow("matrix and chart") << 2;
        QTest::newRow("traffic light") << 3;
    }

    void loadReadsRowAndConfigurationOfEachKind()
    {
        QFETCH(int, tipo);
        const int pk = savedIndicator(tipo, QStringLiteral("Leído"));
        EIndicador indicador;
        QVERIFY(indicador.Load(&db.connection(), pk));
        QCOMPARE(indicador.Sys_PK(), pk);
        QCOMPARE(indicador.Nombre(), QStringLiteral("Leído"));
        QCOMPARE(indicador.FK_Perspectiva(), 3);
        QCOMPARE(indicador.Tipo(), tipo);
        if (tipo == 1)
            QCOMPARE(qobject_cast<EBarraProgreso*>(indicador.Configuracion())->Dia_Max(), 100.0);
        if (tipo == 2)
            QCOMPARE(qobject_cast<EMatrizGrafico*>(indicador.Configuracion())->Matriz_Metrica1(), 100);
        if (tipo == 3)
            QCOMPARE(qobject_cast<ESemaforo*>(indicador.Configuracion())->Dia_Limite2(), 100.0);
    }

    void loadOfSameKindReusesConfigurationObject()
    {
        const int pk = savedIndicator(3);
        EIndicador indicador;
        indicador.setTipo(3);
        QObject* before = indicador.Configuracion();
        QVERIFY(indicador.Load(&db.connection(), pk));
        QCOMPARE(indicador.Configuracion(), before);
        QCOMPARE(qobject_cast<ESemaforo*>(before)->Dia_Limite2(), 100.0);
    }

    void loadWithoutConfigurationRowIsTrueWithAllZeros_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::newRow("progress bar") << 1;
        QTest::newRow("matrix and chart") << 2;
        QTest::newRow("traffic light") << 3;
    }

    void loadWithoutConfigurationRowIsTrueWithAllZeros()
    {
        QFETCH(int, tipo);
        db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva) VALUES ('Solo', %1, 2)")
                    .arg(tipo));
        const int pk = db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador")).toInt();
        EIndicador indicador;
        indicador.setTipo(tipo == 3 ? 2 : 3); // anything but the row's kind, so a fresh object comes in
        QVERIFY(indicador.Load(&db.connection(), pk));
        QCOMPARE(indicador.Tipo(), tipo);
        QObject* configuracion = indicador.Configuracion();
        QVERIFY(configuracion);
        const QMetaObject* meta = configuracion->metaObject();
        for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
            const QVariant value = meta->property(i).read(configuracion);
            const bool zero = value.typeId() == QMetaType::QString ? value.toString().isEmpty() : value.toDouble() == 0;
            QVERIFY2(zero, meta->property(i).name());
        }
    }

    void loadStatementsAreRowThenConfigurationWithTheGivenKey()
    {
        const int pk = savedIndicator(2);
        EIndicador indicador;
        const QStringList log = logged([&] { QVERIFY(indicador.Load(&db.connection(), pk)); });
        QCOMPARE(log.size(), 2);
        QVERIFY2(log.at(0).contains(QStringLiteral("ut_bi_Indicador")), qPrintable(log.at(0)));
        QCOMPARE(log.at(1), QStringLiteral("Select * From ut_bi_matrizgraf Where uf_FK_Indicador=") + QString::number(pk));
    }

    void loadOfMissingRowIsFalseAndLeavesObjectUntouched()
    {
        EIndicador indicador;
        indicador.setSys_PK(4);
        indicador.setNombre(QStringLiteral("Intacto"));
        indicador.setFK_Perspectiva(6);
        indicador.setTipo(3);
        QObject* configuracion = indicador.Configuracion();
        const QStringList log = logged([&] { QVERIFY(!indicador.Load(&db.connection(), 123456)); });
        QCOMPARE(indicador.Sys_PK(), 4);
        QCOMPARE(indicador.Nombre(), QStringLiteral("Intacto"));
        QCOMPARE(indicador.FK_Perspectiva(), 6);
        QCOMPARE(indicador.Tipo(), 3);
        QCOMPARE(indicador.Configuracion(), configuracion);
        QCOMPARE(log.size(), 1); // the configuration is not asked
    }

    void nullColumnsLeaveIndicatorPropertiesUnchanged()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva) VALUES (NULL, NULL, NULL)"));
        const int pk = db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador")).toInt();
        db.exec(QStringLiteral("INSERT INTO ut_bi_Semaforo (uf_FK_Indicador, uf_Dia_Lim1) VALUES (%1, 42)").arg(pk));
        EIndicador indicador;
        indicador.setNombre(QStringLiteral("Previo"));
        indicador.setFK_Perspectiva(9);
        indicador.setTipo(3);
        QObject* configuracion = indicador.Configuracion();
        QVERIFY(indicador.Load(&db.connection(), pk));
        QCOMPARE(indicador.Sys_PK(), pk);
        QCOMPARE(indicador.Nombre(), QStringLiteral("Previo"));
        QCOMPARE(indicador.FK_Perspectiva(), 9);
        QCOMPARE(indicador.Tipo(), 3);
        QCOMPARE(indicador.Configuracion(), configuracion);
        QCOMPARE(qobject_cast<ESemaforo*>(configuracion)->Dia_Limite1(), 42.0);
    }

    void eachNullColumnLeavesOnlyItsProperty_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<QString>("tipo");
        QTest::addColumn<QString>("perspectiva");
        QTest::newRow("uf_Nombre") << QStringLiteral("NULL") << QStringLiteral("2") << QStringLiteral("5");
        QTest::newRow("uf_Tipo") << QStringLiteral("'Leído'") << QStringLiteral("NULL") << QStringLiteral("5");
        QTest::newRow("uf_FK_Perspectiva") << QStringLiteral("'Leído'") << QStringLiteral("2") << QStringLiteral("NULL");
    }

    void eachNullColumnLeavesOnlyItsProperty()
    {
        QFETCH(QString, nombre);
        QFETCH(QString, tipo);
        QFETCH(QString, perspectiva);
        db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo, uf_FK_Perspectiva) VALUES (%1, %2, %3)")
                    .arg(nombre, tipo, perspectiva));
        const int pk = db.scalar(QStringLiteral("SELECT MAX(Sys_PK) FROM ut_bi_Indicador")).toInt();
        EIndicador indicador;
        indicador.setNombre(QStringLiteral("Previo"));
        indicador.setFK_Perspectiva(9);
        indicador.setTipo(3);
        QVERIFY(indicador.Load(&db.connection(), pk));
        QCOMPARE(indicador.Nombre(), nombre == QStringLiteral("NULL") ? QStringLiteral("Previo") : QStringLiteral("Leído"));
        QCOMPARE(indicador.Tipo(), tipo == QStringLiteral("NULL") ? 3 : 2);
        QCOMPARE(indicador.FK_Perspectiva(), perspectiva == QStringLiteral("NULL") ? 9 : 5);
    }

    // --- the configuration reached by name ---------------------------------

    void loadAndSaveReachAnyConfigurationByName()
    {
        auto recorder = std::make_unique<ConfiguracionGrabadora>();
        EIndicador indicador;
        indicador.setConfiguracion(recorder.get());
        QVERIFY(indicador.Save(&db.connection()));
        const int pk = indicador.Sys_PK();
        // Its false result does not make the indicator's Save false.
        QCOMPARE(recorder->saves, QList<int>{pk});
        QCOMPARE(recorder->conexion, &db.connection());
        QCOMPARE(indicador.Tipo(), 1);

        EIndicador leido;
        leido.setTipo(5); // a kind with no configuration, so the row's kind 1 brings a bar
        auto second = std::make_unique<ConfiguracionGrabadora>();
        QVERIFY(leido.Load(&db.connection(), pk));
        QVERIFY(qobject_cast<EBarraProgreso*>(leido.Configuracion()));
        leido.setConfiguracion(second.get());
        QVERIFY(leido.Load(&db.connection(), pk)); // same kind: the recorder stays and is asked
        QCOMPARE(second->loads, QList<int>{pk});
        QCOMPARE(leido.Configuracion(), second.get());
    }

    void configurationWithoutLoadOrSaveIsSkipped()
    {
        QObject plain;
        EIndicador indicador;
        indicador.setConfiguracion(&plain);
        QVERIFY(indicador.Save(&db.connection()));
        QCOMPARE(configurationRows(indicador.Sys_PK()), 0);
        QVERIFY(indicador.Load(&db.connection(), indicador.Sys_PK()));
        QCOMPARE(indicador.Configuracion(), &plain);
    }

    void configurationThatRaisesIsTrapped()
    {
        ConfiguracionQueFalla falla;
        EIndicador indicador;
        indicador.setConfiguracion(&falla);
        QVERIFY(indicador.Save(&db.connection()));
        QVERIFY(indicador.Load(&db.connection(), indicador.Sys_PK()));
    }

    // --- names ------------------------------------------------------------

    void namesRoundTripUnchanged_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::newRow("apostrophes") << QStringLiteral("O'Brien's 'x'");
        QTest::newRow("double quotes") << QStringLiteral("\"comillas\" dobles");
        QTest::newRow("backslashes") << QStringLiteral("C:\\ruta\\ \\' \\\\");
        QTest::newRow("semicolons") << QStringLiteral("a;b;;c;");
        QTest::newRow("sql fragment") << QStringLiteral("x'); DROP TABLE ut_bi_Indicador; --");
        QTest::newRow("placeholders") << QStringLiteral("? :nombre @p1 $1 %s");
        QTest::newRow("emoji") << QStringLiteral("Ventas 🙂📈 👩‍💻");
        QTest::newRow("non-latin scripts") << QStringLiteral("日本語 Ελληνικά العربية עברית Русский");
        QTest::newRow("blanks kept") << QStringLiteral("  dos  espacios  ");
        QTest::newRow("empty") << QString();
    }

    void namesRoundTripUnchanged()
    {
        QFETCH(QString, nombre);
        EIndicador indicador;
        indicador.setNombre(nombre);
        QVERIFY(indicador.Save(&db.connection()));
        EIndicador leido;
        QVERIFY(leido.Load(&db.connection(), indicador.Sys_PK()));
        QCOMPARE(leido.Nombre(), nombre);
        QCOMPARE(indicatorRows(), 1);
    }

    void nameOfFiftyCharactersFitsAndLongerIsRefused()
    {
        EIndicador fits;
        fits.setNombre(QString(50, QLatin1Char('n')));
        QVERIFY(fits.Save(&db.connection()));

        EIndicador emoji;
        QString fifty;
        for (int i = 0; i < 50; ++i)
            fifty += QStringLiteral("🙂");
        emoji.setNombre(fifty);
        QVERIFY(emoji.Save(&db.connection()));
        EIndicador leido;
        QVERIFY(leido.Load(&db.connection(), emoji.Sys_PK()));
        QCOMPARE(leido.Nombre(), fifty);

        const int before = indicatorRows();
        EIndicador tooLong;
        tooLong.setNombre(QString(51, QLatin1Char('n')));
        bool saved = true;
        const QStringList log = logged([&] { saved = tooLong.Save(&db.connection()); });
        QVERIFY(!saved);
        QCOMPARE(tooLong.Sys_PK(), 0);
        QCOMPARE(indicatorRows(), before);
        QVERIFY(log.isEmpty());

        // An existing row is not overwritten by a name that does not fit either.
        fits.setNombre(QString(51, QLatin1Char('m')));
        QVERIFY(!fits.Save(&db.connection()));
        QCOMPARE(column(QStringLiteral("uf_Nombre"), fits.Sys_PK()).toString(), QString(50, QLatin1Char('n')));
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), fits.Sys_PK()), 1);
    }

    // --- connections ------------------------------------------------------

    void closedOrMissingConnectionMakesLoadAndSaveFalse()
    {
        const int pk = savedIndicator(1);
        ado::Connection closed;
        auto closedByOwner = db.openAnother();
        closedByOwner->Close();
        QObject notAConnection;
        for (QObject* cnx : {static_cast<QObject*>(nullptr), static_cast<QObject*>(&closed),
                             static_cast<QObject*>(closedByOwner.get()), &notAConnection}) {
            EIndicador indicador;
            indicador.setNombre(QStringLiteral("Sin conexión"));
            QVERIFY(!indicador.Load(cnx, pk));
            QCOMPARE(indicador.Sys_PK(), 0);
            QVERIFY(!indicador.Save(cnx));
            QCOMPARE(indicador.Sys_PK(), 0);
            EIndicador existente;
            existente.setSys_PK(pk);
            QVERIFY(!existente.Save(cnx));
        }
        QCOMPARE(indicatorRows(), 1);
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), pk), 1);
    }

    void loadAndSaveAreReachableByName()
    {
        std::unique_ptr<QObject> indicador(EIndicador::staticMetaObject.newInstance());
        QVERIFY(indicador->setProperty("Nombre", QStringLiteral("Por nombre")));
        QVERIFY(indicador->setProperty("Tipo", 3));
        bool saved = false;
        QVERIFY(QMetaObject::invokeMethod(indicador.get(), "Save", Q_RETURN_ARG(bool, saved),
                                          Q_ARG(QObject*, &db.connection())));
        QVERIFY(saved);
        const int pk = indicador->property("Sys_PK").toInt();
        std::unique_ptr<QObject> leido(EIndicador::staticMetaObject.newInstance());
        bool loaded = false;
        QVERIFY(QMetaObject::invokeMethod(leido.get(), "Load", Q_RETURN_ARG(bool, loaded),
                                          Q_ARG(QObject*, &db.connection()), Q_ARG(int, pk)));
        QVERIFY(loaded);
        QCOMPARE(leido->property("Tipo").toInt(), 3);
        QVERIFY(qobject_cast<ESemaforo*>(leido->property("Configuracion").value<QObject*>()));
    }
};

QTEST_GUILESS_MAIN(TstEIndicador)
#include "tst_eindicador.moc"
