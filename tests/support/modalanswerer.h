#pragma once
// Answers modal windows the way a user would: each expected window gets a
// handler, run in order as the windows appear. A window that appears with no
// handler waiting is recorded and closed, so a test never hangs.

#include <QAbstractButton>
#include <QApplication>
#include <QHash>
#include <QMessageBox>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <functional>

class ModalAnswerer : public QObject {
    Q_OBJECT

public:
    using Handler = std::function<void(QWidget*)>;

    ModalAnswerer()
    {
        m_timer.setInterval(10);
        connect(&m_timer, &QTimer::timeout, this, &ModalAnswerer::poll);
        m_timer.start();
    }

    void expect(Handler handler) { m_handlers.append(std::move(handler)); }
    bool allAnswered() const { return m_handlers.isEmpty(); }
    // "objectName|title|text" of every modal window seen, in order.
    QStringList seen;
    QStringList unexpected;

    // A message box answered by the caption of one of its buttons ("Sí", "No", "Aceptar").
    static void press(QWidget* window, const QString& caption)
    {
        auto* box = qobject_cast<QMessageBox*>(window);
        if (!box)
            return;
        for (QAbstractButton* button : box->buttons()) {
            if (button->text().remove(QLatin1Char('&')) == caption) {
                button->click();
                return;
            }
        }
    }

    // A handler for a message box: notes its text, followed by "|" and the
    // icon's name when it has one, and presses "Aceptar".
    static Handler anotar(QString* visto)
    {
        return [visto](QWidget* w) {
            auto* box = qobject_cast<QMessageBox*>(w);
            if (!box) {
                *visto = QStringLiteral("<no message box: %1>").arg(w->objectName());
                return;
            }
            static const QHash<int, QString> icons{{QMessageBox::Information, QStringLiteral("information")},
                                                   {QMessageBox::Warning, QStringLiteral("exclamation")},
                                                   {QMessageBox::Question, QStringLiteral("question")},
                                                   {QMessageBox::Critical, QStringLiteral("critical")}};
            *visto = box->text();
            if (box->icon() != QMessageBox::NoIcon)
                *visto += QLatin1Char('|') + icons.value(box->icon());
            press(w, QStringLiteral("Aceptar"));
        };
    }

private:
    void poll()
    {
        QWidget* window = QApplication::activeModalWidget();
        if (!window || window == m_current || !window->isVisible())
            return;
        m_current = window;
        const auto* box = qobject_cast<QMessageBox*>(window);
        seen.append(window->objectName() + QLatin1Char('|') + window->windowTitle() + QLatin1Char('|')
                    + (box ? box->text() : QString()));
        if (m_handlers.isEmpty()) {
            unexpected.append(seen.last());
            QMetaObject::invokeMethod(window, "reject", Qt::QueuedConnection);
            return;
        }
        Handler handler = m_handlers.takeFirst();
        QPointer<QWidget> guard(window);
        QTimer::singleShot(0, this, [guard, handler] {
            if (guard)
                handler(guard);
        });
    }

    QTimer m_timer;
    QList<Handler> m_handlers;
    QPointer<QWidget> m_current;
};
