#include "app/QuestionKeys.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

namespace {

bool blocks(const QWidget& question, const QWindow& window)
{
    const QWindow* const own = question.windowHandle();
    if (own == nullptr || own == &window || own->isAncestorOf(&window, QWindow::IncludeTransients))
        return false;
    return question.windowModality() == Qt::ApplicationModal ||
           window.isAncestorOf(own, QWindow::IncludeTransients);
}

} // namespace

QuestionKeys::QuestionKeys(QGuiApplication& application) : QObject(&application)
{
    connect(&application, &QGuiApplication::focusWindowChanged, this, [](const QWindow* window) {
        QWidget* const question = QApplication::activeModalWidget();
        if (window != nullptr && question != nullptr && blocks(*question, *window))
            question->activateWindow();
    });
}
