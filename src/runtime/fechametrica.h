#pragma once

#include <QJSValue>
#include <QObject>

// _fecha: date helpers for the SQL a metric builds. Every argument that is a
// date may be a Date, an automation date or an ISO text.
class FechaMetrica : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    // "2024-03-15": the date as SQLite and PostgreSQL compare it.
    Q_INVOKABLE QJSValue texto(const QJSValue& fecha);
    // "'2024-03-15'": the same, quoted as an SQL literal.
    Q_INVOKABLE QJSValue sql(const QJSValue& fecha);
    Q_INVOKABLE QJSValue anio(const QJSValue& fecha);
    Q_INVOKABLE QJSValue mes(const QJSValue& fecha);
    Q_INVOKABLE QJSValue dia(const QJSValue& fecha);
    // 1 Sunday to 7 Saturday, as the engine's calendar counts weekdays.
    Q_INVOKABLE QJSValue diaSemana(const QJSValue& fecha);
    Q_INVOKABLE QJSValue sumarDias(const QJSValue& fecha, int dias);

private:
    template <typename Parte>
    QJSValue parte(const QJSValue& fecha, Parte parte);
};
