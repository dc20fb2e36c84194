#include "tests/gui/FakeShell.h"

#include "history/HistoryList.h"

#include <QDateTime>
#include <QPixmap>

FakeShell::FakeShell()
    : m_programFolder(m_folder.path()), m_title(QStringLiteral("Tessera 5.3.5")),
      pref(m_programFolder)
{
    QPixmap square(64, 64);
    square.fill(Qt::darkCyan);
    m_icon = QIcon(square);
    pref.LoadPref();
}

void FakeShell::AddToHistory(const QString& url, const QString& title)
{
    addVisit(history, url, title, QDateTime::currentDateTime(), pref.HistoryRows());
}
