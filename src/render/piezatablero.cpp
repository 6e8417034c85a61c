#include "piezatablero.h"

#include "dibujobarra.h"
#include "dibujomatriz.h"
#include "dibujosemaforo.h"
#include "formatometrica.h"
#include "fuentevalores.h"
#include "graficomatriz.h"
#include "model/ebarraprogreso.h"
#include "model/eindicador.h"
#include "model/ematrizgrafico.h"
#include "model/esemaforo.h"
#include "model/etabindicador.h"
#include "model/vendimarbi.h"
#include "metricasconfiguracion.h"
#include "periodos.h"
#include "rotulo.h"

#include <QPainter>
#include <QVariant>
#include <algorithm>

using namespace VendimarBI;

namespace {

const QColor Marco(120, 135, 160);
const QColor MarcoRoto(200, 40, 40);

template <typename T>
const T* configuracion(const DatosPieza& datos)
{
    return datos.indicador ? qobject_cast<const T*>(datos.indicador->Configuracion()) : nullptr;
}

} // namespace

PiezaTablero::PiezaTablero(DatosPieza datos, const FuenteValores& valores)
    : m_datos(std::move(datos))
    , m_valores(&valores)
{
    m_averia = buscarAveria();
    const QList<int> ofrecidos = periodos();
    const int inicio = m_datos.colocado ? m_datos.colocado->PeriodoInicio() : 0;
    m_periodo = ofrecidos.contains(inicio) ? inicio : ofrecidos.first();
}

PiezaTablero::~PiezaTablero() = default;

QList<int> PiezaTablero::periodos() const
{
    const ETabIndicador* c = m_datos.colocado;
    QList<int> result;
    if (c) {
        const bool muestra[Periodos::Cantidad] = {c->Muestra_Dia(), c->Muestra_Semana(), c->Muestra_Mes(), c->Muestra_Ano()};
        for (int p = 0; p < Periodos::Cantidad; ++p)
            if (muestra[p])
                result.append(p);
    }
    // A placement that stores no period shows them all.
    if (result.isEmpty())
        result = {cDia, cSemana, cMes, cAno};
    return result;
}

bool PiezaTablero::setPeriodo(int periodo)
{
    if (!periodos().contains(periodo))
        return false;
    if (periodo != m_periodo)
        m_grafico.reset();
    m_periodo = periodo;
    return true;
}

int PiezaTablero::tipo() const
{
    return m_averia.isEmpty() ? m_datos.indicador->Tipo() : 0;
}

bool PiezaTablero::esMuestra() const
{
    return m_valores->sonMuestras();
}

QString PiezaTablero::buscarAveria() const
{
    if (!m_datos.colocado)
        return QStringLiteral("No hay indicador colocado");
    if (!m_datos.indicador)
        return QStringLiteral("El indicador %1 ya no existe").arg(m_datos.colocado->FK_Indicador());
    const QString nombre = m_datos.indicador->Nombre();
    if (!m_datos.configuracionGuardada)
        return QStringLiteral("«%1» no tiene configuración guardada").arg(nombre);
    switch (m_datos.indicador->Tipo()) {
    case cBarraProgreso:
    case cSemaforo:
        if (metricaPrincipal() == 0)
            return QStringLiteral("«%1» no tiene métrica").arg(nombre);
        return metricaPerdida({metricaPrincipal()});
    case cMatrizGrafico:
        if (const auto* matriz = configuracion<EMatrizGrafico>(m_datos))
            return metricaPerdida(MetricasConfiguracion::todas(matriz));
        return QStringLiteral("«%1» no tiene configuración").arg(nombre);
    default:
        // One pass over both values, so a name holding "%2" stays as it is.
        return QStringLiteral("«%1» es de un tipo desconocido (%2)").arg(nombre, QString::number(m_datos.indicador->Tipo()));
    }
}

QString PiezaTablero::metricaPerdida(const QList<int>& claves) const
{
    for (int clave : claves)
        if (!m_datos.metricas.value(clave))
            return QStringLiteral("La métrica %1 ya no existe").arg(clave);
    return QString();
}

// The metric a bar or a light shows.
int PiezaTablero::metricaPrincipal() const
{
    const QObject* config = m_datos.indicador ? m_datos.indicador->Configuracion() : nullptr;
    return config ? config->property("FK_Metrica").toInt() : 0;
}

int PiezaTablero::entidad() const
{
    return m_datos.colocado ? m_datos.colocado->FK_Entidad() : 0;
}

// The figure a bar or a light shows: its metric for the current period,
// asked with the period's bounds.
PeticionValor PiezaTablero::peticionPrincipal() const
{
    return {metricaPrincipal(), m_periodo, 0, Periodos::limiteInferior(m_datos.colocado, m_periodo),
            Periodos::limiteSuperior(m_datos.colocado, m_periodo), entidad()};
}

QList<PeticionValor> PiezaTablero::peticiones() const
{
    switch (tipo()) {
    case cBarraProgreso:
    case cSemaforo:
        return {peticionPrincipal()};
    case cMatrizGrafico:
        return DibujoMatriz::peticiones(configuracion<EMatrizGrafico>(m_datos), m_periodo, entidad());
    default:
        return {};
    }
}

bool PiezaTablero::calculando() const
{
    const QList<PeticionValor> figuras = peticiones();
    return std::any_of(figuras.cbegin(), figuras.cend(), [this](const PeticionValor& p) { return m_valores->pendiente(p); });
}

QString PiezaTablero::errorValores() const
{
    for (const PeticionValor& peticion : peticiones()) {
        const QString fallo = m_valores->fallo(peticion);
        if (!fallo.isEmpty())
            return QStringLiteral("«%1»: %2").arg(FormatoMetrica(m_datos.metricas.value(peticion.metrica)).titulo(), fallo);
    }
    return QString();
}

void PiezaTablero::valoresCambiados()
{
    m_grafico.reset();
}

DibujoBarra PiezaTablero::barra() const
{
    const PeticionValor figura = peticionPrincipal();
    return DibujoBarra(m_datos.colocado, configuracion<EBarraProgreso>(m_datos),
                       FormatoMetrica(m_datos.metricas.value(figura.metrica)), m_periodo, m_valores->valor(figura));
}

DibujoSemaforo PiezaTablero::semaforo() const
{
    const PeticionValor figura = peticionPrincipal();
    return DibujoSemaforo(m_datos.colocado, configuracion<ESemaforo>(m_datos),
                          FormatoMetrica(m_datos.metricas.value(figura.metrica)), m_periodo, m_valores->valor(figura));
}

DibujoMatriz PiezaTablero::matriz() const
{
    return DibujoMatriz(configuracion<EMatrizGrafico>(m_datos), m_datos.metricas, *m_valores, m_periodo, entidad());
}

GraficoMatriz* PiezaTablero::grafico()
{
    if (tipo() != cMatrizGrafico)
        return nullptr;
    if (!m_grafico)
        m_grafico = std::make_unique<GraficoMatriz>(matriz());
    return m_grafico.get();
}

QRectF PiezaTablero::cabeceraDe(const QRectF& area)
{
    return QRectF(area.left() + 4, area.top() + 2, area.width() - 8, qBound<qreal>(10, area.height() * 0.18, 22));
}

// The frame and the header are drawn whatever the state; a broken tile gets a
// red dashed frame and its reason instead of an indicator, so it can never be
// taken for a valid one.
void PiezaTablero::pintar(QPainter* painter, const QRectF& area)
{
    const QRectF cabecera = cabeceraDe(area);
    const qreal alto = cabecera.height();
    const qreal pie = esMuestra() ? qBound<qreal>(8, area.height() * 0.1, 13) : 2;
    QRectF cuerpo(area.left() + 6, cabecera.bottom() + 3, area.width() - 12, area.height() - alto - pie - 8);
    // The entity gets a line of its own where the tile has room, else it follows the name.
    const bool subtitulo = !m_datos.entidad.isEmpty() && cuerpo.height() > 50;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const bool rota = !m_averia.isEmpty();
    painter->setPen(QPen(rota ? MarcoRoto : Marco, rota ? 1.5 : 1, rota ? Qt::DashLine : Qt::SolidLine));
    painter->setBrush(rota ? QColor(255, 238, 238) : QColor(Qt::white));
    painter->drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    painter->setClipRect(area);
    pintarCabecera(painter, cabecera, !subtitulo);
    if (subtitulo) {
        const qreal linea = qBound<qreal>(8, alto * 0.75, 14);
        QFont fuente = Rotulo::fuente(linea);
        fuente.setItalic(true);
        painter->setPen(QColor(80, 90, 110));
        Rotulo::escribir(painter, QRectF(cuerpo.topLeft(), QSizeF(cuerpo.width(), linea)), m_datos.entidad,
                         Qt::AlignLeft | Qt::AlignVCenter, fuente);
        cuerpo.setTop(cuerpo.top() + linea + 3);
    }
    if (cuerpo.height() > 2 && cuerpo.width() > 2) {
        if (rota)
            pintarAviso(painter, cuerpo, QStringLiteral("⚠ Referencia rota"), m_averia);
        else if (calculando())
            pintarCalculando(painter, cuerpo);
        else if (const QString error = errorValores(); !error.isEmpty())
            pintarAviso(painter, cuerpo, QStringLiteral("⚠ Error al calcular"), error);
        else
            pintarCuerpo(painter, cuerpo);
    }
    if (esMuestra() && !rota)
        pintarMarcaMuestra(painter, QRectF(area.left(), area.bottom() - pie - 2, area.width() - 5, pie));
    painter->restore();
}

void PiezaTablero::pintarCuerpo(QPainter* painter, const QRectF& cuerpo)
{
    switch (tipo()) {
    case cBarraProgreso:
        barra().pintar(painter, cuerpo);
        break;
    case cSemaforo:
        semaforo().pintar(painter, cuerpo);
        break;
    case cMatrizGrafico: {
        const DibujoMatriz dibujo = matriz();
        // Rows on the left, chart on the right; a tile without one of them gives all its room to the other.
        const qreal parte = dibujo.filas().isEmpty() ? 0 : dibujo.series().isEmpty() ? cuerpo.width() : cuerpo.width() * 0.42;
        dibujo.pintarFilas(painter, QRectF(cuerpo.topLeft(), QSizeF(parte, cuerpo.height())));
        const QRectF zona = cuerpo.adjusted(parte + 4, 0, 0, 0);
        if (dibujo.series().isEmpty())
            break;
        if (zona.width() < GraficoMatriz::AnchoMinimo || zona.height() < GraficoMatriz::AltoMinimo)
            dibujo.pintarMiniatura(painter, zona);
        else
            grafico()->pintar(painter, zona);
        break;
    }
    default:
        break;
    }
}

QList<PiezaTablero::Pestana> PiezaTablero::pestanas(const QRectF& cabecera) const
{
    const QList<int> ofrecidos = periodos();
    const QFont fuente = Rotulo::fuente(cabecera.height() * 0.8);
    const QFontMetricsF medida(fuente);
    qreal anchos[Periodos::Cantidad] = {};
    qreal completo = 0;
    for (int p : ofrecidos) {
        anchos[p] = medida.horizontalAdvance(Periodos::nombre(p)) + 8;
        completo += anchos[p];
    }
    // Whole names while they take at most half the header, initials after
    // that; an initial fits a square tab.
    const bool enteros = completo <= cabecera.width() / 2;
    QList<Pestana> result;
    qreal derecha = cabecera.right();
    for (auto it = ofrecidos.crbegin(); it != ofrecidos.crend(); ++it) {
        const QString texto = enteros ? Periodos::nombre(*it) : Periodos::inicial(*it);
        const qreal ancho = enteros ? qMax(anchos[*it], cabecera.height()) : cabecera.height();
        result.prepend({*it, QRectF(derecha - ancho, cabecera.top(), ancho, cabecera.height()), texto});
        derecha -= ancho + 1;
    }
    return result;
}

int PiezaTablero::periodoEn(const QRectF& area, const QPointF& punto) const
{
    for (const Pestana& pestana : pestanas(cabeceraDe(area)))
        if (pestana.caja.contains(punto))
            return pestana.periodo;
    return -1;
}

void PiezaTablero::pintarCabecera(QPainter* painter, const QRectF& cabecera, bool conEntidad) const
{
    const QList<Pestana> tabs = pestanas(cabecera);
    const QFont fuente = Rotulo::fuente(cabecera.height() * 0.8);
    for (const Pestana& pestana : tabs) {
        const bool actual = pestana.periodo == m_periodo;
        painter->setPen(actual ? QColor(40, 80, 160) : QColor(170, 180, 195));
        painter->setBrush(actual ? QColor(40, 80, 160) : QColor(240, 243, 248));
        painter->drawRect(pestana.caja.adjusted(0.5, 1.5, -0.5, -1.5));
        painter->setPen(actual ? Qt::white : QColor(60, 70, 90));
        Rotulo::escribir(painter, pestana.caja, pestana.texto, Qt::AlignCenter, fuente);
    }
    const qreal titulo = (tabs.isEmpty() ? cabecera.right() : tabs.first().caja.left() - 4) - cabecera.left();
    QString texto = m_datos.indicador ? m_datos.indicador->Nombre()
                                      : QStringLiteral("Indicador %1").arg(m_datos.colocado ? m_datos.colocado->FK_Indicador() : 0);
    if (conEntidad && !m_datos.entidad.isEmpty())
        texto += QStringLiteral(" · ") + m_datos.entidad;
    painter->setPen(QColor(25, 35, 55));
    Rotulo::escribir(painter, QRectF(cabecera.topLeft(), QSizeF(titulo, cabecera.height())), texto,
                     Qt::AlignLeft | Qt::AlignVCenter, Rotulo::fuente(cabecera.height() * 0.85, true));
}

void PiezaTablero::pintarAviso(QPainter* painter, const QRectF& cuerpo, const QString& titulo, const QString& texto) const
{
    const qreal linea = qBound<qreal>(Rotulo::MinimoLegible, cuerpo.height() / 3, 15);
    painter->setPen(MarcoRoto);
    Rotulo::escribir(painter, QRectF(cuerpo.left(), cuerpo.top(), cuerpo.width(), linea * 1.2), titulo,
                     Qt::AlignLeft | Qt::AlignVCenter, Rotulo::fuente(linea, true));
    painter->setPen(QColor(90, 20, 20));
    painter->setFont(Rotulo::fuente(linea));
    painter->drawText(QRectF(cuerpo.left(), cuerpo.top() + linea * 1.3, cuerpo.width(), cuerpo.height() - linea * 1.3),
                      Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, texto);
}

// A tile whose figures are on their way shows a grey veil and says so,
// rather than a zero the reader could take for the value.
void PiezaTablero::pintarCalculando(QPainter* painter, const QRectF& cuerpo) const
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(238, 241, 246));
    painter->drawRoundedRect(cuerpo, 4, 4);
    painter->setPen(QColor(90, 100, 120));
    QFont fuente = Rotulo::fuente(qBound<qreal>(Rotulo::MinimoLegible, cuerpo.height() / 3, 14));
    fuente.setItalic(true);
    Rotulo::escribir(painter, cuerpo, QStringLiteral("Calculando…"), Qt::AlignCenter, fuente);
}

void PiezaTablero::pintarMarcaMuestra(QPainter* painter, const QRectF& pie) const
{
    const QFont fuente = Rotulo::fuente(pie.height(), false);
    const QString texto = QStringLiteral("muestra");
    const qreal ancho = qMin(pie.width(), QFontMetricsF(fuente).horizontalAdvance(texto) + 8);
    const QRectF caja(pie.right() - ancho, pie.top(), ancho, pie.height());
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(255, 236, 179));
    painter->drawRect(caja);
    painter->setPen(QColor(140, 90, 0));
    QFont cursiva = fuente;
    cursiva.setItalic(true);
    Rotulo::escribir(painter, caja, texto, Qt::AlignCenter, cursiva);
}
