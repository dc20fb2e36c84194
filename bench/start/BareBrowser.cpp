// The least that shows a page and keeps what the page stores: BareBrowser ADDRESS FOLDER.
#include <QApplication>
#include <QMainWindow>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QWebEngineProfile profile(QStringLiteral("Bare"));
    profile.setPersistentStoragePath(arguments.value(2) + QStringLiteral("/data"));
    profile.setCachePath(arguments.value(2) + QStringLiteral("/cache"));
    QMainWindow window;
    auto* const view = new QWebEngineView(&window);
    QWebEnginePage page(&profile);
    view->setPage(&page);
    window.setCentralWidget(view);
    window.resize(640, 480); // as large as the shell's frame
    window.show();
    page.load(QUrl(arguments.value(1)));
    return QApplication::exec();
}
