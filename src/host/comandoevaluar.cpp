#include "comandoevaluar.h"

#include "runtime/evaluador.h"
#include "vb/automationerror.h"

#include <QHash>
#include <QTextStream>
#include <algorithm>
#include <cmath>

namespace {

const QStringList OpcionesConValor = {QStringLiteral("--metric"), QStringLiteral("--entity"),
                                      QStringLiteral("--period"), QStringLiteral("--date"),
                                      QStringLiteral("--time-limit")};

struct Peticion {
    QString url;
    int metrica = 0;
    int entidad = 0;
    IntervaloPeriodo periodo;
    int limite = Evaluador::LimitePorDefecto;
};

// Each option once, with its value; at most one URL; --metric required.
bool separar(const QStringList& args, QString& url, QHash<QString, QString>& opciones)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (OpcionesConValor.contains(a) && i + 1 < args.size() && !opciones.contains(a))
            opciones.insert(a, args.at(++i));
        else if (!a.startsWith(QLatin1String("--")) && url.isEmpty())
            url = a;
        else
            return false;
    }
    return opciones.contains(QStringLiteral("--metric"));
}

bool leer(const QStringList& args, Peticion& p)
{
    QHash<QString, QString> o;
    if (!separar(args, p.url, o))
        return false;
    bool metrica = false, entidad = false, limite = false;
    p.metrica = o.value(QStringLiteral("--metric")).toInt(&metrica);
    p.entidad = o.value(QStringLiteral("--entity"), QStringLiteral("0")).toInt(&entidad);
    p.limite = o.value(QStringLiteral("--time-limit"), QString::number(p.limite)).toInt(&limite);
    const int periodo = PeriodoMetrica::desdeNombre(o.value(QStringLiteral("--period"), QStringLiteral("dia")));
    const QString fecha = o.value(QStringLiteral("--date"));
    p.periodo = PeriodoMetrica::intervalo(periodo, fecha.isEmpty() ? QDate::currentDate()
                                                                   : QDate::fromString(fecha, Qt::ISODate));
    return metrica && entidad && limite && p.limite > 0 && p.periodo.inicio.isValid();
}

} // namespace

QString textoValor(double valor)
{
    constexpr int Significativas = 15;
    valor += 0.0; // a negative zero prints as 0
    if (valor == std::trunc(valor))
        return QString::number(valor, 'f', 0);
    const int enteras = int(std::floor(std::log10(std::abs(valor)))) + 1;
    QString texto = QString::number(valor, 'f', std::max(Significativas - enteras, 0));
    if (texto.contains(QLatin1Char('.'))) {
        while (texto.endsWith(QLatin1Char('0')))
            texto.chop(1);
        if (texto.endsWith(QLatin1Char('.')))
            texto.chop(1);
    }
    return texto;
}

int ejecutarEvaluacion(const QStringList& args, const QString& urlPorOmision)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    Peticion p;
    if (!leer(args, p)) {
        err << "Usage: vbi evaluate [URL] --metric K [--entity K] [--period dia|semana|mes|ano]"
               " [--date YYYY-MM-DD] [--time-limit MS]\n";
        return 2;
    }
    try {
        Evaluador evaluador(p.url.isEmpty() ? urlPorOmision : p.url);
        evaluador.setLimite(p.limite);
        const ResultadoMetrica r = evaluador.evaluarMetrica(p.metrica, p.entidad, p.periodo);
        if (!r.correcto) {
            err << "vbi evaluate: " << r.mensaje() << "\n";
            return 1;
        }
        out << textoValor(r.valor) << "\n";
        return 0;
    } catch (const vb::AutomationError& e) {
        err << "vbi evaluate: cannot read the database: " << e.description() << "\n";
        return 1;
    }
}
