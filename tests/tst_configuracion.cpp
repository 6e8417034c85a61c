// The three indicator configuration records: progress bar, traffic light,
// matrix and chart. Each reads its row with a plain query and writes it with
// a literal INSERT whose exact text the host's existing data depends on.
#include "ado/connection.h"
#include "model/ebarraprogreso.h"
#include "model/ematrizgrafico.h"
#include "model/esemaforo.h"
#include "model/mdl_consulta.h"
#include "entitychecks.h"
#include "testdatabase.h"

#include <QLocale>
#include <QMetaProperty>
#include <QTest>
#include <climits>
#include <functional>
#include <memory>

namespace {

const QString PrefijoBarra = QStringLiteral(
    "INSERT INTO ut_bi_barraprog (uf_FK_Indicador, uf_FK_Metrica,uf_Dia_Min,uf_Dia_Max,uf_Dia_Color,uf_Dia_ColorDebajo,uf_Dia_ColorArriba,uf_Semana_Min,uf_Semana_Max,uf_Semana_Color,uf_Semana_ColorDebajo,uf_Semana_ColorArriba,uf_Mes_Min,uf_Mes_Max,uf_Mes_Color,uf_Mes_ColorDebajo,uf_Mes_ColorArriba,uf_Ano_Min,uf_Ano_Max,uf_Ano_Color,uf_Ano_ColorDebajo,uf_Ano_ColorArriba) VALUES (");
const QString PrefijoSemaforo = QStringLiteral(
    "INSERT INTO ut_bi_semaforo (uf_FK_Indicador,uf_FK_Metrica, uf_Dia_Lim1,uf_Dia_Lim2, uf_Semana_Lim1,uf_Semana_Lim2, uf_Mes_Lim1, uf_Mes_Lim2, uf_Ano_Lim1,uf_Ano_lim2,uf_invertido) VALUES(");
const QString PrefijoMatriz = QStringLiteral(
    "INSERT INTO ut_bi_matrizgraf (uf_FK_Indicador, uf_FK_M_Metrica1,uf_FK_M_Metrica2,uf_FK_M_Metrica3,uf_FK_M_Metrica4,uf_FK_M_Metrica5,uf_FK_M_Metrica6,uf_FK_M_Metrica7,uf_FK_M_Metrica8,uf_FK_M_Metrica9,uf_FK_M_Metrica10,uf_FK_G_Metrica1,uf_FK_G_Metrica2,uf_FK_G_Metrica3,uf_FK_G_Metrica4,uf_FK_G_Metrica5,uf_G_Titulo,uf_G_Tipo) VALUES (");

QStringList methodSignatures(const QMetaObject& meta)
{
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() == QMetaMethod::Method)
            names.append(QString::fromLatin1(method.methodSignature()));
    }
    return names;
}

// A property and the column it maps to.
struct Columna {
    QString propiedad;
    QString columna;
};

QList<Columna> columnasBarra()
{
    QList<Columna> columns;
    for (const QString& name : propertyNames(EBarraProgreso::staticMetaObject))
        columns.append({name, QStringLiteral("uf_") + name});
    return columns;
}

// Descendente is left out: unlike the other columns, a NULL there resets it.
QList<Columna> columnasSemaforo()
{
    QList<Columna> columns{{QStringLiteral("FK_Metrica"), QStringLiteral("uf_FK_Metrica")}};
    for (const char* period : {"Dia", "Semana", "Mes", "Ano"}) {
        for (int n = 1; n <= 2; ++n) {
            columns.append({QStringLiteral("%1_Limite%2").arg(QLatin1String(period)).arg(n),
                            QStringLiteral("uf_%1_Lim%2").arg(QLatin1String(period)).arg(n)});
        }
    }
    return columns;
}

QList<Columna> columnasMatriz()
{
    QList<Columna> columns;
    for (int n = 1; n <= 10; ++n)
        columns.append({QStringLiteral("Matriz_Metrica%1").arg(n), QStringLiteral("uf_FK_M_Metrica%1").arg(n)});
    for (int n = 1; n <= 5; ++n)
        columns.append({QStringLiteral("Grafico_Metrica%1").arg(n), QStringLiteral("uf_FK_G_Metrica%1").arg(n)});
    columns.append({QStringLiteral("Grafico_Titulo"), QStringLiteral("uf_G_Titulo")});
    columns.append({QStringLiteral("Grafico_Tipo"), QStringLiteral("uf_G_Tipo")});
    return columns;
}

// A distinct value for the column at a position, of the property's type.
QVariant valorDistinto(QMetaType type, int position)
{
    if (type.id() == QMetaType::Double)
        return position + 0.25;
    if (type.id() == QMetaType::QString)
        return QStringLiteral("T%1").arg(position);
    return 1000 + position;
}

QVariant centinela(QMetaType type)
{
    if (type.id() == QMetaType::Double)
        return -7.5;
    if (type.id() == QMetaType::QString)
        return QStringLiteral("sin cambio");
    return -7;
}

QString literal(const QVariant& value)
{
    if (value.typeId() == QMetaType::QString)
        return QLatin1Char('\'') + value.toString() + QLatin1Char('\'');
    return value.toString(); // C-locale text, whatever the default locale
}

bool invokeLoad(QObject* object, QObject* cnx, int fk)
{
    bool result = false;
    QMetaObject::invokeMethod(object, "Load", Q_RETURN_ARG(bool, result), Q_ARG(QObject*, cnx), Q_ARG(int, fk));
    return result;
}

} // namespace

class TstConfiguracion : public QObject {
    Q_OBJECT

    TestDatabase db;
    QLocale savedLocale;

    int rows(const QString& table, int fk)
    {
        return db.scalar(QStringLiteral("SELECT COUNT(*) FROM %1 WHERE uf_FK_Indicador=%2").arg(table).arg(fk)).toInt();
    }

    // Every SQL text the action runs on the test connection.
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

    QString lastInsert(const std::function<void()>& action)
    {
        const QStringList log = logged(action);
        return log.isEmpty() ? QString() : log.constLast();
    }

    // Loads a row whose column at each position holds a distinct value except
    // one NULL, into an object preset with sentinels: only that property keeps its sentinel.
    template <typename T>
    void checkNullLeavesOnlyThatPropertyUnchanged(const QString& table, const QList<Columna>& columns,
                                                  const QString& extraColumns = QString(),
                                                  const QString& extraValues = QString())
    {
        const QMetaObject& meta = T::staticMetaObject;
        for (int nulled = 0; nulled < columns.size(); ++nulled) {
            db.clear();
            QStringList names{QStringLiteral("uf_FK_Indicador")};
            QStringList values{QStringLiteral("5")};
            for (int i = 0; i < columns.size(); ++i) {
                const QMetaType type = meta.property(meta.indexOfProperty(qPrintable(columns[i].propiedad))).metaType();
                names.append(columns[i].columna);
                values.append(i == nulled ? QStringLiteral("NULL") : literal(valorDistinto(type, i)));
            }
            if (!extraColumns.isEmpty()) {
                names.append(extraColumns);
                values.append(extraValues);
            }
            db.exec(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                        .arg(table, names.join(QLatin1Char(',')), values.join(QLatin1Char(','))));

            T object;
            for (const Columna& column : columns) {
                const QMetaType type = meta.property(meta.indexOfProperty(qPrintable(column.propiedad))).metaType();
                object.setProperty(qPrintable(column.propiedad), centinela(type));
            }
            QVERIFY(object.Load(&db.connection(), 5));
            for (int i = 0; i < columns.size(); ++i) {
                const QMetaType type = meta.property(meta.indexOfProperty(qPrintable(columns[i].propiedad))).metaType();
                const QVariant expected = i == nulled ? centinela(type) : valorDistinto(type, i);
                QVERIFY2(object.property(qPrintable(columns[i].propiedad)) == expected,
                         qPrintable(QStringLiteral("%1 with %2 NULL").arg(columns[i].propiedad, columns[nulled].columna)));
            }
        }
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        savedLocale = QLocale();
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void cleanup() { QLocale::setDefault(savedLocale); }

    // --- automation identity ----------------------------------------------

    void automationIdentityIsFixed_data()
    {
        QTest::addColumn<const QMetaObject*>("meta");
        QTest::addColumn<QString>("classId");
        QTest::addColumn<QString>("interfaceId");
        QTest::addColumn<QString>("name");
        QTest::newRow("EBarraProgreso") << &EBarraProgreso::staticMetaObject
                                        << QStringLiteral("{6F3F76C8-ED8F-4BB0-886A-144FA6A83F4F}")
                                        << QStringLiteral("{CDF709A3-0DD7-4411-AFF4-C7898F2CAA0B}")
                                        << QStringLiteral("EBarraProgreso");
        QTest::newRow("ESemaforo") << &ESemaforo::staticMetaObject
                                   << QStringLiteral("{9A5E5D32-D549-4DBE-AE90-C17DA4B9AF06}")
                                   << QStringLiteral("{2F80574A-9A78-4C88-B271-77070C6D3AF8}")
                                   << QStringLiteral("ESemaforo");
        QTest::newRow("EMatrizGrafico") << &EMatrizGrafico::staticMetaObject
                                        << QStringLiteral("{93B73313-1D03-42C0-ACF3-DA89714B191B}")
                                        << QStringLiteral("{A4FD6D07-27C0-4B88-9145-0710EFF8B3E3}")
                                        << QStringLiteral("EMatrizGrafico");
    }

    void automationIdentityIsFixed()
    {
        QFETCH(const QMetaObject*, meta);
        QFETCH(QString, classId);
        QFETCH(QString, interfaceId);
        QFETCH(QString, name);
        QCOMPARE(QString::fromLatin1(meta->className()), name);
        verifyAutomationIdentity(*meta, classId, interfaceId);
        QCOMPARE(methodSignatures(*meta), (QStringList{QStringLiteral("Load(QObject*,int)"),
                                                       QStringLiteral("Save(QObject*,int)")}));
    }

    void barraPropertiesComeInInterfaceOrder()
    {
        QStringList expected{QStringLiteral("FK_Metrica")};
        for (const char* period : {"Dia", "Semana", "Mes", "Ano"}) {
            for (const char* item : {"Min", "Max", "Color", "ColorDebajo", "ColorArriba"})
                expected.append(QStringLiteral("%1_%2").arg(QLatin1String(period), QLatin1String(item)));
        }
        QCOMPARE(propertyNames(EBarraProgreso::staticMetaObject), expected);
        const QMetaObject& meta = EBarraProgreso::staticMetaObject;
        QCOMPARE(meta.property(meta.indexOfProperty("Dia_Min")).metaType(), QMetaType::fromType<double>());
        QCOMPARE(meta.property(meta.indexOfProperty("Ano_ColorArriba")).metaType(), QMetaType::fromType<int>());
    }

    void semaforoPropertiesComeInInterfaceOrder()
    {
        QCOMPARE(propertyNames(ESemaforo::staticMetaObject),
                 (QStringList{QStringLiteral("FK_Metrica"), QStringLiteral("Descendente"),
                              QStringLiteral("Dia_Limite1"), QStringLiteral("Dia_Limite2"),
                              QStringLiteral("Semana_Limite1"), QStringLiteral("Semana_Limite2"),
                              QStringLiteral("Mes_Limite1"), QStringLiteral("Mes_Limite2"),
                              QStringLiteral("Ano_Limite1"), QStringLiteral("Ano_Limite2")}));
        const QMetaObject& meta = ESemaforo::staticMetaObject;
        QCOMPARE(meta.property(meta.indexOfProperty("Descendente")).metaType(), QMetaType::fromType<bool>());
        QCOMPARE(meta.property(meta.indexOfProperty("Mes_Limite2")).metaType(), QMetaType::fromType<double>());
    }

    void matrizPropertiesComeInInterfaceOrder()
    {
        QStringList expected;
        for (int n = 1; n <= 10; ++n)
            expected.append(QStringLiteral("Matriz_Metrica%1").arg(n));
        for (int n = 1; n <= 5; ++n)
            expected.append(QStringLiteral("Grafico_Metrica%1").arg(n));
        expected << QStringLiteral("Grafico_Titulo") << QStringLiteral("Grafico_Tipo");
        QCOMPARE(propertyNames(EMatrizGrafico::staticMetaObject), expected);
        const QMetaObject& meta = EMatrizGrafico::staticMetaObject;
        QCOMPARE(meta.property(meta.indexOfProperty("Grafico_Titulo")).metaType(), QMetaType::fromType<QString>());
        QCOMPARE(meta.property(meta.indexOfProperty("Grafico_Tipo")).metaType(), QMetaType::fromType<int>());
    }

    void newObjectsHoldZeroFalseAndEmptyText()
    {
        for (const QMetaObject* meta :
             {&EBarraProgreso::staticMetaObject, &ESemaforo::staticMetaObject, &EMatrizGrafico::staticMetaObject}) {
            std::unique_ptr<QObject> object(meta->newInstance());
            for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i) {
                const QVariant value = meta->property(i).read(object.get());
                const bool zero = value.typeId() == QMetaType::QString ? value.toString().isEmpty()
                                                                        : value.toDouble() == 0.0;
                QVERIFY2(zero, meta->property(i).name());
            }
        }
    }

    // --- INSERT texts -----------------------------------------------------

    void barraInsertTextIsExact()
    {
        EBarraProgreso barra;
        barra.setFK_Metrica(34);
        barra.setDia_Min(1.5);
        barra.setDia_Max(10);
        barra.setDia_Color(255);
        barra.setDia_ColorDebajo(65280);
        barra.setDia_ColorArriba(16711680);
        barra.setSemana_Min(-2.25);
        barra.setSemana_Max(0);
        barra.setSemana_Color(1);
        barra.setSemana_ColorDebajo(2);
        barra.setSemana_ColorArriba(3);
        barra.setMes_Min(100);
        barra.setMes_Max(200.75);
        barra.setMes_Color(0x00FFFFFF);
        barra.setMes_ColorDebajo(-1);
        barra.setMes_ColorArriba(INT_MIN);
        barra.setAno_Min(0.1);
        barra.setAno_Max(1e16);
        barra.setAno_Color(4);
        barra.setAno_ColorDebajo(5);
        barra.setAno_ColorArriba(6);
        bool saved = false;
        const QStringList log = logged([&] { saved = barra.Save(&db.connection(), 12); });
        QVERIFY(saved);
        QCOMPARE(log, QStringList{PrefijoBarra + QStringLiteral("12,34,1.5,10,255,65280,16711680,-2.25,0,1,2,3,"
                                                                "100,200.75,16777215,-1,-2147483648,0.1,1E+16,4,5,6)")});
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), 12), 1);
    }

    void semaforoInsertTextIsExact_data()
    {
        QTest::addColumn<bool>("descendente");
        QTest::addColumn<QString>("flag");
        QTest::newRow("descending") << true << QStringLiteral("1");
        QTest::newRow("ascending") << false << QStringLiteral("0");
    }

    void semaforoInsertTextIsExact()
    {
        QFETCH(bool, descendente);
        QFETCH(QString, flag);
        ESemaforo semaforo;
        semaforo.setFK_Metrica(3);
        semaforo.setDescendente(descendente);
        semaforo.setDia_Limite1(1.5);
        semaforo.setDia_Limite2(2.5);
        semaforo.setSemana_Limite1(10);
        semaforo.setSemana_Limite2(20);
        semaforo.setMes_Limite1(100.125);
        semaforo.setMes_Limite2(200);
        semaforo.setAno_Limite1(-1);
        semaforo.setAno_Limite2(1e-20);
        bool saved = false;
        const QStringList log = logged([&] { saved = semaforo.Save(&db.connection(), 7); });
        QVERIFY(saved);
        QCOMPARE(log, QStringList{PrefijoSemaforo + QStringLiteral("7,3,1.5,2.5,10,20,100.125,200,-1,1E-20,") + flag
                                  + QStringLiteral(")")});
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_Invertido FROM ut_bi_Semaforo WHERE uf_FK_Indicador=7")).toInt(),
                 flag.toInt());
    }

    void matrizInsertTextIsExact()
    {
        EMatrizGrafico matriz;
        for (int n = 1; n <= 10; ++n)
            matriz.setProperty(qPrintable(QStringLiteral("Matriz_Metrica%1").arg(n)), 100 + n);
        for (int n = 1; n <= 5; ++n)
            matriz.setProperty(qPrintable(QStringLiteral("Grafico_Metrica%1").arg(n)), 200 + n);
        matriz.setGrafico_Titulo(QStringLiteral("Ventas de O'Brien"));
        matriz.setGrafico_Tipo(14);
        bool saved = false;
        const QStringList log = logged([&] { saved = matriz.Save(&db.connection(), 9); });
        QVERIFY(saved);
        QCOMPARE(log, QStringList{PrefijoMatriz + QStringLiteral("9,101,102,103,104,105,106,107,108,109,110,"
                                                                 "201,202,203,204,205,'Ventas de OBrien',14)")});
    }

    void keysAreWrittenInPlainDecimal()
    {
        ESemaforo semaforo;
        semaforo.setFK_Metrica(-42);
        const QString sql = lastInsert([&] { QVERIFY(semaforo.Save(&db.connection(), 2147483647)); });
        QVERIFY2(sql.startsWith(PrefijoSemaforo + QStringLiteral("2147483647,-42,0,0,")), qPrintable(sql));
        ESemaforo leido;
        QVERIFY(leido.Load(&db.connection(), 2147483647));
        QCOMPARE(leido.FK_Metrica(), -42);
    }

    // --- round trips ------------------------------------------------------

    void barraRoundTripsEveryProperty()
    {
        EBarraProgreso barra;
        const QMetaObject& meta = EBarraProgreso::staticMetaObject;
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
            const QMetaProperty property = meta.property(i);
            property.write(&barra, property.metaType().id() == QMetaType::Double ? QVariant(i * 1.75 - 3)
                                                                                 : QVariant(i * 1000003));
        }
        QVERIFY(barra.Save(&db.connection(), 21));
        EBarraProgreso leido;
        QVERIFY(leido.Load(&db.connection(), 21));
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
            QVERIFY2(meta.property(i).read(&leido) == meta.property(i).read(&barra), meta.property(i).name());
    }

    void semaforoRoundTripsEveryProperty()
    {
        ESemaforo semaforo;
        semaforo.setFK_Metrica(77);
        semaforo.setDescendente(true);
        const QMetaObject& meta = ESemaforo::staticMetaObject;
        for (int i = meta.indexOfProperty("Dia_Limite1"); i < meta.propertyCount(); ++i)
            meta.property(i).write(&semaforo, i * -2.5 + 0.125);
        QVERIFY(semaforo.Save(&db.connection(), 22));
        ESemaforo leido;
        QVERIFY(leido.Load(&db.connection(), 22));
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
            QVERIFY2(meta.property(i).read(&leido) == meta.property(i).read(&semaforo), meta.property(i).name());
    }

    void matrizRoundTripsEveryProperty_data()
    {
        QTest::addColumn<int>("tipo");
        QTest::newRow("3-D bars") << 0;
        QTest::newRow("2-D lines") << 1;
        QTest::newRow("2-D bars") << 3;
        QTest::newRow("pie") << 14;
    }

    void matrizRoundTripsEveryProperty()
    {
        QFETCH(int, tipo);
        EMatrizGrafico matriz;
        for (int n = 1; n <= 10; ++n)
            matriz.setProperty(qPrintable(QStringLiteral("Matriz_Metrica%1").arg(n)), n * 11);
        for (int n = 1; n <= 5; ++n)
            matriz.setProperty(qPrintable(QStringLiteral("Grafico_Metrica%1").arg(n)), n * 7);
        matriz.setGrafico_Titulo(QStringLiteral("Ventas por mes"));
        matriz.setGrafico_Tipo(tipo);
        QVERIFY(matriz.Save(&db.connection(), 23));
        EMatrizGrafico leido;
        QVERIFY(leido.Load(&db.connection(), 23));
        const QMetaObject& meta = EMatrizGrafico::staticMetaObject;
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
            QVERIFY2(meta.property(i).read(&leido) == meta.property(i).read(&matriz), meta.property(i).name());
    }

    void colourValuesKeepAllTheirBits_data()
    {
        QTest::addColumn<int>("color");
        QTest::newRow("white") << 0x00FFFFFF;
        QTest::newRow("system colour") << int(0x80000005u);
        QTest::newRow("minus one") << -1;
        QTest::newRow("largest") << INT_MAX;
        QTest::newRow("smallest") << INT_MIN;
    }

    void colourValuesKeepAllTheirBits()
    {
        QFETCH(int, color);
        EBarraProgreso barra;
        barra.setDia_Color(color);
        barra.setAno_ColorArriba(color);
        QVERIFY(barra.Save(&db.connection(), 4));
        EBarraProgreso leido;
        QVERIFY(leido.Load(&db.connection(), 4));
        QCOMPARE(leido.Dia_Color(), color);
        QCOMPARE(leido.Ano_ColorArriba(), color);
    }

    void veryLargeAndSmallDoublesUseExponentFormAndRoundTrip_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("1E+16") << 1e16 << QStringLiteral("1E+16");
        QTest::newRow("-1E+16") << -1e16 << QStringLiteral("-1E+16");
        QTest::newRow("1.5E-20") << 1.5e-20 << QStringLiteral("1.5E-20");
        QTest::newRow("1E+300") << 1e300 << QStringLiteral("1E+300");
        QTest::newRow("15 digits") << 123456789012345.0 << QStringLiteral("123456789012345");
    }

    void veryLargeAndSmallDoublesUseExponentFormAndRoundTrip()
    {
        QFETCH(double, value);
        QFETCH(QString, text);
        EBarraProgreso barra;
        barra.setDia_Min(value);
        ESemaforo semaforo;
        semaforo.setDia_Limite1(value);
        const QString barraSql = lastInsert([&] { QVERIFY(barra.Save(&db.connection(), 5)); });
        QCOMPARE(barraSql.mid(PrefijoBarra.size()).section(QLatin1Char(','), 2, 2), text);
        const QString semaforoSql = lastInsert([&] { QVERIFY(semaforo.Save(&db.connection(), 5)); });
        QCOMPARE(semaforoSql.mid(PrefijoSemaforo.size()).section(QLatin1Char(','), 2, 2), text);

        EBarraProgreso barraLeida;
        QVERIFY(barraLeida.Load(&db.connection(), 5));
        QCOMPARE(barraLeida.Dia_Min(), value);
        ESemaforo semaforoLeido;
        QVERIFY(semaforoLeido.Load(&db.connection(), 5));
        QCOMPARE(semaforoLeido.Dia_Limite1(), value);
    }

    // --- the user's locale ------------------------------------------------

    void fractionalValuesFailUnderDecimalCommaLocale()
    {
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        EBarraProgreso barra;
        barra.setDia_Max(1.5);
        const QString sql = lastInsert([&] { QVERIFY(!barra.Save(&db.connection(), 31)); });
        QVERIFY2(sql.endsWith(QStringLiteral("0,0,1,5,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0)")), qPrintable(sql));
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), 31), 0);

        ESemaforo semaforo;
        semaforo.setAno_Limite2(0.5);
        QVERIFY(!semaforo.Save(&db.connection(), 31));
        QCOMPARE(rows(QStringLiteral("ut_bi_Semaforo"), 31), 0);
    }

    void wholeNumberValuesSaveUnderDecimalCommaLocale()
    {
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        EBarraProgreso barra;
        barra.setDia_Min(-3);
        barra.setDia_Max(1500000);
        ESemaforo semaforo;
        semaforo.setMes_Limite1(250);
        QVERIFY(barra.Save(&db.connection(), 32));
        QVERIFY(semaforo.Save(&db.connection(), 32));
        EBarraProgreso barraLeida;
        QVERIFY(barraLeida.Load(&db.connection(), 32));
        QCOMPARE(barraLeida.Dia_Min(), -3.0);
        QCOMPARE(barraLeida.Dia_Max(), 1500000.0);
        ESemaforo semaforoLeido;
        QVERIFY(semaforoLeido.Load(&db.connection(), 32));
        QCOMPARE(semaforoLeido.Mes_Limite1(), 250.0);
    }

    void chartNeedsNoDecimalsSoItSavesUnderDecimalCommaLocale()
    {
        QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
        EMatrizGrafico matriz;
        matriz.setGrafico_Titulo(QStringLiteral("Año 1,5"));
        QVERIFY(matriz.Save(&db.connection(), 33));
        EMatrizGrafico leido;
        QVERIFY(leido.Load(&db.connection(), 33));
        QCOMPARE(leido.Grafico_Titulo(), QStringLiteral("Año 1,5"));
    }

    // --- the chart title --------------------------------------------------

    void chartTitleLosesItsApostrophesOnly_data()
    {
        QTest::addColumn<QString>("titulo");
        QTest::addColumn<QString>("guardado");
        QTest::newRow("one apostrophe") << QStringLiteral("Ventas de O'Brien") << QStringLiteral("Ventas de OBrien");
        QTest::newRow("doubled and edges") << QStringLiteral("''a''b'") << QStringLiteral("ab");
        QTest::newRow("only apostrophes") << QStringLiteral("'''") << QString();
        QTest::newRow("other quotes kept") << QStringLiteral("\"dobles\" `grave` ‘curvas’ «angulares»")
                                           << QStringLiteral("\"dobles\" `grave` ‘curvas’ «angulares»");
        QTest::newRow("sql fragment") << QStringLiteral("x'); DELETE FROM ut_bi_Indicador; --")
                                      << QStringLiteral("x); DELETE FROM ut_bi_Indicador; --");
        QTest::newRow("backslash") << QStringLiteral("C:\\ruta\\'fin\\") << QStringLiteral("C:\\ruta\\fin\\");
        QTest::newRow("unicode") << QStringLiteral("日本語 Ελληνικά العربية עברית 🙂 it's")
                                 << QStringLiteral("日本語 Ελληνικά العربية עברית 🙂 its");
        QTest::newRow("empty") << QString() << QString();
    }

    void chartTitleLosesItsApostrophesOnly()
    {
        QFETCH(QString, titulo);
        QFETCH(QString, guardado);
        db.exec(QStringLiteral("INSERT INTO ut_bi_Indicador (uf_Nombre, uf_Tipo) VALUES ('testigo', 2)"));
        EMatrizGrafico matriz;
        matriz.setGrafico_Titulo(titulo);
        const QString sql = lastInsert([&] { QVERIFY(matriz.Save(&db.connection(), 41)); });
        QVERIFY2(sql.endsWith(QStringLiteral(",'") + guardado + QStringLiteral("',0)")), qPrintable(sql));
        // The object keeps what was typed; only the stored copy loses the apostrophes.
        QCOMPARE(matriz.Grafico_Titulo(), titulo);
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_G_Titulo FROM ut_bi_MatrizGraf WHERE uf_FK_Indicador=41")).toString(),
                 guardado);
        EMatrizGrafico leido;
        leido.setGrafico_Titulo(QStringLiteral("antes"));
        QVERIFY(leido.Load(&db.connection(), 41));
        QCOMPARE(leido.Grafico_Titulo(), guardado);
        // Nothing in the title ever runs as SQL of its own.
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Indicador")).toInt(), 1);
    }

    // --- rows -------------------------------------------------------------

    void saveNeverDeletesSoTwoSavesLeaveTwoRows()
    {
        EBarraProgreso barra;
        barra.setDia_Min(1);
        QVERIFY(barra.Save(&db.connection(), 51));
        barra.setDia_Min(2);
        const QStringList log = logged([&] { QVERIFY(barra.Save(&db.connection(), 51)); });
        QCOMPARE(log.size(), 1);
        QVERIFY(log.first().startsWith(QStringLiteral("INSERT ")));
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), 51), 2);

        // Whichever row the database hands back first is the one that loads.
        const auto rs = mdl_functions::AbrirConsulta(
            &db.connection(), QStringLiteral("Select * From ut_bi_barraprog Where uf_FK_Indicador=51"));
        QVERIFY(rs);
        const double first = rs->Fields(QStringLiteral("uf_Dia_Min")).toDouble();
        EBarraProgreso leida;
        QVERIFY(leida.Load(&db.connection(), 51));
        QCOMPARE(leida.Dia_Min(), first);
    }

    void twoTrafficLightRowsLoadTheFirstReturned()
    {
        ESemaforo semaforo;
        semaforo.setFK_Metrica(1);
        QVERIFY(semaforo.Save(&db.connection(), 52));
        semaforo.setFK_Metrica(2);
        semaforo.setDescendente(true);
        QVERIFY(semaforo.Save(&db.connection(), 52));
        QCOMPARE(rows(QStringLiteral("ut_bi_Semaforo"), 52), 2);
        const auto rs = mdl_functions::AbrirConsulta(
            &db.connection(), QStringLiteral("Select * From ut_bi_semaforo Where uf_FK_Indicador=52"));
        QVERIFY(rs);
        ESemaforo leido;
        QVERIFY(leido.Load(&db.connection(), 52));
        QCOMPARE(leido.FK_Metrica(), rs->Fields(QStringLiteral("uf_FK_Metrica")).toInt());
        QCOMPARE(leido.Descendente(), rs->Fields(QStringLiteral("uf_Invertido")).toInt() != 0);
    }

    void loadReadsOnlyTheRowOfThatIndicator()
    {
        EMatrizGrafico otro;
        otro.setMatriz_Metrica1(1);
        QVERIFY(otro.Save(&db.connection(), 61));
        EMatrizGrafico propio;
        propio.setMatriz_Metrica1(2);
        QVERIFY(propio.Save(&db.connection(), 62));
        EMatrizGrafico leido;
        QVERIFY(leido.Load(&db.connection(), 62));
        QCOMPARE(leido.Matriz_Metrica1(), 2);
    }

    void loadStatementTextsAreExact()
    {
        EBarraProgreso barra;
        ESemaforo semaforo;
        EMatrizGrafico matriz;
        const QStringList log = logged([&] {
            barra.Load(&db.connection(), 8);
            semaforo.Load(&db.connection(), -8);
            matriz.Load(&db.connection(), 0);
        });
        QCOMPARE(log, (QStringList{QStringLiteral("Select * From ut_bi_barraprog Where uf_FK_Indicador=8"),
                                   QStringLiteral("Select * From ut_bi_semaforo Where uf_FK_Indicador=-8"),
                                   QStringLiteral("Select * From ut_bi_matrizgraf Where uf_FK_Indicador=0")}));
    }

    void loadWithoutRowIsFalseAndLeavesObjectUntouched()
    {
        EBarraProgreso barra;
        barra.setFK_Metrica(5);
        barra.setMes_Max(9.5);
        QVERIFY(!barra.Load(&db.connection(), 70));
        QCOMPARE(barra.FK_Metrica(), 5);
        QCOMPARE(barra.Mes_Max(), 9.5);

        ESemaforo semaforo;
        semaforo.setDescendente(true);
        semaforo.setDia_Limite1(3);
        QVERIFY(!semaforo.Load(&db.connection(), 70));
        QVERIFY(semaforo.Descendente());
        QCOMPARE(semaforo.Dia_Limite1(), 3.0);

        EMatrizGrafico matriz;
        matriz.setGrafico_Titulo(QStringLiteral("queda"));
        matriz.setGrafico_Tipo(14);
        QVERIFY(!matriz.Load(&db.connection(), 70));
        QCOMPARE(matriz.Grafico_Titulo(), QStringLiteral("queda"));
        QCOMPARE(matriz.Grafico_Tipo(), 14);
    }

    // --- NULL columns -----------------------------------------------------

    void barraNullColumnLeavesItsPropertyUnchanged()
    {
        checkNullLeavesOnlyThatPropertyUnchanged<EBarraProgreso>(QStringLiteral("ut_bi_BarraProg"), columnasBarra());
    }

    void semaforoNullColumnLeavesItsPropertyUnchanged()
    {
        checkNullLeavesOnlyThatPropertyUnchanged<ESemaforo>(QStringLiteral("ut_bi_Semaforo"), columnasSemaforo(),
                                                            QStringLiteral("uf_Invertido"), QStringLiteral("0"));
    }

    void matrizNullColumnLeavesItsPropertyUnchanged()
    {
        checkNullLeavesOnlyThatPropertyUnchanged<EMatrizGrafico>(QStringLiteral("ut_bi_MatrizGraf"), columnasMatriz());
    }

    void rowOfNullsLoadsTrueAndChangesNothing()
    {
        db.exec(QStringLiteral("INSERT INTO ut_bi_BarraProg (uf_FK_Indicador) VALUES (71)"));
        EBarraProgreso barra;
        barra.setFK_Metrica(9);
        barra.setSemana_ColorDebajo(123);
        QVERIFY(barra.Load(&db.connection(), 71));
        QCOMPARE(barra.FK_Metrica(), 9);
        QCOMPARE(barra.Semana_ColorDebajo(), 123);
    }

    // --- the traffic light's direction -------------------------------------

    void descendenteReadsAnyNonZeroAsTrue_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("expected");
        QTest::newRow("1") << QStringLiteral("1") << false << true;
        QTest::newRow("-1") << QStringLiteral("-1") << false << true;
        QTest::newRow("7") << QStringLiteral("7") << false << true;
        QTest::newRow("0 resets") << QStringLiteral("0") << true << false;
        QTest::newRow("NULL resets") << QStringLiteral("NULL") << true << false;
        QTest::newRow("NULL stays false") << QStringLiteral("NULL") << false << false;
    }

    void descendenteReadsAnyNonZeroAsTrue()
    {
        QFETCH(QString, stored);
        QFETCH(bool, before);
        QFETCH(bool, expected);
        db.exec(QStringLiteral("INSERT INTO ut_bi_Semaforo (uf_FK_Indicador, uf_Invertido) VALUES (81, %1)").arg(stored));
        ESemaforo semaforo;
        semaforo.setDescendente(before);
        QVERIFY(semaforo.Load(&db.connection(), 81));
        QCOMPARE(semaforo.Descendente(), expected);
    }

    // --- connections ------------------------------------------------------

    void closedOrMissingConnectionMakesLoadAndSaveFalse()
    {
        EBarraProgreso seed;
        QVERIFY(seed.Save(&db.connection(), 91));
        ado::Connection closed;
        QObject notAConnection;
        for (QObject* cnx : {static_cast<QObject*>(nullptr), static_cast<QObject*>(&closed), &notAConnection}) {
            for (const QMetaObject* meta :
                 {&EBarraProgreso::staticMetaObject, &ESemaforo::staticMetaObject, &EMatrizGrafico::staticMetaObject}) {
                std::unique_ptr<QObject> object(meta->newInstance());
                QVERIFY(!invokeLoad(object.get(), cnx, 91));
                bool saved = true;
                QVERIFY(QMetaObject::invokeMethod(object.get(), "Save", Q_RETURN_ARG(bool, saved),
                                                  Q_ARG(QObject*, cnx), Q_ARG(int, 91)));
                QVERIFY(!saved);
            }
        }
        QCOMPARE(rows(QStringLiteral("ut_bi_BarraProg"), 91), 1);
    }

    void connectionClosedByItsOwnerMakesSaveFalse()
    {
        auto other = db.openAnother();
        other->Close();
        ESemaforo semaforo;
        QVERIFY(!semaforo.Save(other.get(), 92));
        QVERIFY(!semaforo.Load(other.get(), 92));
        QCOMPARE(rows(QStringLiteral("ut_bi_Semaforo"), 92), 0);
    }

    void loadAndSaveAreReachableByName()
    {
        std::unique_ptr<QObject> semaforo(ESemaforo::staticMetaObject.newInstance());
        semaforo->setProperty("Dia_Limite2", 4.5);
        semaforo->setProperty("Descendente", true);
        bool saved = false;
        QVERIFY(QMetaObject::invokeMethod(semaforo.get(), "Save", Q_RETURN_ARG(bool, saved),
                                          Q_ARG(QObject*, &db.connection()), Q_ARG(int, 93)));
        QVERIFY(saved);
        std::unique_ptr<QObject> leido(ESemaforo::staticMetaObject.newInstance());
        QVERIFY(invokeLoad(leido.get(), &db.connection(), 93));
        QCOMPARE(leido->property("Dia_Limite2").toDouble(), 4.5);
        QCOMPARE(leido->property("Descendente").toBool(), true);
    }
};

QTEST_GUILESS_MAIN(TstConfiguracion)
#include "tst_configuracion.moc"
