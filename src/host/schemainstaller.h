#pragma once

#include <QString>

namespace ado {
class Connection;
}

// Creates the nine ut_bi_ tables on a database. The component itself never
// creates tables; the host program does, once, before the component runs.
namespace SchemaInstaller {

// The DDL that fits the connection's database; tables that exist are kept.
// Raises vb::AutomationError when a statement fails.
void apply(ado::Connection& connection);

// Adds the sample library, and the sample shop its metrics read, when the
// database holds no perspective yet.
// Answers whether it added anything.
bool addDemoData(ado::Connection& connection);

// The statements of one schema file, in order.
QStringList statements(const QString& ddl);

} // namespace SchemaInstaller
