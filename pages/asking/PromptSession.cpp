#include "pages/asking/PromptSession.h"

void PromptSession::forgetAnswers()
{
    permissions.clear();
    trustedCertificates.clear();
    desktopSchemes.clear();
}
