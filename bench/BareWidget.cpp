// The least that a Qt Widgets program does: starts, shows a window, quits.
#include <QApplication>
#include <QTimer>
#include <QWidget>

namespace {

class Window : public QWidget {
protected:
    void paintEvent(QPaintEvent*) override { QTimer::singleShot(0, qApp, &QApplication::quit); }
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    Window window;
    window.resize(400, 300);
    window.show();
    return QApplication::exec();
}
