// The least that shows a page, or many in a multiple-document area, and keeps what
// they store: BareBrowser ADDRESS FOLDER [VIEWS].
#include <QApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>

#include <algorithm>

namespace {

QWebEngineView* newView(QWebEngineProfile& profile, QWidget* parent)
{
    auto* const view = new QWebEngineView(parent);
    view->setPage(new QWebEnginePage(&profile, view));
    return view;
}

/// One under the other, as the shell arranges its windows.
void openMany(QMainWindow& window, QWebEngineProfile& profile, int count, const QUrl& address)
{
    auto* const area = new QMdiArea(&window);
    window.setCentralWidget(area);
    window.resize(1200, 2184);
    window.show();
    const int height = area->viewport()->height() / count;
    for (int i = 0; i < count; ++i) {
        QWebEngineView* const view = newView(profile, area);
        QMdiSubWindow* const child = area->addSubWindow(view);
        child->show();
        child->setGeometry(0, i * height, area->viewport()->width(), height);
        view->load(address);
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QWebEngineProfile profile(QStringLiteral("Bare"));
    profile.setPersistentStoragePath(arguments.value(2) + QStringLiteral("/data"));
    profile.setCachePath(arguments.value(2) + QStringLiteral("/cache"));
    QMainWindow window;
    window.resize(640, 480); // as large as the shell's frame
    const QUrl address(arguments.value(1));
    if (const int views = arguments.value(3).toInt(); views > 1) {
        openMany(window, profile, views, address);
    } else {
        QWebEngineView* const view = newView(profile, &window);
        window.setCentralWidget(view);
        window.show();
        view->load(address);
    }
    const int status = QApplication::exec();
    qDeleteAll(window.findChildren<QWebEngineView*>()); // before the profile
    return status;
}
