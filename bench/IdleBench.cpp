// How often the shell's own timers wake the program while three windows with a
// page have nothing to do: never, it should be. Needs a display.
#include "app/GermanTexts.h"
#include "bench/BenchShell.h"
#include "bench/PrivateFolders.h"
#include "bench/Report.h"
#include "bench/Waiting.h"

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <QUrl>

#include <cstdio>
#include <map>
#include <string_view>
#include <thread>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60000;
constexpr int settling = 5000; // longer than any single shot of the shell
constexpr int span = 10000;

/// Objects of the toolkit and of its engine name their classes with a "Q".
bool isOurs(const QObject* object)
{
    const std::string_view name = object->metaObject()->className();
    return !name.starts_with('Q');
}

/// Counts the timer events of the application that the shell has asked for. A
/// timer object belongs to its parent; one that has none, or whose parent does
/// not tell (single shots), counts too.
class TimerCount : public QObject {
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Timer && concernsUs(watched))
            ++m_receivers[nameOf(watched)];
        return false;
    }

    int total() const
    {
        int sum = 0;
        for (const auto& [name, count] : m_receivers)
            sum += count;
        return sum;
    }
    void list() const
    {
        for (const auto& [name, count] : m_receivers)
            std::fprintf(stderr, "%d times %s\n", count, qPrintable(name));
    }

private:
    static bool concernsUs(const QObject* watched)
    {
        const std::string_view name = watched->metaObject()->className();
        if (name == "QSingleShotTimer")
            return true;
        const bool isTimer = qobject_cast<const QTimer*>(watched) != nullptr;
        return isOurs(watched) ||
               (isTimer && (watched->parent() == nullptr || isOurs(watched->parent())));
    }
    static QString nameOf(const QObject* watched)
    {
        QStringList names;
        for (const QObject* object = watched; object != nullptr; object = object->parent())
            names << QString::fromLatin1(object->metaObject()->className()) + u' ' +
                         object->objectName();
        return names.join(u" in "_s);
    }

    std::map<QString, int> m_receivers;
};

/// Counts while the event loop runs without a timer of this program.
int timersIn(int milliseconds)
{
    TimerCount count;
    qApp->installEventFilter(&count);
    QEventLoop loop;
    std::thread clock([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    clock.join();
    count.list();
    return count.total();
}

void openWindows(BenchShell& shell, const QString& page)
{
    const QString address = QUrl::fromLocalFile(page).toString();
    shell.module().Main(address);
    runUntil([&] { return shell.frame().isVisible(); }, patience);
    shell.frame().VisitUrl(address);
    shell.frame().VisitUrl(address);
    if (!runUntil([&] { return !isBusy(shell.frame()); }, patience))
        throw BenchError("the windows did not load");
    if (shell.frame().History().Count() == 0)
        throw BenchError("the page was not shown");
}

void measure(Report& report, const PrivateFolders& folders)
{
    QFile page(folders.path(u"page.html"_s));
    if (!page.open(QIODevice::WriteOnly) || page.write("<title>Seite</title><p>Seite") < 0)
        throw BenchError("the page cannot be written");
    page.close();
    BenchShell shell(folders.path({}));
    openWindows(shell, page.fileName());
    runFor(settling);
    report.value(u"idle: wake-ups of the shell's timers in 10 s"_s, timersIn(span), u""_s, 0);

    QTimer timer(&shell.frame()); // a count that never counts proves nothing
    timer.start(50);
    std::fputs("A timer, to see that they are counted:\n", stderr);
    if (timersIn(1000) == 0)
        throw BenchError("timers are not counted");
}

} // namespace

int main(int argc, char** argv)
{
    return Report::run([&](Report& report) {
        const PrivateFolders folders;
        const QApplication application(argc, argv);
        installGermanTexts();
        measure(report, folders);
    });
}
