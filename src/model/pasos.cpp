#include "pasos.h"

#include "ado/connection.h"
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

bool ejecutar(QObject* cnx, const QString& sql)
{
    bool ran = false;
    paso([&] {
        ado::Connection* connection = ado::openConnection(cnx);
        if (!connection)
            return;
        connection->Execute(sql);
        ran = true;
    });
    return ran;
}

} // namespace model
