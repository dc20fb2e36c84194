// The history window with the longest possible history, opened, shown and
// sorted, against filling a bare table widget with the same texts.
#include "history/frmHistory.h"
#include "tests/gui/FakeShell.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QTableWidget>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <random>

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

double milliseconds(const std::function<void()>& action)
{
    QElapsedTimer timer;
    timer.start();
    action();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Opening sorts by date; `sortCommand` is a further sort, if there is one.
double openAndSort(FakeShell& shell, const QString& sortCommand)
{
    std::unique_ptr<frmHistory> window;
    return milliseconds([&] {
        window = std::make_unique<frmHistory>(shell, nullptr);
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
    auto table = std::make_unique<QTableWidget>();
    return milliseconds([&] {
        table->setColumnCount(3);
        table->setRowCount(static_cast<int>(texts.size()));
        int row = 0;
        for (const Texts& text : texts) {
            int column = 0;
            for (const QString& cell : text)
                table->setItem(row, column++, new QTableWidgetItem(cell));
            ++row;
        }
    });
}
} // namespace

int main(int argc, char** argv) // NOLINT(bugprone-exception-escape)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    FakeShell shell;
    fillHistory(shell.history);
    const std::vector<Texts> texts = textsOf(shell.history);

    // The bound is meant for opening, which sorts by date.
    const QStringList sorts{QString(), QStringLiteral("mn_SortAdr"), QStringLiteral("mn_SortTitel"),
                            QStringLiteral("mn_SortDate")};
    for (const QString& sort : sorts) {
        std::vector<double> ours;
        std::vector<double> bare;
        for (int i = 0; i < runs; ++i) {
            ours.push_back(openAndSort(shell, sort));
            bare.push_back(fillBareTable(texts));
        }
        std::printf("%s: %.1f ms, bare table filled: %.1f ms, ratio %.2f%s\n",
                    qPrintable(sort.isEmpty() ? QStringLiteral("opened")
                                              : QStringLiteral("opened, ") + sort),
                    median(ours), median(bare), median(ours) / median(bare),
                    sort.isEmpty() ? " (at most 0.5)" : "");
    }
    return 0;
}
