// The engine's editor entry points: the right each one asks, what a refusal
// or a missing user-management object does, and the entity-search questions.
#include "engine/eengine.h"
#include "engine/msgbox.h"
#include "engine/quelta.h"
#include "enginefixture.h"
#include "modalanswerer.h"
#include "testdatabase.h"
#include "vb/vb.h"

#include <QFontMetrics>
#include <QTest>

namespace {

// A search object whose answers the test sets.
class FakeSearch : public QObject, public Quelta {
    Q_OBJECT
    Q_INTERFACES(Quelta)

public:
    QVariant Conectar(QObject*) override { return QVariant(); }
    QVariant Buscar(const QString& kind, bool flag) override
    {
        asked << kind + (flag ? QStringLiteral("|true") : QStringLiteral("|false"));
        if (raise)
            throw vb::AutomationError(5, QStringLiteral("search failed"));
        return answer;
    }
    QString Describir(const QString& kind, const QString& key, const QString& separator) override
    {
        asked << kind + QLatin1Char('|') + key + QLatin1Char('|') + separator;
        if (raise)
            throw vb::AutomationError(5, QStringLiteral("describe failed"));
        return description;
    }

    QVariant answer;
    QString description;
    bool raise = false;
    QStringList asked;
};

} // namespace

class TstFormularios : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    EEngine* engine = nullptr;
    FakeUserManagement* um = nullptr;

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    // A one-word text under a long title: the box is wide enough for the
    // whole title, so the window's frame never cuts it.
    void messageBoxIsWideEnoughForItsTitle()
    {
        const QString titulo = QStringLiteral("Propiedades del indicador «Avance de ventas por sucursal y mes»");
        int ancho = 0;
        ModalAnswerer answerer;
        answerer.expect([&](QWidget* w) {
            ancho = w->width();
            ModalAnswerer::press(w, QStringLiteral("Aceptar"));
        });
        vbui::MsgBox(QStringLiteral("Hecho"), vbui::vbInformation, titulo);
        QVERIFY(answerer.allAnswered());
        QFont negrita = QApplication::font();
        negrita.setBold(true);
        QVERIFY2(ancho > QFontMetrics(negrita).horizontalAdvance(titulo), qPrintable(QString::number(ancho)));
    }

    void init()
    {
        db.clear();
        fixture.preparar(db.connection());
        engine = fixture.engine.get();
        um = fixture.um.get();
    }

    void eachEntryPointAsksItsRightAndARefusalOpensNothing_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("right");
        QTest::newRow("Form_Agregar_Perspectiva") << QStringLiteral("Form_Agregar_Perspectiva") << QStringLiteral("KZ4-TBL-05-001");
        QTest::newRow("Form_Editar_Perspectiva") << QStringLiteral("Form_Editar_Perspectiva") << QStringLiteral("KZ4-TBL-05-002");
        QTest::newRow("Form_Agregar_Metrica") << QStringLiteral("Form_Agregar_Metrica") << QStringLiteral("KZ4-TBL-05-004");
        QTest::newRow("Form_Editar_Metrica") << QStringLiteral("Form_Editar_Metrica") << QStringLiteral("KZ4-TBL-05-005");
        QTest::newRow("Form_Agregar_Indicador") << QStringLiteral("Form_Agregar_Indicador") << QStringLiteral("KZ4-TBL-06-001");
        QTest::newRow("Form_Editar_Indicador") << QStringLiteral("Form_Editar_Indicador") << QStringLiteral("KZ4-TBL-06-002");
        QTest::newRow("Form_Agregar_Tablero") << QStringLiteral("Form_Agregar_Tablero") << QStringLiteral("KZ4-TBL-01-000");
        QTest::newRow("Form_Editar_Tablero") << QStringLiteral("Form_Editar_Tablero") << QStringLiteral("KZ4-TBL-03-000");
    }
    void eachEntryPointAsksItsRightAndARefusalOpensNothing()
    {
        QFETCH(QString, entry);
        QFETCH(QString, right);
        um->refused.insert(right);
        ModalAnswerer answerer;
        QVariant result;
        const QByteArray name = entry.toLatin1();
        const bool adding = entry.contains(QLatin1String("Agregar"));
        bool invoked = false;
        if (adding) {
            int key = -1;
            invoked = QMetaObject::invokeMethod(engine, name.constData(), Q_RETURN_ARG(int, key), Q_ARG(int, 1));
            result = key;
        } else {
            bool ok = true;
            invoked = QMetaObject::invokeMethod(engine, name.constData(), Q_RETURN_ARG(bool, ok), Q_ARG(int, 1));
            result = ok;
        }
        QVERIFY(invoked);
        QTest::qWait(30);
        QCOMPARE(um->asked, QStringList{right});
        QCOMPARE(um->flags, QList<bool>{true});
        QVERIFY(answerer.seen.isEmpty());
        QCOMPARE(result.toInt(), 0);
    }

    void withoutUserManagementNothingOpens()
    {
        EEngine bare;
        bare.SetConnection(&db.connection(), 1);
        ModalAnswerer answerer;
        QCOMPARE(bare.Form_Agregar_Metrica(1), 0);
        QVERIFY(!bare.Form_Editar_Perspectiva(1));
        QCOMPARE(bare.Form_Agregar_Tablero(1), 0);
        QTest::qWait(30);
        QVERIFY(answerer.seen.isEmpty());
    }

    void grantedEntryPointOpensItsDialog_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("dialog");
        QTest::newRow("perspectiva") << QStringLiteral("Form_Agregar_Perspectiva") << QStringLiteral("dlgPropPers");
        QTest::newRow("metrica") << QStringLiteral("Form_Agregar_Metrica") << QStringLiteral("dlgDato");
        QTest::newRow("indicador") << QStringLiteral("Form_Agregar_Indicador") << QStringLiteral("dlgPropIndicador");
        QTest::newRow("tablero") << QStringLiteral("Form_Agregar_Tablero") << QStringLiteral("dlgTablero");
    }
    void grantedEntryPointOpensItsDialog()
    {
        QFETCH(QString, entry);
        QFETCH(QString, dialog);
        ModalAnswerer answerer;
        QString engineSet;
        answerer.expect([&](QWidget* w) {
            engineSet = w->property("Engine").value<QObject*>() == engine ? QStringLiteral("yes") : QStringLiteral("no");
            QTest::keyClick(w, Qt::Key_Escape);
        });
        int key = -1;
        QVERIFY(QMetaObject::invokeMethod(engine, entry.toLatin1().constData(), Q_RETURN_ARG(int, key), Q_ARG(int, 0)));
        QCOMPARE(key, 0);
        QCOMPARE(answerer.seen.size(), 1);
        QCOMPARE(answerer.seen.first().section(QLatin1Char('|'), 0, 0), dialog);
        QCOMPARE(engineSet, QStringLiteral("yes"));
    }

    void buscarEntidadAsksTheSearchObjectWithFlagTrue()
    {
        FakeSearch search;
        engine->setSearch(&search);
        search.answer = 42;
        QCOMPARE(engine->BuscarEntidad(QStringLiteral("Cliente")), 42);
        search.answer = QStringLiteral("17");
        QCOMPARE(engine->BuscarEntidad(QStringLiteral("Producto")), 17);
        QCOMPARE(search.asked, QStringList({QStringLiteral("Cliente|true"), QStringLiteral("Producto|true")}));
        QVERIFY(um->asked.isEmpty());
    }

    void buscarEntidadGivesZeroForAnythingUnconvertible()
    {
        FakeSearch search;
        engine->setSearch(&search);
        for (const QVariant& answer : {QVariant(QStringLiteral("abc")), vb::Null(), QVariant(1e12)}) {
            search.answer = answer;
            QCOMPARE(engine->BuscarEntidad(QStringLiteral("Cliente")), 0);
        }
        search.raise = true;
        QCOMPARE(engine->BuscarEntidad(QStringLiteral("Cliente")), 0);
        engine->setSearch(nullptr);
        QCOMPARE(engine->BuscarEntidad(QStringLiteral("Cliente")), 0);
    }

    void infoEntidadFallsBackToKindAndKey()
    {
        FakeSearch search;
        engine->setSearch(&search);
        QCOMPARE(engine->InfoEntidad(QStringLiteral("T"), 15), QStringLiteral("T con Sys_PK=15"));
        QCOMPARE(search.asked, QStringList{QStringLiteral("T|15| ")});
        QCOMPARE(engine->InfoEntidad(QStringLiteral("Cliente"), -3), QStringLiteral("Cliente con Sys_PK=-3"));
        search.description = QStringLiteral("Ana López");
        QCOMPARE(engine->InfoEntidad(QStringLiteral("Cliente"), 15), QStringLiteral("Ana López"));
        QVERIFY(um->asked.isEmpty());
    }

    void infoEntidadPassesSearchErrorsToTheHost()
    {
        FakeSearch search;
        search.raise = true;
        engine->setSearch(&search);
        QVERIFY_THROWS_EXCEPTION(vb::AutomationError, engine->InfoEntidad(QStringLiteral("Cliente"), 1));
        engine->setSearch(nullptr);
        QVERIFY_THROWS_EXCEPTION(vb::AutomationError, engine->InfoEntidad(QStringLiteral("Cliente"), 1));
    }
};

QTEST_MAIN(TstFormularios)
#include "tst_formularios.moc"
