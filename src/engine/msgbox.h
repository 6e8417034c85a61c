#pragma once
// Message boxes with VB MsgBox semantics: the buttons, icon and default
// button are packed into one number, and the answer is VB's button number.

#include <QString>

class QWidget;

namespace vbui {

enum MsgBoxStyle : int {
    vbOKOnly = 0,
    vbYesNo = 4,
    vbCritical = 16,
    vbQuestion = 32,
    vbExclamation = 48,
    vbInformation = 64,
    vbDefaultButton2 = 256,
};

enum MsgBoxResult : int { vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

// The application title every box shows unless it is given its own.
QString tituloAplicacion();

// Shows the box modally over the active window and answers the button pressed.
// Closing a Yes/No box without choosing answers No.
int MsgBox(const QString& prompt, int style = vbOKOnly, const QString& title = QString());

// Loads Qt's Spanish texts once, so standard buttons read "Aceptar", "Sí", "No".
void instalarTraducciones();

} // namespace vbui
