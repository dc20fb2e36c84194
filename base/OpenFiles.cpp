#include "base/OpenFiles.h"

#include <QDirIterator>
#include <QFile>

bool hasOpenFileIn(const QString& folder)
{
    // The list may be gone or change while it is read: what is not there any more is not open.
    QDirIterator descriptors(QStringLiteral("/proc/self/fd"),
                             QDir::Files | QDir::System | QDir::NoDotAndDotDot);
    while (descriptors.hasNext())
        if (QFile::symLinkTarget(descriptors.next()).startsWith(folder + u'/'))
            return true;
    return false;
}
