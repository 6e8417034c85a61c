#include "demo.h"

#include "ado/connection.h"
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "gestorusuarios.h"
#include "runtime/evaluador.h"
#include "schemainstaller.h"
#include "vb/automationerror.h"
#include "ventanademo.h"

#include <QApplication>
#include <QTextStream>

namespace {

struct Opciones {
    QString url;
    int usuario = 1;
    QStringList denegados;
    int limite = Evaluador::LimitePorDefecto;
    bool valido = true;
};

Opciones leerOpciones(const QStringList& args, const QString& urlPorOmision)
{
    Opciones o;
    o.url = urlPorOmision;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args.at(i);
        if (a == QLatin1String("--user") && i + 1 < args.size()) {
            o.usuario = args.at(++i).toInt(&o.valido);
        } else if (a == QLatin1String("--time-limit") && i + 1 < args.size()) {
            o.limite = args.at(++i).toInt(&o.valido);
            o.valido = o.valido && o.limite > 0;
        } else if (a == QLatin1String("--deny")) {
            while (i + 1 < args.size() && !args.at(i + 1).startsWith(QLatin1String("--")))
                o.denegados.append(args.at(++i));
        } else if (!a.startsWith(QLatin1String("--")) && o.url == urlPorOmision) {
            o.url = a;
        } else {
            o.valido = false;
        }
    }
    return o;
}

} // namespace

int ejecutarDemo(const QStringList& args, const QString& urlPorOmision)
{
    QTextStream err(stderr);
    const Opciones opciones = leerOpciones(args, urlPorOmision);
    if (!opciones.valido) {
        err << "Usage: vbi demo [URL] [--user N] [--deny CODE ...] [--time-limit MS]\n";
        return 2;
    }
    ado::Connection connection;
    try {
        connection.Open(opciones.url);
        SchemaInstaller::apply(connection);
        SchemaInstaller::addDemoData(connection);
    } catch (const vb::AutomationError& e) {
        err << "vbi demo: cannot open " << opciones.url << ": " << e.description() << "\n";
        return 1;
    }
    EEngine engine;
    GestorUsuarios usuarios(opciones.denegados);
    engine.SetConnection(&connection, opciones.usuario);
    engine.SetUM(&usuarios);
    vbui::instalarTraducciones();
    VentanaDemo ventana(&engine, opciones.usuario, opciones.url);
    ventana.setLimiteMetricas(opciones.limite);
    ventana.recordar();
    ventana.show();
    return QApplication::exec();
}
