// How long the program takes from its start until a page has loaded in each of its
// windows, and how much memory it uses three seconds later, as shares of what a
// bare program around as many views takes. The page comes from this program and
// tells it when it has loaded.
// Usage: StartBench [runs [windows [folder of tessera]]]; the program is copied, so
// that no preferences are touched. Needs a display that nobody else works on; many
// windows need one of 1280 x 2300 pixels.
#include "ProcessTree.h"
#include "app/Prefer.h"
#include "base/Twips.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QSize>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60000;
constexpr int settling = 3000;
constexpr int rest = 1500; // the processes of the run before go, and the disk calms down

struct Run {
    double milliseconds = -1;
    double mebibytes = -1;
};

struct Program {
    const char* name;
    QString path;
    QStringList arguments;
    std::vector<Run> runs = {};
};

/// Serves the page; `loaded` is called when the page has loaded.
class PageServer : public QTcpServer {
public:
    PageServer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket* const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(*socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        });
    }

    QString address() const { return u"http://127.0.0.1:%1/page.html"_s.arg(serverPort()); }

    std::function<void()> loaded;

private:
    void serve(QTcpSocket& socket)
    {
        const QByteArray request = socket.readAll();
        if (request.startsWith("GET /loaded") && loaded)
            loaded();
        const QByteArray body = request.startsWith("GET /page")
                                    ? "<!DOCTYPE html><title>Seite</title><p>Seite<script>"
                                      "onload = () => fetch('/loaded')</script>"
                                    : "";
        socket.write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nCache-Control: no-store\r\n"
                     "Connection: close\r\nContent-Length: " +
                     QByteArray::number(body.size()) + "\r\n\r\n" + body);
        socket.disconnectFromHost();
    }
};

void wait(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

Run measure(const Program& program, PageServer& server, int windows)
{
    wait(rest);
    Run run;
    QEventLoop loop;
    QElapsedTimer clock;
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    int missing = windows;
    server.loaded = [&] {
        if (--missing > 0)
            return;
        run.milliseconds = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        loop.quit();
    };
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    clock.start();
    process.start(program.path, program.arguments);
    loop.exec();
    server.loaded = nullptr;
    if (run.milliseconds > 0) {
        wait(settling);
        run.mebibytes =
            static_cast<double>(proportionalMemory(processTree(process.processId()))) / 1024;
    }
    process.terminate();
    if (!process.waitForFinished(patience))
        process.kill();
    return run;
}

double median(const std::vector<Run>& runs, double Run::*figure)
{
    std::vector<double> values;
    values.reserve(runs.size());
    for (const Run& run : runs)
        values.push_back(run.*figure);
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

void compare(const char* what, const Program& bare, const Program& shell, double Run::*figure,
             double most)
{
    const double least = median(bare.runs, figure);
    const double own = median(shell.runs, figure);
    std::printf("%s: bare %.1f, tessera %.1f, ratio %.3f (at most %.2f)\n", what, least, own,
                own / least, most);
}

bool copyProgram(const QString& from, const QString& to)
{
    bool copied = true;
    for (const QString& name : {u"tessera"_s, u"libtessera_shell.so"_s})
        copied = QFile::copy(from + u'/' + name, to + u'/' + name) && copied;
    return copied;
}

/// Room for many windows one under the other, the same on both sides.
constexpr QSize manyWindows(1200, 2184);

void enlargeFrame(const QString& folder)
{
    Prefer preferences(folder);
    preferences.LoadPref();
    preferences.MdiWidth(toStoredTwips(manyWindows.width()));
    preferences.MdiHeight(toStoredTwips(manyWindows.height()));
    preferences.SavePref();
}

void keepToFolder(const QString& folder)
{
    for (const char* variable :
         {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
        const QString own = folder + u'/' + QString::fromLatin1(variable);
        QDir().mkdir(own);
        QFile::setPermissions(own, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv(variable, own.toUtf8());
    }
    if (::geteuid() == 0) // the engine's sandbox refuses to run there
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString here = QCoreApplication::applicationDirPath();
    const QStringList arguments = QCoreApplication::arguments();
    const int runs = std::max(1, arguments.value(1, u"9"_s).toInt());
    const int windows = std::max(1, arguments.value(2, u"1"_s).toInt());
    const QTemporaryDir folder;
    if (!copyProgram(arguments.value(3, here), folder.path())) {
        std::fputs("tessera and libtessera_shell.so were not found\n", stderr);
        return 1;
    }
    keepToFolder(folder.path());
    PageServer server;
    Program bare{"bare",
                 here + u"/BareBrowser"_s,
                 {server.address(), folder.filePath(u"bare"_s), QString::number(windows)}};
    Program shell{"tessera", folder.filePath(u"tessera"_s), {server.address()}};
    if (windows > 1) {
        const QString own = folder.filePath(u"shell"_s);
        QDir().mkdir(own);
        enlargeFrame(own);
        shell.path = here + u"/ShellWindows"_s;
        shell.arguments << own << QString::number(windows);
    }
    for (int i = -1; i < runs; ++i) { // the first run fills the profiles and the disk cache
        for (Program* program : {&bare, &shell}) {
            const Run run = measure(*program, server, windows);
            if (run.mebibytes < 0) {
                std::fprintf(stderr, "%s showed no page\n", program->name);
                return 1;
            }
            if (i >= 0)
                program->runs.push_back(run);
        }
    }
    compare("start to page loaded in ms", bare, shell, &Run::milliseconds, 1.10);
    compare("memory 3 s later in MiB", bare, shell, &Run::mebibytes, windows > 1 ? 1.10 : 1.05);
    return 0;
}
