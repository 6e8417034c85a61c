#include "automationbridge.h"

#include "ado/connection.h"
#include "ado/recordset.h"
#include "engine/eengine.h"
#include "model/ebarraprogreso.h"
#include "model/efigura.h"
#include "model/eindicador.h"
#include "model/ematrizgrafico.h"
#include "model/emetrica.h"
#include "model/eperspectiva.h"
#include "model/esemaforo.h"
#include "model/etabindicador.h"
#include "model/etablero.h"
#include "standins.h"
#include "vb/variantconv.h"
#include "vb/vb.h"

#include <QDateTime>
#include <QJSEngine>
#include <QJSValueIterator>
#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr int ErrCantCreateObject = 429;
constexpr int ErrWrongArguments = 450;

// What a script may create by name: the engine, the entities and their
// configurations, the data layer, and the host stand-ins.
const QList<const QMetaObject*>& creatables()
{
    static const QList<const QMetaObject*> list{
        &EEngine::staticMetaObject,        &EPerspectiva::staticMetaObject,   &EMetrica::staticMetaObject,
        &EIndicador::staticMetaObject,     &EBarraProgreso::staticMetaObject, &ESemaforo::staticMetaObject,
        &EMatrizGrafico::staticMetaObject, &ETablero::staticMetaObject,       &ETabIndicador::staticMetaObject,
        &EFigura::staticMetaObject,        &ado::Connection::staticMetaObject, &ado::Recordset::staticMetaObject,
        &ScriptUserManagement::staticMetaObject, &ScriptSearch::staticMetaObject,
    };
    return list;
}

QString classInfo(const QMetaObject* mo, const char* name)
{
    const int index = mo->indexOfClassInfo(name);
    return index < 0 ? QString() : QString::fromLatin1(mo->classInfo(index).value());
}

// The automation classes publish themselves as "VendimarBI.<class>"; the data
// layer and the stand-ins carry their programmatic name as class info.
QString progIdOf(const QMetaObject* mo)
{
    const QString declared = classInfo(mo, "ProgID");
    if (!declared.isEmpty())
        return declared;
    const QString automationClass = classInfo(mo, "ToSuperClass");
    return QStringLiteral("VendimarBI.") + (automationClass.isEmpty() ? QString::fromLatin1(mo->className()) : automationClass);
}

// The name errors and the script's toString use: the automation class name,
// not the C++ one ("Connection", not "ado::Connection").
QString displayName(const QObject* object)
{
    const QMetaObject* mo = object->metaObject();
    const QString automationClass = classInfo(mo, "ToSuperClass");
    if (!automationClass.isEmpty())
        return automationClass;
    const QString progId = classInfo(mo, "ProgID");
    if (!progId.isEmpty())
        return progId.section(QLatin1Char('.'), -1);
    return QString::fromLatin1(mo->className()).section(QStringLiteral("::"), -1);
}

// QObject's own members (objectName, deleteLater, destroyed) belong to no
// automation interface; signals are not callable members either.
bool isCallable(const QMetaMethod& method)
{
    return method.access() == QMetaMethod::Public
        && (method.methodType() == QMetaMethod::Method || method.methodType() == QMetaMethod::Slot);
}

int findProperty(const QMetaObject* mo, const QString& name, Qt::CaseSensitivity cs, int first)
{
    for (int i = first; i < mo->propertyCount(); ++i) {
        if (QString::fromLatin1(mo->property(i).name()).compare(name, cs) == 0)
            return i;
    }
    return -1;
}

QString findMethod(const QMetaObject* mo, const QString& name, Qt::CaseSensitivity cs)
{
    for (int i = QObject::staticMetaObject.methodCount(); i < mo->methodCount(); ++i) {
        const QMetaMethod method = mo->method(i);
        const QString methodName = QString::fromLatin1(method.name());
        if (isCallable(method) && methodName.compare(name, cs) == 0)
            return methodName;
    }
    return QString();
}

struct Member {
    QChar kind; // 'p', 'm' or null
    QString name;
    int property = -1;
};

Member lookUp(const QMetaObject* mo, const QString& name)
{
    const int firstProperty = QObject::staticMetaObject.propertyCount();
    for (Qt::CaseSensitivity cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        const int property = findProperty(mo, name, cs, firstProperty);
        if (property >= 0)
            return {QLatin1Char('p'), QString::fromLatin1(mo->property(property).name()), property};
        const QString method = findMethod(mo, name, cs);
        if (!method.isEmpty())
            return {QLatin1Char('m'), method, -1};
    }
    return {};
}

// A short account of a value for error messages ("the text \"abc\"", "null").
QString describe(const QVariant& value)
{
    if (vb::isEmpty(value))
        return QStringLiteral("undefined (Empty)");
    if (vb::isNull(value))
        return QStringLiteral("null");
    const QMetaType type = value.metaType();
    if (type.flags() & QMetaType::PointerToQObject) {
        const QObject* object = value.value<QObject*>();
        return object ? QStringLiteral("an object (%1)").arg(displayName(object)) : QStringLiteral("null");
    }
    switch (type.id()) {
    case QMetaType::QString:
        return QStringLiteral("the text \"%1\"").arg(value.toString());
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    case QMetaType::Int:
    case QMetaType::Double:
        return QString::number(value.toDouble(), 'g', 17);
    case QMetaType::QVariantList:
        return QStringLiteral("an array");
    case QMetaType::QVariantMap:
        return QStringLiteral("an object");
    default:
        return QStringLiteral("a value of type %1").arg(QString::fromLatin1(type.name()));
    }
}

bool isObjectValue(const QVariant& value)
{
    return value.metaType().flags().testFlag(QMetaType::PointerToQObject)
        || value.typeId() == QMetaType::QVariantList || value.typeId() == QMetaType::QVariantMap;
}

[[noreturn]] void mismatch(const QVariant& value, const QString& what)
{
    throw vb::AutomationError(vb::ErrTypeMismatch, QStringLiteral("%1: %2 got %3")
                                                       .arg(vb::standardDescription(vb::ErrTypeMismatch), what, describe(value)));
}

// A number, text, boolean, Null or Empty, ready for the runtime's conversions;
// objects and arrays never convert to a scalar.
const QVariant& scalar(const QVariant& value, const QString& what)
{
    if (isObjectValue(value) && !vb::isNull(value))
        mismatch(value, what);
    return value;
}

// Whole numbers that fit go to the component as 32-bit integers, as a
// VBScript literal would; anything else as a double.
QVariant numberVariant(double number)
{
    if (std::trunc(number) == number && number >= std::numeric_limits<int>::min()
        && number <= std::numeric_limits<int>::max())
        return int(number);
    return number;
}

} // namespace

AutomationBridge::AutomationBridge(QJSEngine& js)
    : m_js(js)
{
}

AutomationBridge::~AutomationBridge()
{
    // The destroyed() connections use the context object below and go with it.
    clearScriptValues();
}

QStringList AutomationBridge::progIds()
{
    QStringList ids;
    for (const QMetaObject* mo : creatables())
        ids.append(progIdOf(mo));
    return ids;
}

QJSValue AutomationBridge::createObject(const QString& progId)
{
    for (const QMetaObject* mo : creatables()) {
        if (progIdOf(mo).compare(progId.trimmed(), Qt::CaseInsensitive) != 0)
            continue;
        QObject* object = mo->newInstance();
        if (!object)
            break;
        adopt(object);
        return proxyFor(object);
    }
    throw vb::AutomationError(ErrCantCreateObject,
                              QStringLiteral("ActiveX component can't create object: '%1' (known names: %2)")
                                  .arg(progId, progIds().join(QStringLiteral(", "))));
}

QObject* AutomationBridge::objectFor(int id, const QString& member) const
{
    QObject* object = m_objects.value(id).data();
    if (!object)
        throw vb::AutomationError(vb::ErrObjectNotSet,
                                  QStringLiteral("%1: the %2 object no longer exists (reaching %3)")
                                      .arg(vb::standardDescription(vb::ErrObjectNotSet),
                                           m_classOf.value(id, QStringLiteral("component")), member));
    return object;
}

QString AutomationBridge::sourceOf(int id, const QString& member) const
{
    return m_classOf.value(id, QStringLiteral("Object")) + QLatin1Char('.') + member;
}

QString AutomationBridge::className(int id) const
{
    return m_classOf.value(id);
}

QString AutomationBridge::memberKind(int id, const QString& name)
{
    QObject* object = m_objects.value(id).data();
    if (!object)
        return QString();
    const Member member = lookUp(object->metaObject(), name);
    return member.kind.isNull() ? QString() : QString(member.kind) + QLatin1Char(':') + member.name;
}

QStringList AutomationBridge::propertyNames(int id)
{
    QStringList names;
    if (QObject* object = m_objects.value(id).data()) {
        const QMetaObject* mo = object->metaObject();
        for (int i = QObject::staticMetaObject.propertyCount(); i < mo->propertyCount(); ++i)
            names.append(QString::fromLatin1(mo->property(i).name()));
    }
    return names;
}

QStringList AutomationBridge::methodNames(int id)
{
    QStringList names;
    if (QObject* object = m_objects.value(id).data()) {
        const QMetaObject* mo = object->metaObject();
        for (int i = QObject::staticMetaObject.methodCount(); i < mo->methodCount(); ++i) {
            const QMetaMethod method = mo->method(i);
            const QString name = QString::fromLatin1(method.name());
            if (isCallable(method) && !names.contains(name))
                names.append(name);
        }
    }
    return names;
}

QJSValue AutomationBridge::get(int id, const QString& name)
{
    QObject* object = objectFor(id, name);
    const Member member = lookUp(object->metaObject(), name);
    if (member.kind != QLatin1Char('p'))
        throw vb::AutomationError(vb::ErrNoSuchMember, QStringLiteral("%1: '%2'")
                                                           .arg(vb::standardDescription(vb::ErrNoSuchMember), sourceOf(id, name)));
    return toScript(readProperty(object, object->metaObject()->property(member.property)));
}

void AutomationBridge::set(int id, const QString& name, const QJSValue& value)
{
    QObject* object = objectFor(id, name);
    const Member member = lookUp(object->metaObject(), name);
    const QString source = sourceOf(id, member.kind.isNull() ? name : member.name);
    if (member.kind != QLatin1Char('p'))
        throw vb::AutomationError(vb::ErrNoSuchMember,
                                  QStringLiteral("%1: '%2'%3")
                                      .arg(vb::standardDescription(vb::ErrNoSuchMember), source,
                                           member.kind.isNull() ? QString() : QStringLiteral(" is a method, not a property")));
    const QMetaProperty property = object->metaObject()->property(member.property);
    if (!property.isWritable())
        throw vb::AutomationError(vb::ErrNoSuchMember, QStringLiteral("%1: '%2' is read-only")
                                                           .arg(vb::standardDescription(vb::ErrNoSuchMember), source));
    writeProperty(object, property, toVariant(value), QStringLiteral("the value assigned to %1").arg(source));
}

QJSValue AutomationBridge::call(int id, const QString& name, const QJSValue& args)
{
    QObject* object = objectFor(id, name);
    const QMetaObject* mo = object->metaObject();
    const QString source = sourceOf(id, name);
    QList<QMetaMethod> overloads;
    for (int i = QObject::staticMetaObject.methodCount(); i < mo->methodCount(); ++i) {
        const QMetaMethod method = mo->method(i);
        if (isCallable(method) && QString::fromLatin1(method.name()) == name)
            overloads.append(method);
    }
    if (overloads.isEmpty())
        throw vb::AutomationError(vb::ErrNoSuchMember,
                                  QStringLiteral("%1: '%2'").arg(vb::standardDescription(vb::ErrNoSuchMember), source));

    const int given = args.property(QStringLiteral("length")).toInt();
    const QMetaMethod* chosen = nullptr;
    for (const QMetaMethod& method : overloads) {
        if (method.parameterCount() == given)
            chosen = &method;
    }
    if (!chosen) {
        // The shapes it does take, so the message says how to call it.
        QStringList shapes;
        for (const QMetaMethod& method : overloads) {
            QStringList parameters;
            for (const QByteArray& parameter : method.parameterNames())
                parameters.append(QString::fromLatin1(parameter));
            shapes.append(QStringLiteral("%1 argument%2%3")
                              .arg(method.parameterCount())
                              .arg(method.parameterCount() == 1 ? QString() : QStringLiteral("s"))
                              .arg(parameters.isEmpty() ? QString()
                                                        : QStringLiteral(" (%1)").arg(parameters.join(QStringLiteral(", ")))));
        }
        throw vb::AutomationError(ErrWrongArguments,
                                  QStringLiteral("Wrong number of arguments or invalid property assignment: "
                                                 "%1 takes %2, %3 given")
                                      .arg(source, shapes.join(QStringLiteral(" or ")))
                                      .arg(given));
    }

    const QMetaMethod& method = *chosen;
    const QList<QByteArray> parameterNames = method.parameterNames();
    // Each argument converted to its parameter's type, kept alive in a
    // variant; a QVariant parameter takes the variant itself.
    std::vector<QVariant> storage(size_t(given) + 1);
    std::vector<void*> argv(size_t(given) + 1, nullptr);
    for (int i = 0; i < given; ++i) {
        const QMetaType type = method.parameterMetaType(i);
        const QString what = QStringLiteral("argument %1 (%2) of %3")
                                 .arg(i + 1)
                                 .arg(QString::fromLatin1(parameterNames.value(i)), source);
        storage[size_t(i) + 1] = convert(toVariant(args.property(quint32(i))), type, what);
        argv[size_t(i) + 1] = type == QMetaType::fromType<QVariant>() ? static_cast<void*>(&storage[size_t(i) + 1])
                                                                       : storage[size_t(i) + 1].data();
    }
    const QMetaType returnType = method.returnMetaType();
    QVariant result;
    if (returnType == QMetaType::fromType<QVariant>()) {
        argv[0] = &result;
    } else if (returnType.isValid() && returnType.id() != QMetaType::Void) {
        result = QVariant(returnType);
        argv[0] = result.data();
    }
    // The object's own dispatcher: what the member throws comes straight back here.
    object->qt_metacall(QMetaObject::InvokeMetaMethod, method.methodIndex(), argv.data());

    // What a method hands back without an owner is the caller's, as a new
    // COM object belongs to whoever received it.
    if (result.metaType().flags().testFlag(QMetaType::PointerToQObject)) {
        QObject* returned = result.value<QObject*>();
        if (returned && !returned->parent())
            adopt(returned);
    }
    return toScript(result);
}

QJSValue AutomationBridge::readAnyProperty(QObject* object, const QString& name)
{
    const QMetaObject* mo = object->metaObject();
    int index = findProperty(mo, name, Qt::CaseSensitive, 0);
    if (index < 0)
        index = findProperty(mo, name, Qt::CaseInsensitive, 0);
    if (index < 0)
        throw vb::AutomationError(vb::ErrNoSuchMember, QStringLiteral("%1: '%2.%3'")
                                                           .arg(vb::standardDescription(vb::ErrNoSuchMember),
                                                                object->objectName().isEmpty() ? displayName(object)
                                                                                               : object->objectName(),
                                                                name));
    return toScript(readProperty(object, mo->property(index)));
}

QVariant AutomationBridge::readProperty(QObject* object, const QMetaProperty& property)
{
    const QMetaType type = property.metaType();
    QVariant value;
    int status = -1;
    void* argv[] = {nullptr, &value, &status};
    if (type == QMetaType::fromType<QVariant>()) {
        argv[0] = &value;
    } else {
        value = QVariant(type);
        argv[0] = value.data();
    }
    object->qt_metacall(QMetaObject::ReadProperty, property.propertyIndex(), argv);
    return value;
}

void AutomationBridge::writeProperty(QObject* object, const QMetaProperty& property, const QVariant& value,
                                     const QString& what)
{
    const QMetaType type = property.metaType();
    QVariant converted = convert(value, type, what);
    int status = -1;
    int flags = 0;
    void* argv[] = {nullptr, &converted, &status, &flags};
    argv[0] = type == QMetaType::fromType<QVariant>() ? static_cast<void*>(&converted) : converted.data();
    object->qt_metacall(QMetaObject::WriteProperty, property.propertyIndex(), argv);
}

QVariant AutomationBridge::convert(const QVariant& value, QMetaType target, const QString& what)
{
    if (target == QMetaType::fromType<QVariant>())
        return value;
    if (target.flags().testFlag(QMetaType::PointerToQObject)) {
        QVariant pointer(target);
        if (vb::isEmpty(value) || vb::isNull(value))
            return pointer;
        if (!value.metaType().flags().testFlag(QMetaType::PointerToQObject))
            mismatch(value, what);
        QObject* object = value.value<QObject*>();
        const QMetaObject* wanted = target.metaObject();
        if (object && wanted && !object->metaObject()->inherits(wanted))
            throw vb::AutomationError(vb::ErrTypeMismatch,
                                      QStringLiteral("%1: %2 wants %3 object, got %4")
                                          .arg(vb::standardDescription(vb::ErrTypeMismatch), what,
                                               QString::fromLatin1(wanted->className()), describe(value)));
        *static_cast<QObject**>(pointer.data()) = object;
        return pointer;
    }
    try {
        switch (target.id()) {
        case QMetaType::Int:
            return vb::toLong(scalar(value, what));
        case QMetaType::Short:
            return QVariant::fromValue(vb::toInteger(scalar(value, what)));
        case QMetaType::Double:
            return vb::toDouble(scalar(value, what));
        case QMetaType::Float:
            return float(vb::toDouble(scalar(value, what)));
        case QMetaType::Bool:
            // VB takes "True" and "False" as booleans as well as numbers.
            if (value.typeId() == QMetaType::QString) {
                const QString text = value.toString().trimmed();
                if (text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0)
                    return true;
                if (text.compare(QLatin1String("false"), Qt::CaseInsensitive) == 0)
                    return false;
            }
            return vb::toBoolean(scalar(value, what));
        case QMetaType::QString:
            return vb::toText(scalar(value, what));
        case QMetaType::UShort:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong: {
            const double number = std::round(vb::toDouble(scalar(value, what)));
            QVariant result = number;
            if (!result.convert(target) || result.toDouble() != number)
                vb::raise(vb::ErrOverflow);
            return result;
        }
        case QMetaType::QStringList: {
            if (value.typeId() != QMetaType::QVariantList)
                return QStringList{vb::toText(scalar(value, what))};
            QStringList texts;
            for (const QVariant& item : value.toList())
                texts.append(vb::toText(scalar(item, what)));
            return texts;
        }
        case QMetaType::QVariantList:
            if (vb::isEmpty(value))
                return QVariantList();
            if (value.typeId() != QMetaType::QVariantList)
                mismatch(value, what);
            return value;
        case QMetaType::QVariantMap:
            if (value.typeId() != QMetaType::QVariantMap)
                mismatch(value, what);
            return value;
        default: {
            QVariant converted = value;
            if (vb::isEmpty(value) || vb::isNull(value) || !converted.convert(target))
                mismatch(value, what);
            return converted;
        }
        }
    } catch (const vb::AutomationError& e) {
        // The runtime's own conversion failed (overflow, invalid use of Null,
        // a text that is no number): say which argument and what it got.
        if (e.description().contains(what))
            throw;
        throw vb::AutomationError(e.number(), QStringLiteral("%1: %2 got %3").arg(e.description(), what, describe(value)));
    }
}

QJSValue AutomationBridge::toScript(const QVariant& value)
{
    if (vb::isEmpty(value))
        return QJSValue(QJSValue::UndefinedValue);
    const QMetaType type = value.metaType();
    if (type.flags().testFlag(QMetaType::PointerToQObject))
        return proxyFor(value.value<QObject*>());
    if (vb::isNull(value))
        return QJSValue(QJSValue::NullValue);
    switch (type.id()) {
    case QMetaType::Bool:
        return QJSValue(value.toBool());
    case QMetaType::Int:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return QJSValue(value.toInt());
    case QMetaType::UInt:
        return QJSValue(value.toUInt());
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
        return QJSValue(value.toDouble());
    case QMetaType::QString:
        return QJSValue(value.toString());
    case QMetaType::QByteArray:
        return QJSValue(QString::fromUtf8(value.toByteArray()));
    case QMetaType::QStringList:
    case QMetaType::QVariantList: {
        const QVariantList items = value.toList();
        QJSValue array = m_js.newArray(uint(items.size()));
        for (int i = 0; i < items.size(); ++i)
            array.setProperty(quint32(i), toScript(items.at(i)));
        return array;
    }
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash: {
        const QVariantMap fields = value.toMap();
        QJSValue object = m_js.newObject();
        for (auto it = fields.cbegin(); it != fields.cend(); ++it)
            object.setProperty(it.key(), toScript(it.value()));
        return object;
    }
    case QMetaType::QDate:
    case QMetaType::QDateTime:
    case QMetaType::QTime:
        return m_js.toScriptValue(value);
    default:
        if (value.canConvert<QString>())
            return QJSValue(value.toString());
        return QJSValue(QJSValue::UndefinedValue);
    }
}

QJSValue AutomationBridge::proxyFor(QObject* object)
{
    if (!object)
        return QJSValue(QJSValue::NullValue);
    int id = m_idOf.value(object, 0);
    if (id && m_objects.value(id).data() == object) {
        const QJSValue proxy = m_proxies.value(id);
        if (!proxy.isUndefined())
            return proxy;
    } else {
        id = m_nextId++;
        m_objects.insert(id, object);
        m_idOf.insert(object, id);
        m_classOf.insert(id, displayName(object));
        // An address may be reused after the object goes: forget it then.
        QObject::connect(object, &QObject::destroyed, &m_context, [this, object, id] {
            if (m_idOf.value(object) == id)
                m_idOf.remove(object);
            m_objects.remove(id);
            m_proxies.remove(id);
        });
    }
    const QJSValue proxy = m_proxyFactory.call({QJSValue(id), QJSValue(m_classOf.value(id))});
    if (!proxy.isError())
        m_proxies.insert(id, proxy);
    return proxy;
}

QVariant AutomationBridge::toVariant(const QJSValue& value)
{
    if (value.isUndefined())
        return vb::Empty();
    if (value.isNull())
        return vb::Null();
    if (value.isBool())
        return value.toBool();
    if (value.isNumber())
        return numberVariant(value.toNumber());
    if (value.isString())
        return value.toString();
    if (value.isObject() && value.prototype().strictlyEquals(m_refPrototype)) {
        const int id = value.property(QStringLiteral("id")).toInt();
        return QVariant::fromValue(objectFor(id, QStringLiteral("an argument")));
    }
    if (value.isCallable())
        throw vb::AutomationError(vb::ErrTypeMismatch,
                                  QStringLiteral("%1: a function cannot be passed to the component")
                                      .arg(vb::standardDescription(vb::ErrTypeMismatch)));
    if (value.isDate())
        return value.toDateTime();
    if (value.isArray()) {
        QVariantList items;
        const int length = value.property(QStringLiteral("length")).toInt();
        for (int i = 0; i < length; ++i)
            items.append(toVariant(value.property(quint32(i))));
        return items;
    }
    if (value.isObject()) {
        QVariantMap fields;
        QJSValueIterator it(value);
        while (it.hasNext()) {
            it.next();
            fields.insert(it.name(), toVariant(it.value()));
        }
        return fields;
    }
    return value.toVariant();
}

void AutomationBridge::adopt(QObject* object)
{
    for (const QPointer<QObject>& owned : std::as_const(m_owned)) {
        if (owned.data() == object)
            return;
    }
    m_owned.append(object);
}

void AutomationBridge::releaseOwned()
{
    // Newest first: an engine goes before the connection it was handed.
    while (!m_owned.isEmpty()) {
        QPointer<QObject> owned = m_owned.takeLast();
        if (owned && !owned->parent())
            delete owned.data();
    }
}

void AutomationBridge::clearScriptValues()
{
    m_proxies.clear();
    m_refPrototype = QJSValue();
    m_proxyFactory = QJSValue();
}
