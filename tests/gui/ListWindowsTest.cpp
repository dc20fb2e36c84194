#include "history/frmHistory.h"
#include "pages/downloads/frmDownloads.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>
#include <QUrl>

using namespace Qt::StringLiterals;

/// The list of the downloads, and that of the visits.
class ListWindowsTest : public WindowTest {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        m_window.reset();
        m_table = std::make_unique<DownloadTable>();
        m_window =
            std::make_unique<frmDownloads>(m_shell, nullptr, *m_table, [this](const QUrl& url) {
                m_opened << url.toLocalFile();
                return m_canOpen;
            });
        m_window->setAttribute(Qt::WA_DeleteOnClose, false);
        show(*m_window);
        m_opened.clear();
        m_canOpen = true;
    }
    void cleanup() { m_window.reset(); }

    void downloadsAreOpened()
    {
        const QString none = u"Für die Datei „a.txt“ wurde kein Programm gefunden."_s;
        const QString gone = u"Die Datei „a.txt“ ist nicht mehr da."_s;
        const QString program = u"„a.sh“ kann ein Programm sein und wird von hier aus nicht "
                                "geöffnet. Über „Ordner anzeigen“ kommen Sie zu der Datei."_s;
        for (const auto& [file, exists, canOpen, complaint] :
             {std::tuple{u"a.txt"_s, true, true, u""_s},
              {u"a.txt"_s, true, false, none},
              {u"a.txt"_s, false, true, gone},
              {u"a.sh"_s, true, true, program}}) {
            init();
            if (exists)
                writeBytes(path(file), {});
            m_canOpen = canOpen;
            m_table->finish(m_table->add({.path = path(file)}), DownloadState::Completed);
            QTest::keyClick(find<QTableView>(), Qt::Key_Return);
            QCOMPARE(m_opened.size(), exists && complaint != program ? 1 : 0);
            const QStringList texts = m_shell.fakePrompt.takeTexts();
            QCOMPARE(texts.join(u'\n').section(u'|', 2), complaint);
            m_canOpen = true;
            press(u"cmdFolder"_s);
            QCOMPARE(m_opened.last(), path());
        }
    }

    /// The line for it is that of the archive.
    void historyIsSearched()
    {
        FakeShell shell;
        for (const auto& [url, title] : {std::pair{u"http://a"_s, u"Eins"_s},
                                         {u"http://b"_s, u"zwei"_s},
                                         {u"http://c"_s, u"EIN"_s}})
            addVisit(shell.history, url, title, QDate(2000, 1, 31).startOfDay(), 3);
        frmHistory window(shell, shell.history, nullptr);
        window.setAttribute(Qt::WA_DeleteOnClose, false);
        show(window);
        auto* grid = find<QTableView>();
        auto* line = find<QLineEdit>(u"txtFind"_s);
        const auto seen = [&] {
            return grid->currentIndex().siblingAtColumn(1).data().toString() + u' ' +
                   find<QLabel>(u"lblHits"_s)->text();
        };
        QTest::keyClick(grid, Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(line, u"ein"_s);
        QCOMPARE(seen(), u"Eins 1 von 2"_s);
        QTest::keyClick(line, Qt::Key_Return);
        QCOMPARE(seen(), u"EIN 2 von 2"_s);
        find<QAction>(u"mn_SortTitel"_s)->trigger(); // EIN, Eins, zwei
        QTest::keyClick(line, Qt::Key_F3);
        QCOMPARE(seen(), u"EIN 1 von 2"_s);
    }

private:
    FakeShell m_shell;
    std::unique_ptr<DownloadTable> m_table;
    std::unique_ptr<frmDownloads> m_window;
    QStringList m_opened;
    bool m_canOpen = true;
};

QTEST_MAIN(ListWindowsTest)
#include "ListWindowsTest.moc"
