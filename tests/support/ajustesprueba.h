#pragma once

#include <QSettings>
#include <QTemporaryDir>

// What the windows remember (Qt's settings) goes to a folder of the test
// program's own, removed when it ends: a test never reads or changes the
// settings of the user running it.
class AjustesPrueba {
public:
    // False when the folder could not be made.
    bool preparar()
    {
        if (!m_carpeta.isValid())
            return false;
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_carpeta.path());
        return true;
    }

private:
    QTemporaryDir m_carpeta;
};
