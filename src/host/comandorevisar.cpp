#include "comandorevisar.h"

#include "ado/connection.h"
#include "tools/fotobiblioteca.h"
#include "tools/informerevision.h"
#include "tools/revisionbiblioteca.h"
#include "vb/automationerror.h"

#include <QJsonDocument>
#include <QTextStream>

int ejecutarRevision(const QStringList& args, const QString& urlPorOmision)
{
    QTextStream out(stdout);
    QTextStream err(stderr);
    QStringList resto = args;
    const bool json = resto.removeAll(QStringLiteral("--json")) > 0;
    if (resto.size() > 1 || (!resto.isEmpty() && resto.first().startsWith(QLatin1String("--")))) {
        err << "Usage: vbi check [URL] [--json]\n";
        return 2;
    }
    const QString url = resto.isEmpty() ? urlPorOmision : resto.first();
    try {
        ado::Connection conexion;
        conexion.Open(url);
        const RevisionBiblioteca revision(FotoBiblioteca::leer(conexion));
        if (json)
            out << QJsonDocument(InformeRevision::json(revision.problemas())).toJson(QJsonDocument::Indented);
        else
            out << InformeRevision::texto(revision.problemas());
        return revision.problemas().isEmpty() ? 0 : 1;
    } catch (const vb::AutomationError& e) {
        err << "vbi check: cannot read the library on " << url << ": " << e.description() << "\n";
        return 2;
    }
}
