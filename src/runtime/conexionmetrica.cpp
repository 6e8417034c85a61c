#include "conexionmetrica.h"

#include "valorsql.h"

#include <QJSEngine>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace {

bool esLectura(const QString& sql)
{
    static const QRegularExpression lectura(QStringLiteral("^\\s*(select|with)\\b"),
                                            QRegularExpression::CaseInsensitiveOption);
    return lectura.match(sql).hasMatch();
}

// A text without a semicolon before its end cannot hold a second statement,
// so it runs as it is, in one round trip to the server. Any other is
// prepared first, which the database refuses for more than one statement.
bool unaSentencia(const QString& sql)
{
    QStringView texto = QStringView(sql).trimmed();
    if (texto.endsWith(QLatin1Char(';')))
        texto.chop(1);
    return !texto.contains(QLatin1Char(';'));
}

} // namespace

ConexionMetrica::ConexionMetrica(const QSqlDatabase& base, const QString& dialecto, QObject* parent)
    : QObject(parent)
    , m_base(base)
    , m_dialecto(dialecto)
{
}

QSqlQuery* ConexionMetrica::ejecutar(const QString& sql)
{
    QJSEngine& motor = *qjsEngine(this);
    if (!esLectura(sql)) {
        motor.throwError(QStringLiteral("Una métrica solo lee: la sentencia debe empezar por SELECT o WITH"));
        return nullptr;
    }
    QSqlQuery& consulta = m_consultas.emplace_back(m_base);
    consulta.setForwardOnly(true);
    consulta.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
    if (!(unaSentencia(sql) ? consulta.exec(sql) : consulta.prepare(sql) && consulta.exec())) {
        motor.throwError(QStringLiteral("Error de SQL: %1").arg(consulta.lastError().text()));
        return nullptr;
    }
    return &consulta;
}

QJSValue ConexionMetrica::Execute(const QString& sql)
{
    QSqlQuery* const ejecutada = ejecutar(sql);
    if (!ejecutada)
        return {};
    QSqlQuery& consulta = *ejecutada;
    QJSEngine& motor = *qjsEngine(this);
    QJSValue filas = motor.newArray();
    quint32 n = 0;
    while (consulta.next()) {
        QJSValue fila = motor.newObject();
        const QSqlRecord registro = consulta.record();
        for (int i = 0; i < registro.count(); ++i)
            fila.setProperty(registro.fieldName(i).toLower(), ValorSql::aJS(motor, consulta.value(i)));
        filas.setProperty(n++, fila);
    }
    return filas;
}

QJSValue ConexionMetrica::Escalar(const QString& sql)
{
    QSqlQuery* const consulta = ejecutar(sql);
    if (!consulta)
        return {};
    if (!consulta->next() || consulta->value(0).isNull())
        return QJSValue(0);
    return ValorSql::aJS(*qjsEngine(this), consulta->value(0));
}
