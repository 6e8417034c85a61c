#pragma once

#include <QString>
#include <optional>

namespace ado {

// A SELECT that ends in a comparison with a whole number ("… WHERE
// uf_FK_Indicador=12"), split into the statement with a placeholder in the
// number's place and the number itself. The component reads rows by key with
// such literal texts; run as they are, every key is a new statement the
// database parses and plans again. With the key bound instead, one prepared
// statement per connection serves every key, as a server's own statement
// cache would.
struct ConsultaParametrizada {
    QString texto;
    qlonglong valor = 0;

    // Nothing for any other text, and for any text with a quote, a comment or
    // a statement separator in it: there a trailing number might not be what
    // it seems.
    static std::optional<ConsultaParametrizada> desde(const QString& sql);
};

} // namespace ado
