#pragma once

#include <string>

/// What the user wants of the command line apart from opening an address.
enum class Question { None, Version, Help };

/// The arguments after the program's name, joined by one blank: one address.
std::string commandLineText(int count, const char* const* arguments);

/// Only the first argument counts.
Question questionOf(int count, const char* const* arguments);

/// The program's name and version.
std::string programTitle();
/// The answers to "--version", to which the shell adds its engine's, and "--help", with line
/// ends.
std::string versionText();
std::string helpText();

/// The full path when `address` names a file relative to `folder`, otherwise
/// `address` as it is. A folder counts only when it is written as a path: a site's
/// mirror does not hide the site. A path that is no UTF-8 becomes a "file:" address,
/// as the program's texts cannot hold it otherwise.
std::string absoluteIfFile(const std::string& address, const std::string& folder);
