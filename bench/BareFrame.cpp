// The least that shows many pages in one frame and does what the shell does with them: opens
// one on each address that it is sent, tiles them each time, walks through them, lists them in
// a menu and closes them. BareFrame ADDRESS FOLDER SOCKET WIDTHxHEIGHT.
#include <QApplication>
#include <QLocalServer>
#include <QLocalSocket>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QShortcut>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

void open(QMdiArea& area, QWebEngineProfile& profile, const QUrl& address)
{
    auto* const view = new QWebEngineView(&area);
    view->setPage(new QWebEnginePage(&profile, view));
    QMdiSubWindow* const child = area.addSubWindow(view);
    child->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(view, &QWebEngineView::titleChanged, child, &QWidget::setWindowTitle);
    child->show();
    area.tileSubWindows();
    view->load(address);
}

void fillMenu(QMenu& menu, QMdiArea& area)
{
    menu.clear();
    menu.addAction(u"&Untereinander"_s, &area, &QMdiArea::tileSubWindows);
    menu.addAction(u"&Kaskadiert"_s, &area, &QMdiArea::cascadeSubWindows);
    menu.addAction(u"Alle &schließen"_s, &area, &QMdiArea::closeAllSubWindows);
    menu.addSeparator();
    const QList<QMdiSubWindow*> all = area.subWindowList();
    for (QMdiSubWindow* child : all)
        menu.addAction(child->windowTitle(), &area,
                       [&area, child] { area.setActiveSubWindow(child); });
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QWebEngineProfile profile(u"Bare"_s);
    profile.setPersistentStoragePath(arguments.value(2) + u"/data"_s);
    profile.setCachePath(arguments.value(2) + u"/cache"_s);
    QMainWindow window;
    auto* const area = new QMdiArea(&window);
    window.setCentralWidget(area);
    QMenu* const menu = window.menuBar()->addMenu(u"&Fenster"_s);
    QObject::connect(menu, &QMenu::aboutToShow, area, [&] { fillMenu(*menu, *area); });
    auto* const next = new QShortcut(Qt::CTRL | Qt::Key_Tab, &window);
    QObject::connect(next, &QShortcut::activated, area, &QMdiArea::activateNextSubWindow);
    const QStringList size = arguments.value(4).split(u'x');
    window.resize(size.value(0).toInt(), size.value(1).toInt());
    window.show();
    open(*area, profile, QUrl(arguments.value(1)));

    QLocalServer server;
    QLocalServer::removeServer(arguments.value(3)); // of a run before
    server.listen(arguments.value(3));
    QObject::connect(&server, &QLocalServer::newConnection, area, [&] {
        QLocalSocket* const sender = server.nextPendingConnection();
        QObject::connect(sender, &QLocalSocket::disconnected, area, [&, sender] {
            open(*area, profile, QUrl(QString::fromUtf8(sender->readAll())));
            sender->deleteLater();
        });
    });
    const int status = QApplication::exec();
    delete area; // before the profile
    return status;
}
