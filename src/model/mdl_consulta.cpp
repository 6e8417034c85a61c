#include "mdl_consulta.h"

#include "vb/vb.h"

namespace mdl_functions {

namespace {
constexpr int adUseClient = 3;
constexpr int adStateOpen = 1;
} // namespace

std::unique_ptr<ado::Recordset> AbrirConsulta(QObject* conexion, const QString& sql)
{
    try {
        auto rs = std::make_unique<ado::Recordset>();
        rs->setCursorLocation(adUseClient);
        rs->setActiveConnection(conexion);
        rs->setSource(sql);
        rs->Open();
        if (rs->State() != adStateOpen)
            return nullptr;
        // A query without rows is, to every caller, the same as a failed one.
        if (rs->atEnd() && rs->atBeginning())
            return nullptr;
        return rs;
    } catch (const vb::AutomationError&) {
        return nullptr;
    }
}

double ValorNumero(const QString& texto)
{
    try {
        return vb::Val(texto);
    } catch (const vb::AutomationError&) {
        return 0.0;
    }
}

} // namespace mdl_functions
