#include "address/MovedProgram.h"

#include "address/PathLookup.h"

using namespace Qt::StringLiterals;

QString licenceFound(const QString& typed, const QString& programFolder, const FileTable& files)
{
    // Nobody types this notation; only the program stores it.
    const bool isStored =
        typed.startsWith(u'/') && typed.endsWith(u"\\Lizenz.txt"_s, Qt::CaseInsensitive);
    if (!isStored || spelledOnDisk(withSlashes(typed), files))
        return typed;
    return programFolder + u"\\Lizenz.txt"_s;
}
