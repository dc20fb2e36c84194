#include "engine/viewing/SpellCheck.h"

#include "pages/viewing/SpellDictionaries.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QWebEngineProfile>

using namespace Qt::StringLiterals;

namespace {

constexpr const char* variable = "QTWEBENGINE_DICTIONARIES_PATH";

QStringList dictionariesIn(const QString& folder)
{
    QStringList names = QDir(folder).entryList({u"*.bdic"_s}, QDir::Files, QDir::Name);
    for (QString& name : names)
        name.chop(5);
    return names;
}

/// The folder that the engine takes its dictionaries from.
QString dictionaryFolder()
{
    if (qEnvironmentVariableIsSet(variable))
        return qEnvironmentVariable(variable);
    const QString name = u"/qtwebengine_dictionaries"_s;
    const QString beside = QCoreApplication::applicationDirPath() + name;
    return QDir(beside).exists() ? beside : QLibraryInfo::path(QLibraryInfo::DataPath) + name;
}

} // namespace

void announceDictionaries()
{
    // Where the distribution puts what it makes of its own dictionaries.
    const QString system = u"/usr/share/hunspell-bdic"_s;
    if (dictionariesIn(dictionaryFolder()).isEmpty() && !dictionariesIn(system).isEmpty())
        qputenv(variable, system.toUtf8());
}

void startSpellCheck(QWebEngineProfile& profile)
{
    const QStringList languages =
        spellLanguages(dictionariesIn(dictionaryFolder()), QLocale::system().uiLanguages());
    // Asked to look for none, the engine tells the terminal that it has found none [6.8].
    if (languages.isEmpty())
        return;
    profile.setSpellCheckLanguages(languages);
    profile.setSpellCheckEnabled(true);
}
