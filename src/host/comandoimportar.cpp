#include "comandoimportar.h"

#include "sesionherramientas.h"
#include "tools/importadorpaquete.h"
#include "vb/automationerror.h"

#include <QFile>
#include <QTextStream>

int ejecutarImportacion(const QStringList& args, const QString& urlPorOmision)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    QStringList resto = args;
    const bool ensayo = resto.removeAll(QStringLiteral("--dry-run")) > 0;
    if (resto.isEmpty() || resto.size() > 2 || resto.first().startsWith(QLatin1String("--"))
        || resto.last().startsWith(QLatin1String("--"))) {
        err << "Usage: vbi import [URL] FILE [--dry-run]\n";
        return 2;
    }
    const QString url = resto.size() == 2 ? resto.first() : urlPorOmision;
    QFile archivo(resto.last());
    if (!archivo.open(QIODevice::ReadOnly)) {
        err << "vbi import: cannot read " << archivo.fileName() << ": " << archivo.errorString() << "\n";
        return 1;
    }
    try {
        SesionHerramientas sesion(url);
        const ImportadorPaquete::Resumen resumen = ImportadorPaquete(&sesion.engine()).importar(archivo.readAll(), ensayo);
        out << (ensayo ? "Dry run: nothing was written. The import would give\n" : "Imported into ") << (ensayo ? "" : url)
            << (ensayo ? "" : "\n") << resumen.texto();
        return 0;
    } catch (const ImportadorPaquete::Rechazo& r) {
        err << "vbi import: " << r.motivo << "\n";
        return 1;
    } catch (const vb::AutomationError& e) {
        err << "vbi import: cannot open " << url << ": " << e.description() << "\n";
        return 1;
    }
}
