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
/// The answers to "--version" and "--help", with line ends.
std::string versionText();
std::string helpText();

/// Why the program must not start as this user, one line, or an empty text: the
/// engine does not run as root with its sandbox.
std::string refusal(bool isRoot, bool sandboxDisabled);

/// The full path when `address` names a file relative to `folder`, otherwise
/// `address` as it is. Folders are no files: a site's mirror does not hide the site.
std::string absoluteIfFile(const std::string& address, const std::string& folder);
