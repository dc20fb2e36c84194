#include "app/GermanTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

using namespace Qt::StringLiterals;

void installGermanTexts()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    // Qt's own texts fit its version best, but Qt does not require them: an
    // installed program brings some along.
    const QString shared = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    const QString own = QCoreApplication::applicationDirPath() + u"/translations"_s;
    for (const QString& name : {u"qtbase_de"_s, u"qtwebengine_de"_s}) {
        auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
        if (translator->load(name, shared) || translator->load(name, own))
            QCoreApplication::installTranslator(translator.release()); // the application owns it
    }
}
