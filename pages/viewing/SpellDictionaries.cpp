#include "pages/viewing/SpellDictionaries.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace {

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

QStringList spellLanguages(const QStringList& installed, const QStringList& userLanguages)
{
    QStringList chosen;
    QStringList languages; // taken already
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
