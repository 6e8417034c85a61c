// Entity saves and loads against their floors: one prepared statement per
// row, run on the same connection, reading or writing the same columns.
#include "suite.h"

#include "model/eindicador.h"
#include "model/emetrica.h"
#include "model/etabindicador.h"
#include "model/etablero.h"
#include "model/registrotabla.h"
#include "seed.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>
#include <array>
#include <memory>
#include <vector>

namespace {

// A statement prepared once on the connection the component also uses, so
// both sides share one session and its caches.
QSqlQuery preparar(BenchDatabase* db, const QString& sql)
{
    QSqlQuery query(db->connection().database());
    if (!query.prepare(sql))
        throw std::runtime_error(("cannot prepare: " + sql).toStdString());
    return query;
}

// --- Saves --------------------------------------------------------------------

void metricaParaGuardar(EMetrica& m, int n)
{
    m.setNombre(seed::nombreMetrica(n % 10000));
    m.setDescripcion(seed::descripcionMetrica(n));
    m.setTitulo(QStringLiteral("Ventas netas %1").arg(n));
    m.setDecimales(2);
    m.setFormato(QStringLiteral("#,##0.00"));
    m.setCodigoFuente(seed::codigoMetrica(n));
    m.setFK_Perspectiva(1);
}

void guardarMetrica(benchmark::State& state, BenchDatabase* db)
{
    Reloj reloj;
    int n = 0;
    for (auto _ : state) {
        EMetrica m;
        metricaParaGuardar(m, ++n);
        reloj.iniciar();
        const bool ok = m.Save(&db->connection());
        reloj.parar(state);
        if (!ok || m.Sys_PK() <= 0) {
            state.SkipWithError("EMetrica.Save failed");
            break;
        }
    }
}

// The same columns, the key read back and a Sys_GUID made the same way, as
// any writer of this table has to.
void insertarMetrica(benchmark::State& state, BenchDatabase* db)
{
    QSqlQuery insert = preparar(db, QStringLiteral(
        "INSERT INTO ut_bi_Metrica (uf_Nombre,uf_Descripcion,uf_Titulo,uf_Decimales,uf_Formato,uf_Codigo,"
        "uf_FK_Perspectiva,Sys_GUID) VALUES (?,?,?,?,?,?,?,?) RETURNING Sys_PK"));
    Reloj reloj;
    int n = 0;
    for (auto _ : state) {
        EMetrica m;
        metricaParaGuardar(m, ++n);
        reloj.iniciar();
        insert.bindValue(0, m.Nombre());
        insert.bindValue(1, m.Descripcion());
        insert.bindValue(2, m.Titulo());
        insert.bindValue(3, int(m.Decimales()));
        insert.bindValue(4, m.Formato());
        insert.bindValue(5, m.CodigoFuente());
        insert.bindValue(6, m.FK_Perspectiva());
        insert.bindValue(7, RegistroTabla::nuevoGuid());
        const bool ok = insert.exec() && insert.next();
        const int clave = ok ? insert.value(0).toInt() : 0;
        insert.finish();
        reloj.parar(state);
        if (clave <= 0) {
            state.SkipWithError("the floor INSERT failed");
            break;
        }
    }
}

void tabIndicadorParaGuardar(ETabIndicador& t, int n)
{
    t.setFK_Tablero(2);
    t.setFK_Indicador(n % 999 + 1);
    t.setFK_Entidad(n % 5);
    t.setx(n % 20 * 1500);
    t.setY(n / 20 % 50 * 1200);
    t.setW(3000);
    t.setH(2400);
    t.setMuestra_Dia(true);
    t.setMuestra_Mes(n % 2 == 0);
    t.setPeriodoInicio(n % 4);
    t.setLimite1(10.5);
    t.setLimite2(20.5);
    t.setLimite3(30.5);
    t.setLimite4(40.5);
    t.setLimite5(50.5);
    t.setLimite6(60.5);
    t.setLimite7(70.5);
    t.setLimite8(80.5);
}

void guardarTabIndicador(benchmark::State& state, BenchDatabase* db)
{
    Reloj reloj;
    int n = 0;
    for (auto _ : state) {
        ETabIndicador t;
        tabIndicadorParaGuardar(t, ++n);
        reloj.iniciar();
        const bool ok = t.Save(&db->connection());
        reloj.parar(state);
        if (!ok || t.Sys_PK() <= 0) {
            state.SkipWithError("ETabIndicador.Save failed");
            break;
        }
    }
}

void insertarTabIndicador(benchmark::State& state, BenchDatabase* db)
{
    QSqlQuery insert = preparar(db, QStringLiteral(
        "INSERT INTO ut_bi_TabIndicador (uf_FK_Tablero,uf_FK_Indicador,uf_FK_Entidad,uf_pinicial,uf_Periodos,"
        "uf_X,uf_Y,uf_W,uf_H,uf_l1,uf_l2,uf_l3,uf_l4,uf_l5,uf_l6,uf_l7,uf_l8) "
        "VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?) RETURNING Sys_PK"));
    Reloj reloj;
    int n = 0;
    for (auto _ : state) {
        ETabIndicador t;
        tabIndicadorParaGuardar(t, ++n);
        reloj.iniciar();
        const int periodos = (t.Muestra_Dia() ? 1 : 0) + (t.Muestra_Semana() ? 2 : 0) + (t.Muestra_Mes() ? 4 : 0)
            + (t.Muestra_Ano() ? 8 : 0);
        const std::array<QVariant, 17> valores{t.FK_Tablero(), t.FK_Indicador(), t.FK_Entidad(), t.PeriodoInicio(),
                                               periodos,       t.x(),           t.Y(),          t.W(),
                                               t.H(),          t.Limite1(),     t.Limite2(),    t.Limite3(),
                                               t.Limite4(),    t.Limite5(),     t.Limite6(),    t.Limite7(),
                                               t.Limite8()};
        for (int i = 0; i < int(valores.size()); ++i)
            insert.bindValue(i, valores[size_t(i)]);
        const bool ok = insert.exec() && insert.next();
        const int clave = ok ? insert.value(0).toInt() : 0;
        insert.finish();
        reloj.parar(state);
        if (clave <= 0) {
            state.SkipWithError("the floor INSERT failed");
            break;
        }
    }
}

// --- Loads --------------------------------------------------------------------

// A row read by position into plain values, the least a loader does with it.
struct Fila {
    std::vector<QVariant> valores;
};

bool leerFila(QSqlQuery& query, int clave, Fila& fila)
{
    query.bindValue(0, clave);
    if (!query.exec() || !query.next())
        return false;
    const int columnas = query.record().count();
    fila.valores.resize(size_t(columnas));
    for (int i = 0; i < columnas; ++i)
        fila.valores[size_t(i)] = query.value(i);
    query.finish();
    return true;
}

void cargarMetrica(benchmark::State& state, BenchDatabase* db)
{
    Reloj reloj;
    int n = 0;
    for (auto _ : state) {
        const int clave = n++ % seed::Metricas + 1;
        reloj.iniciar();
        auto m = std::make_unique<EMetrica>();
        const bool ok = m->Load(&db->connection(), clave);
        reloj.parar(state);
        if (!ok || m->Sys_PK() != clave) {
            state.SkipWithError("EMetrica.Load failed");
            break;
        }
    }
}

// The metric's row by key, its nine columns converted to what the object holds.
struct Metrica {
    int sysPK = 0;
    QString guid, nombre, descripcion, titulo, formato, codigo;
    int decimales = 0, perspectiva = 0;
};

void seleccionarMetrica(benchmark::State& state, BenchDatabase* db)
{
    QSqlQuery select = preparar(db, QStringLiteral("SELECT * FROM ut_bi_Metrica WHERE Sys_PK = ?"));
    Reloj reloj;
    int n = 0;
    for (auto _ : state) {
        const int clave = n++ % seed::Metricas + 1;
        reloj.iniciar();
        auto m = std::make_unique<Metrica>();
        select.bindValue(0, clave);
        bool ok = select.exec() && select.next();
        if (ok) {
            m->sysPK = select.value(0).toInt();
            m->guid = select.value(1).toString();
            m->nombre = select.value(2).toString();
            m->descripcion = select.value(3).toString();
            m->titulo = select.value(4).toString();
            m->decimales = select.value(5).toInt();
            m->formato = select.value(6).toString();
            m->codigo = select.value(7).toString();
            m->perspectiva = select.value(8).toInt();
        }
        select.finish();
        reloj.parar(state);
        if (!ok || m->sysPK != clave) {
            state.SkipWithError("the floor SELECT failed");
            break;
        }
    }
}

void cargarIndicador(benchmark::State& state, BenchDatabase* db)
{
    Reloj reloj;
    int n = 0;
    for (auto _ : state) {
        const int clave = n++ % seed::Indicadores + 1;
        reloj.iniciar();
        auto indicador = std::make_unique<EIndicador>();
        const bool ok = indicador->Load(&db->connection(), clave);
        reloj.parar(state);
        if (!ok || indicador->Sys_PK() != clave || !indicador->Configuracion()) {
            state.SkipWithError("EIndicador.Load failed");
            break;
        }
    }
}

// The indicator's row by key, then its configuration row by the indicator's
// key from the table its kind names.
void seleccionarIndicador(benchmark::State& state, BenchDatabase* db)
{
    QSqlQuery indicador = preparar(db, QStringLiteral("SELECT * FROM ut_bi_Indicador WHERE Sys_PK = ?"));
    QSqlQuery barra = preparar(db, QStringLiteral("SELECT * FROM ut_bi_BarraProg WHERE uf_FK_Indicador = ?"));
    QSqlQuery matriz = preparar(db, QStringLiteral("SELECT * FROM ut_bi_MatrizGraf WHERE uf_FK_Indicador = ?"));
    QSqlQuery semaforo = preparar(db, QStringLiteral("SELECT * FROM ut_bi_Semaforo WHERE uf_FK_Indicador = ?"));
    Reloj reloj;
    int n = 0;
    for (auto _ : state) {
        const int clave = n++ % seed::Indicadores + 1;
        reloj.iniciar();
        auto fila = std::make_unique<Fila>();
        auto configuracion = std::make_unique<Fila>();
        bool ok = leerFila(indicador, clave, *fila);
        if (ok) {
            const int tipo = fila->valores[2].toInt();
            QSqlQuery& tabla = tipo == 1 ? barra : tipo == 2 ? matriz : semaforo;
            ok = leerFila(tabla, clave, *configuracion);
        }
        reloj.parar(state);
        if (!ok) {
            state.SkipWithError("the floor SELECT failed");
            break;
        }
    }
}

void cargarTablero(benchmark::State& state, BenchDatabase* db)
{
    Reloj reloj;
    for (auto _ : state) {
        reloj.iniciar();
        auto tablero = std::make_unique<ETablero>();
        const bool ok = tablero->Load(&db->connection(), seed::Tablero);
        reloj.parar(state);
        if (!ok || !tablero->Indicadores() || tablero->Indicadores()->Count() != seed::TabIndicadores
            || !tablero->Figuras() || tablero->Figuras()->Count() != seed::Figuras) {
            state.SkipWithError("ETablero.Load did not bring every child");
            break;
        }
    }
}

// The 1,000 children by key, each row read into plain values.
void seleccionarHijos(benchmark::State& state, BenchDatabase* db)
{
    QSqlQuery indicador = preparar(db, QStringLiteral("SELECT * FROM ut_bi_TabIndicador WHERE Sys_PK = ?"));
    QSqlQuery figura = preparar(db, QStringLiteral("SELECT * FROM ut_bi_Fig WHERE Sys_PK = ?"));
    Reloj reloj;
    for (auto _ : state) {
        reloj.iniciar();
        auto filas = std::make_unique<std::vector<Fila>>(seed::TabIndicadores + seed::Figuras);
        bool ok = true;
        for (int k = 1; k <= seed::Figuras && ok; ++k)
            ok = leerFila(figura, k, (*filas)[size_t(k - 1)]);
        for (int k = 1; k <= seed::TabIndicadores && ok; ++k)
            ok = leerFila(indicador, k, (*filas)[size_t(seed::Figuras + k - 1)]);
        reloj.parar(state);
        if (!ok) {
            state.SkipWithError("the floor SELECT failed");
            break;
        }
    }
}

template <typename Funcion>
void registrar(const std::string& nombre, Funcion funcion, BenchDatabase* db, benchmark::TimeUnit unidad)
{
    benchmark::RegisterBenchmark(nombre.c_str(), funcion, db)->UseManualTime()->Unit(unidad);
}

} // namespace

void registerEntityBenchmarks(Suite& suite)
{
    BenchDatabase* escritura = suite.escritura.get();
    BenchDatabase* lectura = suite.lectura.get();
    registrar(suite.name("EMetrica.Save", "work"), guardarMetrica, escritura, benchmark::kMicrosecond);
    registrar(suite.name("EMetrica.Save", "floor"), insertarMetrica, escritura, benchmark::kMicrosecond);
    registrar(suite.name("ETabIndicador.Save", "work"), guardarTabIndicador, escritura, benchmark::kMicrosecond);
    registrar(suite.name("ETabIndicador.Save", "floor"), insertarTabIndicador, escritura, benchmark::kMicrosecond);
    registrar(suite.name("EMetrica.Load", "work"), cargarMetrica, lectura, benchmark::kMicrosecond);
    registrar(suite.name("EMetrica.Load", "floor"), seleccionarMetrica, lectura, benchmark::kMicrosecond);
    registrar(suite.name("EIndicador.Load", "work"), cargarIndicador, lectura, benchmark::kMicrosecond);
    registrar(suite.name("EIndicador.Load", "floor"), seleccionarIndicador, lectura, benchmark::kMicrosecond);
    registrar(suite.name("ETablero.Load", "work"), cargarTablero, lectura, benchmark::kMillisecond);
    registrar(suite.name("ETablero.Load", "floor"), seleccionarHijos, lectura, benchmark::kMillisecond);
}
