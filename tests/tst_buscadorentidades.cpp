// The engine's own entity search over the host's tables: the search window
// with its filter, and the descriptions InfoEntidad shows.
#include "dialogdriver.h"
#include "enginefixture.h"
#include "modalanswerer.h"
#include "schemainstaller.h"
#include "testdatabase.h"

#include <QListWidget>
#include <QTest>

using namespace driver;

class TstBuscadorEntidades : public QObject {
    Q_OBJECT

    TestDatabase db;
    EngineFixture fixture;

private slots:
    void initTestCase()
    {
        VBI_CREATE_TEST_DATABASE(db);
        SchemaInstaller::addDemoData(db.connection());
    }

    void init() { fixture.preparar(db.connection()); }

    void searchListsTheRowsOfTheKindsTable()
    {
        ModalAnswerer answerer;
        QStringList shown;
        QString title;
        answerer.expect([&](QWidget* w) {
            title = w->windowTitle();
            auto* list = control<QListWidget>(w, QStringLiteral("lstResultados"));
            for (int i = 0; i < list->count(); ++i)
                shown << list->item(i)->text();
            list->setCurrentRow(1);
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QCOMPARE(fixture.engine->BuscarEntidad(QStringLiteral("Cliente")), 2);
        QCOMPARE(title, QStringLiteral("Buscar Cliente"));
        QCOMPARE(shown, QStringList({QStringLiteral("Ana López Jerez"), QStringLiteral("Bodegas del Sur Sevilla"),
                                     QStringLiteral("Carlos Ruiz Cádiz")}));
    }

    void filterNarrowsTheListWithoutTouchingSql()
    {
        ModalAnswerer answerer;
        int remaining = -1;
        answerer.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("txtFiltro"), QStringLiteral("cÁdiz"));
            remaining = control<QListWidget>(w, QStringLiteral("lstResultados"))->count();
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        QCOMPARE(fixture.engine->BuscarEntidad(QStringLiteral("Cliente")), 3);
        QCOMPARE(remaining, 1);
        answerer.expect([&](QWidget* w) {
            escribir(w, QStringLiteral("txtFiltro"), QStringLiteral("'; DROP TABLE Cliente; --"));
            remaining = control<QListWidget>(w, QStringLiteral("lstResultados"))->count();
            pulsar(w, QStringLiteral("cmdCancelar"));
        });
        QCOMPARE(fixture.engine->BuscarEntidad(QStringLiteral("Cliente")), 0);
        QCOMPARE(remaining, 0);
        QCOMPARE(db.scalar(QStringLiteral("SELECT COUNT(*) FROM Cliente")).toInt(), 3);
    }

    void cancelAnswersZeroAndAnEmptyFilterResultAsksForARow()
    {
        ModalAnswerer answerer;
        QString message;
        answerer.expect([](QWidget* w) {
            escribir(w, QStringLiteral("txtFiltro"), QStringLiteral("zzz"));
            pulsar(w, QStringLiteral("cmdAceptar"));
        });
        answerer.expect(ModalAnswerer::anotar(&message));
        answerer.expect([](QWidget* w) { QTest::keyClick(w, Qt::Key_Escape); });
        QCOMPARE(fixture.engine->BuscarEntidad(QStringLiteral("Producto")), 0);
        QCOMPARE(message, QStringLiteral("Seleccione un elemento"));
    }

    void unknownKindOpensNoWindowAndDescribesNothing()
    {
        ModalAnswerer answerer;
        QCOMPARE(fixture.engine->BuscarEntidad(QStringLiteral("Proveedor")), 0);
        QCOMPARE(fixture.engine->BuscarEntidad(QStringLiteral("Cliente; DELETE FROM Cliente")), 0);
        QCOMPARE(fixture.engine->BuscarEntidad(QString()), 0);
        QTest::qWait(30);
        QVERIFY(answerer.seen.isEmpty());
        QCOMPARE(fixture.engine->InfoEntidad(QStringLiteral("Proveedor"), 4), QStringLiteral("Proveedor con Sys_PK=4"));
    }

    void infoEntidadDescribesARowOrFallsBack()
    {
        QCOMPARE(fixture.engine->InfoEntidad(QStringLiteral("Sucursal"), 2), QStringLiteral("Tienda Puerto El Puerto de Santa María"));
        QCOMPARE(fixture.engine->InfoEntidad(QStringLiteral("Producto"), 3), QStringLiteral("Fino en rama 37,5 cl FR-037"));
        QCOMPARE(fixture.engine->InfoEntidad(QStringLiteral("Sucursal"), 99), QStringLiteral("Sucursal con Sys_PK=99"));
    }
};

QTEST_MAIN(TstBuscadorEntidades)
#include "tst_buscadorentidades.moc"
