#include "caracteresenteros.h"

QValidator::State CaracteresEnteros::validate(QString& input, int& pos) const
{
    if (input.isValidUtf16())
        return Acceptable;
    QString entero;
    entero.reserve(input.size());
    int cursor = pos;
    for (qsizetype i = 0; i < input.size(); ++i) {
        const QChar c = input.at(i);
        const bool par = c.isHighSurrogate() ? i + 1 < input.size() && input.at(i + 1).isLowSurrogate()
                                             : !c.isLowSurrogate() || (i > 0 && input.at(i - 1).isHighSurrogate());
        if (par)
            entero.append(c);
        else if (i < pos)
            --cursor;
    }
    input = entero;
    pos = cursor;
    return Acceptable;
}
