#include "bookmarks/FolderNames.h"

#include "base/RecordField.h"
#include "base/WholeNumber.h"

using namespace Qt::StringLiterals;

QString newDirName(const IsFree& isFree)
{
    const QString first = u"Neuer Ordner"_s;
    QString name = first;
    for (qint16 n = 0; !isFree(name);) {
        n = addWhole(n, 1);
        name = first + u" ("_s + QString::number(n) + u')';
    }
    return name;
}

QString cleanDirName(QString typed)
{
    typed.replace(u"\r\n"_s, u" "_s);
    for (QChar& c : typed)
        if (c == u'\r' || c == u'\n' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = u' ';
    return trimBlanks(typed).toString();
}

DirNameCheck checkDirName(const QString& old, const QString& name, const IsFree& isFree)
{
    if (name == old)
        return DirNameCheck::Unchanged;
    if (name.isEmpty())
        return DirNameCheck::Empty;
    return isFree(name) ? DirNameCheck::Accepted : DirNameCheck::Taken;
}

QString dirNameMessage(DirNameCheck check, const QString& name)
{
    if (check == DirNameCheck::Empty)
        return u"Der Ordner muß einen Namen haben !"_s;
    if (check == DirNameCheck::Taken)
        return u"Der Ordner mit dem Namen '"_s + name +
               u"' existiert schon !\nBitte wählen Sie einen anderen Namen."_s;
    return {};
}
