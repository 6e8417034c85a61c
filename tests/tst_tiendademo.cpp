// The sample shop: every sample metric, run by the metric run-time, gives
// for any day, week, month and year the figure plain SQL gives over the
// shop's tables.
#include "runtime/evaluador.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "tiendademo.h"

#include <QTest>
#include <algorithm>
#include <cmath>

namespace {

const QString GuidVenta = QStringLiteral("{6B1D2A10-6E2B-4C1A-9F00-000000000001}");
const QString GuidTickets = QStringLiteral("{6B1D2A10-6E2B-4C1A-9F00-000000000002}");
const QString GuidExistencias = QStringLiteral("{6B1D2A10-6E2B-4C1A-9F00-000000000003}");

// The days of a period worked out here on their own: a week is seven days
// counted from 1 January, cut at 31 December.
std::pair<QDate, QDate> dias(int periodo, const QDate& d)
{
    switch (periodo) {
    case 0:
        return {d, d};
    case 1: {
        const QDate inicio = QDate(d.year(), 1, 1).addDays((d.dayOfYear() - 1) / 7 * 7);
        return {inicio, std::min(inicio.addDays(6), QDate(d.year(), 12, 31))};
    }
    case 2:
        return {QDate(d.year(), d.month(), 1), QDate(d.year(), d.month(), d.daysInMonth())};
    default:
        return {QDate(d.year(), 1, 1), QDate(d.year(), 12, 31)};
    }
}

} // namespace

class TstTiendaDemo : public QObject {
    Q_OBJECT

    TestDatabase m_db;
    std::unique_ptr<Evaluador> m_evaluador;
    const QDate m_hoy = QDate::currentDate();

    int clave(const QString& guid)
    {
        return m_db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Metrica WHERE Sys_GUID = '%1'").arg(guid)).toInt();
    }

    double evaluar(const QString& guid, int entidad, int periodo, const QDate& fecha)
    {
        const ResultadoMetrica r = m_evaluador->evaluarMetrica(clave(guid), entidad, PeriodoMetrica::intervalo(periodo, fecha));
        if (!r.correcto)
            qWarning("%s", qPrintable(r.mensaje()));
        return r.correcto ? r.valor : std::nan("");
    }

    double sql(const QString& texto) { return m_db.scalar(texto).toDouble(); }

    // Every digit of a value, so that a tail no one rounded away is told apart.
    static QString exacto(double valor) { return QString::number(valor, 'g', 17); }

private slots:
    void initTestCase()
    {
        VBI_CREATE_TEST_DATABASE(m_db);
        QVERIFY(SchemaInstaller::addDemoData(m_db.connection()));
        m_evaluador = std::make_unique<Evaluador>(m_db.url());
    }

    void cleanupTestCase() { m_evaluador.reset(); }

    void ticketsCoverTwoYearsUpToTodayForThreeBranches()
    {
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT MIN(Fecha) FROM Ticket")).toDate(), m_hoy.addYears(-2).addDays(1));
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT MAX(Fecha) FROM Ticket")).toDate(), m_hoy);
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(DISTINCT Fecha) FROM Ticket")).toLongLong(),
                 m_hoy.addYears(-2).daysTo(m_hoy));
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(DISTINCT FK_Sucursal) FROM Ticket")).toInt(), 3);
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(DISTINCT FK_Cliente) FROM Ticket")).toInt(), 3);
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(DISTINCT FK_Producto) FROM Ticket")).toInt(), 3);
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(*) FROM Sucursal")).toInt(), 3);
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(*) FROM Existencia")).toInt(), 3);
    }

    void everyBranchSellsEveryDay()
    {
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(*) FROM (SELECT Fecha, FK_Sucursal FROM Ticket "
                                            "GROUP BY Fecha, FK_Sucursal HAVING COUNT(*) >= 3) x")).toLongLong(),
                 3 * m_hoy.addYears(-2).daysTo(m_hoy));
    }

    void sampleSourcesStartWithTheTemplate()
    {
        for (const QString& guid : {GuidVenta, GuidTickets, GuidExistencias}) {
            const QString codigo = m_db.scalar(QStringLiteral("SELECT uf_Codigo FROM ut_bi_Metrica WHERE Sys_GUID = '%1'").arg(guid)).toString();
            QVERIFY2(codigo.startsWith(TiendaDemo::plantilla()), qPrintable(codigo));
            QVERIFY(codigo.contains(QLatin1String("return ")));
        }
        QCOMPARE(TiendaDemo::plantilla().split(QStringLiteral("\r\n")).size(), 5);
        QCOMPARE(TiendaDemo::fuente(QStringLiteral("{otra}")), QString());
    }

    void salesAndTicketsEqualPlainSql_data()
    {
        QTest::addColumn<int>("periodo");
        QTest::addColumn<QDate>("fecha");
        QTest::addColumn<int>("sucursal");
        const QList<QDate> fechas = {m_hoy, m_hoy.addDays(-1), m_hoy.addDays(-13), QDate(m_hoy.year(), m_hoy.month(), 1),
                                     m_hoy.addDays(-200), m_hoy.addYears(-2).addDays(1), m_hoy.addYears(-1)};
        for (int periodo = 0; periodo < 4; ++periodo)
            for (const QDate& fecha : fechas)
                for (int sucursal = 0; sucursal <= 3; ++sucursal)
                    QTest::addRow("%s %s branch %d", qPrintable(nombrePeriodo(periodo)), qPrintable(fecha.toString(Qt::ISODate)), sucursal)
                        << periodo << fecha << sucursal;
    }
    void salesAndTicketsEqualPlainSql()
    {
        QFETCH(int, periodo);
        QFETCH(QDate, fecha);
        QFETCH(int, sucursal);
        const auto [inicio, final] = dias(periodo, fecha);
        const QString donde = QStringLiteral(" FROM Ticket WHERE Fecha >= '%1' AND Fecha <= '%2'%3")
                                  .arg(inicio.toString(Qt::ISODate), final.toString(Qt::ISODate),
                                       sucursal ? QStringLiteral(" AND FK_Sucursal = %1").arg(sucursal) : QString());
        // Sales are money: the sum to the nearest cent.
        const double venta = std::round(sql(QStringLiteral("SELECT COALESCE(SUM(Importe), 0)") + donde) * 100) / 100;
        const double tickets = sql(QStringLiteral("SELECT COUNT(*)") + donde);
        QVERIFY(venta > 0);
        QVERIFY(tickets >= 3);
        QCOMPARE(exacto(evaluar(GuidVenta, sucursal, periodo, fecha)), exacto(venta));
        QCOMPARE(evaluar(GuidTickets, sucursal, periodo, fecha), tickets);
    }

    void salesBeforeTheShopOpenedAreZero()
    {
        QCOMPARE(evaluar(GuidVenta, 0, 3, m_hoy.addYears(-5)), 0.0);
        QCOMPARE(evaluar(GuidTickets, 2, 2, m_hoy.addYears(-5)), 0.0);
    }

    void stockIsTheProductsWhateverThePeriod()
    {
        for (int periodo = 0; periodo < 4; ++periodo) {
            QCOMPARE(evaluar(GuidExistencias, 0, periodo, m_hoy), sql(QStringLiteral("SELECT SUM(Unidades) FROM Existencia")));
            for (int producto = 1; producto <= 3; ++producto)
                QCOMPARE(evaluar(GuidExistencias, producto, periodo, m_hoy.addDays(-periodo * 30)),
                         sql(QStringLiteral("SELECT Unidades FROM Existencia WHERE FK_Producto = %1").arg(producto)));
        }
        // The dashboard's traffic light watches product 2, between its limits 10 and 50.
        QCOMPARE(evaluar(GuidExistencias, 2, 0, m_hoy), 35.0);
    }

    void aSecondInstallAddsNothing()
    {
        const qlonglong tickets = m_db.scalar(QStringLiteral("SELECT COUNT(*) FROM Ticket")).toLongLong();
        QVERIFY(!SchemaInstaller::addDemoData(m_db.connection()));
        QCOMPARE(m_db.scalar(QStringLiteral("SELECT COUNT(*) FROM Ticket")).toLongLong(), tickets);
    }

private:
    static QString nombrePeriodo(int periodo)
    {
        static const char* nombres[] = {"day", "week", "month", "year"};
        return QString::fromLatin1(nombres[periodo]);
    }
};

QTEST_MAIN(TstTiendaDemo)
#include "tst_tiendademo.moc"
