// The history window with the longest possible history, opened, shown and
// sorted, against filling a bare table widget with the same texts.
#include "bench/Report.h"
#include "history/frmHistory.h"
#include "tests/gui/FakeShell.h"

#include <QAction>
#include <QApplication>
#include <QTableWidget>

#include <array>
#include <memory>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int rows = 32767;
constexpr int runs = 15;

using Texts = std::array<QString, 3>;

void fillHistory(HistoryCollection& history)
{
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts every time
    const QDateTime start(QDate(2000, 1, 1), QTime(0, 0));
    for (int i = 0; i < rows; ++i) {
        const QString host = QString::number(random() % 200);
        const QString page = QString::number(random());
        auto item = std::make_shared<HistoryItem>();
        item->SetItem(QStringLiteral("https://www.example%1.org/Seite/%2").arg(host, page),
                      QStringLiteral("Beispiel %1 - Seite %2").arg(host, page),
                      start.addSecs(random() % 100'000'000));
        history.Add(item);
    }
}

std::vector<Texts> textsOf(const HistoryCollection& history)
{
    std::vector<Texts> texts;
    for (const auto& item : history)
        texts.push_back({item->Url(), item->Title(), dateText(dateDigits(item->UrlDate()))});
    return texts;
}

/// Opening sorts by date; `sortCommand` is a further sort, if there is one.
double openAndSort(FakeShell& shell, const QString& sortCommand)
{
    std::unique_ptr<frmHistory> window;
    return measured([&] {
        window = std::make_unique<frmHistory>(shell, shell.history, nullptr);
        window->show();
        QApplication::processEvents();
        if (sortCommand.isEmpty())
            return;
        window->findChild<QAction*>(sortCommand)->trigger();
        QApplication::processEvents();
    });
}

double fillBareTable(const std::vector<Texts>& texts)
{
    QTableWidget table;
    return measured([&] {
        table.setColumnCount(3);
        table.setRowCount(static_cast<int>(texts.size()));
        int row = 0;
        for (const Texts& text : texts) {
            int column = 0;
            for (const QString& cell : text)
                table.setItem(row, column++, new QTableWidgetItem(cell));
            ++row;
        }
    });
}

void measure(Report& report)
{
    FakeShell shell;
    fillHistory(shell.history);
    const std::vector<Texts> texts = textsOf(shell.history);
    const QString opened = u"history window of 32,767 rows opened, by date"_s;
    const std::vector<std::pair<QString, QString>> sorts = {
        {opened, {}},
        {u"... and sorted by address"_s, u"mn_SortAdr"_s},
        {u"... and sorted by title"_s, u"mn_SortTitel"_s}};
    for (const auto& [what, command] : sorts) {
        const Medians medians = interleaved(
            runs, [&, &command = command] { return openAndSort(shell, command); },
            [&] { return fillBareTable(texts); });
        report.ratio(what, u"bare table widget filled"_s, medians.ours, medians.bare, u"ms"_s,
                     command.isEmpty() ? 0.5 : 1);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return Report::run(measure);
}
