#include "app/ProgramFolder.h"

#include <QDir>
#include <QFileInfo>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
bool isOfThisUser(const QFileInfo& file)
{
    return file.exists() && file.ownerId() == ::geteuid();
}
} // namespace

QString programFolder(const QString& beside, const QString& dataFolder)
{
    const bool isPackaged = beside.startsWith("/usr/"_L1);
    // A folder that cannot be written for the moment is no reason to begin with another archive.
    if (!isPackaged &&
        (QFileInfo(beside).isWritable() || isOfThisUser(QFileInfo(beside + u"/Pref.tsp"_s))))
        return beside;
    QString own = dataFolder + u"/tessera-program"_s;
    QDir().mkpath(own); // where that fails, each file that cannot be written is told of
    return own;
}
