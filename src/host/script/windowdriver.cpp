#include "windowdriver.h"

#include "automationbridge.h"
#include "dashboard/selectorfuente.h"
#include "library/arbolclaves.h"
#include "vb/vb.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QFontDialog>
#include <QGroupBox>
#include <QJSEngine>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <cmath>

namespace {

constexpr int ErrWrongArguments = 450;
constexpr int PollInterval = 20;

[[noreturn]] void misuse(const QString& message)
{
    throw vb::AutomationError(vb::ErrInvalidProcedureCall, message);
}

QString nameOf(const QWidget* window)
{
    return window->objectName().isEmpty() ? QString::fromLatin1(window->metaObject()->className())
                                          : window->objectName();
}

// A caption as the user reads it: "&Aceptar" is "Aceptar", "&&" a plain "&".
QString plainCaption(QString text)
{
    text.replace(QStringLiteral("&&"), QStringLiteral("\x01"));
    text.remove(QLatin1Char('&'));
    text.replace(QStringLiteral("\x01"), QStringLiteral("&"));
    return text;
}

QString kindOf(const QWidget* window)
{
    if (qobject_cast<const QMessageBox*>(window))
        return QStringLiteral("message");
    if (qobject_cast<const QColorDialog*>(window))
        return QStringLiteral("color");
    if (qobject_cast<const QFontDialog*>(window))
        return QStringLiteral("font");
    if (qobject_cast<const QDialog*>(window))
        return QStringLiteral("dialog");
    return QStringLiteral("window");
}

QString iconOf(const QWidget* window)
{
    const auto* box = qobject_cast<const QMessageBox*>(window);
    if (!box)
        return QString();
    switch (box->icon()) {
    case QMessageBox::Question:
        return QStringLiteral("question");
    case QMessageBox::Information:
        return QStringLiteral("information");
    case QMessageBox::Warning:
        return QStringLiteral("exclamation");
    case QMessageBox::Critical:
        return QStringLiteral("critical");
    default:
        return QStringLiteral("none");
    }
}

QString messageOf(const QWidget* window)
{
    const auto* box = qobject_cast<const QMessageBox*>(window);
    return box ? box->text() : QString();
}

// The arguments of one window operation, checked as the operation reads them.
class Arguments {
public:
    Arguments(QString operation, const QJSValueList& list)
        : m_operation(std::move(operation))
        , m_list(list)
    {
    }

    void expect(int minimum, int maximum, const char* shape) const
    {
        if (m_list.size() < minimum || m_list.size() > maximum)
            throw vb::AutomationError(ErrWrongArguments,
                                      QStringLiteral("Wrong number of arguments or invalid property assignment: "
                                                     "Window.%1 takes %2, %3 given")
                                          .arg(m_operation, QLatin1String(shape))
                                          .arg(m_list.size()));
    }

    int size() const { return int(m_list.size()); }
    const QJSValue& at(int i) const { return m_list.at(i); }

    QString text(int i, const char* what) const
    {
        const QJSValue& value = m_list.at(i);
        if (value.isString())
            return value.toString();
        if (value.isNumber() || value.isBool())
            return value.toString();
        throw vb::AutomationError(vb::ErrTypeMismatch, QStringLiteral("Type mismatch: Window.%1 takes %2 as text")
                                                           .arg(m_operation, QLatin1String(what)));
    }

    QString name(int i) const
    {
        if (!m_list.at(i).isString())
            throw vb::AutomationError(vb::ErrTypeMismatch,
                                      QStringLiteral("Type mismatch: Window.%1 takes the control's objectName as text")
                                          .arg(m_operation));
        return m_list.at(i).toString();
    }

    bool flag(int i) const { return m_list.at(i).toBool(); }

    // An entry given by position (a number, from 0) or by text.
    bool isPosition(int i) const { return m_list.at(i).isNumber(); }
    int position(int i) const
    {
        const double number = m_list.at(i).toNumber();
        if (number != std::floor(number) || number < 0 || number > 1e9)
            misuse(QStringLiteral("Window.%1: a position is a whole number from 0").arg(m_operation));
        return int(number);
    }
    QString which(int i) const
    {
        if (!m_list.at(i).isString() && !m_list.at(i).isNumber())
            throw vb::AutomationError(vb::ErrTypeMismatch,
                                      QStringLiteral("Type mismatch: Window.%1 takes an entry's position (a number "
                                                     "from 0) or its text")
                                          .arg(m_operation));
        return m_list.at(i).toString();
    }

    const QString& operation() const { return m_operation; }

private:
    QString m_operation;
    const QJSValueList& m_list;
};

QWidget* controlOf(QWidget* window, const QString& name)
{
    auto* control = window->findChild<QWidget*>(name);
    if (!control)
        misuse(QStringLiteral("%1 has no control named '%2'").arg(nameOf(window), name));
    return control;
}

template <typename T>
T* controlAs(QWidget* window, const QString& name, const char* kind)
{
    QWidget* control = controlOf(window, name);
    auto* typed = qobject_cast<T*>(control);
    if (!typed)
        misuse(QStringLiteral("%1 of %2 is a %3, not %4")
                   .arg(name, nameOf(window), QString::fromLatin1(control->metaObject()->className()),
                        QLatin1String(kind)));
    return typed;
}

void requireEnabled(QWidget* window, QWidget* control, const QString& what)
{
    if (!control->isEnabled())
        misuse(QStringLiteral("%1 of %2 is disabled: a user could not %3 it").arg(control->objectName(), nameOf(window), what));
}

void sendMouse(QWidget* target, QEvent::Type type, const QPoint& position, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, QPointF(position), QPointF(target->mapToGlobal(position)), Qt::LeftButton, buttons,
                      Qt::NoModifier);
    QApplication::sendEvent(target, &event);
}

// A click (or double click) with the left button at a point of a widget.
void clickAt(QWidget* target, const QPoint& position, bool twice)
{
    QPointer<QWidget> guard(target);
    sendMouse(target, QEvent::MouseButtonPress, position, Qt::LeftButton);
    if (guard)
        sendMouse(target, QEvent::MouseButtonRelease, position, Qt::NoButton);
    if (twice && guard)
        sendMouse(target, QEvent::MouseButtonDblClick, position, Qt::LeftButton);
    if (twice && guard)
        sendMouse(target, QEvent::MouseButtonRelease, position, Qt::NoButton);
}

// Clicks an entry of a list or tree where the user would. An entry the user
// cannot see (its view on a hidden tab page) gets the same outcome without
// the mouse: made current, and the click signals the view would send.
void clickEntry(QAbstractItemView* view, const QModelIndex& index, bool twice)
{
    view->scrollTo(index);
    const QRect rect = view->visualRect(index);
    // Once the mouse went, whatever the click did is its outcome: the
    // dialog's handlers may have reloaded the view, and the entry clicked
    // may be gone.
    if (view->isVisible() && rect.isValid() && view->viewport()->rect().contains(rect.center())
        && view->indexAt(rect.center()) == index) {
        clickAt(view->viewport(), rect.center(), twice);
        return;
    }
    QPointer<QAbstractItemView> guard(view);
    view->setCurrentIndex(index);
    emit view->clicked(index);
    if (twice && guard)
        emit view->doubleClicked(index);
}

QList<QTreeWidgetItem*> treeItems(QTreeWidget* tree)
{
    QList<QTreeWidgetItem*> items;
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        items.append(*it);
    return items;
}

// The node a library dialog acts on: the one selected, not the current one
// (a tree gives itself a current node when it gets the focus).
QTreeWidgetItem* selectedNode(const QTreeWidget* tree)
{
    const QList<QTreeWidgetItem*> selected = tree->selectedItems();
    return selected.isEmpty() ? nullptr : selected.constFirst();
}

QString keyOf(const QTreeWidgetItem* item)
{
    return item ? item->data(0, ArbolClaves::RolClave).toString() : QString();
}

} // namespace

WindowDriver::WindowDriver(QJSEngine& js, AutomationBridge& bridge, QObject* parent)
    : QObject(parent)
    , m_js(js)
    , m_bridge(bridge)
{
    m_timer.setInterval(PollInterval);
    connect(&m_timer, &QTimer::timeout, this, &WindowDriver::poll);
}

void WindowDriver::start()
{
    m_timer.start();
}

void WindowDriver::stop()
{
    m_timer.stop();
}

void WindowDriver::clearScriptValues()
{
    m_windowFactory = QJSValue();
    m_handlers.clear();
    m_windowObjects.clear();
}

QString WindowDriver::describe(QWidget* window)
{
    QString text = QStringLiteral("%1 \"%2\"").arg(nameOf(window), window->windowTitle());
    const QString message = messageOf(window);
    if (!message.isEmpty())
        text += QStringLiteral(": ") + message;
    return text;
}

void WindowDriver::cancel(QWidget* window)
{
    QPointer<QWidget> guard(window);
    if (auto* box = qobject_cast<QMessageBox*>(window)) {
        QAbstractButton* escape = box->escapeButton();
        if (!escape) {
            for (QAbstractButton* button : box->buttons()) {
                const QMessageBox::ButtonRole role = box->buttonRole(button);
                if (role == QMessageBox::RejectRole || role == QMessageBox::NoRole)
                    escape = button;
            }
        }
        if (escape)
            escape->click();
    } else if (auto* dialog = qobject_cast<QDialog*>(window)) {
        dialog->reject();
    } else {
        window->close();
    }
    // A window that will not take no for an answer is ended all the same.
    if (guard && guard->isVisible()) {
        if (auto* dialog = qobject_cast<QDialog*>(guard.data()))
            dialog->done(QDialog::Rejected);
        else
            guard->hide();
    }
}

QJSValue WindowDriver::seen()
{
    QJSValue list = m_js.newArray(uint(m_seen.size()));
    for (int i = 0; i < m_seen.size(); ++i) {
        const QStringList& entry = m_seen.at(i);
        QJSValue item = m_js.newObject();
        item.setProperty(QStringLiteral("objectName"), entry.value(0));
        item.setProperty(QStringLiteral("title"), entry.value(1));
        item.setProperty(QStringLiteral("message"), entry.value(2));
        item.setProperty(QStringLiteral("kind"), entry.value(3));
        list.setProperty(quint32(i), item);
    }
    return list;
}

void WindowDriver::poll()
{
    QWidget* window = QApplication::activeModalWidget();
    if (!window || !window->isVisible())
        return;
    if (m_stopping) {
        cancel(window);
        return;
    }
    if (m_dispatchPending || m_busy.contains(window))
        return;
    m_seen.append({window->objectName(), window->windowTitle(), messageOf(window), kindOf(window)});
    if (m_handlers.isEmpty()) {
        QString report = describe(window);
        if (m_handled.contains(window))
            report += QStringLiteral(", left open by its handler,");
        cancel(window);
        if (onUnexpected)
            onUnexpected(report);
        return;
    }
    // The handler runs from its own timer, so this one keeps polling while
    // the handler opens windows of its own.
    const QJSValue handler = m_handlers.takeFirst();
    m_busy.append(window);
    m_handled.removeAll(nullptr);
    if (!m_handled.contains(window))
        m_handled.append(window);
    m_dispatchPending = true;
    QTimer::singleShot(0, this, [this, guard = QPointer<QWidget>(window), handler] { runHandler(guard, handler); });
}

void WindowDriver::runHandler(QPointer<QWidget> window, QJSValue handler)
{
    m_dispatchPending = false;
    if (!window || !window->isVisible() || m_stopping) {
        // Gone before its turn came: the handler waits for the next window.
        m_busy.removeAll(window);
        m_busy.removeAll(nullptr);
        if (!m_stopping)
            m_handlers.prepend(handler);
        return;
    }
    const QString description = describe(window);
    const QJSValue result = handler.call({windowObject(window)});
    m_busy.removeAll(window);
    m_busy.removeAll(nullptr);
    if (result.isError() && !m_stopping) {
        if (onHandlerError)
            onHandlerError(result, description);
        if (window && window->isVisible())
            cancel(window);
    }
}

QJSValue WindowDriver::windowObject(QWidget* window)
{
    int id = m_idOf.value(window, 0);
    if (!id || m_windows.value(id).data() != window) {
        id = m_nextId++;
        m_windows.insert(id, window);
        m_idOf.insert(window, id);
        connect(window, &QObject::destroyed, this, [this, window, id] {
            if (m_idOf.value(window) == id)
                m_idOf.remove(window);
            m_windowObjects.remove(id);
        });
    }
    QJSValue object = m_windowObjects.value(id);
    if (object.isUndefined()) {
        object = m_windowFactory.call({QJSValue(id)});
        m_windowObjects.insert(id, object);
    }
    return object;
}

QJSValue WindowDriver::operation(int id, const QString& name, const QJSValueList& arguments)
{
    QWidget* window = m_windows.value(id).data();
    if (!window)
        throw vb::AutomationError(vb::ErrObjectNotSet,
                                  QStringLiteral("%1: the window no longer exists (Window.%2)")
                                      .arg(vb::standardDescription(vb::ErrObjectNotSet), name));
    const Arguments args(name, arguments);
    const bool open = window->isVisible();
    auto requireOpen = [&] {
        if (!window->isVisible())
            misuse(QStringLiteral("%1 is closed: Window.%2 needs an open window").arg(nameOf(window), name));
    };

    // --- What the window is -------------------------------------------------
    if (name == QLatin1String("objectName")) {
        return QJSValue(window->objectName());
    }
    if (name == QLatin1String("title")) {
        return QJSValue(window->windowTitle());
    }
    if (name == QLatin1String("message")) {
        return QJSValue(messageOf(window));
    }
    if (name == QLatin1String("icon")) {
        return QJSValue(iconOf(window));
    }
    if (name == QLatin1String("kind")) {
        return QJSValue(kindOf(window));
    }
    if (name == QLatin1String("className")) {
        return QJSValue(QString::fromLatin1(window->metaObject()->className()));
    }
    if (name == QLatin1String("isOpen")) {
        return QJSValue(open);
    }
    if (name == QLatin1String("focus")) {
        QWidget* focused = window->focusWidget();
        return QJSValue(focused ? focused->objectName() : QString());
    }
    if (name == QLatin1String("buttons")) {
        QStringList captions;
        if (auto* box = qobject_cast<QMessageBox*>(window)) {
            for (QAbstractButton* button : box->buttons())
                captions.append(plainCaption(button->text()));
        } else {
            for (QPushButton* button : window->findChildren<QPushButton*>()) {
                if (button->isVisibleTo(window))
                    captions.append(plainCaption(button->text()));
            }
        }
        return m_bridge.toScript(captions);
    }
    if (name == QLatin1String("controls")) {
        QVariantList controls;
        for (QWidget* control : window->findChildren<QWidget*>()) {
            if (control->objectName().isEmpty() || control->objectName().startsWith(QLatin1String("qt_")))
                continue;
            controls.append(QVariantMap{{QStringLiteral("name"), control->objectName()},
                                        {QStringLiteral("className"), QString::fromLatin1(control->metaObject()->className())},
                                        {QStringLiteral("enabled"), control->isEnabled()},
                                        {QStringLiteral("visible"), control->isVisibleTo(window)}});
        }
        return m_bridge.toScript(controls);
    }
    if (name == QLatin1String("color")) {
        auto* picker = qobject_cast<QColorDialog*>(window);
        if (!picker)
            misuse(QStringLiteral("%1 is not a colour picker").arg(nameOf(window)));
        return QJSValue(vb::colorToOle(picker->currentColor()));
    }
    if (name == QLatin1String("font")) {
        auto* picker = qobject_cast<QFontDialog*>(window);
        if (!picker)
            misuse(QStringLiteral("%1 is not a font picker").arg(nameOf(window)));
        const QFont font = picker->currentFont();
        return m_bridge.toScript(QVariantMap{{QStringLiteral("family"), font.family()},
                                             {QStringLiteral("size"), font.pointSizeF()},
                                             {QStringLiteral("bold"), font.bold()},
                                             {QStringLiteral("italic"), font.italic()},
                                             {QStringLiteral("underline"), font.underline()},
                                             {QStringLiteral("strikeout"), font.strikeOut()}});
    }
    if (name == QLatin1String("property")) {
        args.expect(1, 1, "1 argument (the property's name)");
        return m_bridge.readAnyProperty(window, args.text(0, "the property's name"));
    }

    // --- Controls, read --------------------------------------------------------
    if (name == QLatin1String("hasControl")) {
        args.expect(1, 1, "1 argument (name)");
        return QJSValue(window->findChild<QWidget*>(args.name(0)) != nullptr);
    }
    if (name == QLatin1String("isEnabled")) {
        args.expect(1, 1, "1 argument (name)");
        return QJSValue(controlOf(window, args.name(0))->isEnabled());
    }
    if (name == QLatin1String("isVisible")) {
        args.expect(1, 1, "1 argument (name)");
        return QJSValue(controlOf(window, args.name(0))->isVisibleTo(window));
    }
    if (name == QLatin1String("controlProperty")) {
        args.expect(2, 2, "2 arguments (name, property)");
        return m_bridge.readAnyProperty(controlOf(window, args.name(0)), args.text(1, "the property's name"));
    }
    if (name == QLatin1String("getText")) {
        args.expect(1, 1, "1 argument (name)");
        QWidget* control = controlOf(window, args.name(0));
        if (auto* line = qobject_cast<QLineEdit*>(control))
            return QJSValue(line->text());
        if (auto* box = qobject_cast<QPlainTextEdit*>(control))
            return QJSValue(box->toPlainText());
        if (auto* box = qobject_cast<QTextEdit*>(control))
            return QJSValue(box->toPlainText());
        if (auto* combo = qobject_cast<QComboBox*>(control))
            return QJSValue(combo->currentText());
        if (auto* spin = qobject_cast<QAbstractSpinBox*>(control))
            return QJSValue(spin->text());
        if (auto* label = qobject_cast<QLabel*>(control))
            return QJSValue(label->text());
        if (auto* button = qobject_cast<QAbstractButton*>(control))
            return QJSValue(button->text());
        if (auto* group = qobject_cast<QGroupBox*>(control))
            return QJSValue(group->title());
        if (auto* list = qobject_cast<QListWidget*>(control))
            return QJSValue(list->currentItem() ? list->currentItem()->text() : QString());
        if (auto* tree = qobject_cast<QTreeWidget*>(control))
            return QJSValue(selectedNode(tree) ? selectedNode(tree)->text(0) : QString());
        if (auto* tabs = qobject_cast<QTabWidget*>(control))
            return QJSValue(tabs->currentIndex() < 0 ? QString() : tabs->tabText(tabs->currentIndex()));
        misuse(QStringLiteral("%1 of %2 is a %3, which has no text")
                   .arg(control->objectName(), nameOf(window), QString::fromLatin1(control->metaObject()->className())));
    }
    if (name == QLatin1String("isChecked")) {
        args.expect(1, 1, "1 argument (name)");
        auto* button = controlAs<QAbstractButton>(window, args.name(0), "a check box or option button");
        return QJSValue(button->isChecked());
    }
    if (name == QLatin1String("entries")) {
        args.expect(1, 1, "1 argument (name)");
        QWidget* control = controlOf(window, args.name(0));
        QVariantList entries;
        if (auto* list = qobject_cast<QListWidget*>(control)) {
            for (int i = 0; i < list->count(); ++i) {
                const QListWidgetItem* item = list->item(i);
                entries.append(QVariantMap{{QStringLiteral("text"), item->text()},
                                           {QStringLiteral("itemData"), item->data(Qt::UserRole)},
                                           {QStringLiteral("selected"), item->isSelected()}});
            }
        } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
            for (int i = 0; i < combo->count(); ++i)
                entries.append(QVariantMap{{QStringLiteral("text"), combo->itemText(i)},
                                           {QStringLiteral("itemData"), combo->itemData(i)}});
        } else if (auto* tabs = qobject_cast<QTabWidget*>(control)) {
            for (int i = 0; i < tabs->count(); ++i)
                entries.append(QVariantMap{{QStringLiteral("text"), tabs->tabText(i)},
                                           {QStringLiteral("enabled"), tabs->isTabEnabled(i)}});
        } else if (qobject_cast<QTreeWidget*>(control)) {
            return operation(id, QStringLiteral("nodes"), arguments);
        } else {
            misuse(QStringLiteral("%1 of %2 is a %3, which has no entries")
                       .arg(control->objectName(), nameOf(window), QString::fromLatin1(control->metaObject()->className())));
        }
        return m_bridge.toScript(entries);
    }
    if (name == QLatin1String("nodes")) {
        args.expect(1, 1, "1 argument (name)");
        auto* tree = controlAs<QTreeWidget>(window, args.name(0), "a tree");
        QVariantList nodes;
        for (QTreeWidgetItem* item : treeItems(tree)) {
            nodes.append(QVariantMap{{QStringLiteral("key"), keyOf(item)},
                                     {QStringLiteral("text"), item->text(0)},
                                     {QStringLiteral("tag"), item->data(0, ArbolClaves::RolTag).toString()},
                                     {QStringLiteral("parentKey"), keyOf(item->parent())},
                                     {QStringLiteral("image"), item->data(0, ArbolClaves::RolImagen).toInt()},
                                     {QStringLiteral("expanded"), item->isExpanded()},
                                     {QStringLiteral("selected"), item->isSelected()}});
        }
        return m_bridge.toScript(nodes);
    }
    if (name == QLatin1String("selection")) {
        args.expect(1, 1, "1 argument (name)");
        QWidget* control = controlOf(window, args.name(0));
        if (auto* list = qobject_cast<QListWidget*>(control)) {
            const QListWidgetItem* item = list->currentItem();
            if (!item)
                return QJSValue(QJSValue::NullValue);
            return m_bridge.toScript(QVariantMap{{QStringLiteral("index"), list->row(item)},
                                                 {QStringLiteral("text"), item->text()},
                                                 {QStringLiteral("itemData"), item->data(Qt::UserRole)}});
        }
        if (auto* combo = qobject_cast<QComboBox*>(control)) {
            if (combo->currentIndex() < 0)
                return QJSValue(QJSValue::NullValue);
            return m_bridge.toScript(QVariantMap{{QStringLiteral("index"), combo->currentIndex()},
                                                 {QStringLiteral("text"), combo->currentText()},
                                                 {QStringLiteral("itemData"), combo->currentData()}});
        }
        if (auto* tabs = qobject_cast<QTabWidget*>(control)) {
            if (tabs->currentIndex() < 0)
                return QJSValue(QJSValue::NullValue);
            return m_bridge.toScript(QVariantMap{{QStringLiteral("index"), tabs->currentIndex()},
                                                 {QStringLiteral("text"), tabs->tabText(tabs->currentIndex())}});
        }
        if (auto* tree = qobject_cast<QTreeWidget*>(control)) {
            QTreeWidgetItem* item = selectedNode(tree);
            if (!item)
                return QJSValue(QJSValue::NullValue);
            return m_bridge.toScript(QVariantMap{{QStringLiteral("index"), int(treeItems(tree).indexOf(item))},
                                                 {QStringLiteral("key"), keyOf(item)},
                                                 {QStringLiteral("text"), item->text(0)},
                                                 {QStringLiteral("tag"), item->data(0, ArbolClaves::RolTag).toString()},
                                                 {QStringLiteral("parentKey"), keyOf(item->parent())}});
        }
        misuse(QStringLiteral("%1 of %2 is a %3, which has no selection")
                   .arg(control->objectName(), nameOf(window), QString::fromLatin1(control->metaObject()->className())));
    }

    // --- Controls, acted on as a user would -----------------------------------
    if (name == QLatin1String("setText")) {
        args.expect(2, 2, "2 arguments (name, text)");
        requireOpen();
        QWidget* control = controlOf(window, args.name(0));
        const QString text = args.text(1, "the text to type");
        requireEnabled(window, control, QStringLiteral("type into"));
        if (auto* line = qobject_cast<QLineEdit*>(control)) {
            if (line->isReadOnly())
                misuse(QStringLiteral("%1 of %2 is read-only").arg(control->objectName(), nameOf(window)));
            line->selectAll();
            line->del();
            line->insert(text);
        } else if (auto* box = qobject_cast<QPlainTextEdit*>(control)) {
            if (box->isReadOnly())
                misuse(QStringLiteral("%1 of %2 is read-only").arg(control->objectName(), nameOf(window)));
            box->selectAll();
            box->insertPlainText(text);
            if (text.isEmpty())
                box->textCursor().removeSelectedText();
        } else if (auto* box = qobject_cast<QTextEdit*>(control)) {
            if (box->isReadOnly())
                misuse(QStringLiteral("%1 of %2 is read-only").arg(control->objectName(), nameOf(window)));
            box->selectAll();
            box->insertPlainText(text);
            if (text.isEmpty())
                box->textCursor().removeSelectedText();
        } else if (auto* combo = qobject_cast<QComboBox*>(control)) {
            if (combo->isEditable()) {
                combo->setCurrentText(text);
            } else {
                const int index = combo->findText(text, Qt::MatchExactly);
                if (index < 0)
                    misuse(QStringLiteral("%1 of %2 is a drop-down list without the entry '%3'")
                               .arg(control->objectName(), nameOf(window), text));
                combo->setCurrentIndex(index);
                emit combo->activated(index);
                emit combo->textActivated(combo->itemText(index));
            }
        } else if (auto* spin = qobject_cast<QAbstractSpinBox*>(control)) {
            if (auto* line = spin->findChild<QLineEdit*>()) {
                line->selectAll();
                line->del();
                line->insert(text);
            }
            spin->interpretText();
        } else {
            misuse(QStringLiteral("%1 of %2 is a %3: nothing can be typed into it")
                       .arg(control->objectName(), nameOf(window), QString::fromLatin1(control->metaObject()->className())));
        }
        return QJSValue();
    }
    if (name == QLatin1String("setChecked")) {
        args.expect(2, 2, "2 arguments (name, checked)");
        requireOpen();
        auto* button = controlAs<QAbstractButton>(window, args.name(0), "a check box or option button");
        const bool wanted = args.flag(1);
        if (!button->isCheckable())
            misuse(QStringLiteral("%1 of %2 cannot be checked").arg(button->objectName(), nameOf(window)));
        if (button->isChecked() == wanted)
            return QJSValue();
        requireEnabled(window, button, QStringLiteral("click"));
        if (!wanted && qobject_cast<QRadioButton*>(button) && button->autoExclusive())
            misuse(QStringLiteral("%1 of %2 is an option button: it is cleared by choosing another option")
                       .arg(button->objectName(), nameOf(window)));
        button->click();
        return QJSValue();
    }
    if (name == QLatin1String("setEnabled")) {
        args.expect(2, 2, "2 arguments (name, enabled)");
        controlOf(window, args.name(0))->setEnabled(args.flag(1));
        return QJSValue();
    }
    if (name == QLatin1String("select") || name == QLatin1String("doubleClick")) {
        const bool twice = name == QLatin1String("doubleClick");
        args.expect(2, 2, "2 arguments (name, the entry's position from 0 or its text; a node's key or text)");
        requireOpen();
        QWidget* control = controlOf(window, args.name(0));
        const QString which = args.which(1);
        requireEnabled(window, control, twice ? QStringLiteral("double-click") : QStringLiteral("choose from"));
        auto missing = [&](const QStringList& available) {
            misuse(QStringLiteral("%1 of %2 has no entry '%3'; it has: %4")
                       .arg(control->objectName(), nameOf(window), which, available.join(QStringLiteral(", "))));
        };
        if (auto* list = qobject_cast<QListWidget*>(control)) {
            int row = args.isPosition(1) ? args.position(1) : -1;
            QStringList texts;
            for (int i = 0; i < list->count(); ++i) {
                texts.append(list->item(i)->text());
                if (!args.isPosition(1) && row < 0 && list->item(i)->text() == which)
                    row = i;
            }
            if (row < 0 || row >= list->count())
                missing(texts);
            clickEntry(list, list->model()->index(row, 0), twice);
            return QJSValue();
        }
        if (auto* tree = qobject_cast<QTreeWidget*>(control)) {
            const QList<QTreeWidgetItem*> items = treeItems(tree);
            QTreeWidgetItem* target = nullptr;
            if (args.isPosition(1)) {
                target = items.value(args.position(1));
            } else {
                for (QTreeWidgetItem* item : items) {
                    if (!target && keyOf(item) == which)
                        target = item;
                }
                for (QTreeWidgetItem* item : items) {
                    if (!target && item->text(0) == which)
                        target = item;
                }
            }
            if (!target) {
                QStringList keys;
                for (QTreeWidgetItem* item : items)
                    keys.append(keyOf(item).isEmpty() ? item->text(0) : keyOf(item));
                missing(keys);
            }
            // The user opens the branches above a node to reach it.
            for (QTreeWidgetItem* parent = target->parent(); parent; parent = parent->parent())
                parent->setExpanded(true);
            clickEntry(tree, tree->indexFromItem(target), twice);
            return QJSValue();
        }
        if (twice)
            misuse(QStringLiteral("%1 of %2 is a %3: only lists and trees are double-clicked")
                       .arg(control->objectName(), nameOf(window), QString::fromLatin1(control->metaObject()->className())));
        if (auto* combo = qobject_cast<QComboBox*>(control)) {
            QStringList texts;
            for (int i = 0; i < combo->count(); ++i)
                texts.append(combo->itemText(i));
            const int index = args.isPosition(1) ? args.position(1) : int(texts.indexOf(which));
            if (index < 0 || index >= combo->count())
                missing(texts);
            combo->setCurrentIndex(index);
            // What a pick from the drop-down sends besides the change.
            emit combo->activated(index);
            emit combo->textActivated(combo->itemText(index));
            return QJSValue();
        }
        if (auto* tabs = qobject_cast<QTabWidget*>(control)) {
            QStringList texts;
            for (int i = 0; i < tabs->count(); ++i)
                texts.append(tabs->tabText(i));
            int index = args.isPosition(1) ? args.position(1) : int(texts.indexOf(which));
            if (index < 0 && !args.isPosition(1)) {
                for (int i = 0; i < texts.size(); ++i) {
                    if (plainCaption(texts.at(i)) == which)
                        index = i;
                }
            }
            if (index < 0 || index >= tabs->count())
                missing(texts);
            if (!tabs->isTabEnabled(index))
                misuse(QStringLiteral("tab '%1' of %2 is disabled").arg(texts.at(index), nameOf(window)));
            QTabBar* bar = tabs->tabBar();
            const QRect rect = bar->tabRect(index);
            if (bar->isVisible() && rect.isValid() && bar->rect().contains(rect.center()))
                clickAt(bar, rect.center(), false);
            if (tabs->currentIndex() != index) {
                emit tabs->tabBarClicked(index);
                tabs->setCurrentIndex(index);
            }
            return QJSValue();
        }
        misuse(QStringLiteral("%1 of %2 is a %3, which has no entries to choose")
                   .arg(control->objectName(), nameOf(window), QString::fromLatin1(control->metaObject()->className())));
    }
    if (name == QLatin1String("setExpanded")) {
        args.expect(3, 3, "3 arguments (name, a node's position, key or text, expanded)");
        requireOpen();
        auto* tree = controlAs<QTreeWidget>(window, args.name(0), "a tree");
        const QString which = args.which(1);
        QTreeWidgetItem* target = nullptr;
        const QList<QTreeWidgetItem*> items = treeItems(tree);
        if (args.isPosition(1)) {
            target = items.value(args.position(1));
        } else {
            for (QTreeWidgetItem* item : items) {
                if (!target && keyOf(item) == which)
                    target = item;
            }
            for (QTreeWidgetItem* item : items) {
                if (!target && item->text(0) == which)
                    target = item;
            }
        }
        if (!target)
            misuse(QStringLiteral("%1 of %2 has no node '%3'").arg(tree->objectName(), nameOf(window), which));
        target->setExpanded(args.flag(2));
        return QJSValue();
    }

    // --- Buttons and the window itself ----------------------------------------
    if (name == QLatin1String("click") || name == QLatin1String("answer")) {
        args.expect(1, 1, name == QLatin1String("answer") ? "1 argument (the button's caption)"
                                                          : "1 argument (the objectName or caption of a button)");
        requireOpen();
        const QString wanted = args.text(0, "the button's objectName or caption");
        auto* box = qobject_cast<QMessageBox*>(window);
        if (name == QLatin1String("answer") && !box)
            misuse(QStringLiteral("%1 is not a message box: answer it with click()").arg(nameOf(window)));
        QWidget* target = nullptr;
        if (!box) {
            target = window->findChild<QWidget*>(wanted);
            if (target == window)
                target = nullptr;
        }
        QList<QAbstractButton*> buttons = box ? box->buttons() : window->findChildren<QAbstractButton*>();
        QStringList captions;
        for (Qt::CaseSensitivity cs : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
            for (QAbstractButton* button : buttons) {
                if (!target && button->isVisibleTo(window) && plainCaption(button->text()).compare(wanted, cs) == 0)
                    target = button;
            }
        }
        if (!target) {
            for (QAbstractButton* button : buttons) {
                if (button->isVisibleTo(window) && !button->text().isEmpty())
                    captions.append(plainCaption(button->text()));
            }
            misuse(QStringLiteral("%1 has no button '%2'; its buttons read: %3")
                       .arg(nameOf(window), wanted, captions.join(QStringLiteral(", "))));
        }
        requireEnabled(window, target, QStringLiteral("click"));
        if (auto* button = qobject_cast<QAbstractButton*>(target))
            button->click();
        else
            clickAt(target, target->rect().center(), false);
        return QJSValue();
    }
    if (name == QLatin1String("cancel")) {
        args.expect(0, 0, "no arguments");
        requireOpen();
        cancel(window);
        return QJSValue();
    }
    if (name == QLatin1String("close")) {
        args.expect(0, 0, "no arguments");
        requireOpen();
        window->close();
        return QJSValue();
    }
    if (name == QLatin1String("accept")) {
        args.expect(0, 0, "no arguments");
        requireOpen();
        if (auto* box = qobject_cast<QMessageBox*>(window)) {
            QAbstractButton* button = box->defaultButton();
            if (!button && !box->buttons().isEmpty())
                button = box->buttons().constFirst();
            if (button)
                button->click();
        } else if (auto* dialog = qobject_cast<QDialog*>(window)) {
            dialog->accept();
        } else {
            misuse(QStringLiteral("%1 is not a dialog").arg(nameOf(window)));
        }
        return QJSValue();
    }
    if (name == QLatin1String("pressKey")) {
        args.expect(1, 1, "1 argument (the key: Escape, Enter, Tab, Space, Delete, Backspace, an arrow, or one character)");
        requireOpen();
        const QString keyName = args.text(0, "the key");
        static const QHash<QString, Qt::Key> keys{
            {QStringLiteral("escape"), Qt::Key_Escape},   {QStringLiteral("enter"), Qt::Key_Return},
            {QStringLiteral("return"), Qt::Key_Return},   {QStringLiteral("tab"), Qt::Key_Tab},
            {QStringLiteral("backtab"), Qt::Key_Backtab}, {QStringLiteral("space"), Qt::Key_Space},
            {QStringLiteral("delete"), Qt::Key_Delete},   {QStringLiteral("backspace"), Qt::Key_Backspace},
            {QStringLiteral("up"), Qt::Key_Up},           {QStringLiteral("down"), Qt::Key_Down},
            {QStringLiteral("left"), Qt::Key_Left},       {QStringLiteral("right"), Qt::Key_Right},
            {QStringLiteral("home"), Qt::Key_Home},       {QStringLiteral("end"), Qt::Key_End},
            {QStringLiteral("f1"), Qt::Key_F1},
        };
        Qt::Key key = keys.value(keyName.toLower(), Qt::Key_unknown);
        QString text;
        if (key == Qt::Key_unknown && keyName.size() == 1) {
            key = Qt::Key(keyName.toUpper().at(0).unicode());
            text = keyName;
        } else if (key == Qt::Key_Space) {
            text = QStringLiteral(" ");
        }
        if (key == Qt::Key_unknown)
            misuse(QStringLiteral("Window.pressKey does not know the key '%1'").arg(keyName));
        QWidget* target = window->focusWidget() ? window->focusWidget() : window;
        QPointer<QWidget> guard(target);
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(target, &press);
        if (guard) {
            QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
            QApplication::sendEvent(target, &release);
        }
        return QJSValue();
    }
    if (name == QLatin1String("chooseColor")) {
        args.expect(1, 1, "1 argument (a colour as 0x00BBGGRR or \"#RRGGBB\")");
        requireOpen();
        auto* picker = qobject_cast<QColorDialog*>(window);
        if (!picker)
            misuse(QStringLiteral("%1 is not a colour picker").arg(nameOf(window)));
        QColor color;
        if (args.at(0).isNumber()) {
            color = vb::oleToColor(int(args.at(0).toNumber()));
        } else if (args.at(0).isString()) {
            color = QColor(args.at(0).toString());
        }
        if (!color.isValid())
            misuse(QStringLiteral("Window.chooseColor takes a colour as a number 0x00BBGGRR or a text \"#RRGGBB\""));
        picker->setCurrentColor(color);
        picker->accept();
        return QJSValue();
    }
    if (name == QLatin1String("chooseFont")) {
        args.expect(1, 1, "1 argument (a family name, or {family, size, bold, italic, underline, strikeout})");
        requireOpen();
        auto* picker = qobject_cast<QFontDialog*>(window);
        if (!picker)
            misuse(QStringLiteral("%1 is not a font picker").arg(nameOf(window)));
        QFont font = picker->currentFont();
        const QJSValue& wanted = args.at(0);
        if (wanted.isString()) {
            font.setFamily(wanted.toString());
        } else if (wanted.isObject()) {
            if (wanted.hasProperty(QStringLiteral("family")))
                font.setFamily(wanted.property(QStringLiteral("family")).toString());
            if (wanted.hasProperty(QStringLiteral("size")))
                font.setPointSizeF(wanted.property(QStringLiteral("size")).toNumber());
            if (wanted.hasProperty(QStringLiteral("bold")))
                font.setBold(wanted.property(QStringLiteral("bold")).toBool());
            if (wanted.hasProperty(QStringLiteral("italic")))
                font.setItalic(wanted.property(QStringLiteral("italic")).toBool());
            if (wanted.hasProperty(QStringLiteral("underline")))
                font.setUnderline(wanted.property(QStringLiteral("underline")).toBool());
            if (wanted.hasProperty(QStringLiteral("strikeout")))
                font.setStrikeOut(wanted.property(QStringLiteral("strikeout")).toBool());
        } else {
            misuse(QStringLiteral("Window.chooseFont takes a family name or {family, size, bold, italic, underline, strikeout}"));
        }
        // The picker matches the style by its installed name.
        const QString style = SelectorFuente::estiloInstalado(font.family(), font.bold(), font.italic());
        if (!style.isEmpty())
            font.setStyleName(style);
        picker->setCurrentFont(font);
        // The picker takes whole sizes only; a fractional one is typed into
        // its size box, where the component's picker accepts it.
        const double size = font.pointSizeF();
        auto* sizeBox = picker->findChild<QLineEdit*>(QStringLiteral("txtTamano"));
        if (sizeBox && size > 0 && size != std::floor(size)) {
            sizeBox->selectAll();
            sizeBox->insert(QString::number(size));
        }
        picker->accept();
        return QJSValue();
    }
    misuse(QStringLiteral("a window has no operation '%1'").arg(name));
}
