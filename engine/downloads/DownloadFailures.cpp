#include "engine/downloads/DownloadFailures.h"

#include "pages/downloads/FileMove.h"

using namespace Qt::StringLiterals;

QString failureText(QWebEngineDownloadRequest::DownloadInterruptReason reason)
{
    // The engine also gives this reason, which its list lacks (seen with Qt 6.4): the file is
    // not as long as the server has announced.
    constexpr int contentLengthMismatch = 38;
    if (reason == contentLengthMismatch)
        return failureText(QWebEngineDownloadRequest::NetworkFailed);
    switch (reason) { // the compiler tells when the engine knows another reason
    case QWebEngineDownloadRequest::NoReason:
        return {};
    case QWebEngineDownloadRequest::FileFailed:
        return u"Die Datei kann nicht geschrieben werden."_s;
    case QWebEngineDownloadRequest::FileAccessDenied:
        return u"Der Zugriff auf den Ordner oder die Datei ist verweigert."_s;
    case QWebEngineDownloadRequest::FileNoSpace:
        return u"Auf dem Datenträger ist kein Platz mehr."_s;
    case QWebEngineDownloadRequest::FileNameTooLong:
        return u"Der Dateiname ist zu lang."_s;
    case QWebEngineDownloadRequest::FileTooLarge:
        return u"Die Datei ist zu groß für das Dateisystem."_s;
    case QWebEngineDownloadRequest::FileVirusInfected:
        return u"Die Datei enthält Schadsoftware."_s;
    case QWebEngineDownloadRequest::FileTransientError:
        return u"Die Datei ist gerade in Gebrauch. Versuchen Sie es später noch einmal."_s;
    case QWebEngineDownloadRequest::FileBlocked:
        return u"Die Datei ist durch eine Richtlinie gesperrt."_s;
    case QWebEngineDownloadRequest::FileSecurityCheckFailed:
        return u"Die Sicherheitsprüfung der Datei ist fehlgeschlagen."_s;
    case QWebEngineDownloadRequest::FileTooShort:
        return u"Die Datei ist kürzer als erwartet."_s;
    case QWebEngineDownloadRequest::FileHashMismatch:
        return u"Die Prüfsumme der Datei stimmt nicht."_s;
    case QWebEngineDownloadRequest::NetworkFailed:
        return u"Die Verbindung ist abgerissen."_s;
    case QWebEngineDownloadRequest::NetworkTimeout:
        return u"Der Server antwortet nicht mehr."_s;
    case QWebEngineDownloadRequest::NetworkDisconnected:
        return u"Es besteht keine Verbindung zum Netzwerk mehr."_s;
    case QWebEngineDownloadRequest::NetworkServerDown:
        return u"Der Server ist nicht mehr da."_s;
    case QWebEngineDownloadRequest::NetworkInvalidRequest:
        return u"Die Adresse führt zu keiner Datei."_s;
    case QWebEngineDownloadRequest::ServerFailed:
        return u"Der Server meldet einen Fehler."_s;
    case QWebEngineDownloadRequest::ServerBadContent:
        return u"Auf dem Server gibt es die Datei nicht."_s;
    case QWebEngineDownloadRequest::ServerUnauthorized:
        return u"Der Server verlangt eine Anmeldung."_s;
    case QWebEngineDownloadRequest::ServerCertProblem:
        return u"Mit dem Zertifikat des Servers stimmt etwas nicht."_s;
    case QWebEngineDownloadRequest::ServerForbidden:
        return u"Der Server gibt die Datei nicht heraus."_s;
    case QWebEngineDownloadRequest::ServerUnreachable:
        return u"Der Server ist nicht zu erreichen."_s;
    case QWebEngineDownloadRequest::UserCanceled:
        return u"Abgebrochen."_s;
    }
    return u"Unbekannter Fehler."_s;
}

QString failureText(FileMove result)
{
    using Reason = QWebEngineDownloadRequest::DownloadInterruptReason;
    switch (result) {
    case FileMove::NoSpace:
        return failureText(Reason::FileNoSpace);
    case FileMove::Denied:
        return failureText(Reason::FileAccessDenied);
    default:
        return failureText(Reason::FileFailed);
    }
}
