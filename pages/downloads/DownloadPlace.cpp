#include "pages/downloads/DownloadPlace.h"

#include "base/Prompt.h"
#include "base/Shell.h"
#include "pages/downloads/DownloadTable.h"
#include "pages/downloads/FileNames.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

DownloadPlace::DownloadPlace(Shell& shell, QWidget* owner, const DownloadTable& table,
                             const QString& spareFolder)
    : m_shell(shell), m_owner(owner), m_table(table), m_spareFolder(spareFolder)
{
}

QString DownloadPlace::folder() const
{
    const QString first = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    for (const QString& folder : {m_last, first})
        if (!folder.isEmpty() && QFileInfo(folder).isDir())
            return folder;
    return QDir::homePath();
}

bool DownloadPlace::isTarget(const QString& path) const
{
    return m_table.isTarget(path);
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
                  std::bind_front(&DownloadPlace::isTarget, this));
}

QString DownloadPlace::waitingPlace(const QString& name, const IsTaken& isTaken) const
{
    constexpr qsizetype enoughToKnowIt = 50;
    QString place = folder();
    if (!QFileInfo(place).isWritable() && QDir().mkpath(m_spareFolder))
        place = m_spareFolder;
    return freeIn(place, safeFileName(name.left(enoughToKnowIt) + u".teil"_s), isTaken);
}

QString DownloadPlace::ask(const QString& name)
{
    QString proposal = freeIn(folder(), name, std::bind_front(&DownloadPlace::isTarget, this));
    while (true) {
        QString path = m_shell.prompt().saveFileAs(m_owner, u"Datei speichern unter"_s, proposal);
        if (path.isEmpty())
            return {};
        const QString problem = obstacle(path);
        if (problem.isEmpty()) {
            m_last = QFileInfo(path).absolutePath();
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
    return isTarget(path) ? u"Diese Datei wird gerade geladen. Wählen Sie einen anderen Namen."_s
                          : QString();
}
