#include "capturastablero.h"

#include "engine/eengine.h"
#include "lectorpiezas.h"
#include "model/coleccion.h"
#include "model/etabindicador.h"
#include "model/vendimarbi.h"
#include "render/piezatablero.h"
#include "render/valoresmuestra.h"
#include "ventanademo.h"
#include "vb/automationerror.h"

#include <QDir>
#include <QGraphicsScene>
#include <QImage>
#include <QMetaProperty>
#include <QPainter>
#include <memory>

using namespace VendimarBI;

namespace {

// Large enough for every part of a tile to be read in the picture.
const QSize TamanoPieza(360, 200);

QString nombreTipo(int tipo)
{
    return tipo == cBarraProgreso ? QStringLiteral("barra") : tipo == cSemaforo ? QStringLiteral("semaforo") : QStringLiteral("matriz");
}

// The placement with every period offered and opening on `periodo`, so a
// tile can be pictured in a period its placement leaves out.
void copiarEnPeriodo(const ETabIndicador& origen, ETabIndicador& copia, int periodo)
{
    const QMetaObject* meta = origen.metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        meta->property(i).write(&copia, meta->property(i).read(&origen));
    for (const char* muestra : {"Muestra_Dia", "Muestra_Semana", "Muestra_Mes", "Muestra_Ano"})
        copia.setProperty(muestra, true);
    copia.setPeriodoInicio(periodo);
}

bool escribirTablero(EEngine& engine, int usuario, int tablero, const QString& archivo)
{
    VentanaDemo ventana(&engine, usuario, QString());
    ventana.seleccionarTablero(tablero);
    // The page alone, without the desk around it nor the grid's points: the dashboard as it will look.
    ventana.ajustarARejilla(false);
    EscenaTablero* escena = ventana.escena();
    escena->clearSelection();
    const QRectF pagina = escena->pagina().area();
    QImage imagen(pagina.size().toSize(), QImage::Format_ARGB32);
    imagen.fill(Qt::white);
    QPainter painter(&imagen);
    painter.setRenderHint(QPainter::Antialiasing);
    escena->render(&painter, QRectF(), pagina);
    painter.end();
    return imagen.save(archivo);
}

} // namespace

int CapturasTablero::escribir(EEngine& engine, int usuario, int tablero, const QString& carpeta)
{
    int escritas = escribirTablero(engine, usuario, tablero, QDir(carpeta).filePath(QStringLiteral("tablero.png"))) ? 1 : 0;
    std::unique_ptr<QObject> cargado(engine.CargarEntidad(cTablero, tablero));
    auto* indicadores = cargado ? cargado->property("Indicadores").value<Coleccion*>() : nullptr;
    if (!indicadores)
        return escritas;
    QList<const ETabIndicador*> colocados;
    for (QObject* tab : *indicadores)
        if (auto* colocado = qobject_cast<const ETabIndicador*>(tab))
            colocados.append(colocado);
    LectorPiezas lector(&engine);
    const ValoresMuestra muestras;
    static const char* const Periodos[] = {"dia", "semana", "mes", "ano"};
    for (const DatosPieza& datos : lector.leer(colocados)) {
        for (int periodo = cDia; periodo <= cAno; ++periodo) {
            ETabIndicador copia;
            copiarEnPeriodo(*datos.colocado, copia, periodo);
            DatosPieza enPeriodo = datos;
            enPeriodo.colocado = &copia;
            PiezaTablero pieza(enPeriodo, muestras);
            QImage imagen(TamanoPieza, QImage::Format_ARGB32);
            imagen.fill(QColor(250, 250, 250));
            QPainter painter(&imagen);
            pieza.pintar(&painter, QRectF(QPointF(0, 0), QSizeF(TamanoPieza)).adjusted(4, 4, -4, -4));
            painter.end();
            const QString archivo = QStringLiteral("pieza-%1-%2.png").arg(nombreTipo(pieza.tipo()), QLatin1String(Periodos[periodo]));
            escritas += imagen.save(QDir(carpeta).filePath(archivo)) ? 1 : 0;
        }
    }
    return escritas;
}
