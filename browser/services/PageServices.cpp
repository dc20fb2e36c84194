#include "browser/services/PageServices.h"

#include "browser/WebEnginePage.h"

PageServices::PageServices(Shell& /*shell*/, QWidget* /*window*/, QWebEngineView* /*view*/,
                           WebEnginePage* page)
    : QObject(page)
{
}
