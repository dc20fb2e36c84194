#include "EngineWorld.h"

#include "app/GermanTexts.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QWebEngineView>
#include <QtTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

EngineWindow::EngineWindow(EngineWorld& world, const EngineFactory& factory)
    : QWidget(&world.frame), m_world(world), m_engine(factory(this))
{
    (new QHBoxLayout(this))->addWidget(m_engine->host());
    connect(m_engine.get(), &EngineControl::NavigateComplete2, this,
            [this](const EngineFrame& frame, QString url) {
                visits << (frame.Document ? frame.Document->Title : u"-"_s) + u" @ "_s +
                              url.replace(m_world.server.address({}), u"H"_s);
            });
    connect(m_engine.get(), &EngineControl::WindowSetHeight, this,
            [this](int height) { requestedSize.setHeight(height); });
    connect(m_engine.get(), &EngineControl::WindowSetWidth, this,
            [this](int width) { requestedSize.setWidth(width); });
    connect(m_engine.get(), &EngineControl::WindowClosing, this, [this](bool, bool& cancel) {
        cancel = true;
        ++m_world.closings;
    });
    connect(m_engine.get(), &EngineControl::NewWindow2, this,
            [this](EngineControl*& engine, bool& cancel) {
                EngineWindow* const window = makeWindow ? makeWindow() : nullptr;
                cancel = window == nullptr;
                engine = cancel ? nullptr : &window->engine();
            });
}

QWebEngineView* EngineWindow::view() const
{
    return qobject_cast<QWebEngineView*>(m_engine->host());
}

void EngineWindow::visit(const QString& path)
{
    m_engine->Navigate(m_world.server.address(path));
}

void EngineWindow::visitAndWait(const QString& path)
{
    const qsizetype before = visits.size();
    visit(path);
    QTRY_COMPARE(visits.size(), before + 1);
    QTRY_VERIFY(!m_engine->Busy());
}

void EngineWindow::run(const QString& script)
{
    view()->page()->runJavaScript(script);
}

QColor EngineWindow::colour() const
{
    const QPoint centre = mapTo(window(), rect().center());
    return screen()->grabWindow(window()->winId()).toImage().pixelColor(centre);
}

EngineWorld::EngineWorld()
    : m_host(m_folder.filePath(u"data"_s), m_folder.filePath(u"cache"_s), [](const QString& typed) {
          return typed.trimmed().isEmpty() ? QUrl() : QUrl(typed, QUrl::StrictMode);
      })
{
    m_folder.setAutoRemove(false); // goes with the folder of the whole run
    m_host.serve(shell, &frame);
    frame.resize(800, 600);
    frame.show();
}

EngineWorld::~EngineWorld()
{
    m_host.endService();
}

EngineWindow* EngineWorld::open(const QString& path)
{
    auto* const window = new EngineWindow(*this, m_host.factory());
    window->setGeometry(frame.rect());
    window->show();
    if (!path.isEmpty())
        window->visitAndWait(path);
    return window;
}

void EngineWorld::closeWindows()
{
    qDeleteAll(frame.findChildren<EngineWindow*>());
}

void EngineTest::init()
{
    m_world.prompt.questions.clear();
    m_world.prompt.onAsk = {};
    m_world.prompt.onLogIn = {};
    m_world.closings = 0;
    m_window = m_world.open(m_start);
    m_world.frame.activateWindow();
}

QString EngineTest::page(const QByteArray& html)
{
    const QString path = u"/page%1"_s.arg(++m_pages);
    m_world.server.page(path, "<body style='background:#0000ff; margin:0'>" + html);
    return path;
}

void EngineTest::click(const EngineWindow* window, Qt::MouseButton button)
{
    const QWidget* const host = window->view();
    // Until it has been painted a page takes no input.
    QTRY_COMPARE(window->colour(), QColor(Qt::blue));
    QTest::qWait(500);
    QTest::mouseClick(host->focusProxy(), button, {}, host->rect().center());
    QTest::qWait(100);
}

int prepareEngineTests(int& argc, char** argv, const std::function<int()>& run)
{
    if (geteuid() == 0) // the engine's sandbox refuses to run there
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    // What the engine's threads write last comes after the profile is gone.
    const QTemporaryDir folder;
    qputenv("TMPDIR", folder.path().toUtf8());
    qputenv("HOME", folder.path().toUtf8()); // where downloads wait for their place
    const QApplication application(argc, argv);
    installGermanTexts();
    return run();
}
