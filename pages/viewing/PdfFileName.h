#pragma once

#include <QString>

/// The name proposed for the file that the page titled `title` is saved in as
/// PDF: without characters that file systems or people stumble over, and not
/// too long; never empty.
QString pdfFileName(const QString& title);
