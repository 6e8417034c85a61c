// Turns the benchmark programs' JSON output into one table of ratios, work
// over floor, and writes it with the machine and the date to RESULTS.md.
//
//   vbi_bench_report --results bench/RESULTS.md [--notes bench/findings.md] run1.json [run2.json ...]
//
// Each ratio is the median of the work's samples over the median of its
// floor's, both from the same run. Its range pairs the quartiles the
// unfavourable and the favourable way (Q1 work / Q3 floor .. Q3 work / Q1
// floor), so a goal inside the range is a call the noise could flip.
#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QStringList>
#include <QSysInfo>
#include <QTextStream>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

namespace {

struct Meta {
    const char* trabajo;
    const char* piso;
    double objetivo;
    bool memoria;
};

// The work items in the order the table shows them, with their floors and goals.
const QMap<QString, Meta>& metas()
{
    static const QMap<QString, Meta> m{
        {QStringLiteral("LlenarArbol"), {"LlenarArbol", "3 SELECTs (Qt SQL) + same QTreeWidget from memory", 1.3, false}},
        {QStringLiteral("EMetrica.Save"), {"EMetrica.Save, new row", "prepared INSERT, same columns, autocommit", 1.2, false}},
        {QStringLiteral("ETabIndicador.Save"), {"ETabIndicador.Save, new row", "prepared INSERT, same columns, autocommit", 1.2, false}},
        {QStringLiteral("EMetrica.Load"), {"EMetrica.Load", "prepared SELECT by key", 1.5, false}},
        {QStringLiteral("EIndicador.Load"), {"EIndicador.Load + configuration", "prepared SELECTs by key", 1.5, false}},
        {QStringLiteral("ETablero.Load"), {"ETablero.Load, 500 + 500 children", "1,000 prepared SELECTs by key", 2.0, false}},
        {QStringLiteral("dlgPropIndicador.Edit"), {"dlgPropIndicador.Edit until shown, 1,000 metrics", "same widgets filled from memory, shown", 1.5, false}},
        {QStringLiteral("TreePeakMemory"), {"peak memory, 42,000-node tree", "same tree built from memory", 1.2, true}},
        {QStringLiteral("TableroPintado"), {"dashboard of 100 placed indicators opened until painted", "same layout drawn as plain boxes", 2.0, false}},
        {QStringLiteral("ValoresTablero"), {"sample dashboard's metrics run, every tile, four periods", "the same SQL run through Qt SQL", 1.5, false}},
    };
    return m;
}

const QStringList Orden{QStringLiteral("LlenarArbol"),        QStringLiteral("EMetrica.Save"),
                        QStringLiteral("ETabIndicador.Save"), QStringLiteral("EMetrica.Load"),
                        QStringLiteral("EIndicador.Load"),    QStringLiteral("ETablero.Load"),
                        QStringLiteral("dlgPropIndicador.Edit"), QStringLiteral("TreePeakMemory"),
                        QStringLiteral("TableroPintado"), QStringLiteral("ValoresTablero")};

struct Serie {
    std::vector<double> muestras; // ms, or KiB for memory
    double cuantil(double q) const
    {
        std::vector<double> v = muestras;
        std::sort(v.begin(), v.end());
        if (v.empty())
            return std::nan("");
        const double pos = q * double(v.size() - 1);
        const size_t i = size_t(std::floor(pos));
        const double f = pos - double(i);
        return i + 1 < v.size() ? v[i] * (1 - f) + v[i + 1] * f : v[i];
    }
    double mediana() const { return cuantil(0.5); }
    // Interquartile range relative to the median.
    double dispersion() const { return (cuantil(0.75) - cuantil(0.25)) / mediana(); }
};

// "LlenarArbol/work/sqlite/1000/manual_time" -> item, role, backend, size.
struct Clave {
    QString item, rol, backend;
    int tamano = 0;
};

bool analizar(const QString& nombre, Clave& clave)
{
    QStringList partes;
    for (const QString& p : nombre.split(QLatin1Char('/'))) {
        if (p == QLatin1String("manual_time") || p.contains(QLatin1Char(':')))
            continue;
        partes << p;
    }
    if (partes.size() < 3)
        return false;
    clave.item = partes.at(0);
    clave.rol = partes.at(1);
    clave.backend = partes.at(2);
    clave.tamano = partes.size() > 3 ? partes.at(3).toInt() : 0;
    return true;
}

double aMilisegundos(double valor, const QString& unidad)
{
    if (unidad == QLatin1String("ns"))
        return valor / 1e6;
    if (unidad == QLatin1String("us"))
        return valor / 1e3;
    if (unidad == QLatin1String("s"))
        return valor * 1e3;
    return valor;
}

QString cantidad(double valor, bool memoria)
{
    if (std::isnan(valor))
        return QStringLiteral("-");
    if (memoria)
        return QStringLiteral("%1 MiB").arg(valor / 1024.0, 0, 'f', 1);
    if (valor < 1.0)
        return QStringLiteral("%1 µs").arg(valor * 1000.0, 0, 'f', valor < 0.1 ? 1 : 0);
    if (valor < 100.0)
        return QStringLiteral("%1 ms").arg(valor, 0, 'f', 2);
    return QStringLiteral("%1 ms").arg(valor, 0, 'f', 0);
}

QString leerLinea(const QString& archivo, const QString& prefijo)
{
    QFile f(archivo);
    if (!f.open(QIODevice::ReadOnly))
        return QString();
    for (const QByteArray& linea : f.readAll().split('\n')) {
        const QString l = QString::fromUtf8(linea);
        if (l.startsWith(prefijo))
            return l.mid(l.indexOf(QLatin1Char(':')) + 1).trimmed();
    }
    return QString();
}

struct Fila {
    QString trabajo, tamano, backend, mediaTrabajo, mediaPiso, razon, rango, objetivo, estado;
};

QString tabla(const std::vector<Fila>& filas, bool markdown)
{
    const QStringList cabecera{QStringLiteral("Work"),  QStringLiteral("Size"),  QStringLiteral("Backend"),
                               QStringLiteral("Work median (IQR)"), QStringLiteral("Floor median (IQR)"),
                               QStringLiteral("Ratio"), QStringLiteral("Ratio range"), QStringLiteral("Goal"),
                               QStringLiteral("Status")};
    auto celdas = [](const Fila& f) {
        return QStringList{f.trabajo, f.tamano, f.backend, f.mediaTrabajo, f.mediaPiso,
                           f.razon,   f.rango,  f.objetivo, f.estado};
    };
    QString out;
    if (markdown) {
        out += QStringLiteral("| ") + cabecera.join(QStringLiteral(" | ")) + QStringLiteral(" |\n|");
        for (int i = 0; i < cabecera.size(); ++i)
            out += i >= 3 && i <= 7 ? QStringLiteral("---:|") : QStringLiteral("---|");
        out += QLatin1Char('\n');
        for (const Fila& f : filas)
            out += QStringLiteral("| ") + celdas(f).join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
        return out;
    }
    std::vector<qsizetype> ancho(size_t(cabecera.size()));
    for (int i = 0; i < cabecera.size(); ++i)
        ancho[size_t(i)] = cabecera.at(i).size();
    for (const Fila& f : filas) {
        const QStringList c = celdas(f);
        for (int i = 0; i < c.size(); ++i)
            ancho[size_t(i)] = std::max(ancho[size_t(i)], c.at(i).size());
    }
    auto linea = [&](const QStringList& c) {
        QString l;
        for (int i = 0; i < c.size(); ++i) {
            const bool derecha = i >= 3 && i <= 7;
            l += (derecha ? c.at(i).rightJustified(ancho[size_t(i)]) : c.at(i).leftJustified(ancho[size_t(i)]));
            l += i + 1 < c.size() ? QStringLiteral("  ") : QString();
        }
        return l.trimmed() + QLatin1Char('\n');
    };
    out += linea(cabecera);
    QStringList rayas;
    for (qsizetype a : ancho)
        rayas << QString(a, QLatin1Char('-'));
    out += linea(rayas);
    for (const Fila& f : filas)
        out += linea(celdas(f));
    return out;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QString resultados, notas;
    QStringList entradas;
    const QStringList args = app.arguments().mid(1);
    for (int i = 0; i < args.size(); ++i) {
        if (args.at(i) == QLatin1String("--results") && i + 1 < args.size())
            resultados = args.at(++i);
        else if (args.at(i) == QLatin1String("--notes") && i + 1 < args.size())
            notas = args.at(++i);
        else
            entradas << args.at(i);
    }
    if (entradas.isEmpty()) {
        std::fprintf(stderr, "usage: vbi_bench_report --results FILE [--notes FILE] RUN.json...\n");
        return 2;
    }

    // item -> (backend, size) -> role -> samples
    QMap<QString, QMap<QPair<QString, int>, QMap<QString, Serie>>> datos;
    QStringList errores;
    QString fecha, carga;
    for (const QString& entrada : entradas) {
        QFile f(entrada);
        if (!f.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "vbi_bench_report: cannot read %s\n", qPrintable(entrada));
            return 1;
        }
        const QJsonObject raiz = QJsonDocument::fromJson(f.readAll()).object();
        const QJsonObject contexto = raiz.value(QStringLiteral("context")).toObject();
        if (fecha.isEmpty())
            fecha = contexto.value(QStringLiteral("date")).toString();
        QStringList cargas;
        for (const QJsonValue& v : contexto.value(QStringLiteral("load_avg")).toArray())
            cargas << QString::number(v.toDouble(), 'f', 2);
        if (!cargas.isEmpty())
            carga += (carga.isEmpty() ? QString() : QStringLiteral("; ")) + cargas.join(QLatin1Char(' '));
        for (const QJsonValue& v : raiz.value(QStringLiteral("benchmarks")).toArray()) {
            const QJsonObject b = v.toObject();
            if (b.value(QStringLiteral("run_type")).toString() != QLatin1String("iteration"))
                continue;
            Clave clave;
            if (!analizar(b.value(QStringLiteral("run_name")).toString(), clave) || !metas().contains(clave.item))
                continue;
            if (b.value(QStringLiteral("error_occurred")).toBool()) {
                errores << QStringLiteral("%1: %2").arg(b.value(QStringLiteral("run_name")).toString(),
                                                        b.value(QStringLiteral("error_message")).toString());
                continue;
            }
            double valor = 0;
            if (metas().value(clave.item).memoria)
                valor = b.value(QStringLiteral("peak_growth_kib")).toDouble();
            else
                valor = aMilisegundos(b.value(QStringLiteral("real_time")).toDouble(),
                                      b.value(QStringLiteral("time_unit")).toString());
            datos[clave.item][{clave.backend, clave.tamano}][clave.rol].muestras.push_back(valor);
        }
    }

    std::vector<Fila> filas;
    int cumplidas = 0, fallidas = 0;
    // How many samples the medians rest on, per kind of measurement.
    int minTiempo = 0, maxTiempo = 0, minMemoria = 0, maxMemoria = 0;
    auto contar = [](int& menor, int& mayor, int n) {
        menor = menor == 0 ? n : std::min(menor, n);
        mayor = std::max(mayor, n);
    };
    for (const QString& item : Orden) {
        if (!datos.contains(item))
            continue;
        const Meta meta = metas().value(item);
        const auto& porCaso = datos.value(item);
        // Sizes ascending, SQLite before PostgreSQL.
        QList<QPair<QString, int>> casos = porCaso.keys();
        std::sort(casos.begin(), casos.end(), [](const auto& a, const auto& b) {
            return a.second != b.second ? a.second < b.second : a.first > b.first;
        });
        for (const auto& caso : casos) {
            const auto& roles = porCaso.value(caso);
            if (!roles.contains(QStringLiteral("work")) || !roles.contains(QStringLiteral("floor")))
                continue;
            const Serie trabajo = roles.value(QStringLiteral("work"));
            const Serie piso = roles.value(QStringLiteral("floor"));
            for (const Serie* serie : {&trabajo, &piso}) {
                if (meta.memoria)
                    contar(minMemoria, maxMemoria, int(serie->muestras.size()));
                else
                    contar(minTiempo, maxTiempo, int(serie->muestras.size()));
            }
            const double razon = trabajo.mediana() / piso.mediana();
            const double bajo = trabajo.cuantil(0.25) / piso.cuantil(0.75);
            const double alto = trabajo.cuantil(0.75) / piso.cuantil(0.25);
            Fila f;
            f.trabajo = QString::fromUtf8(meta.trabajo);
            f.tamano = caso.second > 0 ? QLocale(QLocale::English).toString(caso.second) : QString();
            f.backend = caso.first == QLatin1String("postgresql") ? QStringLiteral("PostgreSQL") : QStringLiteral("SQLite");
            f.mediaTrabajo = QStringLiteral("%1 (±%2%)")
                                 .arg(cantidad(trabajo.mediana(), meta.memoria))
                                 .arg(trabajo.dispersion() * 50.0, 0, 'f', 0);
            f.mediaPiso = QStringLiteral("%1 (±%2%)")
                              .arg(cantidad(piso.mediana(), meta.memoria))
                              .arg(piso.dispersion() * 50.0, 0, 'f', 0);
            f.razon = QStringLiteral("%1×").arg(razon, 0, 'f', 2);
            f.rango = QStringLiteral("%1–%2").arg(bajo, 0, 'f', 2).arg(alto, 0, 'f', 2);
            f.objetivo = QStringLiteral("≤ %1×").arg(meta.objetivo, 0, 'f', 1);
            if (razon <= meta.objetivo) {
                ++cumplidas;
                f.estado = alto > meta.objetivo ? QStringLiteral("met (noise could flip it)") : QStringLiteral("met");
            } else {
                ++fallidas;
                f.estado = bajo <= meta.objetivo ? QStringLiteral("MISSED (noise could flip it)") : QStringLiteral("MISSED");
            }
            filas.push_back(f);
        }
    }

    const QString texto = tabla(filas, false);
    QTextStream salida(stdout);
    salida << texto;
    salida << QStringLiteral("%1 of %2 ratios within their goals.\n").arg(cumplidas).arg(cumplidas + fallidas);
    for (const QString& e : errores)
        salida << QStringLiteral("error: ") << e << QLatin1Char('\n');
    salida.flush();

    if (resultados.isEmpty())
        return errores.isEmpty() ? 0 : 1;

    const QString cpu = leerLinea(QStringLiteral("/proc/cpuinfo"), QStringLiteral("model name"));
    const double memoria = leerLinea(QStringLiteral("/proc/meminfo"), QStringLiteral("MemTotal")).split(QLatin1Char(' ')).value(0).toDouble();
    QString md;
    QTextStream r(&md);
    r << "# Benchmark results\n\n"
      << "Written by `make bench` (bench/run-benchmarks.sh); every ratio is work over floor, "
         "both measured in the same run on the same database.\n\n"
      << "| Machine | |\n|---|---|\n"
      << "| Date | " << (fecha.isEmpty() ? QDateTime::currentDateTime().toString(Qt::ISODate) : fecha) << " |\n"
      << "| CPU | " << cpu << " |\n"
      << "| nproc | " << QThread::idealThreadCount() << " |\n"
      << "| Memory | " << QString::number(memoria / 1024.0 / 1024.0, 'f', 1) << " GiB |\n"
      << "| System | " << QSysInfo::prettyProductName() << ", kernel " << QSysInfo::kernelVersion() << " |\n"
      << "| Qt | " << qVersion() << " |\n"
      << "| Load average at start of each run | " << carga << " |\n\n"
      << "## Ratios\n\n"
      << "Medians of the repetitions; ± is half the interquartile range as a share of the median. "
         "The ratio range pairs the quartiles (Q1 work / Q3 floor – Q3 work / Q1 floor). "
      << QStringLiteral("Each time is the median of %1 repetitions, each peak memory the median of %2 processes.\n\n")
             .arg(minTiempo == maxTiempo ? QString::number(minTiempo)
                                         : QStringLiteral("%1–%2").arg(minTiempo).arg(maxTiempo))
             .arg(minMemoria == maxMemoria ? QString::number(minMemoria)
                                           : QStringLiteral("%1–%2").arg(minMemoria).arg(maxMemoria))
      << tabla(filas, true) << "\n"
      << cumplidas << " of " << (cumplidas + fallidas) << " ratios within their goals.\n\n";
    if (!errores.isEmpty()) {
        r << "Errors:\n\n";
        for (const QString& e : errores)
            r << "- " << e << "\n";
        r << "\n";
    }
    if (!notas.isEmpty()) {
        QFile n(notas);
        if (n.open(QIODevice::ReadOnly))
            r << QString::fromUtf8(n.readAll());
    }
    r.flush();
    QFile out(resultados);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        std::fprintf(stderr, "vbi_bench_report: cannot write %s\n", qPrintable(resultados));
        return 1;
    }
    out.write(md.toUtf8());
    std::fprintf(stderr, "vbi_bench_report: wrote %s\n", qPrintable(resultados));
    return errores.isEmpty() ? 0 : 1;
}
