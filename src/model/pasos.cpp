#include "pasos.h"

#include "registrotabla.h"

namespace model {

namespace {
constexpr int OptionOne = 1;
}

bool localizar(RegistroTabla& reg, int sysPK, QObject* cnx)
{
    if (sysPK != 0)
        return reg.Buscar(sysPK, QString(), cnx, OptionOne);
    reg.NuevoRegistro();
    return true;
}

void asignar(RegistroTabla& reg, const QString& column, const QVariant& value)
{
    paso([&] { reg.Campo(column, value); });
}

bool escribir(RegistroTabla& reg, int& sysPK)
{
    if (!reg.Guardar())
        return false;
    sysPK = reg.PK();
    return true;
}

} // namespace model
