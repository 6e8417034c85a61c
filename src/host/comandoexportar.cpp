#include "comandoexportar.h"

#include "sesionherramientas.h"
#include "tools/exportadorpaquete.h"
#include "vb/automationerror.h"

#include <QFile>
#include <QJsonDocument>
#include <QTextStream>

namespace {

struct Opciones {
    QString url;
    QString seleccion; // --perspective, --dashboard or --all
    int clave = 0;
    QString salida;
};

bool leer(const QStringList& args, Opciones& o)
{
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        bool numero = true;
        if ((a == QLatin1String("--perspective") || a == QLatin1String("--dashboard")) && i + 1 < args.size()
            && o.seleccion.isEmpty()) {
            o.seleccion = a;
            o.clave = args.at(++i).toInt(&numero);
        } else if (a == QLatin1String("--all") && o.seleccion.isEmpty()) {
            o.seleccion = a;
        } else if (a == QLatin1String("--out") && i + 1 < args.size()) {
            o.salida = args.at(++i);
        } else if (!a.startsWith(QLatin1String("--")) && o.url.isEmpty()) {
            o.url = a;
        } else {
            return false;
        }
        if (!numero)
            return false;
    }
    return !o.seleccion.isEmpty();
}

} // namespace

int ejecutarExportacion(const QStringList& args, const QString& urlPorOmision)
{
    QTextStream err(stderr);
    Opciones o;
    if (!leer(args, o)) {
        err << "Usage: vbi export [URL] (--perspective K | --dashboard K | --all) [--out FILE]\n";
        return 2;
    }
    const QString url = o.url.isEmpty() ? urlPorOmision : o.url;
    try {
        SesionHerramientas sesion(url);
        ExportadorPaquete exportador(&sesion.engine(), sesion.conexion());
        const QJsonObject paquete = o.seleccion == QLatin1String("--all") ? exportador.todo()
            : o.seleccion == QLatin1String("--perspective")              ? exportador.perspectiva(o.clave)
                                                                          : exportador.tablero(o.clave);
        if (paquete.isEmpty()) {
            err << "vbi export: there is no " << o.seleccion.mid(2) << " with the key " << o.clave << "\n";
            return 1;
        }
        const QByteArray texto = QJsonDocument(paquete).toJson(QJsonDocument::Indented);
        if (o.salida.isEmpty()) {
            QFile salida;
            salida.open(stdout, QIODevice::WriteOnly);
            salida.write(texto);
            return 0;
        }
        QFile salida(o.salida);
        if (!salida.open(QIODevice::WriteOnly | QIODevice::Truncate) || salida.write(texto) != texto.size()) {
            err << "vbi export: cannot write " << o.salida << ": " << salida.errorString() << "\n";
            return 1;
        }
        QTextStream(stdout) << "Wrote the bundle to " << o.salida << "\n";
        return 0;
    } catch (const vb::AutomationError& e) {
        err << "vbi export: cannot read the library on " << url << ": " << e.description() << "\n";
        return 1;
    }
}
