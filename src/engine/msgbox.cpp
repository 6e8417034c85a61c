#include "msgbox.h"

#include <QApplication>
#include <QGridLayout>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QTranslator>

namespace vbui {

namespace {

QMessageBox::Icon iconOf(int style)
{
    switch (style & 0x70) {
    case vbCritical:
        return QMessageBox::Critical;
    case vbQuestion:
        return QMessageBox::Question;
    case vbExclamation:
        return QMessageBox::Warning;
    case vbInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

// A message box is as wide as its text, so a short text under a long title
// had the title cut by the window's frame. A spacer across the bottom of the
// box's own layout keeps it wide enough for the whole title and the frame's
// buttons beside it.
void anchoParaTitulo(QMessageBox& box)
{
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (!grid)
        return;
    QFont fuenteTitulo = box.font();
    fuenteTitulo.setBold(true);
    constexpr int botonesDelMarco = 120;
    const int ancho = QFontMetrics(fuenteTitulo).horizontalAdvance(box.windowTitle()) + botonesDelMarco;
    grid->addItem(new QSpacerItem(ancho, 0, QSizePolicy::Minimum, QSizePolicy::Fixed), grid->rowCount(), 0, 1,
                  grid->columnCount());
}

} // namespace

QString tituloAplicacion()
{
    return QStringLiteral("VendimarBI");
}

void instalarTraducciones()
{
    static bool installed = false;
    if (installed || !QCoreApplication::instance())
        return;
    installed = true;
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QLocale(QLocale::Spanish, QLocale::Spain), QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}

int MsgBox(const QString& prompt, int style, const QString& title)
{
    instalarTraducciones();
    QMessageBox box(QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MsgBox"));
    box.setWindowTitle(title.isEmpty() ? tituloAplicacion() : title);
    box.setText(prompt);
    box.setIcon(iconOf(style));
    anchoParaTitulo(box);
    if ((style & 0x0F) == vbYesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton((style & vbDefaultButton2) ? QMessageBox::No : QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
        return box.exec() == QMessageBox::Yes ? vbYes : vbNo;
    }
    box.setStandardButtons(QMessageBox::Ok);
    box.setDefaultButton(QMessageBox::Ok);
    box.exec();
    return vbOK;
}

} // namespace vbui
