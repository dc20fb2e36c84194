#pragma once

#include <QString>

/// Where the maker of the program can be reached.
namespace maker {
inline QString webSite()
{
    return QStringLiteral("https://www.loomwork.example/");
}
inline QString downloadPage()
{
    return QStringLiteral("https://www.loomwork.example/tessera/download.html");
}
inline QString email()
{
    return QStringLiteral("info@loomwork.example");
}
} // namespace maker
