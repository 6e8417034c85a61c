// A minimal host of the VendimarBI designer.
//
//   vendimar_embedding [URL]           opens the "new perspective" editor
//   vendimar_embedding --check [URL]   saves a metric, loads it back and prints its key
//
// URL names the database (sqlite:///path/file.db, postgresql://...); without
// one a temporary SQLite file is used.
#include "ado/connection.h"
#include "engine/eengine.h"
#include "engine/ravlo.h"
#include "host/schemainstaller.h"
#include "model/emetrica.h"
#include "model/vendimarbi.h"
#include "vb/automationerror.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>
#include <memory>

// The host's user management. The engine asks it before every editor,
// library and delete; this one grants every right.
class TodoPermitido : public QObject, public Ravlo {
    Q_OBJECT
    Q_INTERFACES(Ravlo)

public:
    bool VerificarDerecho(const QString& /*codigo*/, bool, bool, const QString&) override { return true; }
};

// Creates, saves and loads back a metric through the engine.
static int comprobar(EEngine& engine, QTextStream& out, QTextStream& err)
{
    // What CrearEntidad and CargarEntidad return belongs to the caller.
    std::unique_ptr<QObject> nueva(engine.CrearEntidad(VendimarBI::cMetrica));
    nueva->setProperty("Nombre", QStringLiteral("Ventas del día"));
    if (!engine.GuardarEntidad(nueva.get())) {
        err << "the metric was not saved\n";
        return 1;
    }
    const int clave = nueva->property("Sys_PK").toInt();
    std::unique_ptr<QObject> cargada(engine.CargarEntidad(VendimarBI::cMetrica, clave));
    auto* metrica = qobject_cast<EMetrica*>(cargada.get());
    if (!metrica || metrica->Nombre() != QStringLiteral("Ventas del día")) {
        err << "the metric " << clave << " did not load back\n";
        return 1;
    }
    out << "EMetrica " << metrica->Sys_PK() << " saved and loaded\n";
    return 0;
}

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);

    QStringList args = app.arguments().mid(1);
    const bool check = args.removeAll(QStringLiteral("--check")) > 0;
    QTemporaryDir carpeta; // holds the default database, removed on exit
    const QString url = !args.isEmpty()
        ? args.first()
        : QStringLiteral("sqlite://") + QDir(carpeta.path()).absoluteFilePath(QStringLiteral("vendimar.db"));

    try {
        // The host owns the connection; the engine only keeps a pointer to it.
        ado::Connection connection;
        connection.Open(url);
        // The component never creates tables: the host does, once.
        SchemaInstaller::apply(connection);

        TodoPermitido derechos;
        EEngine engine;
        engine.SetConnection(&connection, 1); // signed-in user 1
        engine.SetUM(&derechos);

        if (check)
            return comprobar(engine, out, err);
        const int perspectiva = engine.Form_Agregar_Perspectiva(0);
        out << (perspectiva > 0 ? QStringLiteral("New perspective %1\n").arg(perspectiva)
                                : QStringLiteral("Cancelled\n"));
        return 0;
    } catch (const vb::AutomationError& e) {
        err << "vendimar_embedding: error " << e.number() << ": " << e.description() << "\n";
        return 1;
    }
}

#include "main.moc"
