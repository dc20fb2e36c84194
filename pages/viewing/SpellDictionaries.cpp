#include "pages/viewing/SpellDictionaries.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

constexpr const char* folderVariable = "QTWEBENGINE_DICTIONARIES_PATH";

QStringList dictionariesIn(const QString& folder)
{
    QStringList names = QDir(folder).entryList({u"*.bdic"_s}, QDir::Files, QDir::Name);
    for (QString& name : names)
        name.chop(5);
    return names;
}

/// The folder that the engine takes its dictionaries from: it looks in the same order.
QString dictionaryFolder()
{
    if (qEnvironmentVariableIsSet(folderVariable))
        return qEnvironmentVariable(folderVariable);
    const QString name = u"/qtwebengine_dictionaries"_s;
    const QString beside = QCoreApplication::applicationDirPath() + name;
    return QDir(beside).exists() ? beside : QLibraryInfo::path(QLibraryInfo::DataPath) + name;
}

QString languageOf(const QString& name)
{
    return name.section(u'_', 0, 0).toLower();
}

/// The dictionary for the language of `wanted` that suits it best; empty if none.
QString bestFor(QString wanted, const QStringList& installed)
{
    wanted.replace(u'-', u'_');
    const QString home = QLocale(languageOf(wanted)).name(); // "de" stands for "de_DE"
    QString best;
    int rank = 0;
    for (const QString& name : installed) {
        QString plain = name;
        plain.replace(u'-', u'_');
        if (languageOf(plain) != languageOf(wanted))
            continue;
        const int suits = plain.compare(wanted, Qt::CaseInsensitive) == 0 ? 3
                          : plain.startsWith(home, Qt::CaseInsensitive)   ? 2
                                                                          : 1;
        if (suits > rank) {
            best = name;
            rank = suits;
        }
    }
    return best;
}

} // namespace

void announceDictionaries()
{
    // The distribution puts there what it makes of its own dictionaries.
    const QString system = u"/usr/share/hunspell-bdic"_s;
    if (installedDictionaries().isEmpty() && !dictionariesIn(system).isEmpty())
        qputenv(folderVariable, system.toUtf8());
}

QStringList installedDictionaries()
{
    return dictionariesIn(dictionaryFolder());
}

QStringList spellLanguages(const QStringList& installed, const QStringList& userLanguages)
{
    QStringList chosen;
    QStringList languages; // of which a dictionary has been chosen
    for (const QString& wanted : userLanguages + QStringList{u"de"_s, u"en"_s}) {
        QString language = wanted;
        language = languageOf(language.replace(u'-', u'_'));
        if (languages.contains(language))
            continue;
        if (const QString name = bestFor(wanted, installed); !name.isEmpty()) {
            chosen << name;
            languages << language;
        }
    }
    return chosen;
}
