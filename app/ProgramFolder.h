#pragma once

#include <QString>

/// The program folder: where preferences and archive lie. That is `beside`, the folder of the
/// executable, if the user may write there or has a preferences file there already. Otherwise,
/// and always where `beside` is below /usr, whose files are those of packages, it is the folder
/// "tessera-program" in `dataFolder`, which is made if need be. Folders are without trailing
/// separator.
QString programFolder(const QString& beside, const QString& dataFolder);
