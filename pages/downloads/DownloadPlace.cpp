#include "pages/downloads/DownloadPlace.h"

#include "base/Prompt.h"
#include "base/Shell.h"
#include "pages/downloads/DownloadTable.h"
#include "pages/downloads/FileNames.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

/// After so many refusals of one page the user is asked whether to refuse all.
constexpr int mostRefusals = 2;

} // namespace

DownloadPlace::DownloadPlace(Shell& shell, QWidget* owner, const DownloadTable& table,
                             const QString& spareFolder)
    : m_shell(shell), m_owner(owner), m_table(table), m_spareFolder(spareFolder)
{
}

QString DownloadPlace::proposedFolder() const
{
    const QString first = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    for (const QString& folder : {m_lastFolder, first})
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    return QDir::homePath();
}

QString DownloadPlace::freeIn(const QString& folder, const QString& name,
                              const IsTaken& isTaken) const
{
    const QDir place(folder);
    return place.filePath(freeFileName(name, [&](const QString& candidate) {
        const QString path = place.filePath(candidate);
        return QFileInfo::exists(path) || QFileInfo(path).isSymLink() ||
               QFileInfo::exists(partialFile(path)) || isTaken(path);
    }));
}

QString DownloadPlace::freeBeside(const QString& path) const
{
    const QFileInfo file(path);
    return freeIn(file.absolutePath(), file.fileName(),
                  std::bind_front(&DownloadTable::isTarget, &m_table));
}

QString DownloadPlace::waitingPlace(const QString& name, const IsTaken& isTaken) const
{
    constexpr qsizetype enoughToKnowIt = 50;
    QString folder = proposedFolder();
    if (!QFileInfo(folder).isWritable() && QDir().mkpath(m_spareFolder))
        folder = m_spareFolder;
    return freeIn(folder, safeFileName(name.left(enoughToKnowIt) + u".teil"_s), isTaken);
}

QString DownloadPlace::ask(const QString& name, const QPointer<const QObject>& page)
{
    QString path = mayAsk(page) ? askPath(name) : QString();
    if (path.isEmpty())
        ++m_refusals[page];
    else
        m_refusals.remove(page);
    return path;
}

bool DownloadPlace::refusesAll(const QObject* page) const
{
    return m_refusals.value(page) > mostRefusals;
}

void DownloadPlace::reportRefusal()
{
    m_shell.statusText(u"Ein weiterer Download dieser Seite wurde abgelehnt."_s);
}

bool DownloadPlace::mayAsk(const QObject* page)
{
    const int refusals = m_refusals.value(page);
    if (refusals < mostRefusals)
        return true;
    if (refusals == mostRefusals &&
        !m_shell.prompt().askYesNo(m_owner, u"Es kommen noch mehr Downloads. Alle ablehnen?"_s,
                                   u"Downloads"_s, Prompt::Icon::Question)) {
        m_refusals.remove(page);
        return true;
    }
    reportRefusal();
    return false;
}

QString DownloadPlace::askPath(const QString& name)
{
    QString proposal =
        freeIn(proposedFolder(), name, std::bind_front(&DownloadTable::isTarget, &m_table));
    while (true) {
        QString path = m_shell.prompt().saveFileAs(m_owner, u"Datei speichern unter"_s, proposal);
        if (path.isEmpty())
            return {};
        const QString problem = obstacle(path);
        if (problem.isEmpty()) {
            m_lastFolder = QFileInfo(path).absolutePath();
            return path;
        }
        m_shell.prompt().tell(m_owner, problem, u"Meldung"_s, Prompt::Icon::Exclamation);
        proposal = QFileInfo(path).absoluteDir().exists() ? path : proposal;
    }
}

QString DownloadPlace::obstacle(const QString& path) const
{
    const QFileInfo folder(QFileInfo(path).absolutePath());
    if (!folder.isDir() || !folder.isWritable()) {
        return u"In den Ordner „%1“ kann nicht geschrieben werden."_s.arg(
            QDir::toNativeSeparators(folder.filePath()));
    }
    return m_table.isTarget(path)
               ? u"Diese Datei wird gerade geladen. Wählen Sie einen anderen Namen."_s
               : QString();
}
