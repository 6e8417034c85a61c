#pragma once

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// A folder of one test function's own for the files it writes (pictures of
// its windows, mostly): made under the system's temporary folder with a
// unique name, so that the SQLite and PostgreSQL runs of one program, or two
// users of one machine, never write the same file. It goes away with the
// function, unless the function failed: then it stays, and its path is
// printed, so the pictures can be looked at.
class CarpetaPrueba {
public:
    CarpetaPrueba() : m_carpeta(QDir::temp().filePath(QStringLiteral("vbi-prueba-XXXXXX"))) {}

    ~CarpetaPrueba()
    {
        if (QTest::currentTestFailed() && m_carpeta.isValid()) {
            m_carpeta.setAutoRemove(false);
            qInfo("Pictures of the failed test kept in %s", qPrintable(m_carpeta.path()));
        }
    }

    CarpetaPrueba(const CarpetaPrueba&) = delete;
    CarpetaPrueba& operator=(const CarpetaPrueba&) = delete;

    bool valida() const { return m_carpeta.isValid(); }
    QString archivo(const QString& nombre) const { return m_carpeta.filePath(nombre); }

private:
    QTemporaryDir m_carpeta;
};
