// Every text a Save accepts comes back from Load exactly as it was given; a
// text that cannot be stored as given is refused with nothing written; a
// double property takes only finite numbers; a length-limited box never keeps
// half of a character.
#include "designer/dlgpropindicador.h"
#include "library/caracteresenteros.h"
#include "library/dialogo.h"
#include "library/dlgdato.h"
#include "library/dlgproppers.h"
#include "library/dlgtablero.h"
#include "model/ebarraprogreso.h"
#include "model/efigura.h"
#include "model/eindicador.h"
#include "model/ematrizgrafico.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "model/esemaforo.h"
#include "model/etabindicador.h"
#include "model/etablero.h"
#include "testdatabase.h"
#include "vb/automationerror.h"

#include <QLineEdit>
#include <QMetaProperty>
#include <QTest>
#include <functional>
#include <limits>
#include <memory>

namespace {

// A text property of an entity and the table that holds it.
struct PropiedadTexto {
    const QMetaObject* clase;
    const char* propiedad;
    const char* tabla;
};

const PropiedadTexto Textos[] = {
    {&EPerspectiva::staticMetaObject, "Nombre", "ut_bi_Perspectiva"},
    {&EPerspectiva::staticMetaObject, "EntidadAsociada", "ut_bi_Perspectiva"},
    {&EPerspectiva::staticMetaObject, "Grupos", "ut_bi_Perspectiva"},
    {&EMetrica::staticMetaObject, "Nombre", "ut_bi_Metrica"},
    {&EMetrica::staticMetaObject, "Descripcion", "ut_bi_Metrica"},
    {&EMetrica::staticMetaObject, "Titulo", "ut_bi_Metrica"},
    {&EMetrica::staticMetaObject, "Formato", "ut_bi_Metrica"},
    {&EMetrica::staticMetaObject, "CodigoFuente", "ut_bi_Metrica"},
    {&EIndicador::staticMetaObject, "Nombre", "ut_bi_Indicador"},
    {&ETablero::staticMetaObject, "Nombre", "ut_bi_Tablero"},
    {&EFigura::staticMetaObject, "Texto", "ut_bi_Fig"},
    {&EFigura::staticMetaObject, "Fuente", "ut_bi_Fig"},
};

const QChar Marca(0xFEFF);
const QChar MarcaInvertida(0xFFFE);
const QChar MitadAlta(0xD83D);
const QChar MitadBaja(0xDE00);
const QString Emoji = QStringLiteral("😀");

bool llamar(QObject* entidad, const char* metodo, QObject* cnx, int clave = -1)
{
    bool hecho = false;
    if (clave < 0)
        QMetaObject::invokeMethod(entidad, metodo, Q_RETURN_ARG(bool, hecho), Q_ARG(QObject*, cnx));
    else
        QMetaObject::invokeMethod(entidad, metodo, Q_RETURN_ARG(bool, hecho), Q_ARG(QObject*, cnx), Q_ARG(int, clave));
    return hecho;
}

// A new entity with one of its text properties set.
std::unique_ptr<QObject> nuevaCon(const PropiedadTexto& texto, const QString& valor)
{
    std::unique_ptr<QObject> entidad(texto.clase->newInstance());
    entidad->setProperty(texto.propiedad, valor);
    return entidad;
}

// The double properties of the classes that have them.
QList<QMetaProperty> propiedadesDobles(const QMetaObject& clase)
{
    QList<QMetaProperty> dobles;
    for (int i = clase.propertyOffset(); i < clase.propertyCount(); ++i) {
        if (clase.property(i).metaType().id() == QMetaType::Double)
            dobles.append(clase.property(i));
    }
    return dobles;
}

} // namespace

class TstIntegridadTexto : public QObject {
    Q_OBJECT

    TestDatabase db;

    int filas(const char* tabla)
    {
        return db.scalar(QStringLiteral("SELECT COUNT(*) FROM %1").arg(QLatin1String(tabla))).toInt();
    }

    void datosTextos(const QList<QString>& valores)
    {
        QTest::addColumn<int>("indice");
        QTest::addColumn<QString>("valor");
        for (int i = 0; i < int(std::size(Textos)); ++i) {
            for (int v = 0; v < valores.size(); ++v) {
                const QByteArray nombre = QByteArray(Textos[i].clase->className()) + '.' + Textos[i].propiedad + ' '
                    + QByteArray::number(v);
                QTest::newRow(nombre.constData()) << i << valores.at(v);
            }
        }
    }

    // An indicator of the matrix kind with the given chart title.
    std::unique_ptr<EIndicador> indicadorConTitulo(const QString& titulo)
    {
        auto indicador = std::make_unique<EIndicador>();
        indicador->setTipo(2);
        indicador->Configuracion()->setProperty("Grafico_Titulo", titulo);
        return indicador;
    }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }
    void init() { db.clear(); }

    void textsWithByteOrderMarksComeBackIdentical_data()
    {
        datosTextos({Marca + QStringLiteral("Hola"), QString(Marca) + Marca + QStringLiteral("doble"),
                     QStringLiteral("en ") + Marca + QStringLiteral("medio"), QString(Marca)});
    }
    void textsWithByteOrderMarksComeBackIdentical()
    {
        QFETCH(int, indice);
        QFETCH(QString, valor);
        const PropiedadTexto& texto = Textos[indice];
        auto nueva = nuevaCon(texto, valor);
        QVERIFY(llamar(nueva.get(), "Save", &db.connection()));
        auto otraConexion = db.openAnother();
        std::unique_ptr<QObject> leida(texto.clase->newInstance());
        QVERIFY(llamar(leida.get(), "Load", otraConexion.get(), nueva->property("Sys_PK").toInt()));
        QCOMPARE(leida->property(texto.propiedad).toString(), valor);

        // And once more through an update of the row.
        nueva->setProperty(texto.propiedad, valor + Marca);
        QVERIFY(llamar(nueva.get(), "Save", &db.connection()));
        QVERIFY(llamar(leida.get(), "Load", otraConexion.get(), nueva->property("Sys_PK").toInt()));
        QCOMPARE(leida->property(texto.propiedad).toString(), valor + Marca);
    }

    void chartTitleWithByteOrderMarksComesBackIdentical_data()
    {
        QTest::addColumn<QString>("titulo");
        QTest::newRow("leading") << Marca + QStringLiteral("Ventas");
        QTest::newRow("two leading") << QString(Marca) + Marca + QStringLiteral("Ventas");
        QTest::newRow("alone") << QString(Marca);
    }
    void chartTitleWithByteOrderMarksComesBackIdentical()
    {
        QFETCH(QString, titulo);
        auto indicador = indicadorConTitulo(titulo);
        QVERIFY(indicador->Save(&db.connection()));
        auto otraConexion = db.openAnother();
        EIndicador leido;
        QVERIFY(leido.Load(otraConexion.get(), indicador->Sys_PK()));
        QCOMPARE(leido.Configuracion()->property("Grafico_Titulo").toString(), titulo);
    }

    void textTheDatabaseWouldAlterIsRefusedWithNothingWritten_data()
    {
        datosTextos({QStringLiteral("ab") + MitadAlta + QStringLiteral("cd"), MitadBaja + QStringLiteral("x"),
                     QStringLiteral("fin ") + MitadAlta, Emoji + MitadBaja, MarcaInvertida + QStringLiteral("al revés"),
                     QStringLiteral("no") + QChar(0xFFFF) + QStringLiteral("carácter")});
    }
    void textTheDatabaseWouldAlterIsRefusedWithNothingWritten()
    {
        QFETCH(int, indice);
        QFETCH(QString, valor);
        const PropiedadTexto& texto = Textos[indice];
        auto nueva = nuevaCon(texto, valor);
        QVERIFY(!llamar(nueva.get(), "Save", &db.connection()));
        QCOMPARE(filas(texto.tabla), 0);

        // An existing row keeps what it held.
        nueva->setProperty(texto.propiedad, Emoji);
        QVERIFY(llamar(nueva.get(), "Save", &db.connection()));
        nueva->setProperty(texto.propiedad, valor);
        QVERIFY(!llamar(nueva.get(), "Save", &db.connection()));
        std::unique_ptr<QObject> leida(texto.clase->newInstance());
        QVERIFY(llamar(leida.get(), "Load", &db.connection(), nueva->property("Sys_PK").toInt()));
        QCOMPARE(leida->property(texto.propiedad).toString(), Emoji);
    }

    void chartTitleTheDatabaseWouldAlterIsRefusedWithNothingWritten()
    {
        auto indicador = indicadorConTitulo(QStringLiteral("Bien ") + Emoji);
        QVERIFY(indicador->Save(&db.connection()));
        indicador->setNombre(QStringLiteral("Cambiado"));
        indicador->Configuracion()->setProperty("Grafico_Titulo", QStringLiteral("Mal ") + MitadAlta);
        QVERIFY(!indicador->Save(&db.connection()));
        EIndicador leido;
        QVERIFY(leido.Load(&db.connection(), indicador->Sys_PK()));
        QCOMPARE(leido.Nombre(), QString());
        QCOMPARE(leido.Configuracion()->property("Grafico_Titulo").toString(), QStringLiteral("Bien ") + Emoji);

        EMatrizGrafico sola;
        sola.setGrafico_Titulo(MitadBaja + QStringLiteral("x"));
        QVERIFY(!sola.Save(&db.connection(), 99));
        sola.setGrafico_Titulo(MarcaInvertida + QStringLiteral("x"));
        QVERIFY(!sola.Save(&db.connection(), 99));
        QCOMPARE(filas("ut_bi_MatrizGraf"), 1);
    }

    void nanAndInfinityAssignedToDoublePropertiesRaiseOverflow_data()
    {
        QTest::addColumn<int>("clase");
        QTest::addColumn<double>("valor");
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double inf = std::numeric_limits<double>::infinity();
        for (int clase = 0; clase < 3; ++clase) {
            QTest::addRow("class %d NaN", clase) << clase << nan;
            QTest::addRow("class %d +Inf", clase) << clase << inf;
            QTest::addRow("class %d -Inf", clase) << clase << -inf;
        }
    }
    void nanAndInfinityAssignedToDoublePropertiesRaiseOverflow()
    {
        QFETCH(int, clase);
        QFETCH(double, valor);
        const QMetaObject* clases[] = {&EBarraProgreso::staticMetaObject, &ESemaforo::staticMetaObject,
                                       &ETabIndicador::staticMetaObject};
        std::unique_ptr<QObject> entidad(clases[clase]->newInstance());
        const QList<QMetaProperty> dobles = propiedadesDobles(*clases[clase]);
        QCOMPARE(dobles.size(), 8);
        for (const QMetaProperty& propiedad : dobles) {
            QVERIFY(propiedad.write(entidad.get(), 2.5));
            int numero = 0;
            try {
                propiedad.write(entidad.get(), valor);
            } catch (const vb::AutomationError& e) {
                numero = e.number();
            }
            QCOMPARE(numero, 6);
            QCOMPARE(propiedad.read(entidad.get()).toDouble(), 2.5);
        }
    }

    void largestFiniteDoublesAreStillTaken()
    {
        ETabIndicador colocado;
        colocado.setLimite1(std::numeric_limits<double>::max());
        colocado.setLimite2(-std::numeric_limits<double>::max());
        colocado.setLimite3(std::numeric_limits<double>::denorm_min());
        QCOMPARE(colocado.Limite1(), std::numeric_limits<double>::max());
        QCOMPARE(colocado.Limite2(), -std::numeric_limits<double>::max());
        QCOMPARE(colocado.Limite3(), std::numeric_limits<double>::denorm_min());
    }

    void limitedBoxNeverKeepsHalfAnEmoji_data()
    {
        QTest::addColumn<int>("largo");
        QTest::addColumn<QString>("prefijo");
        QTest::newRow("even length, emoji only") << 50 << QString();
        QTest::newRow("even length, one letter first") << 50 << QStringLiteral("a");
        QTest::newRow("odd length") << 255 << QString();
    }
    void limitedBoxNeverKeepsHalfAnEmoji()
    {
        QFETCH(int, largo);
        QFETCH(QString, prefijo);
        QLineEdit caja;
        vbui::limitarLongitud(&caja, largo);
        caja.insert(prefijo + Emoji.repeated(25000));
        QVERIFY(caja.text().isValidUtf16());
        QVERIFY(caja.text().size() <= largo);
        QVERIFY(caja.text().size() >= largo - 1);
        QVERIFY(caja.text().startsWith(prefijo + Emoji));

        // Typed in the middle of a full box, nothing half fits either.
        caja.setCursorPosition(int(prefijo.size()));
        caja.insert(Emoji);
        QVERIFY(caja.text().isValidUtf16());
    }

    void everyLimitedBoxOfTheDialogsKeepsWholeCharacters_data()
    {
        QTest::addColumn<int>("cual");
        int cual = 0;
        for (const char* nombre : {"dlgTablero", "dlgDato", "dlgPropPers", "dlgPropIndicador"})
            QTest::newRow(nombre) << cual++;
    }
    void everyLimitedBoxOfTheDialogsKeepsWholeCharacters()
    {
        const std::function<QWidget*()> dialogos[] = {[] { return new dlgTablero; }, [] { return new dlgDato; },
                                                      [] { return new dlgPropPers; }, [] { return new dlgPropIndicador; }};
        QFETCH(int, cual);
        std::unique_ptr<QWidget> dialogo(dialogos[cual]());
        int limitadas = 0;
        for (QLineEdit* caja : dialogo->findChildren<QLineEdit*>()) {
            const bool guardada = qobject_cast<const CaracteresEnteros*>(caja->validator());
            QVERIFY2(guardada || caja->maxLength() == std::numeric_limits<qint16>::max(), qPrintable(caja->objectName()));
            if (!guardada)
                continue;
            ++limitadas;
            caja->clear();
            caja->insert(QStringLiteral("a") + Emoji.repeated(25000));
            QVERIFY2(caja->text().isValidUtf16(), qPrintable(caja->objectName()));
            caja->clear();
            caja->insert(Emoji.repeated(25000));
            QVERIFY2(caja->text().isValidUtf16(), qPrintable(caja->objectName()));
            QVERIFY(caja->text().size() >= caja->maxLength() - 1);
        }
        QVERIFY(limitadas > 0);
    }

    void limitedBoxKeepsWholeTextsAsTheyAre()
    {
        QLineEdit caja;
        vbui::limitarLongitud(&caja, 10);
        caja.insert(QStringLiteral("a") + Emoji + QStringLiteral("b"));
        QCOMPARE(caja.text(), QStringLiteral("a") + Emoji + QStringLiteral("b"));
        QCOMPARE(caja.cursorPosition(), 4);
    }
};

QTEST_MAIN(TstIntegridadTexto)
#include "tst_integridadtexto.moc"
