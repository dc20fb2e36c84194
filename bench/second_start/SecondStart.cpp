// How long a second start with an address takes, acknowledgement and process end
// included, as a share of what a bare widget program takes from start to end.
// Usage: bench_second_start [folder of tessera]; the programs are copied, so that
// no preferences are touched. Needs a display.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;
constexpr int runs = 21;
constexpr std::chrono::milliseconds rest(400); // the running copy loads its page meanwhile

pid_t start(const std::string& program, const std::string& argument)
{
    std::vector<std::string> words = {program};
    if (!argument.empty())
        words.push_back(argument);
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    pid_t child = -1;
    return ::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) == 0
               ? child
               : -1;
}

bool endedWell(pid_t child)
{
    int status = 0;
    return child > 0 && ::waitpid(child, &status, 0) == child && WIFEXITED(status) &&
           WEXITSTATUS(status) == 0;
}

// Milliseconds from start to end, or a negative number.
double timeOf(const std::string& program, const std::string& argument)
{
    std::this_thread::sleep_for(rest);
    const auto begin = std::chrono::steady_clock::now();
    const bool well = endedWell(start(program, argument));
    const Milliseconds taken = std::chrono::steady_clock::now() - begin;
    return well ? taken.count() : -1;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool prepare(const QString& source, const QString& folder)
{
    const QStringList names = {QStringLiteral("tessera"), QStringLiteral("libtessera_shell.so")};
    bool copied = true;
    for (const QString& name : names)
        copied = QFile::copy(source + u'/' + name, folder + u'/' + name) && copied;
    for (const char* variable :
         {"HOME", "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"}) {
        const QString own = folder + u'/' + QString::fromLatin1(variable);
        copied = QDir().mkdir(own) && copied;
        copied =
            QFile::setPermissions(own, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) &&
            copied;
        qputenv(variable, own.toUtf8());
    }
    if (::geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    QFile page(folder + QStringLiteral("/page.html"));
    return page.open(QIODevice::WriteOnly) && page.write("<title>Seite</title>Seite") > 0 && copied;
}

bool measure(const std::string& bare, const std::string& tessera, const std::string& page)
{
    std::vector<double> bareTimes;
    std::vector<double> secondTimes;
    timeOf(bare, {}); // both programs are in the cache now
    timeOf(tessera, page);
    for (int i = 0; i < runs; ++i) {
        bareTimes.push_back(timeOf(bare, {}));
        secondTimes.push_back(timeOf(tessera, page));
        if (bareTimes.back() < 0 || secondTimes.back() < 0)
            return false;
    }
    const double bareTime = median(bareTimes);
    const double secondTime = median(secondTimes);
    std::printf("bare widget program %.1f ms, second start %.1f ms, ratio %.2f (at most 0.40)\n",
                bareTime, secondTime, secondTime / bareTime);
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString here = QCoreApplication::applicationDirPath();
    const QStringList arguments = QCoreApplication::arguments();
    const QTemporaryDir folder;
    if (!prepare(arguments.value(1, here), folder.path())) {
        std::fputs("tessera and libtessera_shell.so were not found\n", stderr);
        return 1;
    }
    const std::string tessera = folder.filePath(QStringLiteral("tessera")).toStdString();
    const QString socket = folder.filePath(QStringLiteral("XDG_RUNTIME_DIR/tessera.socket"));
    const pid_t running = start(tessera, {});
    for (int i = 0; i < 100 && !QFile::exists(socket); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const bool measured =
        running > 0 && measure((here + QStringLiteral("/bench_bare_widget")).toStdString(), tessera,
                               folder.filePath(QStringLiteral("page.html")).toStdString());
    if (!measured)
        std::fputs("a program failed\n", stderr);
    if (running > 0) {
        ::kill(running, SIGTERM);
        ::waitpid(running, nullptr, 0);
    }
    return measured ? 0 : 1;
}
