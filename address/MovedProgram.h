#pragma once

#include <QString>

class FileTable;

/// `typed`, unless it is the stored path of the licence text beside a program folder
/// that lies elsewhere by now (start page, first bookmarks): then that of the text in
/// `programFolder`. A text of that name that is still there is left alone.
QString licenceFound(const QString& typed, const QString& programFolder, const FileTable& files);
