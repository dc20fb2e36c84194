#include "browser/GermanTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

void installGermanTexts()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    // An installed program brings the texts along: Qt does not require them.
    const QString own = QCoreApplication::applicationDirPath() + u"/translations"_s;
    const QString shared = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    for (const QString& name : {u"qtbase_de"_s, u"qtwebengine_de"_s}) {
        auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
        if (translator->load(name, own) || translator->load(name, shared)) {
            QCoreApplication::installTranslator(translator.release()); // the application owns it
        }
    }
}
