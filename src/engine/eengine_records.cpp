// Record access of EEngine: three helpers through which the host reads the
// database. None raises: every failure becomes no recordset or the integer 0.
#include "eengine.h"

#include "ado/recordset.h"
#include "vb/vb.h"

#include <memory>

namespace {

constexpr int adUseClient = 3;
constexpr int adStateOpen = 1;

// "Nothing found" is a 16-bit integer 0, which callers compare against 0.
QVariant nothingFound()
{
    return QVariant::fromValue(short(0));
}

} // namespace

QObject* EEngine::OpenRecordset(const QString& sql, QObject* objADOCnn)
{
    try {
        auto rs = std::make_unique<ado::Recordset>();
        rs->setActiveConnection(objADOCnn);
        rs->setCursorLocation(adUseClient);
        rs->setSource(sql);
        rs->Open();
        if (rs->State() == adStateOpen)
            return rs.release();
    } catch (const vb::AutomationError&) {
    }
    return nullptr;
}

QVariant EEngine::getScalar(const QString& sql, QObject* objADOCnn)
{
    QVariant result = nothingFound();
    std::unique_ptr<QObject> opened(OpenRecordset(sql, objADOCnn));
    auto* rs = qobject_cast<ado::Recordset*>(opened.get());
    if (!rs)
        return result;
    try {
        if (!(rs->atEnd() && rs->atBeginning()))
            result = rs->Fields(0);
    } catch (const vb::AutomationError&) {
    }
    return result;
}

// The emptiness test is EOF and BOF together: a recordset moved past its last
// row passes it, its read fails, and the answer stays 0.
QVariant EEngine::fieldValue(QObject* Rst, const QString& fieldname)
{
    QVariant result = nothingFound();
    auto* rs = qobject_cast<ado::Recordset*>(Rst);
    if (!rs)
        return result;
    try {
        if (!(rs->atEnd() && rs->atBeginning())) {
            const QVariant value = rs->Fields(fieldname);
            if (!vb::isNull(value))
                result = value;
        }
    } catch (const vb::AutomationError&) {
    }
    return result;
}
