#include "pages/asking/PageInput.h"

#include <QChildEvent>
#include <QKeyEvent>
#include <QWidget>

void PageInput::watch(QWidget* view)
{
    // Input goes to a widget that the engine puts into the view, and that it replaces by
    // a new one for some pages.
    view->installEventFilter(this);
    const QObjectList children = view->children();
    for (QObject* child : children)
        child->installEventFilter(this);
}

bool PageInput::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::ChildAdded:
        static_cast<QChildEvent*>(event)->child()->installEventFilter(this);
        break;
    case QEvent::MouseButtonPress:
        emit pressed();
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::TouchEnd:
        emit used();
        emit clicked();
        break;
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent*>(event)->key();
        emit used();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
            emit clicked();
        break;
    }
    case QEvent::Wheel:
    case QEvent::FocusIn:
        emit turnedTo();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}
