#pragma once

#include <cstddef>
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
/// The same for a limit of descriptors that the engine would soon be at the end of.
std::string refusal(std::size_t descriptors);

/// The full path when `address` names a file relative to `folder`, otherwise
/// `address` as it is. A folder counts only when it is written as a path: a site's
/// mirror does not hide the site. A path that is no UTF-8 becomes a "file:" address,
/// as the program's texts cannot hold it otherwise.
std::string absoluteIfFile(const std::string& address, const std::string& folder);
