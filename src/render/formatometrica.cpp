#include "formatometrica.h"

#include "model/emetrica.h"

#include <QLocale>

namespace {
// More decimals than this only makes a tile unreadable.
constexpr int MaximoDecimales = 6;
} // namespace

FormatoMetrica::FormatoMetrica(const EMetrica* metrica)
{
    if (!metrica)
        return;
    m_titulo = metrica->Titulo().trimmed().isEmpty() ? metrica->Nombre() : metrica->Titulo();
    m_decimales = qBound(0, static_cast<int>(metrica->Decimales()), MaximoDecimales);
    m_agrupar = metrica->Formato().contains(QLatin1Char(','));
    m_porcentaje = metrica->Formato().contains(QLatin1Char('%'));
}

QString FormatoMetrica::texto(double valor) const
{
    QLocale locale;
    if (!m_agrupar)
        locale.setNumberOptions(QLocale::OmitGroupSeparator);
    if (m_porcentaje)
        return locale.toString(valor * 100, 'f', m_decimales) + QLatin1Char('%');
    return locale.toString(valor, 'f', m_decimales);
}
