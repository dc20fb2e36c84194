#include "browser/services/frmBrowserData.h"
#include "browser/services/frmDownloads.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QCheckBox>
#include <QDir>
#include <QPushButton>
#include <QTableView>
#include <QUrl>

using namespace Qt::StringLiterals;

/// The downloads window, and the dialog that has browsing data deleted.
class DownloadsWindowTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        failOnWarnings();
        m_table = std::make_unique<DownloadTable>();
        m_window =
            std::make_unique<frmDownloads>(m_shell, nullptr, *m_table, [this](const QUrl& url) {
                m_opened << url.toLocalFile();
                return m_canOpen;
            });
        m_window->setAttribute(Qt::WA_DeleteOnClose, false);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_opened.clear();
        m_canOpen = true;
    }
    void cleanup() { m_window.reset(); }

    void buttonsFollowTheSelection()
    {
        QCOMPARE(enabled(), QString());
        int cancelled = 0;
        const auto first = m_table->add({.path = u"/d/a"_s}, [&] { ++cancelled; });
        QCOMPARE(enabled(), u"cmdCancel cmdFolder"_s);
        m_table->add({.path = u"/d/b"_s}, [&] { ++cancelled; });
        m_table->finish(first, DownloadState::Completed);
        QCOMPARE(enabled(), u"cmdOpen cmdFolder cmdClear"_s); // the first one is still selected
        list()->selectAll();
        QCOMPARE(enabled(), u"cmdCancel cmdClear"_s);
        click(u"cmdCancel"_s);
        QCOMPARE(cancelled, 1);
        click(u"cmdClear"_s);
        QCOMPARE(m_table->rowCount(), 1);
        QCOMPARE(enabled(), u"cmdCancel cmdFolder"_s);
    }

    void opens_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("exists");
        QTest::addColumn<bool>("canOpen");
        QTest::addColumn<int>("opened");
        QTest::addColumn<QString>("complaint");
        QTest::newRow("text") << u"a.txt"_s << true << true << 1 << QString();
        QTest::newRow("no program") << u"a.txt"_s << true << false << 1
                                    << u"Für die Datei \"a.txt\" wurde kein Programm gefunden."_s;
        QTest::newRow("gone") << u"a.txt"_s << false << true << 0
                              << u"Die Datei \"a.txt\" ist nicht mehr da."_s;
        QTest::newRow("program") << u"a.sh"_s << true << true << 0
                                 << u"\"a.sh\" kann ein Programm sein und wird von hier aus nicht "
                                    "geöffnet. Über \"Ordner anzeigen\" kommen Sie zu der Datei."_s;
    }
    void opens()
    {
        QFETCH(QString, file);
        QFETCH(bool, exists);
        QFETCH(bool, canOpen);
        QFETCH(QString, complaint);
        const QTemporaryDir folder;
        QFile content(folder.filePath(file));
        if (exists)
            QVERIFY(content.open(QIODevice::WriteOnly));
        m_canOpen = canOpen;
        m_table->finish(m_table->add({.path = content.fileName()}), DownloadState::Completed);
        QTest::keyClick(list(), Qt::Key_Return);
        QTEST(static_cast<int>(m_opened.size()), "opened");
        const QStringList texts = m_shell.fakePrompt.takeTexts();
        QCOMPARE(texts.join(u'\n').section(u'|', 2), complaint);
        m_canOpen = true;
        click(u"cmdFolder"_s);
        QCOMPARE(m_opened.last(), folder.path());
    }

    void hundredDownloads()
    {
        for (int i = 0; i < 100; ++i)
            m_table->add({.path = u"/d/%1"_s.arg(i)});
        const QModelIndex last = m_table->index(99, 0);
        QVERIFY(list()->viewport()->rect().contains(list()->visualRect(last).center()));
    }

    void chosenData()
    {
        frmBrowserData dialog(nullptr);
        dialog.show();
        const auto check = [&](const QString& name) { return dialog.findChild<QCheckBox*>(name); };
        check(u"chkCookies"_s)->click();
        check(u"chkStorage"_s)->click();
        const BrowserData data = dialog.chosen();
        QVERIFY(!data.cookies && data.cache && !data.visitedLinks && !data.permissions &&
                data.storage);
        check(u"chkStorage"_s)->click();
        check(u"chkCache"_s)->click();
        QTest::keyClick(check(u"chkCache"_s), Qt::Key_Return); // there is nothing to delete
        QVERIFY(dialog.isVisible());
        check(u"chkLinks"_s)->click();
        QTest::keyClick(check(u"chkLinks"_s), Qt::Key_Return);
        QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
    }

private:
    QTableView* list() const { return m_window->findChild<QTableView*>(); }
    void click(const QString& button) const
    {
        QTest::mouseClick(m_window->findChild<QPushButton*>(button), Qt::LeftButton);
    }
    QString enabled() const
    {
        QStringList names;
        for (const auto& name : {u"cmdCancel"_s, u"cmdOpen"_s, u"cmdFolder"_s, u"cmdClear"_s}) {
            if (m_window->findChild<QPushButton*>(name)->isEnabled())
                names << name;
        }
        return names.join(u' ');
    }

    FakeShell m_shell;
    std::unique_ptr<DownloadTable> m_table;
    std::unique_ptr<frmDownloads> m_window;
    QStringList m_opened;
    bool m_canOpen = true;
};

GUI_TEST_MAIN(DownloadsWindowTest)
#include "DownloadsWindowTest.moc"
