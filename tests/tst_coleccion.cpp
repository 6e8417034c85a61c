// The one-based collection that dashboards hand out for their figures and
// placed indicators: count, item from 1, iteration, ownership.
#include "model/coleccion.h"
#include "vb/automationerror.h"

#include <QPointer>
#include <QTest>
#include <memory>

class TstColeccion : public QObject {
    Q_OBJECT

    static std::unique_ptr<Coleccion> withNamed(const QStringList& names)
    {
        auto c = std::make_unique<Coleccion>();
        for (const QString& name : names) {
            auto* item = new QObject;
            item->setObjectName(name);
            c->Add(item);
        }
        return c;
    }

    static int errorOfItem(const Coleccion& c, int index)
    {
        try {
            c.Item(index);
        } catch (const vb::AutomationError& e) {
            return e.number();
        }
        return 0;
    }

private slots:
    void newCollectionIsEmpty()
    {
        Coleccion c;
        QCOMPARE(c.Count(), 0);
        QCOMPARE(c.property("Count").toInt(), 0);
        QVERIFY(c.begin() == c.end());
        QCOMPARE(errorOfItem(c, 1), 5);
    }

    void countFollowsAdds()
    {
        Coleccion c;
        for (int i = 1; i <= 3; ++i) {
            c.Add(new QObject);
            QCOMPARE(c.Count(), i);
            QCOMPARE(c.property("Count").toInt(), i);
        }
    }

    void itemCountsFromOneInAddingOrder()
    {
        const auto c = withNamed({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        QCOMPARE(c->Item(1)->objectName(), QStringLiteral("a"));
        QCOMPARE(c->Item(2)->objectName(), QStringLiteral("b"));
        QCOMPARE(c->Item(3)->objectName(), QStringLiteral("c"));
    }

    void itemOutsideOneToCountRaisesInvalidProcedureCall_data()
    {
        QTest::addColumn<int>("index");
        QTest::newRow("zero") << 0;
        QTest::newRow("count plus one") << 4;
        QTest::newRow("negative") << -1;
        QTest::newRow("far beyond") << 1000;
    }

    void itemOutsideOneToCountRaisesInvalidProcedureCall()
    {
        QFETCH(int, index);
        const auto c = withNamed({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
        QCOMPARE(errorOfItem(*c, index), 5);
    }

    void iterationFollowsAddingOrder()
    {
        const auto c = withNamed({QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("z"), QStringLiteral("y")});
        QStringList seen;
        for (QObject* item : *c)
            seen.append(item->objectName());
        QCOMPARE(seen, QStringList({"x", "y", "z", "y"}));
        int position = 1;
        for (QObject* item : *c)
            QCOMPARE(item, c->Item(position++));
    }

    void addingNoObjectRaisesObjectNotSet()
    {
        Coleccion c;
        try {
            c.Add(nullptr);
            QFAIL("adding no object must raise");
        } catch (const vb::AutomationError& e) {
            QCOMPARE(e.number(), 91);
        }
        QCOMPARE(c.Count(), 0);
    }

    void membersLiveAsLongAsTheCollection()
    {
        auto c = std::make_unique<Coleccion>();
        QPointer<QObject> item = new QObject;
        c->Add(item);
        QCOMPARE(item->parent(), c.get());
        c.reset();
        QVERIFY(!item);
    }

    void itemReturnsTheMemberItselfNotACopy()
    {
        Coleccion c;
        auto* item = new QObject;
        c.Add(item);
        QCOMPARE(c.Item(1), item);
        c.Item(1)->setObjectName(QStringLiteral("cambiado"));
        QCOMPARE(item->objectName(), QStringLiteral("cambiado"));
    }
};

QTEST_GUILESS_MAIN(TstColeccion)
#include "tst_coleccion.moc"
