#include "texto.h"

namespace vb {

QString Trim(const QString& text)
{
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && text.at(start) == QLatin1Char(' '))
        ++start;
    while (end > start && text.at(end - 1) == QLatin1Char(' '))
        --end;
    return text.mid(start, end - start);
}

QString minusculas(const QString& texto)
{
    qsizetype primera = -1;
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const char16_t c = texto.at(i).unicode();
        if (c >= 0x80)
            return texto.toLower();
        if (primera < 0 && c >= u'A' && c <= u'Z')
            primera = i;
    }
    if (primera < 0)
        return texto;
    QString resultado = texto;
    char16_t* d = reinterpret_cast<char16_t*>(resultado.data());
    for (qsizetype i = primera; i < resultado.size(); ++i) {
        if (d[i] >= u'A' && d[i] <= u'Z')
            d[i] = char16_t(d[i] + (u'a' - u'A'));
    }
    return resultado;
}

bool almacenable(QStringView texto)
{
    if (!texto.isValidUtf16())
        return false;
    for (const QChar c : texto) {
        if (c.unicode() >= 0xFFFE)
            return false;
    }
    return true;
}

} // namespace vb
