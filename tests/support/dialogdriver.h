#pragma once
// Drives a dialog as a user would: find a control by its objectName, type
// into it, pick an entry, press a button.

#include <QAbstractButton>
#include <QLabel>
#include <QPushButton>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QWidget>

namespace driver {

template <typename T>
T* control(QWidget* window, const QString& name)
{
    T* found = window->findChild<T*>(name);
    if (!found)
        qWarning("no control %s of the expected kind in %s", qPrintable(name), qPrintable(window->objectName()));
    return found;
}

// Replaces the text of a line edit, multi-line box or editable combo.
inline void escribir(QWidget* window, const QString& name, const QString& text)
{
    if (auto* line = window->findChild<QLineEdit*>(name)) {
        line->selectAll();
        line->del();
        line->insert(text);
    } else if (auto* box = window->findChild<QPlainTextEdit*>(name)) {
        box->selectAll();
        box->insertPlainText(text);
    } else if (auto* combo = window->findChild<QComboBox*>(name)) {
        combo->setCurrentText(text);
    } else {
        qWarning("no text control %s", qPrintable(name));
    }
}

inline QString texto(QWidget* window, const QString& name)
{
    if (auto* line = window->findChild<QLineEdit*>(name))
        return line->text();
    if (auto* box = window->findChild<QPlainTextEdit*>(name))
        return box->toPlainText();
    if (auto* combo = window->findChild<QComboBox*>(name))
        return combo->currentText();
    return QStringLiteral("<no control %1>").arg(name);
}

inline void pulsar(QWidget* window, const QString& name)
{
    if (auto* button = window->findChild<QAbstractButton*>(name))
        button->click();
    else
        qWarning("no button %s", qPrintable(name));
}

// The objectName of the widget that has the keyboard focus inside the window.
inline QString foco(QWidget* window)
{
    QWidget* focused = window->focusWidget();
    return focused ? focused->objectName() : QString();
}

} // namespace driver
