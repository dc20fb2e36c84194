// What a key in the address line costs until its proposals are known, with the longest
// history and 100,000 bookmarks: the slowest of the keys that type some texts, one of which is
// nowhere. And what it costs to make the history ready, when the line gets the focus.
#include "app/KnownPages.h"
#include "bench/BenchArchive.h"
#include "bench/Report.h"
#include "bookmarks/Book.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <ctime>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int visits = 32767;
constexpr int runs = 11;

double processorTime(const std::function<void()>& action)
{
    const std::clock_t begin = std::clock();
    action();
    return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

void fillHistory(HistoryCollection& history)
{
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
    const QDateTime start(QDate(2000, 1, 1), QTime(0, 0));
    for (int i = 0; i < visits; ++i) {
        auto item = std::make_shared<HistoryItem>();
        item->SetItem(u"https://www.beispiel%1.org/Seite/%2"_s.arg(random() % 200).arg(random()),
                      u"Beispiel %1 - eine Seite"_s.arg(i), start.addSecs(random() % 100'000'000));
        item->Visits(1 + static_cast<int>(random() % 9));
        history.Add(item);
    }
}

void writeArchive(const QString& path)
{
    Book book(path);
    makeArchive(book, path, 1000, 100, [](int number) { return u"Ordner %1"_s.arg(number); });
    book.SaveAllThema();
}

double slowestKey(ProposalSource& source)
{
    double slowest = 0;
    for (const QString& text : {u"https://www.example.org/ordner/77/"_s, u"größe 1000 99"_s,
                                u"beispiel seite 321"_s, u"steht nirgends"_s, u"zzz"_s, u"e"_s}) {
        for (qsizetype length = 1; length <= text.size(); ++length)
            slowest = std::max(slowest, processorTime([&] {
                                   source.proposals(text.first(length), KnownAddresses());
                               }));
    }
    return slowest;
}

void measure(Report& report)
{
    const QTemporaryDir folder;
    HistoryCollection history;
    fillHistory(history);
    writeArchive(folder.path());
    KnownPages pages(history, folder.path(), nullptr);
    while (pages.proposals(u"lesezeichens 100 im ordner 1000"_s, KnownAddresses()).empty())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10); // while the archive is read
    std::vector<double> prepared;
    std::vector<double> slowest;
    for (int i = 0; i < runs; ++i) {
        prepared.push_back(processorTime([&] { pages.prepare(); }));
        slowest.push_back(slowestKey(pages));
    }
    report.value(u"slowest key of the address line, CPU"_s, median(slowest), u"ms"_s, 10);
    report.value(u"history made ready for proposals, CPU"_s, median(prepared), u"ms"_s, 50);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return Report::run(measure);
}
