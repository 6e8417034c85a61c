#include "elementotablero.h"

#include "escenatablero.h"
#include "render/piezatablero.h"
#include "vb/vb.h"

#include <QCursor>
#include <QFontMetricsF>
#include <QGraphicsSceneMouseEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

namespace {

constexpr qreal Esquina = 10.0;   // pixels of the corner that resizes
constexpr qreal TamanoMinimo = PaginaTablero::TamanoMinimo;
// Room the text of a figure needs besides its glyphs: the margins it is drawn within.
constexpr int HolguraTexto = 8;

int entero(const QObject* o, const char* nombre)
{
    return o ? o->property(nombre).toInt() : 0;
}

QFont fuenteDe(const QObject* figura)
{
    QFont font(figura->property("Fuente").toString());
    font.setPointSize(qMax(1, entero(figura, "Tam_fuente")));
    font.setBold(figura->property("Negrita").toBool());
    font.setItalic(figura->property("Cursiva").toBool());
    return font;
}

} // namespace

ElementoTablero::ElementoTablero(QObject* entidad, const QString& descripcion, QGraphicsItem* parent)
    : QGraphicsObject(parent)
    , m_entidad(entidad)
    , m_descripcion(descripcion)
{
    setFlags(ItemIsMovable | ItemIsSelectable | ItemSendsGeometryChanges);
    setAcceptHoverEvents(true);
    setPos(vb::twipsToPixels(entero(entidad, "x")), vb::twipsToPixels(entero(entidad, "Y")));
}

ElementoTablero::ElementoTablero(QObject* entidad, std::unique_ptr<PiezaTablero> pieza, QGraphicsItem* parent)
    : ElementoTablero(entidad, QString(), parent)
{
    m_pieza = std::move(pieza);
}

ElementoTablero::~ElementoTablero() = default;

void ElementoTablero::setEditable(bool editable)
{
    m_editable = editable;
    setFlag(ItemIsMovable, editable);
    setFlag(ItemIsSelectable, editable);
    if (!editable)
        setSelected(false);
}

bool ElementoTablero::esFigura() const
{
    return m_entidad && m_entidad->metaObject()->indexOfProperty("Texto") >= 0;
}

QSizeF ElementoTablero::tamano() const
{
    return QSizeF(qMax<qreal>(TamanoMinimo, vb::twipsToPixels(entero(m_entidad, "W"))),
                  qMax<qreal>(TamanoMinimo, vb::twipsToPixels(entero(m_entidad, "H"))));
}

QRectF ElementoTablero::boundingRect() const
{
    return QRectF(QPointF(0, 0), tamano()).adjusted(-1, -1, 1, 1);
}

void ElementoTablero::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* /*widget*/)
{
    const QRectF area(QPointF(0, 0), tamano());
    if (esFigura())
        pintarFigura(painter, area);
    else if (m_pieza)
        m_pieza->pintar(painter, area);
    else
        pintarIndicador(painter, area);
    if (option->state & QStyle::State_Selected) {
        painter->setPen(QPen(QColor(0, 120, 215), 1, Qt::DashLine));
        painter->setBrush(Qt::NoBrush);
        painter->drawRect(area);
        painter->fillRect(QRectF(area.bottomRight() - QPointF(Esquina, Esquina), area.bottomRight()), QColor(0, 120, 215));
    }
}

void ElementoTablero::pintarIndicador(QPainter* painter, const QRectF& area) const
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QColor(90, 110, 140), 1));
    painter->setBrush(QColor(236, 242, 250));
    painter->drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
    painter->setPen(QColor(30, 40, 60));
    painter->drawText(area.adjusted(8, 6, -8, -6), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_descripcion);
}

void ElementoTablero::pintarFigura(QPainter* painter, const QRectF& area) const
{
    const QObject* f = m_entidad.data();
    painter->fillRect(area, vb::oleToColor(entero(f, "ColorFondo")));
    // The figure editor leaves the underline out of a figure's look, so the layout does too.
    painter->setFont(fuenteDe(f));
    painter->setPen(vb::oleToColor(entero(f, "Color")));
    // Alignment codes of a label: 0 left, 1 right, 2 centre.
    const int alineacion = entero(f, "Alineacion");
    const Qt::Alignment horizontal = alineacion == 1 ? Qt::AlignRight : alineacion == 2 ? Qt::AlignHCenter : Qt::AlignLeft;
    painter->drawText(area.adjusted(2, 1, -2, -1), horizontal | Qt::AlignTop | Qt::TextWordWrap,
                      f->property("Texto").toString());
}

QSizeF ElementoTablero::tamanoParaTexto(const QObject* figura, qreal anchoMaximo)
{
    const QFontMetricsF metricas(fuenteDe(figura));
    const QRectF texto = metricas.boundingRect(QRectF(0, 0, anchoMaximo - HolguraTexto, 1e6), Qt::TextWordWrap,
                                               figura->property("Texto").toString());
    return QSizeF(qMin(anchoMaximo, std::ceil(texto.width()) + HolguraTexto), std::ceil(texto.height()) + HolguraTexto);
}

const PaginaTablero* ElementoTablero::pagina() const
{
    auto* escena = qobject_cast<EscenaTablero*>(scene());
    return escena ? &escena->pagina() : nullptr;
}

// Items stay on the page: what lies off it would be out of the user's reach
// and has no meaning for the renderer.
QVariant ElementoTablero::itemChange(GraphicsItemChange change, const QVariant& value)
{
    if (change == ItemPositionChange) {
        const QPointF p = value.toPointF();
        if (const PaginaTablero* reglas = pagina())
            return reglas->ajustarPosicion(p, tamano());
        return QPointF(qMax<qreal>(0, p.x()), qMax<qreal>(0, p.y()));
    }
    return QGraphicsObject::itemChange(change, value);
}

bool ElementoTablero::enEsquina(const QPointF& punto) const
{
    const QSizeF size = tamano();
    return punto.x() >= size.width() - Esquina && punto.y() >= size.height() - Esquina;
}

void ElementoTablero::hoverMoveEvent(QGraphicsSceneHoverEvent* event)
{
    setCursor(periodoEn(event->pos()) >= 0 ? Qt::PointingHandCursor
              : !m_editable                ? Qt::ArrowCursor
              : enEsquina(event->pos())    ? Qt::SizeFDiagCursor
                                           : Qt::SizeAllCursor);
}

int ElementoTablero::periodoEn(const QPointF& punto) const
{
    return m_pieza ? m_pieza->periodoEn(QRectF(QPointF(0, 0), tamano()), punto) : -1;
}

void ElementoTablero::mousePressEvent(QGraphicsSceneMouseEvent* event)
{
    const int periodo = event->button() == Qt::LeftButton ? periodoEn(event->pos()) : -1;
    m_enPestana = periodo >= 0;
    if (m_enPestana) {
        if (m_pieza->periodo() != periodo && m_pieza->setPeriodo(periodo)) {
            update();
            emit periodoCambiado(this);
        }
        event->accept();
        return;
    }
    m_redimensionando = m_editable && event->button() == Qt::LeftButton && enEsquina(event->pos());
    m_movido = false;
    QGraphicsObject::mousePressEvent(event);
}

void ElementoTablero::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    if (m_enPestana || !m_editable)
        return;
    m_movido = true;
    if (!m_redimensionando) {
        QGraphicsObject::mouseMoveEvent(event);
        return;
    }
    redimensionar(QSizeF(event->pos().x(), event->pos().y()));
}

void ElementoTablero::redimensionar(const QSizeF& pedido)
{
    const PaginaTablero* reglas = pagina();
    const QSizeF size = reglas ? reglas->ajustarTamano(pos(), pedido)
                               : QSizeF(qMax(TamanoMinimo, pedido.width()), qMax(TamanoMinimo, pedido.height()));
    prepareGeometryChange();
    m_entidad->setProperty("W", vb::pixelsToTwips(qRound(size.width())));
    m_entidad->setProperty("H", vb::pixelsToTwips(qRound(size.height())));
    update();
}

void ElementoTablero::desplazar(const QPointF& distancia)
{
    setPos(pos() + distancia);
    guardarGeometria();
    emit cambiado(this);
}

void ElementoTablero::crecer(const QSizeF& crecimiento)
{
    redimensionar(tamano() + crecimiento);
    emit cambiado(this);
}

void ElementoTablero::mouseReleaseEvent(QGraphicsSceneMouseEvent* event)
{
    if (m_enPestana) {
        m_enPestana = false;
        return;
    }
    QGraphicsObject::mouseReleaseEvent(event);
    if (m_movido) {
        guardarGeometria();
        emit cambiado(this);
    }
    m_redimensionando = false;
    m_movido = false;
}

void ElementoTablero::mouseDoubleClickEvent(QGraphicsSceneMouseEvent* event)
{
    // Clicking through the tabs quickly is no request to edit the item.
    if (periodoEn(event->pos()) >= 0) {
        mousePressEvent(event);
        return;
    }
    QGraphicsObject::mouseDoubleClickEvent(event);
    if (m_editable)
        emit editar(this);
}

void ElementoTablero::guardarGeometria()
{
    if (!m_entidad)
        return;
    m_entidad->setProperty("x", vb::pixelsToTwips(qRound(pos().x())));
    m_entidad->setProperty("Y", vb::pixelsToTwips(qRound(pos().y())));
}
