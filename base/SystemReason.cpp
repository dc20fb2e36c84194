#include "base/SystemReason.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace {
struct Reason {
    int code;
    const char* text;
};

constexpr std::array reasons{
    Reason{EACCES, "Die Berechtigung fehlt."},
    Reason{EPERM, "Das ist nicht erlaubt."},
    Reason{ENOENT, "Diesen Pfad gibt es nicht."},
    Reason{EISDIR, "Es ist ein Ordner."},
    Reason{ENOTDIR, "Ein Teil des Pfades ist kein Ordner."},
    Reason{EEXIST, "Das gibt es schon."},
    Reason{EROFS, "Der Datenträger ist schreibgeschützt."},
    Reason{ENOSPC, "Auf dem Datenträger ist kein Platz mehr."},
    Reason{EDQUOT, "Der Platz, der Ihnen zusteht, ist verbraucht."},
    Reason{EFBIG, "So große Dateien sind nicht erlaubt."},
    Reason{EIO, "Der Datenträger lässt sich nicht lesen oder beschreiben."},
    Reason{EMFILE, "Es sind zu viele Dateien offen."},
    Reason{ENFILE, "Es sind zu viele Dateien offen."},
    Reason{ENAMETOOLONG, "Der Name ist zu lang."},
    Reason{ELOOP, "Die Verknüpfungen führen im Kreis."},
    Reason{EBUSY, "Ein anderes Programm benutzt das gerade."},
    Reason{ETXTBSY, "Das Programm läuft gerade."},
    Reason{ENXIO, "Das Gerät ist nicht vorhanden."},
    Reason{ENODEV, "Das Gerät ist nicht vorhanden."},
    Reason{ESTALE, "Das Netzlaufwerk ist nicht mehr verbunden."},
    Reason{ENOMEM, "Der Arbeitsspeicher reicht nicht."},
};
} // namespace

std::string systemReason(int code)
{
    const auto* const known = std::find_if(reasons.begin(), reasons.end(),
                                           [code](const Reason& one) { return one.code == code; });
    return known != reasons.end() ? known->text : std::strerror(code);
}
