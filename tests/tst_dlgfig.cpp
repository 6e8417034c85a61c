// The text figure editor, driven as a user would: through the engine's
// Editar_Figura, with the colour and font pickers answered over it.
#include "dashboard/dlgfig.h"
#include "carpetaprueba.h"
#include "designer/muestra.h"
#include "dialogdriver.h"
#include "engine/eengine.h"
#include "fakeusermanagement.h"
#include "modalanswerer.h"
#include "model/efigura.h"
#include "vb/vb.h"

#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMetaProperty>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <memory>

using namespace driver;

namespace {

const QString NombreDialogo = QStringLiteral("dlgFig");

// Every public property of a figure, by name, to compare a figure before and after.
QVariantMap propiedades(const EFigura& f)
{
    QVariantMap map;
    const QMetaObject* meta = f.metaObject();
    for (int i = meta->propertyOffset(); i < meta->propertyCount(); ++i)
        map.insert(QString::fromLatin1(meta->property(i).name()), meta->property(i).read(&f));
    return map;
}

// A figure as a dashboard would have saved it.
void llenarGuardada(EFigura& f)
{
    f.setSys_PK(42);
    f.setFK_Tablero(7);
    f.setTexto(QStringLiteral("Ventas del día"));
    f.setFuente(QStringLiteral("DejaVu Serif"));
    f.setTam_fuente(14);
    f.setNegrita(true);
    f.setCursiva(true);
    f.setSubrayado(true);
    f.setColor(0x00000080);
    f.setColorFondo(0x00C0FFFF);
    f.setAlineacion(2);
    f.setx(120);
    f.setY(45);
    f.setW(3000);
    f.setH(600);
    f.setTipo(0);
}

// What a figure's place, size, kind, dashboard and key were: the dialog never touches them.
QVariantList identidad(const EFigura& f)
{
    return {f.Sys_PK(), f.FK_Tablero(), f.x(), f.Y(), f.W(), f.H(), f.Tipo(), f.Subrayado()};
}

Muestra* muestra(QWidget* w)
{
    return control<Muestra>(w, QStringLiteral("lblMuestra"));
}

QColor colorTexto(QWidget* w)
{
    return muestra(w)->palette().color(QPalette::WindowText);
}

QString opcionMarcada(QWidget* w)
{
    QString marcadas;
    for (QRadioButton* r : w->findChildren<QRadioButton*>()) {
        if (r->isChecked())
            marcadas += r->objectName();
    }
    return marcadas;
}

// The picker's answers: a colour confirmed, a font confirmed, or cancel.
ModalAnswerer::Handler elegirColor(QColor color)
{
    return [color](QWidget* w) {
        auto* cmd = qobject_cast<QColorDialog*>(w);
        QVERIFY2(cmd, qPrintable(w->objectName()));
        QCOMPARE(cmd->objectName(), QStringLiteral("CMD"));
        QVERIFY(cmd->testOption(QColorDialog::DontUseNativeDialog));
        cmd->setCurrentColor(color);
        cmd->accept();
    };
}

QLineEdit* cajaTamano(QWidget* selector)
{
    return selector->findChild<QLineEdit*>(QStringLiteral("txtTamano"));
}

// Types into the picker's size box, over what it shows, as a user would.
void escribirTamano(QWidget* selector, const QString& texto)
{
    QLineEdit* caja = cajaTamano(selector);
    QVERIFY(caja);
    caja->selectAll();
    // Key by key with its text, so characters beyond ASCII are typed too.
    for (const QChar c : texto)
        QTest::sendKeyEvent(QTest::Click, caja, Qt::Key_unknown, QString(c), Qt::NoModifier);
}

// The picker's family, style and size lists, in that order.
QListView* listaSelector(QWidget* selector, int cual)
{
    return selector->findChildren<QListView*>(QString(), Qt::FindDirectChildrenOnly).value(cual);
}
constexpr int ListaFamilias = 0;
constexpr int ListaTamanos = 2;

// Picks an entry of one of the picker's lists, as a click on it would.
void elegirDeLista(QListView* lista, const QString& texto)
{
    QVERIFY(lista);
    const QModelIndexList encontrados =
        lista->model()->match(lista->model()->index(0, 0), Qt::DisplayRole, texto, 1, Qt::MatchExactly);
    QVERIFY2(!encontrados.isEmpty(), qPrintable(texto));
    lista->setCurrentIndex(encontrados.first());
}

// A font chosen from the picker's lists; a fractional size is typed into its
// size box. A size beyond what the box takes is put into the picker's sample,
// as a picker elsewhere could report it.
ModalAnswerer::Handler elegirFuente(QFont font)
{
    return [font](QWidget* w) {
        auto* cmd = qobject_cast<QFontDialog*>(w);
        QVERIFY2(cmd, qPrintable(w->objectName()));
        QCOMPARE(cmd->objectName(), QStringLiteral("CMD"));
        QVERIFY(cmd->testOption(QFontDialog::DontUseNativeDialog));
        cmd->setCurrentFont(font);
        if (font.pointSizeF() > 999) {
            auto* sample = cmd->findChild<QLineEdit*>(QStringLiteral("qt_fontDialog_sampleEdit"));
            QVERIFY(sample);
            sample->setFont(font);
        } else if (font.pointSizeF() != double(int(font.pointSizeF()))) {
            escribirTamano(cmd, QString::number(font.pointSizeF()));
        }
        cmd->accept();
    };
}

void cancelarSelector(QWidget* w)
{
    QVERIFY(qobject_cast<QColorDialog*>(w) || qobject_cast<QFontDialog*>(w));
    QMetaObject::invokeMethod(w, "reject");
}

ModalAnswerer::Handler pulsa(const char* boton)
{
    return [boton](QWidget* w) {
        QCOMPARE(w->objectName(), NombreDialogo);
        pulsar(w, QString::fromLatin1(boton));
    };
}

// A font as the user picks it from the picker's lists: by the style's own
// name, since the picker matches styles by name and names them in the
// user's language otherwise.
QFont fuente(const QString& familia, double puntos, bool negrita = false, bool cursiva = false)
{
    QFont f(familia);
    f.setPointSizeF(puntos);
    f.setBold(negrita);
    f.setItalic(cursiva);
    QString estilo;
    for (const QString& s : QFontDatabase::styles(familia)) {
        const QFont candidata = QFontDatabase::font(familia, s, 12);
        const bool regular = candidata.weight() == (negrita ? QFont::Bold : QFont::Normal);
        if (regular && candidata.italic() == cursiva && !s.contains(QStringLiteral("Condensed"))
            && (estilo.isEmpty() || s.size() < estilo.size()))
            estilo = s;
    }
    f.setStyleName(estilo);
    return f;
}

} // namespace

class TstDlgFig : public QObject {
    Q_OBJECT

    std::unique_ptr<EEngine> engine;
    std::unique_ptr<FakeUserManagement> um;

    // Opens the editor through the engine with the answers given, and checks
    // that every window came as expected.
    bool editar(EFigura& f, const QList<ModalAnswerer::Handler>& respuestas, QStringList* ventanas = nullptr)
    {
        ModalAnswerer a;
        for (const auto& r : respuestas)
            a.expect(r);
        const bool aceptado = engine->Editar_Figura(&f);
        if (ventanas) {
            for (const QString& visto : a.seen)
                ventanas->append(visto.section(QLatin1Char('|'), 0, 0));
        }
        if (!a.unexpected.isEmpty())
            qWarning("unexpected windows: %s", qPrintable(a.unexpected.join(QLatin1Char(';'))));
        if (!a.allAnswered())
            qWarning("some expected windows never came");
        m_completo = a.unexpected.isEmpty() && a.allAnswered();
        return aceptado;
    }
    bool m_completo = false;

private slots:
    void init()
    {
        engine = std::make_unique<EEngine>();
        um = std::make_unique<FakeUserManagement>();
        engine->SetUM(um.get());
    }

    void cleanup()
    {
        engine.reset();
        um.reset();
    }

    // --- Opening ----------------------------------------------------------

    void editingAsksNoRight()
    {
        EFigura f;
        llenarGuardada(f);
        um->refused = {QStringLiteral("KZ4-TBL-03-000"), QStringLiteral("KZ4-TBL-05-000")};
        QStringList ventanas;
        QVERIFY(editar(f, {pulsa("cmdAceptar")}, &ventanas));
        QVERIFY(m_completo);
        QCOMPARE(ventanas, QStringList{NombreDialogo});
        QVERIFY(um->asked.isEmpty());
    }

    void editingOpensWithNoUserManagementSet()
    {
        engine = std::make_unique<EEngine>();
        EFigura f;
        QString titulo;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            titulo = w->objectName() + QLatin1Char('|') + w->windowTitle();
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Figura(&f));
        QVERIFY(a.allAnswered());
        QVERIFY(a.unexpected.isEmpty());
        QCOMPARE(titulo, QStringLiteral("dlgFig|Propiedades de texto"));
    }

    void editingWithNoFigureOpensBlankAndAcceptsHarmlessly()
    {
        QString texto;
        ModalAnswerer a;
        a.expect([&](QWidget* w) {
            texto = muestra(w)->text();
            escribir(w, QStringLiteral("cTexto"), QStringLiteral("sin figura"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QVERIFY(engine->Editar_Figura(nullptr));
        QVERIFY(a.allAnswered());
        QCOMPARE(texto, QStringLiteral("A"));
    }

    void controlsCaptionsAndInitialState()
    {
        dlgFig dlg;
        QCOMPARE(dlg.objectName(), NombreDialogo);
        QCOMPARE(dlg.windowTitle(), QStringLiteral("Propiedades de texto"));
        QCOMPARE(control<QLabel>(&dlg, QStringLiteral("Label"))->text(), QStringLiteral("Texto:"));
        QCOMPARE(texto(&dlg, QStringLiteral("cTexto")), QString());
        QCOMPARE(muestra(&dlg)->text(), QStringLiteral("A"));
        QCOMPARE(muestra(&dlg)->colorOle(), 0x00FFFFFF);
        QVERIFY(muestra(&dlg)->wordWrap());
        QCOMPARE(muestra(&dlg)->textFormat(), Qt::PlainText);
        const struct {
            const char* nombre;
            const char* titulo;
        } botones[] = {
            {"cFont", "Fuente, tamaño y estilo"}, {"cColor", "Color del texto"}, {"cFondo", "Color del fondo"},
            {"opt(0)", "Izquierda"},          {"opt(2)", "Centro"},          {"opt(1)", "Derecha"},
            {"cmdAceptar", "&Aceptar"},       {"cmdCancel", "&Cancelar"},
        };
        for (const auto& b : botones)
            QCOMPARE(control<QAbstractButton>(&dlg, QString::fromLatin1(b.nombre))->text(), QString::fromUtf8(b.titulo));
        QCOMPARE(opcionMarcada(&dlg), QStringLiteral("opt(0)"));
        QVERIFY(control<QPushButton>(&dlg, QStringLiteral("cmdAceptar"))->isDefault());
        QVERIFY(!control<QPushButton>(&dlg, QStringLiteral("cmdCancel"))->isDefault());
        QVERIFY(!dlg.Aceptado());
        QCOMPARE(dlg.Figura(), nullptr);
    }

    // --- Layout -----------------------------------------------------------

    void geometryFollowsTheTwipsTable_data()
    {
        QTest::addColumn<QString>("nombre");
        QTest::addColumn<int>("left");
        QTest::addColumn<int>("top");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("Label") << "Label" << 135 << 240 << 450 << 195;
        QTest::newRow("cTexto") << "cTexto" << 900 << 240 << 6330 << 1065;
        QTest::newRow("lblMuestra") << "lblMuestra" << 870 << 1515 << 4200 << 1860;
        QTest::newRow("cFont") << "cFont" << 5175 << 1365 << 2055 << 435;
        QTest::newRow("cColor") << "cColor" << 5175 << 2175 << 2055 << 435;
        QTest::newRow("cFondo") << "cFondo" << 5175 << 2985 << 2055 << 435;
        QTest::newRow("opt(0)") << "opt(0)" << 900 << 3390 << 1050 << 285;
        QTest::newRow("opt(2)") << "opt(2)" << 2437 << 3390 << 1050 << 285;
        QTest::newRow("opt(1)") << "opt(1)" << 3975 << 3390 << 1050 << 285;
        QTest::newRow("cmdAceptar") << "cmdAceptar" << 2760 << 4080 << 1215 << 495;
        QTest::newRow("cmdCancel") << "cmdCancel" << 4050 << 4080 << 1215 << 495;
    }

    void geometryFollowsTheTwipsTable()
    {
        QFETCH(QString, nombre);
        QFETCH(int, left);
        QFETCH(int, top);
        QFETCH(int, width);
        QFETCH(int, height);
        dlgFig dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        QWidget* c = control<QWidget>(&dlg, nombre);
        QVERIFY(c);
        QCOMPARE(c->parentWidget(), &dlg);
        const QRect esperado(qRound(left / 15.0), qRound(top / 15.0), qRound(width / 15.0), qRound(height / 15.0));
        QCOMPARE(c->geometry(), esperado);
    }

    void clientAreaIsFixedAtTheFormSize()
    {
        dlgFig dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        const QSize esperado(qRound(8115 / 15.0), qRound(4770 / 15.0));
        QCOMPARE(dlg.size(), esperado);
        QCOMPARE(dlg.minimumSize(), esperado);
        QCOMPARE(dlg.maximumSize(), esperado);
    }

    void tabOrderRunsTextOptionsPickersButtons()
    {
        dlgFig dlg;
        const QStringList esperado{
            QStringLiteral("cTexto"),     QStringLiteral("opt(0)"), QStringLiteral("opt(2)"),
            QStringLiteral("opt(1)"),     QStringLiteral("cFont"),  QStringLiteral("cColor"),
            QStringLiteral("cFondo"),     QStringLiteral("cmdAceptar"), QStringLiteral("cmdCancel"),
        };
        QWidget* inicio = control<QWidget>(&dlg, QStringLiteral("cTexto"));
        QStringList cadena;
        QWidget* w = inicio;
        do {
            if (w->focusPolicy() & Qt::TabFocus)
                cadena.append(w->objectName());
            w = w->nextInFocusChain();
        } while (w && w != inicio);
        QCOMPARE(cadena, esperado);
    }

    void tabKeyVisitsTheControlsInOrder()
    {
        dlgFig dlg;
        dlg.show();
        QVERIFY(QTest::qWaitForWindowActive(&dlg));
        control<QWidget>(&dlg, QStringLiteral("cTexto"))->setFocus();
        QStringList visitados{foco(&dlg)};
        for (int i = 0; i < 8; ++i) {
            QTest::keyClick(dlg.focusWidget(), Qt::Key_Tab);
            visitados.append(foco(&dlg));
        }
        // Qt stops on the selected option of a group only, as Windows does.
        const QStringList esperado{
            QStringLiteral("cTexto"), QStringLiteral("opt(0)"),     QStringLiteral("cFont"),
            QStringLiteral("cColor"), QStringLiteral("cFondo"),     QStringLiteral("cmdAceptar"),
            QStringLiteral("cmdCancel"), QStringLiteral("cTexto"),  QStringLiteral("opt(0)"),
        };
        QCOMPARE(visitados, esperado);
    }

    // --- A new figure -----------------------------------------------------

    void newFigureStartsBlankWhateverItCarries()
    {
        EFigura f;
        f.setTexto(QStringLiteral("Ya tenía texto"));
        f.setFuente(QStringLiteral("DejaVu Serif"));
        f.setTam_fuente(30);
        f.setNegrita(true);
        f.setColor(0x000000FF);
        f.setColorFondo(0x00FF0000);
        f.setAlineacion(1);
        QString texto, caption, opcion, familia;
        int fondo = -1;
        QColor color;
        Qt::Alignment alineacion;
        bool negrita = true;
        QVERIFY(!editar(f, {[&](QWidget* w) {
                            texto = driver::texto(w, QStringLiteral("cTexto"));
                            caption = muestra(w)->text();
                            fondo = muestra(w)->colorOle();
                            color = colorTexto(w);
                            alineacion = muestra(w)->alignment();
                            opcion = opcionMarcada(w);
                            familia = muestra(w)->font().family();
                            negrita = muestra(w)->font().bold();
                            pulsar(w, QStringLiteral("cmdCancel"));
                        }}));
        QVERIFY(m_completo);
        QCOMPARE(texto, QString());
        QCOMPARE(caption, QStringLiteral("A"));
        QCOMPARE(fondo, 0x00FFFFFF);
        QCOMPARE(color, QColor(Qt::black));
        QVERIFY(alineacion & Qt::AlignLeft);
        QCOMPARE(opcion, QStringLiteral("opt(0)"));
        QVERIFY(familia != QStringLiteral("DejaVu Serif"));
        QVERIFY(!negrita);
    }

    void acceptingAnEmptyTextStoresASingleBlank()
    {
        EFigura f;
        llenarGuardada(f);
        QVERIFY(editar(f, {[](QWidget* w) {
                           escribir(w, QStringLiteral("cTexto"), QString());
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QCOMPARE(f.Texto(), QStringLiteral(" "));
        EFigura nueva;
        QVERIFY(editar(nueva, {pulsa("cmdAceptar")}));
        QCOMPARE(nueva.Texto(), QStringLiteral(" "));
    }

    void newFigureUntouchedTakesThePreviewDefaultFont()
    {
        EFigura f;
        f.setFuente(QStringLiteral("DejaVu Serif"));
        f.setTam_fuente(30);
        f.setCursiva(true);
        f.setColor(0x00123456);
        f.setColorFondo(0x00654321);
        f.setAlineacion(2);
        QFont mostrada;
        QVERIFY(editar(f, {[&](QWidget* w) {
                           mostrada = muestra(w)->font();
                           escribir(w, QStringLiteral("cTexto"), QStringLiteral("Título"));
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        // The dialog's own font, by the face actually drawn.
        const QFont porDefecto = QApplication::font("QLabel");
        QCOMPARE(f.Fuente(), QFontInfo(porDefecto).family());
        QCOMPARE(f.Fuente(), QFontInfo(mostrada).family());
        const double puntos = porDefecto.pointSizeF() > 0 ? porDefecto.pointSizeF() : QFontInfo(porDefecto).pointSizeF();
        QCOMPARE(f.Tam_fuente(), vb::CInt(puntos));
        QCOMPARE(f.Negrita(), porDefecto.bold());
        QCOMPARE(f.Cursiva(), false);
        QCOMPARE(f.Texto(), QStringLiteral("Título"));
        QCOMPARE(f.Color(), 0x00000000);
        QCOMPARE(f.ColorFondo(), 0x00FFFFFF);
        QCOMPARE(f.Alineacion(), short(0));
    }

    // --- Underline --------------------------------------------------------

    void underlineIsKeptAndNeverShown()
    {
        EFigura f;
        llenarGuardada(f);
        bool subrayadaAlAbrir = true, subrayadaTrasElegir = true;
        QVERIFY(editar(f,
                       {
                           [&](QWidget* w) {
                               subrayadaAlAbrir = muestra(w)->font().underline();
                               escribir(w, QStringLiteral("cTexto"), QStringLiteral("otro texto"));
                               pulsar(w, QStringLiteral("cFont"));
                           },
                           elegirFuente(fuente(QStringLiteral("DejaVu Sans"), 12)),
                           [&](QWidget* w) {
                               subrayadaTrasElegir = muestra(w)->font().underline();
                               pulsar(w, QStringLiteral("cColor"));
                           },
                           elegirColor(Qt::red),
                           pulsa("cFondo"),
                           elegirColor(Qt::yellow),
                           [](QWidget* w) {
                               pulsar(w, QStringLiteral("opt(1)"));
                               pulsar(w, QStringLiteral("cmdAceptar"));
                           },
                       }));
        QVERIFY(m_completo);
        QVERIFY(!subrayadaAlAbrir);
        QVERIFY(!subrayadaTrasElegir);
        QVERIFY(f.Subrayado());
        QCOMPARE(f.Texto(), QStringLiteral("otro texto"));
    }

    void fontPickSetsNameSizeBoldItalicAndIgnoresUnderline()
    {
        EFigura f;
        llenarGuardada(f);
        f.setSubrayado(false);
        f.setNegrita(false);
        f.setCursiva(false);
        QFont elegida = fuente(QStringLiteral("DejaVu Sans Mono"), 20, true, true);
        elegida.setUnderline(true);
        elegida.setStrikeOut(true);
        QFont mostrada;
        QVERIFY(editar(f,
                       {
                           pulsa("cFont"),
                           elegirFuente(elegida),
                           [&](QWidget* w) {
                               mostrada = muestra(w)->font();
                               pulsar(w, QStringLiteral("cmdAceptar"));
                           },
                       }));
        QVERIFY(m_completo);
        QCOMPARE(f.Fuente(), QStringLiteral("DejaVu Sans Mono"));
        QCOMPARE(f.Tam_fuente(), short(20));
        QVERIFY(f.Negrita());
        QVERIFY(f.Cursiva());
        QVERIFY(!f.Subrayado());
        QCOMPARE(mostrada.family(), QStringLiteral("DejaVu Sans Mono"));
        QCOMPARE(mostrada.pointSizeF(), 20.0);
        QVERIFY(mostrada.bold());
        QVERIFY(mostrada.italic());
        QVERIFY(!mostrada.underline());
        QVERIFY(!mostrada.strikeOut());
        // The rest of the figure is as it was.
        QCOMPARE(f.Texto(), QStringLiteral("Ventas del día"));
        QCOMPARE(f.Color(), 0x00000080);
        QCOMPARE(f.ColorFondo(), 0x00C0FFFF);
        QCOMPARE(f.Alineacion(), short(2));
    }

    void fontPickerOpensUnsetAndCancelChangesNothing()
    {
        EFigura f;
        llenarGuardada(f);
        const QVariantMap antes = propiedades(f);
        QFont propuesta;
        QFont mostradaAntes, mostradaDespues;
        QVERIFY(editar(f,
                       {
                           [&](QWidget* w) {
                               mostradaAntes = muestra(w)->font();
                               pulsar(w, QStringLiteral("cFont"));
                           },
                           [&](QWidget* w) {
                               auto* cmd = qobject_cast<QFontDialog*>(w);
                               QVERIFY(cmd);
                               propuesta = cmd->currentFont();
                               cmd->setCurrentFont(fuente(QStringLiteral("DejaVu Sans Mono"), 30, false, false));
                               cmd->reject();
                           },
                           [&](QWidget* w) {
                               mostradaDespues = muestra(w)->font();
                               pulsar(w, QStringLiteral("cmdAceptar"));
                           },
                       }));
        QVERIFY(m_completo);
        QVERIFY(propuesta.family() != QStringLiteral("DejaVu Serif") || propuesta.pointSize() != 14);
        QCOMPARE(mostradaDespues, mostradaAntes);
        QCOMPARE(propiedades(f), antes);
    }

    void pickedFontSizeRoundsHalfToEven_data()
    {
        QTest::addColumn<double>("puntos");
        QTest::addColumn<short>("guardado");
        QTest::newRow("10.5") << 10.5 << short(10);
        QTest::newRow("2.5") << 2.5 << short(2);
        QTest::newRow("11.5") << 11.5 << short(12);
        QTest::newRow("12.5") << 12.5 << short(12);
        QTest::newRow("9.4") << 9.4 << short(9);
        QTest::newRow("9.6") << 9.6 << short(10);
        QTest::newRow("72") << 72.0 << short(72);
    }

    void pickedFontSizeRoundsHalfToEven()
    {
        QFETCH(double, puntos);
        QFETCH(short, guardado);
        EFigura f;
        llenarGuardada(f);
        double mostrado = 0;
        QVERIFY(editar(f,
                       {
                           pulsa("cFont"),
                           elegirFuente(fuente(QStringLiteral("DejaVu Sans"), puntos)),
                           [&](QWidget* w) {
                               mostrado = muestra(w)->font().pointSizeF();
                               pulsar(w, QStringLiteral("cmdAceptar"));
                           },
                       }));
        QVERIFY(m_completo);
        QCOMPARE(mostrado, puntos);
        QCOMPARE(f.Tam_fuente(), guardado);
    }

    void fontPickerOpensOnAPlainFont()
    {
        EFigura f;
        llenarGuardada(f); // bold and italic: the picker does not take the figure's look
        QFont propuesta;
        QString tamano;
        QVERIFY(!editar(f, {
                               pulsa("cFont"),
                               [&](QWidget* w) {
                                   auto* cmd = qobject_cast<QFontDialog*>(w);
                                   QVERIFY(cmd);
                                   propuesta = cmd->currentFont();
                                   QVERIFY(cajaTamano(w));
                                   tamano = cajaTamano(w)->text();
                                   cmd->reject();
                               },
                               pulsa("cmdCancel"),
                           }));
        QVERIFY(m_completo);
        const QFontInfo aplicacion(QApplication::font());
        QCOMPARE(propuesta.family(), aplicacion.family());
        QCOMPARE(propuesta.pointSize(), aplicacion.pointSize());
        QCOMPARE(tamano, QString::number(aplicacion.pointSize()));
        QVERIFY(!propuesta.bold());
        QVERIFY(!propuesta.italic());
        QVERIFY(!propuesta.underline());
        QVERIFY(!propuesta.strikeOut());
    }

    void typedSizeTakesEitherDecimalMark_data()
    {
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<double>("mostrado");
        QTest::addColumn<short>("guardado");
        QTest::newRow("10.5") << QStringLiteral("10.5") << 10.5 << short(10);
        QTest::newRow("10,5") << QStringLiteral("10,5") << 10.5 << short(10);
        QTest::newRow("2,5") << QStringLiteral("2,5") << 2.5 << short(2);
        QTest::newRow("11.5") << QStringLiteral("11.5") << 11.5 << short(12);
        QTest::newRow("7.25") << QStringLiteral("7.25") << 7.25 << short(7);
        QTest::newRow("16") << QStringLiteral("16") << 16.0 << short(16);
    }

    void typedSizeTakesEitherDecimalMark()
    {
        QFETCH(QString, escrito);
        QFETCH(double, mostrado);
        QFETCH(short, guardado);
        EFigura f;
        llenarGuardada(f);
        QString caja;
        double visto = 0;
        QVERIFY(editar(f, {
                              pulsa("cFont"),
                              [&](QWidget* w) {
                                  escribirTamano(w, escrito);
                                  caja = cajaTamano(w)->text();
                                  qobject_cast<QDialog*>(w)->accept();
                              },
                              [&](QWidget* w) {
                                  visto = muestra(w)->font().pointSizeF();
                                  pulsar(w, QStringLiteral("cmdAceptar"));
                              },
                          }));
        QVERIFY(m_completo);
        QCOMPARE(caja, escrito);
        QCOMPARE(visto, mostrado);
        QCOMPARE(f.Tam_fuente(), guardado);
    }

    void sizeBoxRefusesWhatIsNoSize_data()
    {
        QTest::addColumn<QString>("escrito");
        QTest::addColumn<QString>("queda");
        // An empty "queda": nothing typed was taken, the box shows what it showed.
        QTest::newRow("letters") << QStringLiteral("abc") << QString();
        QTest::newRow("negative") << QStringLiteral("-3") << QStringLiteral("3");
        QTest::newRow("four digits") << QStringLiteral("1234") << QStringLiteral("123");
        QTest::newRow("three decimals") << QStringLiteral("10.555") << QStringLiteral("10.55");
        QTest::newRow("exponent") << QStringLiteral("1e3") << QStringLiteral("13");
        QTest::newRow("two marks") << QStringLiteral("10..5") << QStringLiteral("10.5");
        QTest::newRow("blank") << QStringLiteral("12 ") << QStringLiteral("12");
        QTest::newRow("arabic digits") << QStringLiteral("\u0661\u0662") << QString();
        QTest::newRow("sql") << QStringLiteral("1'; DROP TABLE ut_bi_Figura;--") << QStringLiteral("1");
    }

    void sizeBoxRefusesWhatIsNoSize()
    {
        QFETCH(QString, escrito);
        QFETCH(QString, queda);
        EFigura f;
        llenarGuardada(f);
        QString antes, caja;
        double elegido = 0;
        QVERIFY(editar(f, {
                              pulsa("cFont"),
                              [&](QWidget* w) {
                                  antes = cajaTamano(w)->text();
                                  escribirTamano(w, escrito);
                                  caja = cajaTamano(w)->text();
                                  elegido = qobject_cast<QFontDialog*>(w)->currentFont().pointSizeF();
                                  qobject_cast<QDialog*>(w)->accept();
                              },
                              pulsa("cmdAceptar"),
                          }));
        QVERIFY(m_completo);
        QCOMPARE(caja, queda.isEmpty() ? antes : queda);
        QCOMPARE(elegido, caja.toDouble());
        QCOMPARE(f.Tam_fuente(), vb::CInt(elegido));
    }

    void typedFractionStaysWhenTheFamilyChanges()
    {
        EFigura f;
        llenarGuardada(f);
        QString caja;
        QFont elegida;
        double visto = 0;
        QVERIFY(editar(f, {
                              pulsa("cFont"),
                              [&](QWidget* w) {
                                  escribirTamano(w, QStringLiteral("10.5"));
                                  elegirDeLista(listaSelector(w, ListaFamilias), QStringLiteral("DejaVu Serif"));
                                  caja = cajaTamano(w)->text();
                                  elegida = qobject_cast<QFontDialog*>(w)->currentFont();
                                  qobject_cast<QDialog*>(w)->accept();
                              },
                              [&](QWidget* w) {
                                  visto = muestra(w)->font().pointSizeF();
                                  pulsar(w, QStringLiteral("cmdAceptar"));
                              },
                          }));
        QVERIFY(m_completo);
        QCOMPARE(caja, QStringLiteral("10.5"));
        QCOMPARE(elegida.family(), QStringLiteral("DejaVu Serif"));
        QCOMPARE(elegida.pointSizeF(), 10.5);
        QCOMPARE(visto, 10.5);
        QCOMPARE(f.Fuente(), QStringLiteral("DejaVu Serif"));
        QCOMPARE(f.Tam_fuente(), short(10));
    }

    void listedSizeReplacesATypedFraction()
    {
        EFigura f;
        llenarGuardada(f);
        QString caja;
        QVERIFY(editar(f, {
                              pulsa("cFont"),
                              [&](QWidget* w) {
                                  escribirTamano(w, QStringLiteral("10.5"));
                                  elegirDeLista(listaSelector(w, ListaTamanos), QStringLiteral("12"));
                                  elegirDeLista(listaSelector(w, ListaFamilias), QStringLiteral("DejaVu Sans Mono"));
                                  caja = cajaTamano(w)->text();
                                  qobject_cast<QDialog*>(w)->accept();
                              },
                              pulsa("cmdAceptar"),
                          }));
        QVERIFY(m_completo);
        QCOMPARE(caja, QStringLiteral("12"));
        QCOMPARE(f.Fuente(), QStringLiteral("DejaVu Sans Mono"));
        QCOMPARE(f.Tam_fuente(), short(12));
    }

    void sizeTooLargeToStoreLeavesTheStoredSizeAndTheRest()
    {
        EFigura f;
        llenarGuardada(f);
        QVERIFY(editar(f,
                       {
                           pulsa("cFont"),
                           elegirFuente(fuente(QStringLiteral("DejaVu Sans Mono"), 40000, false, false)),
                           pulsa("cmdAceptar"),
                       }));
        QVERIFY(m_completo);
        // The overflowing size is skipped; every other step still ran.
        QCOMPARE(f.Tam_fuente(), short(14));
        QCOMPARE(f.Fuente(), QStringLiteral("DejaVu Sans Mono"));
        QVERIFY(!f.Negrita());
        QVERIFY(!f.Cursiva());
        QCOMPARE(f.Texto(), QStringLiteral("Ventas del día"));
    }

    // --- Colours ----------------------------------------------------------

    void colourPickSetsOleColours()
    {
        EFigura f;
        llenarGuardada(f);
        QColor mostrado;
        int fondoMostrado = -1;
        QVERIFY(editar(f,
                       {
                           pulsa("cColor"),
                           elegirColor(QColor(0, 0, 255)),
                           pulsa("cFondo"),
                           elegirColor(QColor(0x12, 0x34, 0x56)),
                           [&](QWidget* w) {
                               mostrado = colorTexto(w);
                               fondoMostrado = muestra(w)->colorOle();
                               pulsar(w, QStringLiteral("cmdAceptar"));
                           },
                       }));
        QVERIFY(m_completo);
        QCOMPARE(f.Color(), 0x00FF0000);
        QCOMPARE(f.ColorFondo(), 0x00563412);
        QCOMPARE(mostrado, QColor(0, 0, 255));
        QCOMPARE(fondoMostrado, 0x00563412);
    }

    void colourPickerOpensUnsetAndCancelChangesNothing()
    {
        EFigura f;
        llenarGuardada(f);
        const QVariantMap antes = propiedades(f);
        QColor propuesto;
        QVERIFY(editar(f,
                       {
                           pulsa("cColor"),
                           [&](QWidget* w) {
                               auto* cmd = qobject_cast<QColorDialog*>(w);
                               QVERIFY(cmd);
                               propuesto = cmd->currentColor();
                               cmd->setCurrentColor(Qt::green);
                               cmd->reject();
                           },
                           pulsa("cFondo"),
                           [](QWidget* w) {
                               qobject_cast<QColorDialog*>(w)->setCurrentColor(Qt::green);
                               cancelarSelector(w);
                           },
                           pulsa("cmdAceptar"),
                       }));
        QVERIFY(m_completo);
        QVERIFY(propuesto != vb::oleToColor(0x00000080));
        QCOMPARE(propiedades(f), antes);
    }

    void unusualStoredColoursRoundTripExactly()
    {
        EFigura f;
        llenarGuardada(f);
        // A system colour and a value with a stray high byte: kept as given.
        f.setColor(int(0x80000012u));
        f.setColorFondo(0x7F00FF00);
        QVERIFY(editar(f, {pulsa("cmdAceptar")}));
        QCOMPARE(f.Color(), int(0x80000012u));
        QCOMPARE(f.ColorFondo(), 0x7F00FF00);
    }

    // --- Cancel -----------------------------------------------------------

    void cancelAfterChangingEverythingLeavesTheFigureAsItWas()
    {
        EFigura f;
        llenarGuardada(f);
        const QVariantMap antes = propiedades(f);
        QVERIFY(!editar(f,
                        {
                            [](QWidget* w) {
                                escribir(w, QStringLiteral("cTexto"), QStringLiteral("cambiado"));
                                pulsar(w, QStringLiteral("opt(0)"));
                                pulsar(w, QStringLiteral("cColor"));
                            },
                            elegirColor(Qt::blue),
                            pulsa("cFondo"),
                            elegirColor(Qt::black),
                            pulsa("cFont"),
                            elegirFuente(fuente(QStringLiteral("DejaVu Sans Mono"), 8)),
                            pulsa("cmdCancel"),
                        }));
        QVERIFY(m_completo);
        QCOMPARE(propiedades(f), antes);
    }

    void closeBoxCancels()
    {
        EFigura f;
        llenarGuardada(f);
        const QVariantMap antes = propiedades(f);
        bool visible = true;
        QVERIFY(!editar(f, {[&](QWidget* w) {
                            escribir(w, QStringLiteral("cTexto"), QStringLiteral("cambiado"));
                            pulsar(w, QStringLiteral("cColor"));
                        },
                            elegirColor(Qt::blue),
                            [&](QWidget* w) {
                                QVERIFY(w->close());
                                visible = w->isVisible();
                            }}));
        QVERIFY(m_completo);
        QVERIFY(!visible);
        QCOMPARE(propiedades(f), antes);
    }

    void escapeCancels()
    {
        EFigura f;
        llenarGuardada(f);
        const QVariantMap antes = propiedades(f);
        QVERIFY(!editar(f, {[](QWidget* w) {
                            escribir(w, QStringLiteral("cTexto"), QStringLiteral("cambiado"));
                            QTest::keyClick(w, Qt::Key_Escape);
                        }}));
        QVERIFY(m_completo);
        QCOMPARE(propiedades(f), antes);
    }

    void cancelAfterAcceptAnswersFalse()
    {
        // One dialog serves one edit: a cancelled edit answers false even
        // when the same dialog was accepted before.
        EFigura f;
        llenarGuardada(f);
        dlgFig dlg;
        dlg.setFigura(&f);
        dlg.putData();
        pulsar(&dlg, QStringLiteral("cmdAceptar"));
        QVERIFY(dlg.Aceptado());
        pulsar(&dlg, QStringLiteral("cmdCancel"));
        QVERIFY(!dlg.Aceptado());
    }

    // --- A saved figure ---------------------------------------------------

    void savedFigureIsShownAsStored()
    {
        EFigura f;
        llenarGuardada(f);
        QString texto, caption, opcion;
        QFont mostrada;
        QColor color;
        int fondo = 0;
        Qt::Alignment alineacion;
        QVERIFY(editar(f, {[&](QWidget* w) {
                           texto = driver::texto(w, QStringLiteral("cTexto"));
                           caption = muestra(w)->text();
                           mostrada = muestra(w)->font();
                           color = colorTexto(w);
                           fondo = muestra(w)->colorOle();
                           alineacion = muestra(w)->alignment();
                           opcion = opcionMarcada(w);
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QCOMPARE(texto, QStringLiteral("Ventas del día"));
        QCOMPARE(caption, QStringLiteral("Ventas del día"));
        QCOMPARE(mostrada.family(), QStringLiteral("DejaVu Serif"));
        QCOMPARE(mostrada.pointSizeF(), 14.0);
        QVERIFY(mostrada.bold());
        QVERIFY(mostrada.italic());
        QVERIFY(!mostrada.underline());
        QCOMPARE(color, vb::oleToColor(0x00000080));
        QCOMPARE(fondo, 0x00C0FFFF);
        QVERIFY(alineacion & Qt::AlignHCenter);
        QCOMPARE(opcion, QStringLiteral("opt(2)"));
    }

    void savedFigureAcceptedUnchangedStaysTheSame()
    {
        EFigura f;
        llenarGuardada(f);
        f.setFuente(QStringLiteral("Arial Narrow de otra máquina"));
        f.setAlineacion(1);
        const QVariantMap antes = propiedades(f);
        QVERIFY(editar(f, {pulsa("cmdAceptar")}));
        QCOMPARE(propiedades(f), antes);
    }

    void savedAlignmentSelectsItsOption_data()
    {
        QTest::addColumn<short>("codigo");
        QTest::addColumn<QString>("opcion");
        QTest::addColumn<int>("horizontal");
        QTest::newRow("izquierda") << short(0) << "opt(0)" << int(Qt::AlignLeft);
        QTest::newRow("derecha") << short(1) << "opt(1)" << int(Qt::AlignRight);
        QTest::newRow("centro") << short(2) << "opt(2)" << int(Qt::AlignHCenter);
    }

    void savedAlignmentSelectsItsOption()
    {
        QFETCH(short, codigo);
        QFETCH(QString, opcion);
        QFETCH(int, horizontal);
        EFigura f;
        llenarGuardada(f);
        f.setAlineacion(codigo);
        dlgFig dlg;
        dlg.setFigura(&f);
        dlg.putData();
        QCOMPARE(opcionMarcada(&dlg), opcion);
        QCOMPARE(int(muestra(&dlg)->alignment() & Qt::AlignHorizontal_Mask), horizontal);
    }

    void storedValuesNoLabelCanTakeAreSkipped()
    {
        EFigura f;
        llenarGuardada(f);
        f.setAlineacion(5);
        f.setTam_fuente(0);
        f.setFuente(QString());
        QString opcion;
        QVERIFY(editar(f, {[&](QWidget* w) {
                           opcion = opcionMarcada(w);
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QCOMPARE(opcion, QStringLiteral("opt(0)"));
        // The preview kept its own: left, and the dialog's font at its size.
        const QFont porDefecto = QApplication::font("QLabel");
        QCOMPARE(f.Alineacion(), short(0));
        QCOMPARE(f.Fuente(), QFontInfo(porDefecto).family());
        QVERIFY(f.Tam_fuente() > 0);
        // The steps after the skipped ones still ran.
        QCOMPARE(f.Texto(), QStringLiteral("Ventas del día"));
        QCOMPARE(f.ColorFondo(), 0x00C0FFFF);
        QVERIFY(f.Negrita());
    }

    void savedEmptyTextKeepsThePreviewLetter()
    {
        EFigura f;
        llenarGuardada(f);
        f.setTexto(QString());
        dlgFig dlg;
        dlg.setFigura(&f);
        dlg.putData();
        QCOMPARE(muestra(&dlg)->text(), QStringLiteral("A"));
    }

    // --- Alignment options ------------------------------------------------

    void optionClicksSetTheAlignmentCode_data()
    {
        QTest::addColumn<QString>("opcion");
        QTest::addColumn<short>("codigo");
        QTest::addColumn<int>("horizontal");
        QTest::newRow("Izquierda") << "opt(0)" << short(0) << int(Qt::AlignLeft);
        QTest::newRow("Derecha") << "opt(1)" << short(1) << int(Qt::AlignRight);
        QTest::newRow("Centro") << "opt(2)" << short(2) << int(Qt::AlignHCenter);
    }

    void optionClicksSetTheAlignmentCode()
    {
        QFETCH(QString, opcion);
        QFETCH(short, codigo);
        QFETCH(int, horizontal);
        for (short inicial : {short(0), short(1), short(2)}) {
            EFigura f;
            llenarGuardada(f);
            f.setAlineacion(inicial);
            int mostrada = -1;
            QVERIFY(editar(f, {[&](QWidget* w) {
                               QTest::mouseClick(control<QWidget>(w, opcion), Qt::LeftButton, {}, QPoint(8, 8));
                               mostrada = int(muestra(w)->alignment() & Qt::AlignHorizontal_Mask);
                               pulsar(w, QStringLiteral("cmdAceptar"));
                           }}));
            QCOMPARE(f.Alineacion(), codigo);
            QCOMPARE(mostrada, horizontal);
        }
    }

    void arrowKeysMoveTheAlignmentToo()
    {
        EFigura f;
        llenarGuardada(f);
        f.setAlineacion(0);
        QVERIFY(editar(f, {[](QWidget* w) {
                           auto* izquierda = control<QRadioButton>(w, QStringLiteral("opt(0)"));
                           izquierda->setFocus();
                           QTest::keyClick(izquierda, Qt::Key_Right);
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        // Right of "Izquierda" on screen is "Centro".
        QCOMPARE(f.Alineacion(), short(2));
    }

    // --- Place, size, kind and key ----------------------------------------

    void placeSizeKindAndKeyNeverChange()
    {
        EFigura f;
        llenarGuardada(f);
        f.setTipo(3);
        const QVariantList antes = identidad(f);
        QVERIFY(editar(f,
                       {
                           [](QWidget* w) {
                               escribir(w, QStringLiteral("cTexto"), QStringLiteral("todo cambia"));
                               pulsar(w, QStringLiteral("opt(1)"));
                               pulsar(w, QStringLiteral("cFont"));
                           },
                           elegirFuente(fuente(QStringLiteral("DejaVu Sans"), 31, true, false)),
                           pulsa("cColor"),
                           elegirColor(Qt::cyan),
                           pulsa("cFondo"),
                           elegirColor(Qt::magenta),
                           pulsa("cmdAceptar"),
                       }));
        QVERIFY(m_completo);
        QCOMPARE(identidad(f), antes);
        QCOMPARE(f.Tam_fuente(), short(31));
        QCOMPARE(f.Alineacion(), short(1));
    }

    // --- Text -------------------------------------------------------------

    void previewCaptionFollowsTheText()
    {
        dlgFig dlg;
        escribir(&dlg, QStringLiteral("cTexto"), QStringLiteral("Hola"));
        QCOMPARE(muestra(&dlg)->text(), QStringLiteral("Hola"));
        escribir(&dlg, QStringLiteral("cTexto"), QString());
        QCOMPARE(muestra(&dlg)->text(), QString());
    }

    void hostileTextRoundTrips_data()
    {
        QTest::addColumn<QString>("texto");
        QTest::newRow("apostrophes") << QStringLiteral("O'Brien's 'caja' ''");
        QTest::newRow("quotes") << QStringLiteral("\"Ventas\" \\ \"netas\"");
        QTest::newRow("sql") << QStringLiteral("'; DROP TABLE ut_bi_Fig; --");
        QTest::newRow("markup") << QStringLiteral("<b>negrita</b> &amp; <img src=x>");
        QTest::newRow("non-latin") << QStringLiteral("Ελληνικά – 日本語 – עברית – Ñandú");
        QTest::newRow("emoji") << QStringLiteral("Meta 🎯 cumplida 👍🏽");
        QTest::newRow("blanks") << QStringLiteral("  espacios  ");
        QTest::newRow("percent") << QStringLiteral("%1 %s %n");
    }

    void hostileTextRoundTrips()
    {
        QFETCH(QString, texto);
        EFigura f;
        llenarGuardada(f);
        QString caption;
        QVERIFY(editar(f, {[&](QWidget* w) {
                           escribir(w, QStringLiteral("cTexto"), texto);
                           caption = muestra(w)->text();
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QCOMPARE(f.Texto(), texto);
        QCOMPARE(caption, texto);
        // And back into a new edit, unchanged.
        QString mostrado;
        QVERIFY(editar(f, {[&](QWidget* w) {
                           mostrado = driver::texto(w, QStringLiteral("cTexto"));
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QCOMPARE(mostrado, texto);
        QCOMPARE(f.Texto(), texto);
    }

    void lineBreaksAreStoredAsCarriageReturnLineFeed()
    {
        EFigura f;
        llenarGuardada(f);
        QString caption;
        QVERIFY(editar(f, {[&](QWidget* w) {
                           auto* box = control<QPlainTextEdit>(w, QStringLiteral("cTexto"));
                           box->setFocus();
                           box->selectAll();
                           QTest::keyClicks(box, QStringLiteral("Linea 1"));
                           QTest::keyClick(box, Qt::Key_Return);
                           box->insertPlainText(QStringLiteral("Línea 2"));
                           caption = muestra(w)->text();
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QCOMPARE(f.Texto(), QStringLiteral("Linea 1\r\nLínea 2"));
        QCOMPARE(caption, QStringLiteral("Linea 1\nLínea 2"));
        QString mostrado;
        QVERIFY(editar(f, {[&](QWidget* w) {
                           mostrado = driver::texto(w, QStringLiteral("cTexto"));
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QCOMPARE(mostrado, QStringLiteral("Linea 1\nLínea 2"));
        QCOMPARE(f.Texto(), QStringLiteral("Linea 1\r\nLínea 2"));
    }

    void longPasteIsCutToTheColumnLength()
    {
        EFigura f;
        llenarGuardada(f);
        QString largo;
        for (int i = 0; i < 50000; ++i)
            largo.append(QChar(u'a' + i % 26));
        QString caption;
        QVERIFY(editar(f, {[&](QWidget* w) {
                           auto* box = control<QPlainTextEdit>(w, QStringLiteral("cTexto"));
                           box->setFocus();
                           box->selectAll();
                           QApplication::clipboard()->setText(largo);
                           box->paste();
                           caption = muestra(w)->text();
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QCOMPARE(f.Texto(), largo.left(255));
        QCOMPARE(caption, largo.left(255));
    }

    void directCallsWithoutAFigureDoNothing()
    {
        dlgFig dlg;
        dlg.putData();
        dlg.getData();
        QCOMPARE(muestra(&dlg)->text(), QStringLiteral("A"));
        QObject otro;
        dlg.setFigura(&otro);
        dlg.putData();
        dlg.getData();
        QCOMPARE(dlg.Figura(), &otro);
    }

    void figureReferenceIsTheHostsOwnObject()
    {
        EFigura f;
        llenarGuardada(f);
        dlgFig dlg;
        dlg.setFigura(&f);
        QCOMPARE(dlg.Figura(), &f);
        QCOMPARE(dlg.property("Figura").value<QObject*>(), &f);
        dlg.putData();
        escribir(&dlg, QStringLiteral("cTexto"), QStringLiteral("directo"));
        dlg.getData();
        QCOMPARE(f.Texto(), QStringLiteral("directo"));
        QVERIFY(!dlg.Aceptado());
    }

    void emojiAtTheLengthLimitIsNotSplit()
    {
        EFigura f;
        llenarGuardada(f);
        const QString pegado = QString(254, QLatin1Char('x')) + QStringLiteral("🎯");
        QVERIFY(editar(f, {[&](QWidget* w) {
                           auto* box = control<QPlainTextEdit>(w, QStringLiteral("cTexto"));
                           box->selectAll();
                           box->insertPlainText(pegado);
                           pulsar(w, QStringLiteral("cmdAceptar"));
                       }}));
        QVERIFY(f.Texto().size() <= 255);
        QVERIFY(f.Texto().startsWith(QString(254, QLatin1Char('x'))));
        QVERIFY(f.Texto().isValidUtf16());
    }

    // --- What a person sees -----------------------------------------------

    void screenshot()
    {
        EFigura f;
        llenarGuardada(f);
        f.setTexto(QStringLiteral("Ventas del día\r\nMeta cumplida"));
        f.setFuente(QStringLiteral("DejaVu Sans"));
        dlgFig dlg;
        dlg.setFigura(&f);
        dlg.putData();
        dlg.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dlg));
        CarpetaPrueba carpeta;
        QVERIFY(dlg.grab().save(carpeta.archivo(QStringLiteral("dlgfig.png"))));
        dlgFig nuevo;
        nuevo.show();
        QVERIFY(QTest::qWaitForWindowExposed(&nuevo));
        QVERIFY(nuevo.grab().save(carpeta.archivo(QStringLiteral("dlgfig_nuevo.png"))));
    }
};

QTEST_MAIN(TstDlgFig)
#include "tst_dlgfig.moc"
