#pragma once

#include <QJSValue>
#include <QVariant>

class QJSEngine;

// A value read from the database as a script sees it: numbers as numbers
// (PostgreSQL hands sums and averages over as exact decimals), NULL as null.
class ValorSql {
public:
    static QJSValue aJS(QJSEngine& motor, const QVariant& valor);
};
