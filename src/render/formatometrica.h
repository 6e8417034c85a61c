#pragma once

#include <QString>

class EMetrica;

// How a metric's figures are written: its decimals, with thousands grouping
// when its format has a comma and as a percentage when it has a per cent
// sign, in the user's locale.
class FormatoMetrica {
public:
    FormatoMetrica() = default;
    explicit FormatoMetrica(const EMetrica* metrica);

    QString texto(double valor) const;
    // The metric's title, or its name when it has no title.
    QString titulo() const { return m_titulo; }

private:
    QString m_titulo;
    int m_decimales = 0;
    bool m_agrupar = false;
    bool m_porcentaje = false;
};
