#include "EngineWorld.h"

#include "browser/GermanTexts.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QScreen>
#include <QWebEngineView>

#include <unistd.h>

using namespace Qt::StringLiterals;

EngineWindow::EngineWindow(const EngineFactory& factory, QWidget* parent)
    : QWidget(parent), m_engine(factory(this))
{
    (new QHBoxLayout(this))->addWidget(m_engine->host());
    connect(m_engine.get(), &EngineControl::NavigateComplete2, this,
            [this](const EngineFrame& frame, const QString& url) {
                visits << (frame.Document ? frame.Document->Title : u"-"_s) + u" @ "_s + url;
            });
    connect(m_engine.get(), &EngineControl::WindowSetHeight, this,
            [this](int height) { requestedSize.setHeight(height); });
    connect(m_engine.get(), &EngineControl::WindowSetWidth, this,
            [this](int width) { requestedSize.setWidth(width); });
    connect(m_engine.get(), &EngineControl::WindowClosing, this,
            [](bool, bool& cancel) { cancel = true; });
    connect(m_engine.get(), &EngineControl::NewWindow2, this,
            [this](EngineControl*& engine, bool& cancel) {
                EngineWindow* const window = makeWindow ? makeWindow() : nullptr;
                cancel = window == nullptr;
                engine = cancel ? nullptr : &window->engine();
            });
}

void EngineWindow::run(const QString& script)
{
    qobject_cast<QWebEngineView*>(m_engine->host())->page()->runJavaScript(script);
}

EngineWorld::EngineWorld()
    : m_host(m_folder.filePath(u"data"_s), m_folder.filePath(u"cache"_s), [](const QString& typed) {
          return typed.trimmed().isEmpty() ? QUrl() : QUrl(typed, QUrl::StrictMode);
      })
{
    m_folder.setAutoRemove(false); // goes with the folder of the whole run
    m_host.serve(shell, &m_frame, asker);
    m_frame.resize(800, 600);
    m_frame.show();
}

EngineWorld::~EngineWorld()
{
    m_host.endService();
}

EngineWindow* EngineWorld::open()
{
    auto* const window = new EngineWindow(m_host.factory(), &m_frame);
    window->setGeometry(m_frame.rect());
    window->show();
    return window;
}

QColor EngineWorld::colourOf(const EngineWindow& window) const
{
    const QPoint centre = window.mapTo(&m_frame, window.rect().center());
    return m_frame.screen()->grabWindow(m_frame.winId()).toImage().pixelColor(centre);
}

QStringList EngineWorld::shortened(QStringList texts) const
{
    return texts.replaceInStrings(server.address({}), u"H"_s);
}

int prepareEngineTests(int& argc, char** argv, const std::function<int()>& run)
{
    if (geteuid() == 0) { // the engine's sandbox refuses to run there
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    }
    // What the engine's threads write last comes after the profile is gone.
    const QTemporaryDir folder;
    qputenv("TMPDIR", folder.path().toUtf8());
    const QApplication application(argc, argv);
    installGermanTexts();
    return run();
}
