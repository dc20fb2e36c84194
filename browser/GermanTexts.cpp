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
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    for (const QString& name : {u"qtbase_de"_s, u"qtwebengine_de"_s}) {
        auto translator = std::make_unique<QTranslator>(QCoreApplication::instance());
        if (translator->load(name, folder)) {
            QCoreApplication::installTranslator(translator.release()); // the application owns it
        }
    }
}
