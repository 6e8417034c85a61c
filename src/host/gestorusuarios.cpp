#include "gestorusuarios.h"

#include "engine/msgbox.h"

GestorUsuarios::GestorUsuarios(QStringList denegados, QObject* parent)
    : QObject(parent)
    , m_denegados(denegados.begin(), denegados.end())
{
}

bool GestorUsuarios::VerificarDerecho(const QString& codigo, bool /*flag1*/, bool /*flag2*/, const QString& /*texto*/)
{
    if (!m_denegados.contains(codigo))
        return true;
    if (m_avisar)
        vbui::MsgBox(QStringLiteral("No tiene el derecho %1 para esta operación.").arg(codigo), vbui::vbExclamation);
    return false;
}
