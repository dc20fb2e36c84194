// How long a second start with an address takes, acknowledgement and process end
// included, as a share of what a bare widget program takes from start to end.
// Needs a display.
#include "bench/PrivateFolders.h"
#include "bench/Report.h"

#include <QCoreApplication>
#include <QFile>

#include <array>
#include <csignal>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int runs = 21;
constexpr std::chrono::milliseconds rest(400); // the running copy loads its page meanwhile

pid_t start(const std::string& program, const std::string& argument)
{
    std::string name = program;
    std::string word = argument;
    std::array<char*, 3> arguments = {name.data(), word.empty() ? nullptr : word.data(), nullptr};
    pid_t child = -1;
    if (::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0)
        throw BenchError("cannot be started: " + program);
    return child;
}

double timeOf(const std::string& program, const std::string& argument)
{
    std::this_thread::sleep_for(rest);
    return measured([&] {
        int status = 0;
        const pid_t child = start(program, argument);
        if (::waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
            throw BenchError("failed: " + program);
    });
}

/// The copy that is running; it ends with this object.
class FirstCopy {
public:
    explicit FirstCopy(const std::string& program) : m_process(start(program, {})) {}
    ~FirstCopy()
    {
        ::kill(m_process, SIGTERM);
        ::waitpid(m_process, nullptr, 0);
    }
    Q_DISABLE_COPY_MOVE(FirstCopy)

private:
    pid_t m_process;
};

void measure(Report& report)
{
    const PrivateFolders folders;
    const std::string tessera = folders.copyProgram().toStdString();
    const std::string bare =
        (QCoreApplication::applicationDirPath() + u"/BareWidget"_s).toStdString();
    QFile page(folders.path(u"page.html"_s));
    if (!page.open(QIODevice::WriteOnly) || page.write("<title>Seite</title>Seite") < 0)
        throw BenchError("the page cannot be written");
    page.close();

    const FirstCopy first(tessera);
    const QString socket = folders.path(u"XDG_RUNTIME_DIR/tessera.socket"_s);
    for (int i = 0; i < 100 && !QFile::exists(socket); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    const std::string address = page.fileName().toStdString();
    timeOf(bare, {}); // both programs are in the cache now
    timeOf(tessera, address);
    const Medians medians = interleaved(
        runs, [&] { return timeOf(tessera, address); }, [&] { return timeOf(bare, {}); });
    report.ratio(u"second start, with an address"_s, u"bare widget program, start to end"_s,
                 medians.ours, medians.bare, u"ms"_s, 0.40);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return Report::run(measure);
}
