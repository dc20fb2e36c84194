#include "app/DesktopAction.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

QString roleOfDesktopAction(const QString& address)
{
    const std::array actions{std::pair{"tessera:neu"_L1, "mn_Browser"_L1},
                             std::pair{"tessera:archiv"_L1, "mn_Bookmarks"_L1},
                             std::pair{"tessera:historie"_L1, "mn_Historie"_L1}};
    for (const auto& [word, role] : actions)
        if (address == word)
            return role;
    return {};
}
