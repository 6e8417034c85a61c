// The metric editor driven through the engine as a user would use it.
#include "dialogdriver.h"
#include "engine/eengine.h"
#include "enginefixture.h"
#include "library/dialogo.h"
#include "library/dlgdato.h"
#include "modalanswerer.h"
#include "model/emetrica.h"
#include "testdatabase.h"

#include <QComboBox>
#include <QPlainTextEdit>
#include <QTest>

using namespace driver;

class TstDlgDato : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;
    EEngine* engine = nullptr;
    FakeUserManagement* um = nullptr;

    int count() { return db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_Metrica")).toInt(); }

    static void llenar(QWidget* w, const QString& nombre = QStringLiteral("Venta diaria"))
    {
        escribir(w, QStringLiteral("cNombre"), nombre);
        escribir(w, QStringLiteral("cTitulo"), QStringLiteral("Venta"));
        escribir(w, QStringLiteral("cDescrip"), QStringLiteral("Importe vendido"));
    }

    int guardarMetrica(short decimales, const QString& formato)
    {
        EMetrica m;
        m.setNombre(QStringLiteral("Existente"));
        m.setTitulo(QStringLiteral("T"));
        m.setDescripcion(QStringLiteral("D"));
        m.setDecimales(decimales);
        m.setFormato(formato);
        m.setCodigoFuente(QStringLiteral("return 1;"));
        m.setFK_Perspectiva(3);
        return m.Save(&db.connection()) ? m.Sys_PK() : 0;
    }

    // Expects a plain message box with that text and answers it.

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        fixture.preparar(db.connection());
        engine = fixture.engine.get();
        um = fixture.um.get();
    }

    void controlsCaptionsAndDefaults()
    {
        dlgDato dlg;
        dlg.setEngine(engine);
        dlg.Nuevo(4);
        QCOMPARE(dlg.objectName(), QStringLiteral("dlgDato"));
        QCOMPARE(dlg.windowTitle(), QStringLiteral("Propiedades de métrica"));
        auto* decs = control<QComboBox>(&dlg, QStringLiteral("cDecs"));
        QCOMPARE(decs->count(), 11);
        QCOMPARE(decs->itemText(0), QStringLiteral("0"));
        QCOMPARE(decs->itemText(10), QStringLiteral("10"));
        QCOMPARE(decs->currentIndex(), 0);
        auto* format = control<QComboBox>(&dlg, QStringLiteral("cFormat"));
        QCOMPARE(format->count(), 3);
        QCOMPARE(format->itemText(1), QStringLiteral("#,#.0"));
        QCOMPARE(format->itemText(2), QStringLiteral("#,#.00"));
        QCOMPARE(format->currentText(), QStringLiteral("#"));
        QVERIFY(format->isEditable());
        QCOMPARE(vbui::textoMultilinea(control<QPlainTextEdit>(&dlg, QStringLiteral("cCode"))), dlgDato::plantillaCodigo());
        QVERIFY(!control<QLineEdit>(&dlg, QStringLiteral("cGUID"))->isEnabled());
        QCOMPARE(texto(&dlg, QStringLiteral("cGUID")), QString());
        QCOMPARE(control<QAbstractButton>(&dlg, QStringLiteral("cAceptar"))->text(), QStringLiteral("&Aceptar"));
        QCOMPARE(control<QAbstractButton>(&dlg, QStringLiteral("cCancelar"))->text(), QStringLiteral("&Cancelar"));
        QVERIFY(control<QPushButton>(&dlg, QStringLiteral("cAceptar"))->isDefault());
        QCOMPARE(control<QPlainTextEdit>(&dlg, QStringLiteral("cCode"))->font().family(), QStringLiteral("Courier New"));
        QCOMPARE(dlg.Resultado(), 0);
    }

    void templateIsFourLinesEndedByCarriageReturnLineFeed()
    {
        const QStringList lines = dlgDato::plantillaCodigo().split(QStringLiteral("\r\n"));
        QCOMPARE(lines.size(), 5);
        QCOMPARE(lines.last(), QString());
        QCOMPARE(lines.at(0), QStringLiteral("//Lenguaje: javascript"));
        QCOMPARE(lines.at(1), QStringLiteral("//Objetos disponibles: ADOCnn, StatsEngine, _ejecutar y _fecha"));
        QCOMPARE(lines.at(2),
                 QStringLiteral("//Parámetros: sys_pk, inicio, final  [function_ClaveMetrica(sys_pk,inicio,final){}] "));
        QCOMPARE(lines.at(3), QStringLiteral("//El valor debe ser devuelto mediante una sentencia return"));
    }

    void newMetricSavedUnchangedStoresTheTemplate()
    {
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            llenar(w);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int key = engine->Form_Agregar_Metrica(0);
        QVERIFY(answerer.unexpected.isEmpty());
        QVERIFY(key > 0);
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-004")});
        EMetrica m;
        QVERIFY(m.Load(&db.connection(), key));
        QCOMPARE(m.CodigoFuente(), dlgDato::plantillaCodigo());
        QCOMPARE(m.FK_Perspectiva(), 0);
        QCOMPARE(m.Decimales(), short(0));
        QCOMPARE(m.Formato(), QStringLiteral("#"));
        QCOMPARE(m.Nombre(), QStringLiteral("Venta diaria"));
    }

    void validationMessagesComeInOrderWithTheirFocus()
    {
        ModalAnswerer answerer;
        QString m1, m2, m3, m4;
        QStringList focos;
        QWidget* dialog = nullptr;
        answerer.expect([&](QWidget* w) {
            dialog = w;
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("   "));
            escribir(w, QStringLiteral("cCode"), QStringLiteral("   "));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&m1));
        answerer.expect([&](QWidget* w) {
            focos << foco(w);
            escribir(w, QStringLiteral("cNombre"), QStringLiteral("  Con blancos"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&m2));
        answerer.expect([&](QWidget* w) {
            focos << foco(w);
            escribir(w, QStringLiteral("cTitulo"), QStringLiteral("T"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&m3));
        answerer.expect([&](QWidget* w) {
            focos << foco(w);
            escribir(w, QStringLiteral("cDescrip"), QStringLiteral("D"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&m4));
        answerer.expect([&](QWidget* w) {
            focos << foco(w);
            // blanks and line breaks: only blanks are trimmed, so this is not empty
            escribir(w, QStringLiteral("cCode"), QStringLiteral("  \r\n  "));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int key = engine->Form_Agregar_Metrica(7);
        QVERIFY2(answerer.unexpected.isEmpty(), qPrintable(answerer.unexpected.join(QLatin1Char('\n'))));
        QCOMPARE(m1, QStringLiteral("Indique el nombre de la métrica"));
        QCOMPARE(m2, QStringLiteral("Indique el título"));
        QCOMPARE(m3, QStringLiteral("Indique una descripción"));
        QCOMPARE(m4, QStringLiteral("Escriba el código JavaScript de la métrica"));
        QCOMPARE(focos, QStringList({QStringLiteral("cNombre"), QStringLiteral("cTitulo"), QStringLiteral("cDescrip"),
                                     QStringLiteral("cCode")}));
        QVERIFY(key > 0);
        EMetrica m;
        QVERIFY(m.Load(&db.connection(), key));
        QCOMPARE(m.Nombre(), QStringLiteral("  Con blancos"));
        QCOMPARE(m.CodigoFuente(), QStringLiteral("  \r\n  "));
        QCOMPARE(m.FK_Perspectiva(), 7);
    }

    void editShowsStoredValuesAndKeepsAnUnlistedFormat()
    {
        const int key = guardarMetrica(3, QStringLiteral("0.000 'kg'"));
        ModalAnswerer answerer;
        QString decs, format, guid;
        bool guidReadOnly = false, guidEnabled = false;
        answerer.expect([&](QWidget* w) {
            decs = control<QComboBox>(w, QStringLiteral("cDecs"))->currentText();
            format = texto(w, QStringLiteral("cFormat"));
            auto* g = control<QLineEdit>(w, QStringLiteral("cGUID"));
            guid = g->text();
            guidReadOnly = g->isReadOnly();
            guidEnabled = g->isEnabled();
            escribir(w, QStringLiteral("cTitulo"), QStringLiteral("Nuevo título"));
            control<QComboBox>(w, QStringLiteral("cDecs"))->setCurrentIndex(5);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        QVERIFY(engine->Form_Editar_Metrica(key));
        QCOMPARE(um->asked, QStringList{QStringLiteral("KZ4-TBL-05-005")});
        QCOMPARE(decs, QStringLiteral("3"));
        QCOMPARE(format, QStringLiteral("0.000 'kg'"));
        QVERIFY(guid.startsWith(QLatin1Char('{')));
        QVERIFY(guidReadOnly);
        QVERIFY(guidEnabled);
        EMetrica m;
        QVERIFY(m.Load(&db.connection(), key));
        QCOMPARE(m.Titulo(), QStringLiteral("Nuevo título"));
        QCOMPARE(m.Decimales(), short(5));
        QCOMPARE(m.Formato(), QStringLiteral("0.000 'kg'"));
        QCOMPARE(m.FK_Perspectiva(), 3);
        QCOMPARE(count(), 1);
    }

    void cancelReturnsZeroAndStoresNothing()
    {
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) {
            llenar(w);
            pulsar(w, QStringLiteral("cCancelar"));
        });
        QCOMPARE(engine->Form_Agregar_Metrica(1), 0);
        answerer.expect([](QWidget* w) {
            llenar(w);
            w->close(); // the close box acts as cancel
        });
        QCOMPARE(engine->Form_Agregar_Metrica(1), 0);
        QCOMPARE(count(), 0);
    }

    void editCancelledAnswersFalse()
    {
        const int key = guardarMetrica(1, QStringLiteral("#"));
        ModalAnswerer answerer;
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cCancelar")); });
        QVERIFY(!engine->Form_Editar_Metrica(key));
    }

    void failedSaveShowsErrorStaysOpenAndCancelReturnsZero()
    {
        const int key = guardarMetrica(1, QStringLiteral("#"));
        ModalAnswerer answerer;
        QString error;
        answerer.expect([&](QWidget* w) {
            db.openAnother()->Execute(QStringLiteral("DELETE FROM ut_bi_Metrica WHERE Sys_PK=%1").arg(key));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&error));
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cCancelar")); });
        QVERIFY(!engine->Form_Editar_Metrica(key));
        QCOMPARE(error, QStringLiteral("Error al guardar datos"));
        QCOMPARE(count(), 0);
    }

    void refusedRightOpensNothingAndWritesNothing()
    {
        um->refused = {QStringLiteral("KZ4-TBL-05-004"), QStringLiteral("KZ4-TBL-05-005")};
        ModalAnswerer answerer;
        QCOMPARE(engine->Form_Agregar_Metrica(1), 0);
        QVERIFY(!engine->Form_Editar_Metrica(1));
        QTest::qWait(50);
        QVERIFY(answerer.seen.isEmpty());
        QCOMPARE(count(), 0);
    }

    void textBoxesHoldTheirDeclaredLengths()
    {
        dlgDato dlg;
        dlg.setEngine(engine);
        dlg.Nuevo(1);
        const QString huge(50000, QChar(0x05D0));
        for (const char* name : {"cNombre", "cTitulo", "cDescrip", "cCode"})
            escribir(&dlg, QLatin1String(name), huge);
        escribir(&dlg, QStringLiteral("cFormat"), huge);
        QCOMPARE(texto(&dlg, QStringLiteral("cNombre")).size(), 50);
        QCOMPARE(texto(&dlg, QStringLiteral("cTitulo")).size(), 100);
        QCOMPARE(texto(&dlg, QStringLiteral("cDescrip")).size(), 255);
        QCOMPARE(texto(&dlg, QStringLiteral("cCode")).size(), 16000);
        QVERIFY(texto(&dlg, QStringLiteral("cFormat")).size() <= 50);
    }

    void hostileTextsAreStoredExactly()
    {
        const QString hostile = QStringLiteral("O'Brien \"x\"; DROP TABLE ut_bi_Metrica; -- 日本 🙂");
        ModalAnswerer answerer;
        answerer.expect([&](QWidget* w) {
            llenar(w, hostile);
            escribir(w, QStringLiteral("cCode"), hostile + QStringLiteral("\n") + hostile);
            pulsar(w, QStringLiteral("cAceptar"));
        });
        const int key = engine->Form_Agregar_Metrica(2);
        EMetrica m;
        QVERIFY(m.Load(&db.connection(), key));
        QCOMPARE(m.Nombre(), hostile);
        QCOMPARE(m.CodigoFuente(), hostile + QStringLiteral("\r\n") + hostile); // typed line breaks are CR LF
    }

    void editOfAMissingMetricOpensEmptyAndCannotSave()
    {
        ModalAnswerer answerer;
        QString error;
        answerer.expect([](QWidget* w) {
            llenar(w);
            escribir(w, QStringLiteral("cCode"), QStringLiteral("return 0;"));
            pulsar(w, QStringLiteral("cAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&error));
        answerer.expect([](QWidget* w) { pulsar(w, QStringLiteral("cCancelar")); });
        QVERIFY(!engine->Form_Editar_Metrica(999999));
        QCOMPARE(error, QStringLiteral("Error al guardar datos"));
        QCOMPARE(count(), 0);
    }
};

QTEST_MAIN(TstDlgDato)
#include "tst_dlgdato.moc"
