#pragma once
// The host objects a script stands in for. A VBScript host handed the engine
// its own user management and entity search; a script plays the host, so it
// gets objects that implement the same two interfaces and that it steers
// completely: which rights are granted, what a search finds.

#include "engine/quelta.h"
#include "engine/ravlo.h"

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QStringList>
#include <QVariant>

// "Host.UserManagement": grants every right unless told otherwise, and
// remembers every code it was asked, in order. Silent on refusal, so a
// script sees only the component's own windows.
class ScriptUserManagement : public QObject, public Ravlo {
    Q_OBJECT
    Q_INTERFACES(Ravlo)
    Q_CLASSINFO("ProgID", "Host.UserManagement")
    Q_PROPERTY(QStringList asked READ asked)

public:
    Q_INVOKABLE explicit ScriptUserManagement(QObject* parent = nullptr);

    Q_INVOKABLE bool VerificarDerecho(const QString& codigo, bool flag1, bool flag2, const QString& texto) override;

    // One code refused or granted; a later call for the same code wins.
    Q_INVOKABLE void refuse(const QString& code);
    Q_INVOKABLE void grant(const QString& code);
    // Every code refused (or granted) from now on, except those named afterwards.
    Q_INVOKABLE void refuseAll();
    Q_INVOKABLE void grantAll();
    // Forgets the codes asked so far.
    Q_INVOKABLE void clearAsked() { m_asked.clear(); }

    QStringList asked() const { return m_asked; }

private:
    bool m_grantByDefault = true;
    QSet<QString> m_refused;
    QSet<QString> m_granted;
    QStringList m_asked;
};

// "Host.Search": answers the engine's search and describe questions with
// what the script set, and records each question. With candidates set, a
// search shows a modal search window listing them, as a real host's search
// does, so scripts can drive that window too.
class ScriptSearch : public QObject, public Quelta {
    Q_OBJECT
    Q_INTERFACES(Quelta)
    Q_CLASSINFO("ProgID", "Host.Search")
    Q_PROPERTY(QVariant searchAnswer READ searchAnswer WRITE setSearchAnswer)
    Q_PROPERTY(QString describeAnswer READ describeAnswer WRITE setDescribeAnswer)
    Q_PROPERTY(QVariantList candidates READ candidates WRITE setCandidates)
    Q_PROPERTY(int raiseError READ raiseError WRITE setRaiseError)
    Q_PROPERTY(QObject* connection READ connection)
    Q_PROPERTY(QVariantList searches READ searches)
    Q_PROPERTY(QVariantList descriptions READ descriptions)

public:
    Q_INVOKABLE explicit ScriptSearch(QObject* parent = nullptr);

    Q_INVOKABLE QVariant Conectar(QObject* conexion) override;
    Q_INVOKABLE QVariant Buscar(const QString& tipoEntidad, bool flag) override;
    Q_INVOKABLE QString Describir(const QString& tipoEntidad, const QString& clave, const QString& separador) override;

    QVariant searchAnswer() const { return m_searchAnswer; }
    void setSearchAnswer(const QVariant& value) { m_searchAnswer = value; }
    QString describeAnswer() const { return m_describeAnswer; }
    void setDescribeAnswer(const QString& value) { m_describeAnswer = value; }
    QVariantList candidates() const { return m_candidates; }
    void setCandidates(const QVariantList& value) { m_candidates = value; }
    // A non-zero number makes both questions raise that automation error.
    int raiseError() const { return m_raiseError; }
    void setRaiseError(int number) { m_raiseError = number; }
    QObject* connection() const { return m_connection.data(); }
    QVariantList searches() const { return m_searches; }
    QVariantList descriptions() const { return m_descriptions; }

private:
    QVariant elegirEnVentana(const QString& tipoEntidad);

    QVariant m_searchAnswer = 0;
    QString m_describeAnswer;
    QVariantList m_candidates;
    int m_raiseError = 0;
    QPointer<QObject> m_connection;
    QVariantList m_searches;
    QVariantList m_descriptions;
};
