// "Revisar biblioteca" in the host window: the report shown whole, a fix
// button per problem that has a safe fix, fixes made through the engine.
#include "carpetaprueba.h"
#include "dialogdriver.h"
#include "enginefixture.h"
#include "modalanswerer.h"
#include "schemainstaller.h"
#include "testdatabase.h"
#include "ventanademo.h"
#include "ventanarevision.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QComboBox>
#include <QFrame>

using namespace driver;

class TstVentanaRevision : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;

    // Two problems with a fix (the progress bar's configuration row is gone,
    // a placement names a deleted indicator) and one without (the metrics
    // and indicator of a deleted perspective).
    void estropear()
    {
        db.exec(QStringLiteral("DELETE FROM ut_bi_BarraProg"));
        db.exec(QStringLiteral("DELETE FROM ut_bi_Perspectiva WHERE uf_Nombre='Inventario'"));
        db.exec(QStringLiteral("UPDATE ut_bi_TabIndicador SET uf_FK_Indicador=99999 WHERE Sys_PK=(SELECT MIN(Sys_PK) FROM ut_bi_TabIndicador)"));
    }

    static QString resumen(QWidget* ventana) { return control<QLabel>(ventana, QStringLiteral("lblResumen"))->text(); }

private slots:
    void initTestCase() { VBI_CREATE_TEST_DATABASE(db); }

    void init()
    {
        db.clear();
        SchemaInstaller::addDemoData(db.connection());
        fixture.preparar(db.connection());
    }

    void showsEveryProblemWithWhyAndItsRows()
    {
        estropear();
        VentanaRevision ventana(fixture.engine.get());
        ventana.show();
        QCOMPARE(ventana.problemas().size(), 4);
        QCOMPARE(resumen(&ventana), QStringLiteral("Se encontraron 4 problemas."));
        QVERIFY(ventana.findChild<QFrame*>(QStringLiteral("problema(3)")));
        QCOMPARE(control<QLabel>(&ventana, QStringLiteral("lblProblema(0)"))->text(), ventana.problemas().first().descripcion);
        QCOMPARE(control<QLabel>(&ventana, QStringLiteral("lblPorque(0)"))->text(),
                 QStringLiteral("Por qué importa: ") + ventana.problemas().first().porque);
        QCOMPARE(control<QLabel>(&ventana, QStringLiteral("lblFilas(1)"))->text().count(QLatin1Char('\n')) + 1,
                 ventana.problemas().at(1).filas.size());
        int botones = 0;
        for (int i = 0; i < ventana.problemas().size(); ++i)
            botones += ventana.findChild<QPushButton*>(QStringLiteral("cmdArreglar(%1)").arg(i)) ? 1 : 0;
        QCOMPARE(botones, 2);

        CarpetaPrueba carpeta;
        QVERIFY(ventana.grab().save(carpeta.archivo(QStringLiteral("revision.png"))));
    }

    void fixButtonsLeaveOnlyWhatNeedsAPerson()
    {
        estropear();
        VentanaRevision ventana(fixture.engine.get());
        ventana.show();
        for (int vuelta = 0; vuelta < 2; ++vuelta) {
            QPushButton* boton = nullptr;
            for (int i = 0; i < ventana.problemas().size() && !boton; ++i)
                boton = ventana.findChild<QPushButton*>(QStringLiteral("cmdArreglar(%1)").arg(i));
            QVERIFY(boton);
            const qsizetype antes = ventana.problemas().size();
            boton->click();
            QTRY_COMPARE(ventana.problemas().size(), antes - 1);
            QVERIFY(resumen(&ventana).startsWith(QStringLiteral("Arreglo hecho")));
        }
        QCOMPARE(ventana.problemas().size(), 2);
        for (const Problema& p : ventana.problemas())
            QCOMPARE(p.arreglo, Arreglo::Ninguno);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_BarraProg")).toInt(), 1);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_TabIndicador")).toInt(), 2);
    }

    void hiddenPerspectiveIsMovedUnderTheParentChosen()
    {
        const int ventas = db.scalar(QStringLiteral("SELECT Sys_PK FROM ut_bi_Perspectiva WHERE uf_Nombre='Ventas'")).toInt();
        db.exec(QStringLiteral("UPDATE ut_bi_Perspectiva SET uf_padre=99999 WHERE uf_Nombre='Por cliente'"));
        VentanaRevision ventana(fixture.engine.get());
        ventana.show();
        auto* cPadre = control<QComboBox>(&ventana, QStringLiteral("cPadre(0)"));
        QCOMPARE(cPadre->itemText(0), QStringLiteral("(nivel superior)"));
        const int posicion = cPadre->findData(ventas);
        QVERIFY(posicion > 0);
        QCOMPARE(cPadre->itemText(posicion), QStringLiteral("Ventas"));
        cPadre->setCurrentIndex(posicion);
        control<QPushButton>(&ventana, QStringLiteral("cmdArreglar(0)"))->click();
        QTRY_VERIFY(ventana.problemas().isEmpty());
        QCOMPARE(db.scalar(QStringLiteral("SELECT uf_padre FROM ut_bi_Perspectiva WHERE uf_Nombre='Por cliente'")).toInt(), ventas);
        QCOMPARE(fixture.um->asked, QStringList{QStringLiteral("KZ4-TBL-05-002")});
    }

    void refusedRightLeavesTheProblemAndSaysSo()
    {
        db.exec(QStringLiteral("DELETE FROM ut_bi_BarraProg"));
        fixture.um->refused.insert(QStringLiteral("KZ4-TBL-06-002"));
        VentanaRevision ventana(fixture.engine.get());
        QVERIFY(!ventana.arreglar(0));
        QVERIFY(resumen(&ventana).startsWith(QStringLiteral("El arreglo no se hizo")));
        QCOMPARE(ventana.problemas().size(), 1);
        QCOMPARE(fixture.um->asked, QStringList{QStringLiteral("KZ4-TBL-06-002")});
    }

    void closedConnectionIsSaidNotHidden()
    {
        EEngine sinConexion;
        VentanaRevision ventana(&sinConexion);
        QVERIFY(resumen(&ventana).startsWith(QStringLiteral("No se pudo leer la biblioteca: ")));
        QVERIFY(ventana.problemas().isEmpty());
    }

    void readsTheLibraryAgainOnRequest()
    {
        VentanaRevision ventana(fixture.engine.get());
        QVERIFY(ventana.problemas().isEmpty());
        db.exec(QStringLiteral("DELETE FROM ut_bi_Tablero"));
        pulsar(&ventana, QStringLiteral("cmdRevisar"));
        QCOMPARE(ventana.problemas().size(), 5); // three placements, two texts
        QCOMPARE(resumen(&ventana), QStringLiteral("Se encontraron 5 problemas."));
    }

    void healthyLibrarySaysSo()
    {
        VentanaRevision ventana(fixture.engine.get());
        QCOMPARE(resumen(&ventana), QStringLiteral("La biblioteca está sana: no se encontró ningún problema."));
        QVERIFY(!ventana.findChild<QFrame*>(QStringLiteral("problema(0)")));
    }

    void hostWindowEntryOpensTheReportAndRedrawsAfterFixes()
    {
        estropear();
        VentanaDemo demo(fixture.engine.get(), 1, db.url());
        auto* accion = demo.findChild<QAction*>(QStringLiteral("actRevisarBiblioteca"));
        QVERIFY(accion);
        QCOMPARE(accion->text(), QStringLiteral("&Revisar biblioteca…"));
        ModalAnswerer answerer;
        QString titulo;
        answerer.expect([&](QWidget* w) {
            titulo = w->windowTitle();
            auto* ventana = qobject_cast<VentanaRevision*>(w);
            if (ventana) {
                for (int i = ventana->problemas().size() - 1; i >= 0; --i)
                    if (ventana->problemas().at(i).tipo == QLatin1String("colocacion-sin-indicador"))
                        ventana->arreglar(i);
            }
            pulsar(w, QStringLiteral("cmdCerrar"));
        });
        accion->trigger();
        QVERIFY(answerer.allAnswered());
        QCOMPARE(titulo, QStringLiteral("Revisar biblioteca"));
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM ut_bi_TabIndicador")).toInt(), 2);
        QCOMPARE(fixture.um->asked, QStringList{QStringLiteral("KZ4-TBL-03-000")});
    }
};

QTEST_MAIN(TstVentanaRevision)
#include "tst_ventanarevision.moc"
